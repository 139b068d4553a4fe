// Insertion of one vertex: locate it, find the tetrahedra whose circumscribed spheres contain it (the
// conflict region, whose tetrahedra are doomed), remove them, and join the vertex to every facet of the
// cavity that it sees (the star). A vertex outside the hull is also joined to the hull facets that it sees.
#include "Dt3.h"

#include "indexTables.h"
#include "nalo_tools/assertion.h"
#include "nalo_tools/log.h"
#include "nalo_tools/rangeChecks.h"

#include <iostream>

namespace VORN3D {

Tet3* Dt3::insertVertex(Point3** ppVtx, Tet3* pStartTet)
{
    Tet3* pCurTet = pStartTet;
    VORN_ASSERT_TEXT(!pCurTet->hasBeenVisited, "!pCurTet->hasBeenVisited");

    const int locateResult = locateConflictTet(*ppVtx, pCurTet);
    VORN_ASSERT_TEXT(locateResult != LOCATE_GAVE_UP, "locateResult!=-99");
    if (locateResult == LOCATED_VERTEX)
        return adoptExistingVertex(ppVtx, pCurTet);

    Tet3* pRet = locateResult == LOCATED_INSIDE ? insertInside(*ppVtx, pCurTet)
                                                : insertOutside(*ppVtx, pCurTet, locateResult);
    VORN_ASSERT_TEXT(pRet != nullptr, "pRet!=0");
    VORN_ASSERT_TEXT(!pRet->hasBeenVisited, "!pRet->hasBeenVisited");
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

Tet3* Dt3::insertInside(Point3* pVtx, Tet3* pTet)
{
    startInsertion();
    doom(pTet);
    vStack.push_back(pTet);
    while (!vStack.empty()) {
        Tet3* pDoomed = vStack.back();
        vStack.pop_back();
        for (int i = 3; i >= 0; --i)
            if (!growAcross(pDoomed, i, pVtx))
                pushCavityFacet(pDoomed, i);
    }
    facetHash.start(3 * vStar.size() / 2);
    Tet3* pLast = buildStar(pVtx, 0, vStar.size());
    if (facetHash.getNumStored() != 0) {
        std::cout << "numStoredTCS after insertVertex: " << facetHash.getNumStored() << std::endl;
        VORN_ASSERT_TEXT(false, "numStoredTCS==0");
    }
    return pLast;
}

// The tetrahedra that died in the insertion before become reusable. What was reusable and not needed stays in
// front of the doomed list, and becomes reusable again with the next swap.
void Dt3::startInsertion()
{
    vDoomedTets.swap(vReusableTets);
    numLeftOverTets = vDoomedTets.size();
    vStack.clear();
    vStar.clear();
}

void Dt3::doom(Tet3* pTet)
{
    pTet->hasBeenVisited = true;
    pTet->customIndex = -1;
    vDoomedTets.push_back(pTet);
}

// A vertex on the sphere is outside it: cospherical neighbours stay.
bool Dt3::isInConflict(const Tet3* pTet, const Point3* pVtx) const
{
    return predicates.sphereInclusionTest(pTet, pVtx) != SIC_OUTSIDE;
}

// Says whether the conflict region goes on beyond facet ici of a doomed tetrahedron, and makes it do so.
bool Dt3::growAcross(const Tet3* pDoomed, int ici, const Point3* pVtx)
{
    Tet3* pBeyond = pDoomed->aOppTet[ici];
    if (pBeyond == nullptr)
        return false;
    if (pBeyond->hasBeenVisited)
        return true;
    if (!isInConflict(pBeyond, pVtx))
        return false;
    doom(pBeyond);
    vStack.push_back(pBeyond);
    return true;
}

// A facet of the cavity, seen from the vertex inside it.
void Dt3::pushCavityFacet(const Tet3* pDoomed, int ici)
{
    Tet3* pBeyond = pDoomed->aOppTet[ici];
    pushStarFacet(pDoomed, OUTWARD_FACET[ici], pBeyond,
                  pBeyond == nullptr ? -1 : pBeyond->getIntraTetIndex(pDoomed));
}

void Dt3::pushStarFacet(const Tet3* pTet, const int (&aCorner)[3], Tet3* pBeyond, int iciInBeyond)
{
    vStar.push_back({pTet->aVertexPointer[aCorner[0]], pTet->aVertexPointer[aCorner[1]],
                     pTet->aVertexPointer[aCorner[2]], pBeyond, iciInBeyond});
}

// Joins the vertex to the star facets [first, last), in their order, and links the new tetrahedra. Returns
// the last one, null if there is none.
Tet3* Dt3::buildStar(Point3* pVtx, std::size_t first, std::size_t last)
{
    Tet3* pNewTet = nullptr;
    for (std::size_t i = first; i < last; ++i) {
        const StarFacet& facet = vStar[i];
        pNewTet = createTet(pVtx, facet.a, facet.b, facet.c);
        if (facet.pBeyond != nullptr)
            registerTets(pNewTet, 0, facet.pBeyond, facet.iciInBeyond);
        linkAcross(pNewTet, 1, facet.b, facet.c);
        linkAcross(pNewTet, 2, facet.c, facet.a);
        linkAcross(pNewTet, 3, facet.a, facet.b);
    }
    return pNewTet;
}

void Dt3::linkAcross(Tet3* pNewTet, int ici, Point3* pSource, Point3* pTarget)
{
    const TwoTetStruct* pWaiting = facetHash.matchFacet(pNewTet, ici, pSource, pTarget);
    if (pWaiting != nullptr)
        registerTets(pWaiting->pTet, pWaiting->ici, pNewTet, ici);
}

Tet3* Dt3::createTet(Point3* a, Point3* b, Point3* c, Point3* d)
{
    const Orientation3 orientation = predicates.getOrientation3(a, b, c, d);
    if (orientation != ORIENTATION3_POSITIVE)
        reportOrientation(orientation, a, b, c, d);
    Tet3* ret = takeRecord();
    VORN_ASSERT_TEXT(ret != nullptr, "ret!=0");
    ret->setProperties(a, b, c, d);
    return ret;
}

Tet3* Dt3::takeRecord()
{
    if (vReusableTets.empty())
        return tetPool.newElement();
    Tet3* pTet = vReusableTets.back();
    vReusableTets.pop_back();
    return pTet;
}

void Dt3::reportOrientation(Orientation3 orientation, const Point3* a, const Point3* b, const Point3* c,
                            const Point3* d)
{
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

void Dt3::registerTets(Tet3* fromTet, int ith, Tet3* toTet, int jth)
{
    VORN_ASSERT(range03(ith));
    VORN_ASSERT(range03(jth));
    VORN_ASSERT_TEXT(toTet != nullptr, "toTet!=0");
    if (fromTet == toTet) {
        std::cout << "register tets has been called with fromTet==toTet==" << *fromTet << std::endl;
        VORN_ASSERT_TEXT(fromTet != toTet, "fromTet!=toTet");
    }
    fromTet->aOppTet[ith] = toTet;
    toTet->aOppTet[jth] = fromTet;
}

} // namespace VORN3D
