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

void Dt3::findCavityOutside(const Point3* pVtx, Tet3* pCurTet, int opp3ICI)
{
    VORN_ASSERT_TEXT(pCurTet != nullptr, "pCurTet!=0");
    VORN_ASSERT_TEXT(opp3ICI > -1, "opp3ICI>-1");
    gatherSeenTets(pVtx, pCurTet, opp3ICI);
    growConflictRegionOutside(pVtx);
    for (Tet3* pTet : vSeenTets)
        if (!pTet->hasBeenVisited)
            pushVisibleFacets(pTet, pVtx);
    numVisibleFacets = vStar.size();
    for (std::size_t i = numLeftOverTets; i < vDoomedTets.size(); ++i)
        pushCavityFacetsOutside(vDoomedTets[i], pVtx);
}

// Fills vSeenTets with the tetrahedra of the hull facets that the vertex sees, each once, starting with pTet,
// whose facet ici the vertex is beyond or in. Growth is from facet to facet: a tetrahedron may have several
// that are seen. A vertex in a facet is not beyond any.
void Dt3::gatherSeenTets(const Point3* pVtx, Tet3* pTet, int ici)
{
    if (predicates.getOrientation3(pTet, ici, pVtx) != ORIENTATION3_NEGATIVE) {
        vSeenTets.push_back(pTet);
        return;
    }
    vHullEdges.clear();
    horizonEdges.start(0);
    numHorizonEdges = 0;
    addSeenFacet(pTet, ici);
    while (!vHullEdges.empty()) {
        const HullFacet beyond = turnToHull(vHullEdges.takeLast());
        if (predicates.getOrientation3(beyond.pTet, beyond.ici, pVtx) == ORIENTATION3_NEGATIVE)
            addSeenFacet(beyond.pTet, beyond.ici);
    }
    for (Tet3* pSeen : vSeenTets)
        pSeen->hasBeenVisited = false;
}

// While tetrahedra are gathered, the visited mark tells which are.
void Dt3::addSeenFacet(Tet3* pTet, int ici)
{
    if (!pTet->hasBeenVisited) {
        vSeenTets.push_back(pTet);
        pTet->hasBeenVisited = true;
    }
    for (int j = 0; j < 4; ++j)
        if (j != ici && isNewEdge(pTet, pTet->aVertexPointer[EDGE_SOURCE[ici][j]],
                                  pTet->aVertexPointer[EDGE_TARGET[ici][j]]))
            vHullEdges.append({pTet, ici, j});
}

// Turns around a hull edge from the hull facet opp3 to the other one. Each step crosses the facet opposite
// opp2; the corner that was opp3 is in the next tetrahedron too, and the next to be left.
HullFacet Dt3::turnToHull(HullEdge edge)
{
    const HullFacet start{edge.pTet, edge.opp3};
    const Point3* pSource = edge.pTet->aVertexPointer[EDGE_SOURCE[edge.opp3][edge.opp2]];
    const Point3* pTarget = edge.pTet->aVertexPointer[EDGE_TARGET[edge.opp3][edge.opp2]];
    int numSteps = 0;
    while (Tet3* pNext = edge.pTet->aOppTet[edge.opp2]) {
        if (++numSteps == LONG_TURN) {
            const HullFacet end = hullEdgeHints.findOther(pSource, pTarget, start);
            if (end.pTet != nullptr)
                return end;
        }
        const int entered = pNext->getIndexOfNeighbor(edge.pTet);
        const int left = pNext->getIntraTetIndex(edge.pTet->aVertexPointer[edge.opp3]);
        edge = {pNext, entered, left};
    }
    if (numSteps >= LONG_TURN)
        for (Tet3* pTet : {start.pTet, edge.pTet})
            hullEdgeHints.remember(pSource, pTarget, pTet);
    return {edge.pTet, edge.opp2};
}

// To be called when the new tetrahedra are linked.
void Dt3::rememberNewHullEdges()
{
    for (Tet3* pTet : vNewTets)
        for (int ici = 1; ici < 4; ++ici)
            if (pTet->aOppTet[ici] == nullptr)
                rememberEdges({pTet, ici});
}

void Dt3::rememberEdges(HullFacet facet)
{
    for (int j = 0; j < 4; ++j)
        if (j != facet.ici)
            hullEdgeHints.remember(facet.pTet->aVertexPointer[EDGE_SOURCE[facet.ici][j]],
                                   facet.pTet->aVertexPointer[EDGE_TARGET[facet.ici][j]], facet.pTet);
}

bool Dt3::isNewEdge(const Tet3* pTet, const Point3* pSource, const Point3* pTarget)
{
    horizonEdges.growFor(++numHorizonEdges);
    return horizonEdges.takePartner(horizonEdges.matchFacet(pTet, pSource, pTarget), pTet) == nullptr;
}

// Facets in a plane with the vertex are not built on.
void Dt3::pushVisibleFacets(Tet3* pTet, const Point3* pVtx)
{
    for (int i = 0; i < 4; ++i)
        if (pTet->aOppTet[i] == nullptr && predicates.getOrientation3(pTet, i, pVtx) == ORIENTATION3_NEGATIVE)
            vStar.append({pTet, i, true, true});
}

void Dt3::pushCavityFacetsOutside(Tet3* pDoomed, const Point3* pVtx)
{
    for (int i = 0; i < 4; ++i) {
        Tet3* pBeyond = pDoomed->aOppTet[i];
        const bool bBoundary = pBeyond == nullptr
                                   ? predicates.getOrientation3(pDoomed, i, pVtx) == ORIENTATION3_POSITIVE
                                   : !pBeyond->hasBeenVisited;
        if (bBoundary)
            vStar.append({pDoomed, i, false, pBeyond == nullptr});
    }
}

} // namespace VORN3D
