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

namespace
{

// In ascending order.
constexpr int OTHER_CORNERS[4][3] = {{1, 2, 3}, {0, 2, 3}, {0, 1, 3}, {0, 1, 2}};

} // namespace

void Dt3::findCavityOutside(const Point3* pVtx, HullFacet facet)
{
    VORN_ASSERT_TEXT(facet.pTet != nullptr, "pCurTet!=0");
    VORN_ASSERT_TEXT(facet.ici > -1, "opp3ICI>-1");
    gatherSeenTets(pVtx, facet);
    growConflictRegionOutside(pVtx);
    pushVisibleFacets();
    star.endVisibleFacets();
    for (const DoomedTet& doomed : vDoomedOutside)
        pushCavityFacets(doomed, pVtx);
}

// Fills vSeenTets with the tetrahedra of the hull facets that the vertex sees, each once, starting with that
// of a facet that the vertex is beyond or in, and notes in each which facets these are. Growth is from facet
// to facet: a tetrahedron may have several that are seen. A vertex in a facet is not beyond any.
void Dt3::gatherSeenTets(const Point3* pVtx, HullFacet facet)
{
    vSeenTets.clear();
    if (predicates.getOrientation3(facet.pTet, facet.ici, pVtx) != ORIENTATION3_NEGATIVE) {
        facet.pTet->m_seenFacets = 0;
        vSeenTets.append(facet.pTet);
        return;
    }
    // While tetrahedra are gathered, the visited mark tells which are.
    const auto unmark = [this] {
        for (Tet3* pSeen : vSeenTets)
            pSeen->hasBeenVisited = false;
    };
    vHullEdges.clear();
    try {
        constexpr int NO_EDGE = -1;
        addSeenFacet({facet.pTet, facet.ici, NO_EDGE});
        while (!vHullEdges.empty()) {
            const HullEdge beyond = turnToHull(vHullEdges.takeLast());
            if (!isGathered(beyond) &&
                predicates.getOrientation3(beyond.pTet, beyond.opp3, pVtx) == ORIENTATION3_NEGATIVE)
                addSeenFacet(beyond);
        }
    } catch (...) {
        unmark();
        throw;
    }
    unmark();
}

bool Dt3::isGathered(HullEdge edge)
{
    return edge.pTet->hasBeenVisited && (edge.pTet->m_seenFacets >> edge.opp3 & 1) != 0;
}

// Notes the facet, which was entered across the edge, and its other edges, to be crossed.
void Dt3::addSeenFacet(HullEdge entered)
{
    Tet3* pTet = entered.pTet;
    ScratchList<Tet3*>::Appender(vSeenTets, 1).appendIf(pTet, !pTet->hasBeenVisited);
    const unsigned seenBefore = pTet->hasBeenVisited ? pTet->m_seenFacets : 0u;
    pTet->m_seenFacets = static_cast<std::uint8_t>(seenBefore | 1u << entered.opp3);
    pTet->hasBeenVisited = true;
    ScratchList<HullEdge>::Appender edges(vHullEdges, 3);
    for (const int j : OTHER_CORNERS[entered.opp3])
        edges.appendIf({pTet, entered.opp3, j}, j != entered.opp2);
}

// The edge of a facet that does not contain corner j.
EdgeKey Dt3::getEdgeKey(HullFacet facet, int j)
{
    return {facet.pTet->aVertexPointer[EDGE_SOURCE[facet.ici][j]],
            facet.pTet->aVertexPointer[EDGE_TARGET[facet.ici][j]]};
}

// The edge in a facet that contains it.
Dt3::HullEdge Dt3::getEdge(HullFacet facet, const EdgeKey& key)
{
    constexpr int SUM_OF_INDICES = 0 + 1 + 2 + 3;
    const int sumOnEdge =
        facet.pTet->getIndexOfCorner(key.getLowEnd()) + facet.pTet->getIndexOfCorner(key.getHighEnd());
    return {facet.pTet, facet.ici, SUM_OF_INDICES - facet.ici - sumOnEdge};
}

// Turns around a hull edge to the other hull facet there. Each step crosses the facet opposite opp2; the
// corner that was opp3 is in the next tetrahedron too, and the next to be left.
Dt3::HullEdge Dt3::turnToHull(HullEdge edge)
{
    const HullFacet start{edge.pTet, edge.opp3};
    const EdgeKey key = getEdgeKey(start, edge.opp2);
    int numSteps = 0;
    while (Tet3* pNext = edge.pTet->aOppTet[edge.opp2]) {
        if (++numSteps == LONG_TURN) {
            const HullFacet end = hullEdgeHints.findOther(key, start);
            if (end.pTet != nullptr)
                return getEdge(end, key);
        }
        const int entered = pNext->getIndexOfNeighbor(edge.pTet);
        const int left = pNext->getIndexOfCorner(edge.pTet->aVertexPointer[edge.opp3]);
        edge = {pNext, entered, left};
    }
    if (numSteps >= LONG_TURN) {
        bTurnedLong = true;
        for (Tet3* pTet : {start.pTet, edge.pTet})
            hullEdgeHints.remember(key, pTet);
    }
    return {edge.pTet, edge.opp2, edge.opp3};
}

// Dooms those whose bits are set.
inline void Dt3::doomOutside(const std::array<Tet3*, 4>& apTets, FacetMask toDoom)
{
    ScratchList<Tet3*>::Appender doomedTets(tets.getDoomed(), 4);
    ScratchList<std::uint32_t>::Appender unexplored(vUnexplored, 4);
    auto index = static_cast<std::uint32_t>(vDoomedOutside.size());
    ScratchList<DoomedTet>::Appender doomedOutside(vDoomedOutside, 4);
    for (std::size_t i = 0; i < 4; ++i) {
        const bool bDoomed = (toDoom >> i & 1) != 0;
        if (apTets[i] != nullptr) {
            apTets[i]->hasBeenVisited |= bDoomed;
            prefetchNeighbors(apTets[i]);
        }
        doomedTets.appendIf(apTets[i], bDoomed);
        unexplored.appendIf(index, bDoomed);
        doomedOutside.appendIf({apTets[i], {}}, bDoomed);
        index += bDoomed;
    }
}

// The conflict region, from the seen tetrahedra in it. What the growth finds of a doomed tetrahedron's facets
// is kept beside it: to ask again is to ask exactly.
void Dt3::growConflictRegionOutside(const Point3* pVtx)
{
    vDoomedOutside.clear();
    vUnexplored.clear();
    for (Tet3* pTet : vSeenTets)
        doomOutside({pTet}, conflictTest.isInConflict(pTet, pVtx) ? 1 : 0);
    while (!vUnexplored.empty()) {
        DoomedTet& doomed = vDoomedOutside[vUnexplored.takeLast()];
        doomed.around = conflictTest.judgeNeighborhood(doomed.pTet, pVtx);
        const Tet3* pTet = doomed.pTet;
        doomOutside({pTet->aOppTet[0], pTet->aOppTet[1], pTet->aOppTet[2], pTet->aOppTet[3]},
                    doomed.around.inConflict);
    }
}

// The facets seen of tetrahedra that stay.
void Dt3::pushVisibleFacets()
{
    ScratchList<StarFacet>::Appender facets(star.getFacets(), 4 * vSeenTets.size());
    for (Tet3* pTet : vSeenTets) {
        const unsigned seen = pTet->hasBeenVisited ? 0u : pTet->m_seenFacets;
        for (int i = 0; i < 4; ++i)
            facets.appendIf({pTet, i, true, true}, (seen >> i & 1) != 0);
    }
}

// A facet of the cavity on the hull is built on if the vertex is on its inner side; the others all have it
// there.
void Dt3::pushCavityFacets(const DoomedTet& doomed, const Point3* pVtx)
{
    const Neighborhood& around = doomed.around;
    FacetMask boundary = around.boundary;
    const FacetMask undecided = around.onHull & ~around.certainlyInside;
    if (undecided != 0)
        for (int i = 0; i < 4; ++i)
            if ((undecided >> i & 1) != 0 &&
                predicates.getOrientation3(doomed.pTet, i, pVtx) != ORIENTATION3_POSITIVE)
                boundary &= ~(1u << i);
    const FacetMask certain = around.certainlyInside | around.onHull;
    ScratchList<StarFacet>::Appender facets(star.getFacets(), 4);
    for (int i = 0; i < 4; ++i)
        facets.appendIf({doomed.pTet, i, false, (certain >> i & 1) != 0}, (boundary >> i & 1) != 0);
}

// To be called when the new tetrahedra are linked.
void Dt3::rememberNewHullEdges()
{
    for (Tet3* pTet : star.getTets())
        for (int ici = 0; ici < 4; ++ici)
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
