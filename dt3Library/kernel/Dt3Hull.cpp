// Insertion of a vertex outside the convex hull or on its boundary.
//
// The hull facets that the vertex sees are found by growing across hull edges from the one that the walk met.
// The tetrahedron of such a facet is either in conflict, and doomed, or the vertex is joined to the facet
// from outside. All other tetrahedra in conflict are connected with these doomed ones, so that the conflict
// region grows from them as it does inside the hull.
//
// No new tetrahedron is flat. A facet of the cavity whose plane contains the vertex is on the hull: were
// there a tetrahedron beyond it, the vertex, strictly inside the facet's circle, would be in conflict with
// that too.
#include "kernel/Dt3.h"

#include "mesh/indexTables.h"
#include "nalo_tools/assertion.h"

namespace VORN3D
{

void Dt3::findCavityOutside(const Point3* pVtx, HullFacet facet)
{
    VORN_ASSERT_TEXT(facet.pTet != nullptr, "pCurTet!=0");
    VORN_ASSERT_TEXT(facet.ici > -1, "opp3ICI>-1");
    gatherSeenTets(pVtx, facet);
    growConflictRegionOutside(pVtx);
    for (Tet3* pTet : vSeenTets)
        if (!pTet->hasBeenVisited)
            pushVisibleFacets(pTet, pVtx);
    star.endVisibleFacets();
    for (const DoomedTet& doomed : vDoomedOutside)
        pushCavityFacets(doomed, pVtx);
}

// Fills vSeenTets with the tetrahedra of the hull facets that the vertex sees, each once, starting with that
// of a facet that the vertex is beyond or in. Growth is from facet to facet: a tetrahedron may have several
// that are seen. A vertex in a facet is not beyond any.
void Dt3::gatherSeenTets(const Point3* pVtx, HullFacet facet)
{
    vSeenTets.clear();
    if (predicates.getOrientation3(facet.pTet, facet.ici, pVtx) != ORIENTATION3_NEGATIVE) {
        vSeenTets.append(facet.pTet);
        return;
    }
    // While tetrahedra are gathered, the visited mark tells which are.
    const auto unmark = [this] {
        for (Tet3* pSeen : vSeenTets)
            pSeen->hasBeenVisited = false;
    };
    vHullEdges.clear();
    horizon.clear();
    try {
        addSeenFacet(facet);
        while (!vHullEdges.empty()) {
            const HullFacet beyond = turnToHull(vHullEdges.takeLast());
            if (predicates.getOrientation3(beyond.pTet, beyond.ici, pVtx) == ORIENTATION3_NEGATIVE)
                addSeenFacet(beyond);
        }
    } catch (...) {
        unmark();
        throw;
    }
    unmark();
}

void Dt3::addSeenFacet(HullFacet facet)
{
    if (!facet.pTet->hasBeenVisited) {
        vSeenTets.append(facet.pTet);
        facet.pTet->hasBeenVisited = true;
    }
    for (int j = 0; j < 4; ++j)
        if (j != facet.ici && horizon.insert(getEdgeKey(facet, j)))
            vHullEdges.append({facet.pTet, facet.ici, j});
}

// The edge of a facet that does not contain corner j.
EdgeKey Dt3::getEdgeKey(HullFacet facet, int j)
{
    return {facet.pTet->aVertexPointer[EDGE_SOURCE[facet.ici][j]],
            facet.pTet->aVertexPointer[EDGE_TARGET[facet.ici][j]]};
}

// Turns around a hull edge from the hull facet opp3 to the other one. Each step crosses the facet opposite
// opp2; the corner that was opp3 is in the next tetrahedron too, and the next to be left.
HullFacet Dt3::turnToHull(HullEdge edge)
{
    const HullFacet start{edge.pTet, edge.opp3};
    const EdgeKey key = getEdgeKey(start, edge.opp2);
    int numSteps = 0;
    while (Tet3* pNext = edge.pTet->aOppTet[edge.opp2]) {
        if (++numSteps == LONG_TURN) {
            const HullFacet end = hullEdgeHints.findOther(key, start);
            if (end.pTet != nullptr)
                return end;
        }
        const int entered = pNext->getIndexOfNeighbor(edge.pTet);
        const int left = pNext->getIntraTetIndex(edge.pTet->aVertexPointer[edge.opp3]);
        edge = {pNext, entered, left};
    }
    if (numSteps >= LONG_TURN)
        for (Tet3* pTet : {start.pTet, edge.pTet})
            hullEdgeHints.remember(key, pTet);
    return {edge.pTet, edge.opp2};
}

// The conflict region, from the seen tetrahedra in it. What the growth finds certain of a doomed
// tetrahedron's facets is kept beside it: to ask again is to ask exactly.
void Dt3::growConflictRegionOutside(const Point3* pVtx)
{
    vDoomedOutside.clear();
    vUnexplored.clear();
    for (Tet3* pTet : vSeenTets)
        if (conflictTest.isInConflict(pTet, pVtx))
            doomOutside(pTet);
    while (!vUnexplored.empty()) {
        const std::uint32_t index = vUnexplored.takeLast();
        Tet3* pDoomed = vDoomedOutside[index].pTet;
        const Neighborhood around = conflictTest.judgeNeighborhood(pDoomed, pVtx);
        vDoomedOutside[index].certainlyInside = around.certainlyInside;
        for (int i = 0; i < 4; ++i)
            if ((around.inConflict >> i & 1) != 0)
                doomOutside(pDoomed->aOppTet[i]);
    }
}

void Dt3::doomOutside(Tet3* pTet)
{
    vUnexplored.append(static_cast<std::uint32_t>(vDoomedOutside.size()));
    vDoomedOutside.append({pTet, 0});
    tets.doom(pTet);
}

// Facets in a plane with the vertex are not built on.
void Dt3::pushVisibleFacets(Tet3* pTet, const Point3* pVtx)
{
    for (int i = 0; i < 4; ++i)
        if (pTet->aOppTet[i] == nullptr && predicates.getOrientation3(pTet, i, pVtx) == ORIENTATION3_NEGATIVE)
            star.getFacets().append({pTet, i, true, true});
}

// A facet of the cavity on the hull is built on if the vertex is on its inner side; the others all have it
// there.
void Dt3::pushCavityFacets(const DoomedTet& doomed, const Point3* pVtx)
{
    for (int i = 0; i < 4; ++i) {
        const Tet3* pBeyond = doomed.pTet->aOppTet[i];
        const bool bCertainlyInside = (doomed.certainlyInside >> i & 1) != 0;
        const bool bOnHull = pBeyond == nullptr;
        const bool bBoundary = bOnHull
                                   ? bCertainlyInside || predicates.getOrientation3(doomed.pTet, i, pVtx) ==
                                                             ORIENTATION3_POSITIVE
                                   : !pBeyond->hasBeenVisited;
        if (bBoundary)
            star.getFacets().append({doomed.pTet, i, false, bCertainlyInside || bOnHull});
    }
}

// To be called when the new tetrahedra are linked.
void Dt3::rememberNewHullEdges()
{
    for (Tet3* pTet : star.getTets())
        for (int ici = 1; ici < 4; ++ici)
            if (pTet->aOppTet[ici] == nullptr)
                rememberEdges({pTet, ici});
}

void Dt3::rememberEdges(HullFacet facet)
{
    for (int j = 0; j < 4; ++j)
        if (j != facet.ici)
            hullEdgeHints.remember(getEdgeKey(facet, j), facet.pTet);
}

} // namespace VORN3D
