// Insertion of one vertex: locate it, find the tetrahedra whose circumscribed spheres contain it (the
// conflict region, whose tetrahedra are doomed), remove them, and join the vertex to every facet of the
// cavity that it sees (the star). A vertex outside the hull is also joined to the hull facets that it sees.
#include "kernel/Dt3.h"

#include "mesh/indexTables.h"
#include "mesh/runningLabel.h"
#include "nalo_tools/assertion.h"
#include "nalo_tools/log.h"

#include <algorithm>
#include <iostream>

namespace VORN3D
{

namespace
{

// Edges at the vertex of such a star can have many tetrahedra around.
constexpr std::size_t LARGE_STAR = 128;

} // namespace

Tet3* Dt3::insertVertex(Point3** ppVtx, Tet3* pStartTet)
{
    Tet3* pCurTet = pStartTet;
    VORN_ASSERT_TEXT(!pCurTet->hasBeenVisited, "!pCurTet->hasBeenVisited");

    const int locateResult = locateInMesh(*ppVtx, pCurTet, numWalkTests);
    VORN_ASSERT_TEXT(locateResult != LOCATE_GAVE_UP, "locateResult!=-99");
    if (locateResult == LOCATED_VERTEX)
        return adoptExistingVertex(ppVtx, pCurTet);

    const bool bInside = locateResult == LOCATED_INSIDE;
    startInsertion();
    try {
        if (bInside)
            findCavityInside(*ppVtx, pCurTet);
        else
            findCavityOutside(*ppVtx, pCurTet, locateResult);
        makeRoomForStar();
        takeRecords();
    } catch (...) { // memory ran out, and no link has changed yet
        abandonInsertion();
        throw;
    }
    Tet3* pRet = fillCavity(*ppVtx, bInside);
    ++numMeshVertices;
    if (!bInside && vNewTets.size() > LARGE_STAR)
        rememberNewHullEdges();
    return pRet;
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
    doom(pTet);
    while (!vStack.empty())
        growFrom(vStack.takeLast(), pVtx);
}

// Returns the last tetrahedron built on a hull facet that the vertex sees, else the last one built in the
// cavity.
Tet3* Dt3::fillCavity(Point3* pVtx, bool bInside)
{
    const std::size_t numStoredTCS =
        isStarModerate() ? joinToStar(pVtx, edgeMatrix) : joinToStar(pVtx, facetHash);
    if (bInside && numStoredTCS != 0) {
        std::cout << "numStoredTCS after insertVertex: " << numStoredTCS << std::endl;
        VORN_ASSERT_TEXT(numStoredTCS == 0, "numStoredTCS==0");
    }
    VORN_ASSERT_TEXT(!vNewTets.empty(), "pNewTet1!=0");
    return vNewTets[(numVisibleFacets > 0 ? numVisibleFacets : vNewTets.size()) - 1];
}

// The tetrahedra that died in the insertion before become reusable. What was reusable and not needed stays in
// front of the doomed list, and becomes reusable again with the next swap.
void Dt3::startInsertion()
{
    vDoomedTets.swap(vReusableTets);
    numLeftOverTets = vDoomedTets.size();
    vStack.clear();
    vStar.clear();
    vNewTets.clear();
    vSlots.clear();
    vSeenTets.clear();
    numVisibleFacets = 0;
}

// Takes back what an insertion has marked before it changed a link. The records that it has taken are given
// up.
void Dt3::abandonInsertion()
{
    for (Tet3* pTet : vSeenTets)
        pTet->hasBeenVisited = false;
    while (vDoomedTets.size() > numLeftOverTets)
        vDoomedTets.takeLast()->hasBeenVisited = false;
    for (Tet3* pRecord : vNewTets)
        pRecord->hasBeenVisited = true;
}

void Dt3::doom(Tet3* pTet)
{
    vDoomedTets.append(pTet);
    vStack.append(pTet);
    pTet->hasBeenVisited = true;
}

// A vertex on the sphere is outside it: cospherical neighbours stay.
bool Dt3::isInConflict(const Tet3* pTet, const Point3* pVtx) const
{
    return predicates.sphereInclusionTest(pTet, pVtx) != SIC_OUTSIDE;
}

// Memory is on its way while the sphere tests run: the links of a tetrahedron, which are read if it is doomed
// and written if it is not, and the records that it links to, which are tested if it is doomed.
inline void Dt3::prefetchLinks(const Tet3* pTet)
{
    __builtin_prefetch(&pTet->aOppTet[3]);
}

inline void Dt3::prefetchNeighbors(const Tet3* pTet)
{
    for (const Tet3* pNeighbor : pTet->aOppTet)
        __builtin_prefetch(pNeighbor);
}

// What is to become of the neighbours of a doomed tetrahedron. Called where most of the time goes.
[[gnu::always_inline]] inline Dt3::Neighborhood Dt3::judgeNeighborhood(const Tet3* pDoomed,
                                                                       const Point3* pVtx) const
{
    const Point3* apApex[4];
    FacetMask visited = 0;
    FacetMask onHull = 0;
    const std::uintptr_t sumOfCorners = pDoomed->getSumOfCorners();
    for (int i = 0; i < 4; ++i) {
        const Tet3* pNeighbor = pDoomed->aOppTet[i];
        if (pNeighbor == nullptr) {
            onHull |= 1u << i;
            apApex[i] = pVtx;
            continue;
        }
        prefetchLinks(pNeighbor);
        visited |= FacetMask{pNeighbor->hasBeenVisited} << i;
        // The corner that is not shared is what the sums of all corners differ by: nothing is searched.
        const auto corner = reinterpret_cast<std::uintptr_t>(pDoomed->aVertexPointer[i]);
        apApex[i] = reinterpret_cast<const Point3*>(pNeighbor->getSumOfCorners() - (sumOfCorners - corner));
    }
    const NeighborVerdicts verdicts = judgeNeighbors(pDoomed->aVertexPointer, apApex, *pVtx);
    const FacetMask candidates = ALL_FACETS & ~(visited | onHull);
    FacetMask inConflict = verdicts.getInConflict() & candidates;
    const FacetMask undecided = verdicts.getUndecided() & candidates;
    if (undecided != 0)
        for (int i = 0; i < 4; ++i)
            if ((undecided >> i & 1) != 0)
                inConflict |= FacetMask{isInConflict(pDoomed->aOppTet[i], pVtx)} << i;
    return {inConflict, (candidates & ~inConflict) | onHull, verdicts.getInside()};
}

// Looks at the neighbours of a doomed tetrahedron: those in conflict are doomed, and the facets towards the
// others bound the cavity. Whether a neighbour is in conflict is as good as random, so nothing branches on
// it: it is stored in both lists and counted in one.
void Dt3::growFrom(Tet3* pDoomed, const Point3* pVtx)
{
    pDoomed->customIndex = -1;
    const Neighborhood around = judgeNeighborhood(pDoomed, pVtx);
    ScratchList<Tet3*>::Appender stack(vStack, 4);
    ScratchList<Tet3*>::Appender doomedTets(vDoomedTets, 4);
    ScratchList<StarFacet>::Appender star(vStar, 4);
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
        star.appendIf({pDoomed, i, false, bCertainlyInside}, bBoundary);
    }
}

void Dt3::growConflictRegionOutside(const Point3* pVtx)
{
    for (Tet3* pTet : vSeenTets)
        if (isInConflict(pTet, pVtx))
            doom(pTet);
    while (!vStack.empty()) {
        Tet3* pDoomed = vStack.takeLast();
        pDoomed->customIndex = -1;
        const Neighborhood around = judgeNeighborhood(pDoomed, pVtx);
        for (int i = 0; i < 4; ++i)
            if ((around.inConflict >> i & 1) != 0)
                doom(pDoomed->aOppTet[i]);
    }
}

bool Dt3::isStarModerate() const
{
    return vStar.size() <= EdgeMatrix::MAX_FACETS;
}

void Dt3::makeRoomForStar()
{
    vNewTets.makeRoomFor(vStar.size());
    vSlots.makeRoomFor(3 * vStar.size());
    if (isStarModerate())
        edgeMatrix.start(vStar.size());
    else
        facetHash.start(2 * vStar.size());
}

// Returns the number of facets that stay without neighbour; they are on the new hull.
template <class Edges>
std::size_t Dt3::joinToStar(Point3* pVtx, Edges& edges)
{
    buildStar(pVtx, edges);
    return linkStar(edges);
}

// Joins the vertex to the star facets, in their order.
template <class Edges>
void Dt3::buildStar(Point3* pVtx, Edges& edges)
{
    typename Edges::Matcher matcher(edges);
    ScratchList<std::uint32_t>::Appender slots(vSlots, 3 * vStar.size());
    std::int32_t label = takeRunningLabels(static_cast<std::uint32_t>(vStar.size()));
    for (std::size_t i = 0; i < vStar.size(); ++i) {
        const StarFacet facet = vStar[i];
        const int ici = facet.getIndex();
        const int(&aCorner)[3] = facet.isFromOutside() ? INWARD_FACET[ici] : OUTWARD_FACET[ici];
        Point3* a = facet.getTet()->aVertexPointer[aCorner[0]];
        Point3* b = facet.getTet()->aVertexPointer[aCorner[1]];
        Point3* c = facet.getTet()->aVertexPointer[aCorner[2]];
        if (!facet.isOrientationCertain())
            checkOrientation(pVtx, a, b, c);
        Tet3* pNewTet = vNewTets[i];
        pNewTet->fill(label++, pVtx, a, b, c);
        linkBeyond(pNewTet, facet);
        matcher.match(pNewTet, a, b, c, slots);
    }
}

void Dt3::linkBeyond(Tet3* pNewTet, StarFacet facet)
{
    Tet3* pTet = facet.getTet();
    const int ici = facet.getIndex();
    if (facet.isFromOutside()) {
        pNewTet->aOppTet[0] = pTet;
        pTet->aOppTet[ici] = pNewTet;
        return;
    }
    Tet3* pBeyond = pTet->aOppTet[ici];
    pNewTet->aOppTet[0] = pBeyond;
    if (pBeyond != nullptr)
        pBeyond->aOppTet[pBeyond->getIndexOfNeighbor(pTet)] = pNewTet;
}

// Links the tetrahedra of the star with each other.
template <class Edges>
std::size_t Dt3::linkStar(Edges& edges)
{
    std::size_t numAlone = 0;
    const std::uint32_t* pSlot = vSlots.begin();
    for (Tet3* pTet : vNewTets)
        for (int i = 1; i < 4; ++i) {
            Tet3* pPartner = edges.takePartner(*pSlot++, pTet);
            pTet->aOppTet[i] = pPartner;
            numAlone += pPartner == nullptr;
        }
    return numAlone;
}

Tet3* Dt3::createTet(Point3* a, Point3* b, Point3* c, Point3* d)
{
    checkOrientation(a, b, c, d);
    Tet3* ret = takeRecord();
    VORN_ASSERT_TEXT(ret != nullptr, "ret!=0");
    ret->setProperties(a, b, c, d);
    return ret;
}

Tet3* Dt3::takeRecord()
{
    return vReusableTets.empty() ? tetPool.newElement() : vReusableTets.takeLast();
}

// One record for each facet of the star.
void Dt3::takeRecords()
{
    ScratchList<Tet3*>::Appender records(vNewTets, vStar.size());
    const std::size_t numReused = std::min(vStar.size(), vReusableTets.size());
    for (std::size_t i = 0; i < numReused; ++i)
        records.append(vReusableTets.takeLast());
    for (std::size_t i = numReused; i < vStar.size(); ++i)
        records.append(tetPool.newElement());
}

void Dt3::checkOrientation(const Point3* a, const Point3* b, const Point3* c, const Point3* d) const
{
    const Orientation3 orientation = predicates.getOrientation3(a, b, c, d);
    if (orientation == ORIENTATION3_POSITIVE)
        return;
    const bool bNegative = orientation == ORIENTATION3_NEGATIVE;
    std::cout << "Dt3::createTet(), ERROR: "
              << (bNegative ? "ORIENTATION3_NEGATIVE" : "ORIENTATION3_COPLANAR") << " ORIENTATION OF: \n";
    const auto precision = std::cout.precision(15);
    for (const Point3* p : {a, b, c, d})
        std::cout << *p << "\n";
    std::cout.precision(precision);
    if (!bNegative)
        std::cout << "..probably a legal situaion but observe!\n";
    std::cout.flush();
    VORN_ASSERT_TEXT(!bNegative, "false");
}

} // namespace VORN3D
