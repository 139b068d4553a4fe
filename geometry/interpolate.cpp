#include "vorn3d/geometry/interpolate.h"

#include "closestHullPoint.h"
#include "nalo_tools/assertion.h"
#include "naturalNeighbors.h"
#include "signedVolume.h"
#include "vorn3d/geometry/nearestVertex.h"
#include "vorn3d/geometry/spatialOrder.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace VORN3D
{

namespace
{

using Weights = std::vector<VertexWeight3>;

/// The barycentric coordinates of a point of the closed tetrahedron.
void appendBarycentricWeights(const Tet3& tet, const Point3& p, Weights& weights)
{
    const std::array<double, 4> shares = getBarycentricCoordinates(tet, p);
    for (std::size_t i = 0; i < 4; ++i)
        if (shares[i] > 0.0)
            weights.push_back({tet.getCorner(static_cast<int>(i)), shares[i]});
}

/// Finds the weights of one point after the other. Each search starts where the last one ended.
class Interpolator
{
public:
    Interpolator(const Vorn_3D& dt, InterpolationMethod3 method, OutsideHull3 outside, Tet3* pStart)
        : m_dt(dt), m_method(method), m_outside(outside), m_pTet(pStart)
    {
    }

    void appendWeights(const Point3& p, Weights& weights)
    {
        int seenFacet;
        m_pTet = m_dt.locateClosed(p, m_pTet, seenFacet);
        if (m_pTet == nullptr)
            return;
        const bool bOutside = seenFacet >= 0;
        if (m_method == InterpolationMethod3::NEAREST || (bOutside && m_outside == OutsideHull3::NEAREST))
            weights.push_back({nearestVertex(m_dt, p, m_pTet), 1.0});
        else if (!bOutside)
            appendWeightsInside(p, weights);
        else if (m_outside == OutsideHull3::CLAMP)
            appendClosestHullPoint(p, *m_pTet, seenFacet, weights);
    }

private:
    void appendWeightsInside(const Point3& p, Weights& weights)
    {
        const bool bNatural = m_method == InterpolationMethod3::NATURAL && !m_pTet->hasVertex(p);
        if (!bNatural || !m_naturalNeighbors.appendWeights(p, *m_pTet, weights))
            appendBarycentricWeights(*m_pTet, p, weights);
    }

    const Vorn_3D& m_dt;
    InterpolationMethod3 m_method;
    OutsideHull3 m_outside;
    Tet3* m_pTet;
    NaturalNeighbors m_naturalNeighbors;
};

Weights interpolate(const Vorn_3D& dt, const Point3& p, InterpolationMethod3 method, OutsideHull3 outside,
                    Tet3* pStart)
{
    Weights weights;
    Interpolator(dt, method, outside, pStart).appendWeights(p, weights);
    return weights;
}

int getColumn(const Point3& vtx)
{
    const int column = vtx.getCustomIndex();
    VORN_REQUIRE_TEXT(column >= 0, "makeInterpolationMatrix(): custom index of a vertex >= 0");
    return column;
}

} // namespace

Weights interpolateLinear(const Vorn_3D& dt, const Point3& p, OutsideHull3 outside, Tet3* pStart)
{
    return interpolate(dt, p, InterpolationMethod3::LINEAR, outside, pStart);
}

Weights interpolateNatural(const Vorn_3D& dt, const Point3& p, OutsideHull3 outside, Tet3* pStart)
{
    return interpolate(dt, p, InterpolationMethod3::NATURAL, outside, pStart);
}

InterpolationMatrix makeInterpolationMatrix(const Vorn_3D& dt, const std::vector<Point3>& vPoints,
                                            InterpolationMethod3 method, OutsideHull3 outside)
{
    // All weights in the order of the search, and where in it those of a row begin.
    Weights found;
    std::vector<std::size_t> vBegin(vPoints.size());
    InterpolationMatrix matrix;
    matrix.vRowStart.assign(vPoints.size() + 1, 0);
    Interpolator interpolator(dt, method, outside, nullptr);
    for (const std::size_t row : makeSpatialOrder(vPoints)) {
        vBegin[row] = found.size();
        interpolator.appendWeights(vPoints[row], found);
        matrix.vRowStart[row + 1] = found.size() - vBegin[row];
    }
    std::partial_sum(matrix.vRowStart.begin(), matrix.vRowStart.end(), matrix.vRowStart.begin());
    matrix.vColumn.reserve(found.size());
    matrix.vWeight.reserve(found.size());
    for (std::size_t row = 0; row < vPoints.size(); ++row) {
        const std::size_t end = vBegin[row] + matrix.vRowStart[row + 1] - matrix.vRowStart[row];
        for (std::size_t i = vBegin[row]; i < end; ++i) {
            matrix.vColumn.push_back(getColumn(*found[i].pVtx));
            matrix.vWeight.push_back(found[i].weight);
        }
    }
    return matrix;
}

std::vector<double> InterpolationMatrix::apply(const std::vector<double>& vValues,
                                               std::size_t numColumns) const
{
    const auto itLargest = std::max_element(vColumn.begin(), vColumn.end());
    VORN_REQUIRE_TEXT(itLargest == vColumn.end() ||
                          (static_cast<std::size_t>(*itLargest) + 1) * numColumns <= vValues.size(),
                      "InterpolationMatrix::apply(): values for all custom indices");
    const std::size_t numRows = vRowStart.empty() ? 0 : vRowStart.size() - 1;
    std::vector<double> vResults(numRows * numColumns, 0.0);
    for (std::size_t row = 0; row < numRows; ++row) {
        double* pResult = vResults.data() + row * numColumns;
        if (vRowStart[row] == vRowStart[row + 1])
            std::fill_n(pResult, numColumns, std::numeric_limits<double>::quiet_NaN());
        for (std::size_t i = vRowStart[row]; i < vRowStart[row + 1]; ++i) {
            const double* pValue = vValues.data() + static_cast<std::size_t>(vColumn[i]) * numColumns;
            for (std::size_t k = 0; k < numColumns; ++k)
                pResult[k] += vWeight[i] * pValue[k];
        }
    }
    return vResults;
}

} // namespace VORN3D
