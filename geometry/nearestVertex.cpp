#include "vorn3d/geometry/nearestVertex.h"

#include "NeighborCache.h"
#include "StarClimb.h"
#include "distanceOrder.h"
#include "vertexStar.h"
#include "vorn3d/geometry/spatialOrder.h"

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
    const Tet3* pTet = &tet;
    for (;;) {
        const ClimbResult result = climbNearer(order, nearest, pTet);
        if (result == ClimbResult::NONE_NEARER ||
            (result == ClimbResult::UNDECIDED && !stepNearer(order, nearest)))
            return nearest;
        if (result == ClimbResult::UNDECIDED)
            pTet = nearest.pVtx->getOneTet();
    }
}

/// Each next vertex is a neighbour of one found before. The candidates are kept in order; as no more than k
/// are, one that comes after all of them needs no further look, and one that comes again meets itself.
template <class ForEachNeighbor>
void findFew(const DistanceOrder& order, const Distant& nearest, std::size_t k,
             const ForEachNeighbor& forEachNeighbor, std::vector<Distant>& vFound)
{
    vFound.assign(1, nearest);
    for (std::size_t i = 0; i < vFound.size() && i + 1 < k; ++i)
        forEachNeighbor(*vFound[i].pVtx, [&](Point3* pNeighbor, const double* coordinates) {
            const Distant neighbor = order.measure(pNeighbor, coordinates);
            if (vFound.size() == k && !order(neighbor, vFound.back()))
                return;
            const auto place = std::lower_bound(vFound.begin(), vFound.end(), neighbor, order);
            if (place != vFound.end() && place->pVtx == pNeighbor)
                return;
            vFound.insert(place, neighbor);
            vFound.resize(std::min(vFound.size(), k));
        });
}

/// The same for as many as one likes: the candidates are in a heap.
template <class ForEachNeighbor>
void findMany(const DistanceOrder& order, const Distant& nearest, std::size_t k,
              const ForEachNeighbor& forEachNeighbor, std::vector<Distant>& vFound)
{
    const auto isAfter = [&order](const Distant& a, const Distant& b) { return order(b, a); };
    std::vector<Distant> vHeap = {nearest};
    AddressSet<Point3> seen;
    seen.insert(nearest.pVtx);
    vFound.clear();
    while (!vHeap.empty() && vFound.size() < k) {
        std::pop_heap(vHeap.begin(), vHeap.end(), isAfter);
        vFound.push_back(vHeap.back());
        vHeap.pop_back();
        forEachNeighbor(*vFound.back().pVtx, [&](Point3* pNeighbor, const double* coordinates) {
            if (seen.insert(pNeighbor)) {
                vHeap.push_back(order.measure(pNeighbor, coordinates));
                std::push_heap(vHeap.begin(), vHeap.end(), isAfter);
            }
        });
    }
}

/// The k vertices nearest to the order's query, nearest first, from a tetrahedron near it.
template <class ForEachNeighbor>
void findNearest(const DistanceOrder& order, const Tet3& tet, std::size_t k,
                 const ForEachNeighbor& forEachNeighbor, std::vector<Distant>& vFound)
{
    constexpr std::size_t FEW = 256; // in a list of so many, inserting is as quick as in a heap
    const Distant nearest = findNearest(order, tet);
    if (k <= FEW)
        findFew(order, nearest, k, forEachNeighbor, vFound);
    else
        findMany(order, nearest, k, forEachNeighbor, vFound);
}

} // namespace

Point3* nearestVertex(const Vorn_3D& dt, const Point3& p, Tet3* pStart)
{
    const Tet3* pTet = findClosestTet(dt, p, pStart);
    return pTet == nullptr ? nullptr : findNearest(DistanceOrder(p), *pTet).pVtx;
}

std::vector<Point3*> kNearestVertices(const Vorn_3D& dt, const Point3& p, std::size_t k, Tet3* pStart)
{
    const Tet3* pTet = k == 0 ? nullptr : findClosestTet(dt, p, pStart);
    if (pTet == nullptr)
        return {};
    const auto forEachNeighbor = [](const Point3& vtx, const auto& use) {
        forEachNeighborVertex(vtx, [&](Point3* pNeighbor) {
            use(pNeighbor, pNeighbor->getCoordinates());
            return false;
        });
    };
    std::vector<Distant> vFound;
    findNearest(DistanceOrder(p), *pTet, k, forEachNeighbor, vFound);
    std::vector<Point3*> vNearest;
    vNearest.reserve(vFound.size());
    for (const Distant& found : vFound)
        vNearest.push_back(found.pVtx);
    return vNearest;
}

std::vector<Point3*> nearestVertices(const Vorn_3D& dt, const std::vector<Point3>& vPoints, std::size_t k)
{
    std::vector<Point3*> vNearest(k * vPoints.size(), nullptr);
    if (k == 0)
        return vNearest;
    NeighborCache cache;
    const auto forEachNeighbor = [&cache](const Point3& vtx, const auto& use) {
        for (const auto& [pVtx, coordinates] : cache.getNeighbors(vtx))
            use(pVtx, coordinates.data());
    };
    std::vector<Distant> vFound;
    Tet3* pTet = nullptr;
    for (const std::size_t i : makeSpatialOrder(vPoints)) {
        pTet = findClosestTet(dt, vPoints[i], pTet);
        if (pTet == nullptr)
            continue;
        const DistanceOrder order(vPoints[i]);
        if (k == 1) {
            vNearest[i] = findNearest(order, *pTet).pVtx;
            continue;
        }
        findNearest(order, *pTet, k, forEachNeighbor, vFound);
        for (std::size_t n = 0; n < vFound.size(); ++n)
            vNearest[k * i + n] = vFound[n].pVtx;
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
