#include "vorn3d/geometry/nearestVertex.h"

#include "distanceOrder.h"
#include "vertexStar.h"

#include <algorithm>

namespace VORN3D
{

namespace
{

/// Where a walk to p ends, or null.
Tet3* findClosestTet(const Vorn_3D& dt, const Point3& p, Tet3* pStart)
{
    int seenFacet;
    return dt.locateClosed(p, pStart, seenFacet);
}

Distant findNearestCorner(const DistanceOrder& order, const Tet3& tet)
{
    const Corners corners = getCorners(tet);
    Distant nearest = order.measure(corners[0]);
    for (std::size_t i = 1; i < 4; ++i)
        if (const Distant corner = order.measure(corners[i]); order(corner, nearest))
            nearest = corner;
    return nearest;
}

/// Replaces `nearest` by a neighbour that comes before it, if there is one, and says whether there was.
bool stepNearer(const DistanceOrder& order, Distant& nearest)
{
    Distant next = nearest;
    forEachNeighborVertex(*nearest.pVtx, [&](Point3* pNeighbor) {
        if (const Distant neighbor = order.measure(pNeighbor); order(neighbor, next))
            next = neighbor;
        return false;
    });
    const bool bNearer = next.pVtx != nearest.pVtx;
    nearest = next;
    return bNearer;
}

Distant findNearest(const DistanceOrder& order, const Tet3& tet)
{
    Distant nearest = findNearestCorner(order, tet);
    while (stepNearer(order, nearest)) {
    }
    return nearest;
}

} // namespace

Point3* nearestVertex(const Vorn_3D& dt, const Point3& p, Tet3* pStart)
{
    const Tet3* pTet = findClosestTet(dt, p, pStart);
    return pTet == nullptr ? nullptr : findNearest(DistanceOrder(p), *pTet).pVtx;
}

std::vector<Point3*> kNearestVertices(const Vorn_3D& dt, const Point3& p, std::size_t k, Tet3* pStart)
{
    std::vector<Point3*> vNearest;
    const Tet3* pTet = k == 0 ? nullptr : findClosestTet(dt, p, pStart);
    if (pTet == nullptr)
        return vNearest;
    const DistanceOrder order(p);
    const auto isAfter = [&order](const Distant& a, const Distant& b) { return order(b, a); };
    std::vector<Distant> vHeap = {findNearest(order, *pTet)};
    AddressSet<Point3> seen;
    seen.insert(vHeap.front().pVtx);
    while (!vHeap.empty()) {
        std::pop_heap(vHeap.begin(), vHeap.end(), isAfter);
        vNearest.push_back(vHeap.back().pVtx);
        vHeap.pop_back();
        if (vNearest.size() == k)
            break;
        forEachNeighborVertex(*vNearest.back(), [&](Point3* pNeighbor) {
            if (seen.insert(pNeighbor)) {
                vHeap.push_back(order.measure(pNeighbor));
                std::push_heap(vHeap.begin(), vHeap.end(), isAfter);
            }
            return false;
        });
    }
    return vNearest;
}

std::vector<Point3*> getVertexNeighbors(const Point3* pVtx)
{
    std::vector<Point3*> vNeighbors;
    if (pVtx == nullptr || pVtx->getOneTet() == nullptr)
        return vNeighbors;
    AddressSet<Point3> seen;
    forEachNeighborVertex(*pVtx, [&](Point3* pNeighbor) {
        if (seen.insert(pNeighbor))
            vNeighbors.push_back(pNeighbor);
        return false;
    });
    return vNeighbors;
}

} // namespace VORN3D
