#include "queries.h"

#include "nearHull.h"

#include <vorn3d/geometry/locateClosed.h>
#include <vorn3d/geometry/nearestVertex.h>
#include <vorn3d/geometry/spatialOrder.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <stdexcept>
#include <string>
#include <utility>

namespace VORN3D::python
{

namespace
{

// So many points are answered from one call of the pulse to the next.
constexpr std::size_t PULSE_POINTS = 256;
// The same where the library answers for many at once.
constexpr std::size_t PULSE_BLOCK = 1 << 14;

using Positions = std::vector<std::size_t>;

std::vector<Point3> makePoints(const Rows& rows)
{
    std::vector<Point3> vPoints;
    vPoints.reserve(rows.numRows);
    for (std::size_t i = 0; i < rows.numRows; ++i)
        vPoints.emplace_back(rows[i][0], rows[i][1], rows[i][2]);
    return vPoints;
}

// Calls answer(i, point i) for each point, in an order in which the last answer is a good start for the next.
template <class Answer>
void forEachPoint(const Rows& rows, const Pulse& pulse, const Answer& answer)
{
    const std::vector<Point3> vPoints = makePoints(rows);
    std::size_t numDone = 0;
    for (const std::size_t i : makeSpatialOrder(vPoints)) {
        if (numDone++ % PULSE_POINTS == 0)
            pulse(numDone, vPoints.size());
        answer(i, vPoints[i]);
    }
}

bool hasEmptyRow(const InterpolationMatrix& matrix)
{
    const auto& vStarts = matrix.vRowStart;
    return std::adjacent_find(vStarts.begin(), vStarts.end()) != vStarts.end();
}

// Calls use(positions, matrix) for blocks of points that are close together, in the order of these positions.
template <class Use>
void forEachBlock(const Triangulation& triangulation, const Interpolation& interpolation, const Rows& rows,
                  const Pulse& pulse, const Use& use)
{
    const std::vector<Point3> vPoints = makePoints(rows);
    const Positions order = makeSpatialOrder(vPoints);
    std::vector<Point3> vBlock;
    for (std::size_t first = 0; first < order.size(); first += PULSE_BLOCK) {
        pulse(first, order.size());
        const auto begin = order.begin() + static_cast<std::ptrdiff_t>(first);
        const Positions positions(
            begin, begin + static_cast<std::ptrdiff_t>(std::min(PULSE_BLOCK, order.size() - first)));
        vBlock.clear();
        for (const std::size_t i : positions)
            vBlock.push_back(vPoints[i]);
        InterpolationMatrix matrix = makeInterpolationMatrix(triangulation.getMesh(), vBlock,
                                                             interpolation.method, interpolation.outside);
        if (hasEmptyRow(matrix))
            fillRowsNearHull(matrix, triangulation.getMesh(), vBlock, interpolation.tolerance);
        use(positions, matrix);
    }
}

Tet3* getTet(const std::vector<Tet3*>& vTets, Index number)
{
    if (number < 0 || static_cast<std::size_t>(number) >= vTets.size())
        throw std::out_of_range("start: there is no simplex " + std::to_string(number));
    return vTets[static_cast<std::size_t>(number)];
}

} // namespace

Locations locate(const Triangulation& triangulation, const Rows& points, const Index* pStarts,
                 const Pulse& pulse)
{
    const std::vector<Tet3*>& vTets = triangulation.getTets();
    Locations locations{std::vector<Index>(points.numRows), std::vector<std::uint8_t>(points.numRows)};
    Tet3* pStart = nullptr;
    forEachPoint(points, pulse, [&](std::size_t i, const Point3& p) {
        if (pStarts != nullptr && pStarts[i] != -1)
            pStart = getTet(vTets, pStarts[i]);
        const Location3 location = locateClosed(triangulation.getMesh(), p, pStart);
        pStart = location.pTet;
        locations.vSimplices[i] =
            location.kind != LocationKind3::OUTSIDE ? Triangulation::numberOf(pStart) : -1;
        locations.vKinds[i] = static_cast<std::uint8_t>(location.kind);
    });
    return locations;
}

std::vector<Index> findSimplices(const Triangulation& triangulation, const Rows& points, const Pulse& pulse)
{
    triangulation.getTets();
    std::vector<Index> vSimplices(points.numRows);
    Tet3* pTet = nullptr;
    forEachPoint(points, pulse, [&](std::size_t i, const Point3& p) {
        int seenFacet = -1;
        pTet = triangulation.getMesh().locateClosed(p, pTet, seenFacet);
        vSimplices[i] = seenFacet == -1 ? Triangulation::numberOf(pTet) : -1;
    });
    return vSimplices;
}

std::vector<Index> findNearest(const Triangulation& triangulation, const Rows& points, std::size_t k,
                               const Pulse& pulse)
{
    std::vector<Index> vNearest(points.numRows * k, -1);
    Tet3* pStart = nullptr;
    forEachPoint(points, pulse, [&](std::size_t i, const Point3& p) {
        const std::vector<Point3*> vVertices = kNearestVertices(triangulation.getMesh(), p, k, pStart);
        std::transform(vVertices.begin(), vVertices.end(),
                       vNearest.begin() + static_cast<std::ptrdiff_t>(i * k),
                       [](const Point3* pVtx) { return Triangulation::numberOf(pVtx); });
        pStart = vVertices.empty() ? nullptr : vVertices.front()->getOneTet();
    });
    return vNearest;
}

InterpolatedValues interpolate(const Triangulation& triangulation, const Interpolation& interpolation,
                               const Rows& points, const Rows& values, const Pulse& pulse)
{
    if (values.numRows != triangulation.getNumPoints())
        throw std::invalid_argument("there must be as many values as points");
    const std::vector<double> vValues(values[0], values[values.numRows]);
    InterpolatedValues interpolated{std::vector<double>(points.numRows * values.numColumns),
                                    std::vector<std::uint8_t>(points.numRows)};
    forEachBlock(triangulation, interpolation, points, pulse,
                 [&](const Positions& positions, const InterpolationMatrix& matrix) {
                     const std::vector<double> vResults = matrix.apply(vValues, values.numColumns);
                     for (std::size_t k = 0; k < positions.size(); ++k) {
                         std::copy_n(vResults.data() + k * values.numColumns, values.numColumns,
                                     interpolated.vValues.data() + positions[k] * values.numColumns);
                         interpolated.vFound[positions[k]] = matrix.vRowStart[k] < matrix.vRowStart[k + 1];
                     }
                 });
    return interpolated;
}

Weights makeWeights(const Triangulation& triangulation, const Interpolation& interpolation,
                    const Rows& points, const Pulse& pulse)
{
    // First the lengths of the rows and all entries in the order of the search, then the entries in their
    // rows.
    Weights weights{std::vector<std::int64_t>(points.numRows + 1, 0), {}, {}};
    Positions order;
    std::vector<Index> vColumns;
    std::vector<double> vWeights;
    forEachBlock(triangulation, interpolation, points, pulse,
                 [&](const Positions& positions, const InterpolationMatrix& matrix) {
                     for (std::size_t k = 0; k < positions.size(); ++k)
                         weights.vStarts[positions[k] + 1] =
                             static_cast<std::int64_t>(matrix.vRowStart[k + 1] - matrix.vRowStart[k]);
                     order.insert(order.end(), positions.begin(), positions.end());
                     vColumns.insert(vColumns.end(), matrix.vColumn.begin(), matrix.vColumn.end());
                     vWeights.insert(vWeights.end(), matrix.vWeight.begin(), matrix.vWeight.end());
                 });
    std::partial_sum(weights.vStarts.begin(), weights.vStarts.end(), weights.vStarts.begin());

    weights.vColumns.resize(vColumns.size());
    weights.vWeights.resize(vWeights.size());
    std::ptrdiff_t begin = 0;
    for (const std::size_t row : order) {
        const std::int64_t start = weights.vStarts[row], size = weights.vStarts[row + 1] - start;
        std::copy_n(vColumns.begin() + begin, size, weights.vColumns.begin() + start);
        std::copy_n(vWeights.begin() + begin, size, weights.vWeights.begin() + start);
        begin += size;
    }
    return weights;
}

} // namespace VORN3D::python
