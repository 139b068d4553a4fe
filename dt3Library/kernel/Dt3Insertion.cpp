// Insertion of one vertex: locate it, find the tetrahedra whose circumscribed spheres contain it (the
// conflict region, whose tetrahedra are doomed), remove them, and join the vertex to every facet of the
// cavity that it sees (the star). A vertex outside the hull is also joined to the hull facets that it sees.
#include "kernel/Dt3.h"
#include "vorn3d/hosting.h"

#include "nalo_tools/assertion.h"
#include "nalo_tools/log.h"

namespace VORN3D
{

namespace
{

// Edges at the vertex of such a star can have many tetrahedra around.
constexpr std::size_t LARGE_STAR = 128;

} // namespace

Dt3::Insertion Dt3::insertVertex(Point3** ppVtx, Tet3* pStartTet, Crossing crossing)
{
    VORN_ASSERT_TEXT(!pStartTet->hasBeenVisited, "!pCurTet->hasBeenVisited");
    star.clear();
    bTurnedLong = false;
    const Location location = locateInMesh(*ppVtx, pStartTet, crossing);
    VORN_ASSERT_TEXT(location.result != LOCATE_GAVE_UP, "locateResult!=-99");
    if (location.result == LOCATED_VERTEX)
        return {adoptExistingVertex(ppVtx, location.pTet), location.numTests};

    const bool bInside = location.result == LOCATED_INSIDE;
    tets.startInsertion();
    try {
        if (bInside)
            findCavityInside(*ppVtx, location.pTet);
        else
            findCavityOutside(*ppVtx, {location.pTet, location.result});
        star.makeRoom(tets);
    } catch (...) { // memory ran out, and no link has changed yet
        tets.spareDoomed();
        throw;
    }
    pLatestTet = fillCavity(*ppVtx, bInside);
    ++numMeshVertices;
    if (!bInside && (bTurnedLong || star.getTets().size() > LARGE_STAR))
        rememberNewHullEdges();
    return {pLatestTet, location.numTests};
}

Tet3* Dt3::adoptExistingVertex(Point3** ppVtx, Tet3* pTet) const
{
    for (Point3* pCorner : pTet->aVertexPointer)
        if (*pCorner == **ppVtx) {
            *ppVtx = pCorner;
            return pTet;
        }
    logError("insertVertex()", "Proxy not found");
    return nullptr;
}

void Dt3::findCavityInside(const Point3* pVtx, Tet3* pTet)
{
    vStack.clear();
    tets.doom(pTet);
    vStack.append(pTet);
    while (!vStack.empty())
        growFrom(vStack.takeLast(), pVtx);
}

// Returns the tetrahedron to start the next walk from.
Tet3* Dt3::fillCavity(Point3* pVtx, bool bInside)
{
    const std::size_t numStoredTCS = star.join(pVtx, predicates);
    if (bInside && numStoredTCS != 0) {
        messages() << "numStoredTCS after insertVertex: " << numStoredTCS << std::endl;
        VORN_ASSERT_TEXT(numStoredTCS == 0, "numStoredTCS==0");
    }
    VORN_ASSERT_TEXT(!star.getTets().empty(), "pNewTet1!=0");
    Tet3* const* const pEnd = tets.getDoomed().end();
    for (Tet3* const* ppDoomed = tets.getDoomed().begin() + tets.getNumLeftOver(); ppDoomed != pEnd;
         ++ppDoomed)
        (*ppDoomed)->customIndex = -1;
    return star.getLastTet();
}

// Looks at the neighbours of a doomed tetrahedron: those in conflict are doomed, and the facets towards the
// others bound the cavity. Whether a neighbour is in conflict is as good as random, so nothing branches on
// it: it is stored in both lists and counted in one.
void Dt3::growFrom(Tet3* pDoomed, const Point3* pVtx)
{
    const Neighborhood around = conflictTest.judgeNeighborhood(pDoomed, pVtx);
    ScratchList<Tet3*>::Appender stack(vStack, 4);
    ScratchList<Tet3*>::Appender doomedTets(tets.getDoomed(), 4);
    ScratchList<StarFacet>::Appender facets(star.getFacets(), 4);
    for (int i = 3; i >= 0; --i) {
        const bool bInConflict = (around.inConflict >> i & 1) != 0;
        const bool bBoundary = (around.boundary >> i & 1) != 0;
        const bool bCertainlyInside = (around.certainlyInside >> i & 1) != 0;
        Tet3* pNeighbor = pDoomed->aOppTet[i];
        if (pNeighbor != nullptr) {
            pNeighbor->hasBeenVisited |= bInConflict;
            prefetchNeighbors(pNeighbor);
        }
        stack.appendIf(pNeighbor, bInConflict);
        doomedTets.appendIf(pNeighbor, bInConflict);
        facets.appendIf({pDoomed, i, false, bCertainlyInside}, bBoundary);
    }
}

Tet3* Dt3::createTet(Point3* a, Point3* b, Point3* c, Point3* d)
{
    checkOrientation(a, b, c, d, predicates);
    Tet3* ret = tets.takeRecord();
    VORN_ASSERT_TEXT(ret != nullptr, "ret!=0");
    ret->setProperties(a, b, c, d);
    return ret;
}

} // namespace VORN3D
