#include "vorn3d/geometry/nearestVertex.h"

#include "distanceOrder.h"
#include "spatialOrder.h"
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

/// Passes the k vertices nearest to the order's query to use(), nearest first, starting at a tetrahedron near
/// it.
template <class Use>
void findNearest(const DistanceOrder& order, const Tet3& tet, std::size_t k, const Use& use)
{
    const auto isAfter = [&order](const Distant& a, const Distant& b) { return order(b, a); };
    std::vector<Distant> vHeap = {findNearest(order, tet)};
    AddressSet<Point3> seen;
    seen.insert(vHeap.front().pVtx);
    for (std::size_t numFound = 1; !vHeap.empty(); ++numFound) {
        std::pop_heap(vHeap.begin(), vHeap.end(), isAfter);
        Point3* pNearest = vHeap.back().pVtx;
        vHeap.pop_back();
        use(pNearest);
        if (numFound == k)
            return;
        forEachNeighborVertex(*pNearest, [&](Point3* pNeighbor) {
            if (seen.insert(pNeighbor)) {
                vHeap.push_back(order.measure(pNeighbor));
                std::push_heap(vHeap.begin(), vHeap.end(), isAfter);
            }
            return false;
        });
    }
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
    if (const Tet3* pTet = k == 0 ? nullptr : findClosestTet(dt, p, pStart); pTet != nullptr)
        findNearest(DistanceOrder(p), *pTet, k, [&](Point3* pVtx) { vNearest.push_back(pVtx); });
    return vNearest;
}

std::vector<Point3*> nearestVertices(const Vorn_3D& dt, const std::vector<Point3>& vPoints, std::size_t k)
{
    std::vector<Point3*> vNearest(k * vPoints.size(), nullptr);
    Tet3* pTet = nullptr;
    for (const std::size_t i : makeSpatialOrder(vPoints)) {
        pTet = findClosestTet(dt, vPoints[i], pTet);
        if (pTet == nullptr || k == 0)
            continue;
        const DistanceOrder order(vPoints[i]);
        Point3** ppNext = &vNearest[k * i];
        if (k == 1)
            *ppNext = findNearest(order, *pTet).pVtx;
        else
            findNearest(order, *pTet, k, [&](Point3* pVtx) { *ppNext++ = pVtx; });
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
