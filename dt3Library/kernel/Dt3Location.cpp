// Point location: a visibility walk from tetrahedron to tetrahedron (O. Devillers, S. Pion, M. Teillaud,
// Walking in a triangulation, 2002). In a Delaunay mesh every step lowers the power of the point with respect
// to the current circumscribed sphere, so the walk cannot cycle; the watchdog is for broken meshes.
#include "kernel/Dt3.h"
#include "vorn3d/hosting.h"

#include "nalo_tools/assertion.h"
#include "nalo_tools/log.h"
#include "values/isFinite.h"
#include "values/squaredDistance.h"
#include "vorn3d/Iterators.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace VORN3D
{

namespace
{

constexpr std::size_t MAX_WALK_TESTS = 10000;

// A walk of so many tests, some 50 tetrahedra, is worth a look around for a nearer start; then one of
// PATIENCE_GROWTH times as many, and so on. The number of vertices looked at is a fixed share of the tests
// made, so that looking never costs more than walking did.
constexpr std::size_t FIRST_PATIENCE = 100;
constexpr std::size_t PATIENCE_GROWTH = 4;
constexpr std::size_t TESTS_PER_LOOK = 4;

int getNextIndex(int ici)
{
    return (ici + 1) & 3;
}

// How many steps after `first`, cyclically, the first facet of a non-empty set comes.
int getDistanceToFirst(FacetMask facets, int first)
{
    return __builtin_ctz((facets | facets << 4) >> first);
}

// The one of these corners that is farthest from p.
FacetMask getFarthestCorner(const Tet3& tet, FacetMask corners, const Point3& p)
{
    FacetMask farthest = 0;
    double greatest = -1;
    for (int i = 0; i < 4; ++i) {
        const double sqDistance = getSquaredDistance(*tet.getCorner(i), p);
        if ((corners >> i & 1) != 0 && sqDistance > greatest) {
            greatest = sqDistance;
            farthest = 1u << i;
        }
    }
    return farthest;
}

} // namespace

Tet3* Dt3::findNearbyTet(const Point3& p) const
{
    return hc.findNearbyTet(p);
}

int Dt3::locateConflictTet(const Point3* pVtx, Tet3*& pStartTet) const
{
    const Location location = walk<Crossing::FIRST>(pVtx, pStartTet, MAX_WALK_TESTS);
    pStartTet = location.result == LOCATE_GAVE_UP ? giveUp(location.pTet) : location.pTet;
    return location.result;
}

// Jump and walk, after E. Muecke, I. Saias, B. Zhu, Fast randomized point location without preprocessing in
// two- and three-dimensional Delaunay triangulations, SoCG 1996; but the jump comes only when the walk turns
// out long.
Dt3::Location Dt3::locateInMesh(const Point3* pVtx, Tet3* pStartTet, Crossing crossing) const
{
    const std::size_t maxTests = std::max(MAX_WALK_TESTS, 4 * tets.getNumTets());
    Location location = crossing == Crossing::FIRST
                            ? walk<Crossing::FIRST>(pVtx, pStartTet, FIRST_PATIENCE)
                            : walk<Crossing::OPPOSITE_FARTHEST>(pVtx, pStartTet, FIRST_PATIENCE);
    std::size_t patience = FIRST_PATIENCE;
    while (location.result == LOCATE_GAVE_UP && location.numTests < maxTests) {
        Tet3* pNearer = findNearerTet(*pVtx, location.pTet, patience / TESTS_PER_LOOK);
        patience *= PATIENCE_GROWTH;
        const std::size_t numTestsBefore = location.numTests;
        location = walk<Crossing::OPPOSITE_FARTHEST>(pVtx, pNearer, patience);
        location.numTests += numTestsBefore;
    }
    if (location.result == LOCATE_GAVE_UP)
        location.pTet = giveUp(location.pTet);
    return location;
}

// A tetrahedron at the nearest to p of some vertices: those of pTet and of the last tetrahedron made,
// numLooks on either side of p along the curve, and as many spread over all.
Tet3* Dt3::findNearerTet(const Point3& p, Tet3* pTet, std::size_t numLooks) const
{
    Tet3* pNearest = pTet;
    double least = HUGE_VAL;
    for (Tet3* pCandidate : {pTet, pLatestTet})
        if (pCandidate != nullptr)
            for (const Point3* pCorner : pCandidate->aVertexPointer)
                if (const double sqDistance = getSquaredDistance(p, *pCorner); sqDistance < least) {
                    least = sqDistance;
                    pNearest = pCandidate;
                }
    const Point3* pNearVtx = hc.findNearMeshVertex(p, numLooks);
    return pNearVtx != nullptr && getSquaredDistance(p, *pNearVtx) < least ? pNearVtx->getOneTet() : pNearest;
}

Dt3::Location Dt3::locateFrom(const Point3& p, Tet3* pStart) const
{
    const Location nowhere = {nullptr, LOCATE_GAVE_UP, 0};
    if (!isFinite(p))
        return nowhere;
    // Records of removed tetrahedra stay, marked, until they hold others.
    const bool bStartIsLive = pStart != nullptr && !pStart->hasBeenVisited;
    Tet3* pNear = bStartIsLive ? pStart : findNearbyTet(p);
    if (pNear == nullptr)
        return nowhere;
    const Point3 query(p);
    return locateInMesh(&query, pNear, Crossing::FIRST);
}

Tet3* Dt3::locate(const Point3& p, Tet3* pStart) const
{
    const Location location = locateFrom(p, pStart);
    return location.result == LOCATED_INSIDE || location.result == LOCATED_VERTEX ? location.pTet : nullptr;
}

Tet3* Dt3::locateClosed(const Point3& p, Tet3* pStart, int& seenFacet) const
{
    const Location location = locateFrom(p, pStart);
    const bool bAtHull = location.result >= 0;
    const bool bBeyond =
        bAtHull && predicates.getOrientation3(location.pTet, location.result, &p) == ORIENTATION3_NEGATIVE;
    seenFacet = bBeyond ? location.result : -1;
    return location.result == LOCATE_GAVE_UP ? nullptr : location.pTet;
}

// Reports a walk without an end, and makes a random move, so that a caller that tries again starts elsewhere.
Tet3* Dt3::giveUp(Tet3* pTet)
{
    messages() << "watchDog: bad point" << std::endl;
    Tet3* pElsewhere = pTet->aOppTet[std::rand() % 4];
    return pElsewhere != nullptr ? pElsewhere : pTet;
}

// Gives up beyond maxTests.
template <Dt3::Crossing crossing>
Dt3::Location Dt3::walk(const Point3* pVtx, Tet3* pTet, std::size_t maxTests) const
{
    if (pTet == nullptr)
        goToHell("locateConflictTet");

    FacetMask untested = ALL_FACETS;
    int first = 0;
    std::size_t numTests = 0;
    while (numTests < maxTests) {
        const WalkStep step = lookAround<crossing>(pVtx, pTet, untested, first);
        if (step.bEnds)
            return {pTet, step.result, numTests};
        const int crossed = (first + step.result) & 3;
        Tet3* pNext = pTet->aOppTet[crossed];
        if (pNext == nullptr)
            return {pTet, crossed, numTests};
        // The facet just crossed needs no test: the point is on its inner side.
        const int entered = pNext->getIndexOfNeighbor(pTet);
        pTet = pNext;
        untested = ALL_FACETS & ~(1u << entered);
        first = getNextIndex(entered);
        numTests += static_cast<std::size_t>(step.result) + 1;
    }
    return {pTet, LOCATE_GAVE_UP, numTests};
}

// Finds an untested facet that the point is beyond, if there is one: the first in cyclic order from `first`,
// or, where all sides are plain to see, the one opposite the farthest corner.
template <Dt3::Crossing crossing>
Dt3::WalkStep Dt3::lookAround(const Point3* pVtx, Tet3*& pTet, FacetMask untested, int first) const
{
    const CertainSides sides = getCertainSides<Lanes>(pTet->aVertexPointer, *pVtx);
    if ((untested & ~(sides.inside | sides.beyond)) != 0)
        return lookAroundExactly(pVtx, pTet, untested, first);
    const FacetMask beyond = sides.beyond & untested;
    if (beyond != 0) {
        const FacetMask crossed =
            crossing == Crossing::FIRST ? beyond : getFarthestCorner(*pTet, beyond, *pVtx);
        return {false, getDistanceToFirst(crossed, first)};
    }
    checkStrictlyInside(pTet, pVtx);
    return {true, LOCATED_INSIDE};
}

Dt3::WalkStep Dt3::lookAroundExactly(const Point3* pVtx, Tet3*& pTet, FacetMask untested, int first) const
{
    for (int distance = 0; distance < 4; ++distance) {
        const int ici = (first + distance) & 3;
        if ((untested >> ici & 1) == 0)
            continue;
        const Orientation3 side = predicates.getOrientation3(pTet, ici, pVtx);
        if (side == ORIENTATION3_NEGATIVE)
            return {false, distance};
        if (side == ORIENTATION3_COPLANAR) {
            const WalkStep verdict = judgeCoplanar(pVtx, pTet, ici);
            if (verdict.bEnds)
                return verdict;
        }
    }
    checkStrictlyInside(pTet, pVtx);
    return {true, LOCATED_INSIDE};
}

// The point lies in the plane of facet ici: it may be a corner, lie beyond another facet, in the facet or on
// an edge.
Dt3::WalkStep Dt3::judgeCoplanar(const Point3* pVtx, Tet3*& pTet, int ici) const
{
    if (pTet->hasVertex(*pVtx))
        return {true, LOCATED_VERTEX};

    int aNum[3] = {0, 0, 0};
    int hullIndex = -1;
    int opp2ICI = -1;
    for (int k = 0; k < 4; ++k) {
        const Orientation3 side = predicates.getOrientation3(pTet, k, pVtx);
        ++aNum[side];
        if (side != ORIENTATION3_COPLANAR)
            continue;
        if (pTet->aOppTet[k] == nullptr)
            hullIndex = k;
        if (k != ici)
            opp2ICI = k;
    }
    const int numPositive = aNum[ORIENTATION3_POSITIVE];
    const int numNegative = aNum[ORIENTATION3_NEGATIVE];
    const int numCoplanar = aNum[ORIENTATION3_COPLANAR];
    if (numNegative > 0)
        return {false, 0};
    if (numPositive == 3)
        return {true, hullIndex >= 0 ? hullIndex : LOCATED_INSIDE};
    VORN_ASSERT_TEXT(numPositive == 2, "numPositive==2");
    VORN_ASSERT_TEXT(numCoplanar == 2, "numCoplanar==2");
    VORN_ASSERT_TEXT(opp2ICI >= 0, "opp2ICI>=0");
    return {true, circleEdgeToHull(pTet, ici, opp2ICI)};
}

// For a point on an edge: turns around the edge until a hull facet comes up, which is then the result and
// pTet its tetrahedron. Back at the start the edge is an inner one, and pTet stays.
int Dt3::circleEdgeToHull(Tet3*& pTet, int opp3, int opp2) const
{
    const TetAroundEdgeIterator start(Edge3(pTet, opp3, opp2));
    TetAroundEdgeIterator it(start);
    do {
        if (it.nextIsNull()) {
            pTet = *it;
            const int outIndex = it.getOpp2Index();
            VORN_ASSERT_TEXT(pTet != nullptr, "pStartTet!=0");
            VORN_ASSERT_TEXT(pTet->getOppTet(outIndex) == nullptr, "pStartTet->getOppTet(outIndex)==0");
            return outIndex;
        }
        ++it;
    } while (it != start);
    return LOCATED_INSIDE;
}

void Dt3::checkStrictlyInside(const Tet3* pTet, const Point3* pVtx) const
{
    static const char* const CONDITION[4] = {
        "predicates.getOrientation3(pStartTet,0,pVtx)==ORIENTATION3_POSITIVE",
        "predicates.getOrientation3(pStartTet,1,pVtx)==ORIENTATION3_POSITIVE",
        "predicates.getOrientation3(pStartTet,2,pVtx)==ORIENTATION3_POSITIVE",
        "predicates.getOrientation3(pStartTet,3,pVtx)==ORIENTATION3_POSITIVE"};
    for (int i = 0; i < 4; ++i)
        VORN_DEBUG_ASSERT_TEXT(predicates.getOrientation3(pTet, i, pVtx) == ORIENTATION3_POSITIVE,
                               CONDITION[i]);
    VORN_DEBUG_ASSERT_TEXT(predicates.sphereInclusionTest(pTet, pVtx) == SIC_INSIDE,
                           "predicates.sphereInclusionTest(pStartTet,pVtx)==SIC_INSIDE");
}

} // namespace VORN3D
