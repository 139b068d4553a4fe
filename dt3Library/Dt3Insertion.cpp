// Insertion of one vertex: locate it, find the tetrahedra whose circumscribed spheres contain it (the
// conflict region, whose tetrahedra are doomed), remove them, and join the vertex to every facet of the
// cavity that it sees (the star). A vertex outside the hull is also joined to the hull facets that it sees.
#include "Dt3.h"

#include "indexTables.h"
#include "nalo_tools/assertion.h"
#include "nalo_tools/log.h"
#include "runningLabel.h"

#include <iostream>

namespace VORN3D
{

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
        facetHash.start(2 * vStar.size());
        vNewTets.reserve(vStar.size());
    } catch (...) {
        abandonInsertion();
        throw;
    }
    Tet3* pRet = fillCavity(*ppVtx, bInside);
    ++numMeshVertices;
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
    const LanePoint lanePoint(*pVtx);
    doom(pTet, 0);
    while (!vStack.empty())
        growFrom(vStack.takeLast(), lanePoint, pVtx);
}

// Returns the last tetrahedron built on a hull facet that the vertex sees, else the last one built in the
// cavity.
Tet3* Dt3::fillCavity(Point3* pVtx, bool bInside)
{
    buildStar(pVtx);
    const std::size_t numStoredTCS = linkStar();
    if (bInside && numStoredTCS != 0) {
        std::cout << "numStoredTCS after insertVertex: " << numStoredTCS << std::endl;
        VORN_ASSERT_TEXT(numStoredTCS == 0, "numStoredTCS==0");
    }
    VORN_ASSERT_TEXT(!vNewTets.empty(), "pNewTet1!=0");
    return vNewTets[(numVisibleFacets > 0 ? numVisibleFacets : vNewTets.size()) - 1].pTet;
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
    vSeenTets.clear();
    numVisibleFacets = 0;
}

// Takes back what an insertion has marked before it changed a link.
void Dt3::abandonInsertion()
{
    for (Tet3* pTet : vSeenTets)
        pTet->hasBeenVisited = false;
    while (vDoomedTets.size() > numLeftOverTets)
        vDoomedTets.takeLast()->hasBeenVisited = false;
}

void Dt3::doom(Tet3* pTet, FacetMask certainlyInside)
{
    pTet->hasBeenVisited = true;
    vDoomedTets.append(pTet);
    vStack.append({pTet, certainlyInside});
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

// Looks at the neighbours of a doomed tetrahedron: those in conflict are doomed, and the facets towards the
// others bound the cavity. Whether a neighbour is in conflict is as good as random, so nothing branches on
// it: it is stored in both lists and counted in one.
void Dt3::growFrom(const DoomedTet& doomed, const LanePoint& lanePoint, const Point3* pVtx)
{
    Tet3* const pDoomed = doomed.pTet;
    pDoomed->customIndex = -1;
    int aCandidate[4];
    int numCandidates = 0;
    for (int i = 3; i >= 0; --i) {
        const Tet3* pBeyond = pDoomed->aOppTet[i];
        aCandidate[numCandidates] = i;
        if (pBeyond != nullptr) {
            prefetchLinks(pBeyond);
            numCandidates += !pBeyond->hasBeenVisited;
        } else {
            ++numCandidates;
        }
    }
    ScratchList<DoomedTet>::Appender stack(vStack, 4);
    ScratchList<Tet3*>::Appender doomedTets(vDoomedTets, 4);
    ScratchList<StarFacet>::Appender star(vStar, 4);
    for (int k = 0; k < numCandidates; ++k) {
        const int ici = aCandidate[k];
        Tet3* pBeyond = pDoomed->aOppTet[ici];
        const StarFacet facet{pDoomed, pBeyond, static_cast<std::int8_t>(ici), false,
                              (doomed.certainlyInside >> ici & 1) != 0};
        if (pBeyond == nullptr) {
            star.append(facet);
            continue;
        }
        const CornerLanes corners(pBeyond->aVertexPointer, lanePoint);
        const Lanes volumes = corners.getVolumes();
        const Lanes squaredLengths = corners.getSquaredLengths();
        const double maxSquaredLength = squaredLengths.getMax();
        const SphereSide side = getCertainSphereSide(volumes, squaredLengths, maxSquaredLength);
        const bool bConflict =
            side == SphereSide::UNDECIDED ? isInConflict(pBeyond, pVtx) : side == SphereSide::INSIDE;
        pBeyond->hasBeenVisited = bConflict;
        prefetchNeighbors(pBeyond);
        stack.appendIf({pBeyond, getCertainSides(volumes, maxSquaredLength).inside}, bConflict);
        doomedTets.appendIf(pBeyond, bConflict);
        star.appendIf(facet, !bConflict);
    }
}

// Joins the vertex to the star facets, in their order.
void Dt3::buildStar(Point3* pVtx)
{
    ScratchList<NewTet>::Appender newTets(vNewTets, vStar.size());
    std::int32_t label = takeRunningLabels(static_cast<std::uint32_t>(vStar.size()));
    for (const StarFacet& facet : vStar) {
        const int(&aCorner)[3] = facet.bFromOutside ? INWARD_FACET[facet.ici] : OUTWARD_FACET[facet.ici];
        Point3* a = facet.pTet->aVertexPointer[aCorner[0]];
        Point3* b = facet.pTet->aVertexPointer[aCorner[1]];
        Point3* c = facet.pTet->aVertexPointer[aCorner[2]];
        if (!facet.bOrientationCertain)
            checkOrientation(pVtx, a, b, c);
        Tet3* pNewTet = takeRecord();
        pNewTet->fill(label++, pVtx, a, b, c);
        linkBeyond(pNewTet, facet);
        newTets.append({pNewTet,
                        {facetHash.matchFacet(pNewTet, b, c), facetHash.matchFacet(pNewTet, c, a),
                         facetHash.matchFacet(pNewTet, a, b)}});
    }
}

void Dt3::linkBeyond(Tet3* pNewTet, const StarFacet& facet)
{
    pNewTet->aOppTet[0] = facet.pBeyond;
    if (facet.pBeyond == nullptr)
        return;
    const int iciInBeyond = facet.bFromOutside ? facet.ici : facet.pBeyond->getIndexOfNeighbor(facet.pTet);
    facet.pBeyond->aOppTet[iciInBeyond] = pNewTet;
}

// Links the tetrahedra of the star with each other. Returns the number of facets that stay without neighbour;
// they are on the new hull.
std::size_t Dt3::linkStar()
{
    std::size_t numAlone = 0;
    for (const NewTet& newTet : vNewTets)
        for (int i = 0; i < 3; ++i) {
            Tet3* pPartner = facetHash.getPartner(newTet.aSlot[i], newTet.pTet);
            newTet.pTet->aOppTet[i + 1] = pPartner;
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
