#include "queries.h"

#include <vorn3d/geometry/locateClosed.h>
#include <vorn3d/geometry/nearestVertex.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace VORN3D::python
{

namespace
{

// Calls answer(i) for each point.
template <class Answer>
void forEachPoint(const Points& points, const Pulse& pulse, const Answer& answer)
{
    for (std::size_t i = 0; i < points.n; ++i) {
        if (i % 256 == 0)
            pulse(i, points.n);
        answer(i);
    }
}

Tet3* getTet(const std::vector<Tet3*>& vTets, Index number)
{
    if (number == -1)
        return nullptr;
    if (number < 0 || static_cast<std::size_t>(number) >= vTets.size())
        throw std::out_of_range("start: there is no simplex " + std::to_string(number));
    return vTets[static_cast<std::size_t>(number)];
}

} // namespace

Table<Index> findSimplices(const Triangulation& triangulation, const Points& points, const Pulse& pulse)
{
    triangulation.getTets();
    Table<Index> simplices(points.n, 1);
    forEachPoint(points, pulse, [&](std::size_t i) {
        int seenFacet = -1;
        const Tet3* pTet = triangulation.getMesh().locateClosed(points[i], nullptr, seenFacet);
        simplices[i] = seenFacet == -1 ? Triangulation::numberOf(pTet) : -1;
    });
    return simplices;
}

Locations locate(const Triangulation& triangulation, const Points& points, const Index* pStarts,
                 const Pulse& pulse)
{
    const std::vector<Tet3*>& vTets = triangulation.getTets();
    Locations locations{{points.n, 1}, {points.n, 1}};
    forEachPoint(points, pulse, [&](std::size_t i) {
        Tet3* pStart = pStarts != nullptr ? getTet(vTets, pStarts[i]) : nullptr;
        const Location3 location = locateClosed(triangulation.getMesh(), points[i], pStart);
        const bool bInside = location.kind != LocationKind3::OUTSIDE;
        locations.simplices[i] = bInside ? Triangulation::numberOf(location.pTet) : -1;
        locations.kinds[i] = static_cast<std::uint8_t>(location.kind);
    });
    return locations;
}

Table<Index> findNearest(const Triangulation& triangulation, const Points& points, std::size_t k,
                         const Pulse& pulse)
{
    Table<Index> nearest(points.n, k);
    forEachPoint(points, pulse, [&](std::size_t i) {
        Index* pRow = nearest.row(i);
        if (k == 1) {
            *pRow = Triangulation::numberOf(nearestVertex(triangulation.getMesh(), points[i]));
            return;
        }
        const std::vector<Point3*> vVertices = kNearestVertices(triangulation.getMesh(), points[i], k);
        pRow = std::transform(vVertices.begin(), vVertices.end(), pRow,
                              [](const Point3* pVtx) { return Triangulation::numberOf(pVtx); });
        std::fill(pRow, nearest.row(i) + k, -1);
    });
    return nearest;
}

} // namespace VORN3D::python
