// The driver: from an insertion call to a sequence of single vertices, and the start-up before there is a
// mesh.
#include "kernel/Dt3.h"

#include "kernel/Sequences.h"
#include "nalo_tools/assertion.h"
#include "nalo_tools/log.h"
#include "values/isFinite.h"
#include "vorn3d/hosting.h"

#include <algorithm>
#include <string>
#include <utility>

namespace VORN3D
{

namespace
{

constexpr int HILBERT_BITS = 27;

// So many vertices are inserted from one call of the progress observer to the next, or as many as take so
// many tests of the walk and new tetrahedra, twice as many as on well spread points.
constexpr std::size_t OBSERVED_VERTICES = 4096;
constexpr std::size_t OBSERVED_WORK = 1 << 18;

void requireFinite(const Point3* pPoints, std::size_t numPoints)
{
    const Point3* pEnd = pPoints + numPoints;
    const Point3* pBad = std::find_if_not(pPoints, pEnd, isFinite);
    if (pBad == pEnd)
        return;
    logError("Dt3::insert()",
             "the coordinates of point " + std::to_string(pBad - pPoints) + " are not finite");
    VORN_REQUIRE(isFinite(*pBad));
}

// Walks are judged after so many insertions each time; they are long if they take so many facet tests on
// average, well above the 6 to 13 of a walk along a good curve.
constexpr std::size_t JUDGED_WALKS = 1024;
constexpr std::size_t LONG_WALK = 32;

} // namespace

Dt3::Dt3() : hc(HILBERT_BITS), span(predicates) {}

void Dt3::clear()
{
    hc.clear();
    tets.clear();
    numMeshVertices = 0;
    bFullDimensional = false;
    pLatestTet = nullptr;
    bStartingUp = false;
    span.clear();
    vArrived.clear();
    numArrived = 0;
    hullEdgeHints.clear();
}

void Dt3::insert(std::vector<Point3>& vInputPoints, std::vector<Point3*>& vUserHandles, Order order)
{
    if (bVerbose)
        messages() << "Dt3::insert(vector,vector) has been called" << std::endl;
    if (!vUserHandles.empty()) {
        logWarning("Dt3::insert()", "vUserHandles is not empty as it should be");
        vUserHandles.clear();
    }
    messages() << "numPoints=" << vInputPoints.size() << std::endl;
    if (vInputPoints.empty())
        return;
    requireFinite(vInputPoints.data(), vInputPoints.size());

    const bool bSomeLeftOut = hc.getNumVertices() > numMeshVertices;
    std::vector<Point3*> vNewVertices;
    hc.insert(vInputPoints, vUserHandles, vNewVertices);
    if (!bFullDimensional || bStartingUp)
        startUp(vUserHandles, vNewVertices, order);
    else if (order == Order::AS_GIVEN)
        insertAll(InGivenOrder(vUserHandles), hc.findNearbyTet(*vUserHandles.front()));
    else {
        if (bSomeLeftOut)
            addLeftOut(vUserHandles, vNewVertices);
        if (!vNewVertices.empty())
            triangulate(vNewVertices, hc.findNearbyTet(*vNewVertices.front()));
    }
}

Point3* Dt3::insert(Point3& p)
{
    requireFinite(&p, 1);
    auto [pVtx, pLastTet] = hc.insert(&p);
    if (bFullDimensional) {
        if (pLastTet == nullptr)
            pLastTet = hc.findNearbyTet(p);
        VORN_ASSERT(!pLastTet->hasBeenVisited);
        insertVertex(&pVtx, pLastTet, Crossing::FIRST);
        return pVtx;
    }
    noteArrivals({pVtx}, {pVtx}, Order::ALONG_CURVE);
    Tet3* pFirstTet = createInitialTet(Order::ALONG_CURVE);
    if (pFirstTet != nullptr) {
        forgetArrivals();
        std::vector<Point3*> vNone;
        if (hc.getNumVertices() > 4)
            triangulate(vNone, pFirstTet);
    }
    return pVtx;
}

bool Dt3::triangulate(std::vector<Point3*>& vVertices, Tet3* pLastTet)
{
    if (pLastTet == nullptr)
        goToHell("pLastTet==NULL in Dt3::triangulate");
    if (vVertices.empty()) {
        messages() << "Attention: triangulate has got an empty vector" << std::endl;
        return true;
    }
    return insertAll(CoarseToFine(vVertices), pLastTet);
}

// Says whether all are in.
template <class Sequence>
bool Dt3::insertAll(Sequence sequence, Tet3* pLastTet)
{
    std::size_t numWalkTests = 0;
    std::size_t work = 0;
    Crossing crossing = Crossing::FIRST;
    for (std::size_t numDone = 0; numDone < sequence.size(); ++numDone) {
        if (numDone % OBSERVED_VERTICES == 0 || work > OBSERVED_WORK) {
            if (!isToGoOn(numDone, sequence.size()))
                return false;
            work = 0;
        }
        if (numDone % JUDGED_WALKS == 0 && std::exchange(numWalkTests, 0) > LONG_WALK * JUDGED_WALKS) {
            sequence.shortenWalks(numDone);
            crossing = Crossing::OPPOSITE_FARTHEST;
        }
        Point3* pVtx = sequence.getVertex(numDone);
        const Insertion insertion = insertVertex(&pVtx, sequence.getStart(numDone, pLastTet), crossing);
        pLastTet = insertion.pTet;
        numWalkTests += insertion.numWalkTests;
        work += insertion.numWalkTests + star.getTets().size();
    }
    isToGoOn(sequence.size(), sequence.size());
    return true;
}

bool Dt3::isToGoOn(std::size_t numDone, std::size_t numTotal) const
{
    return !progressObserver || progressObserver(numDone, numTotal);
}

// The first batch that makes the triangulation three-dimensional brings in what earlier calls have stored. If
// it ends early, the next batch does.
void Dt3::startUp(const std::vector<Point3*>& vUserHandles, std::vector<Point3*>& vNewVertices, Order order)
{
    noteArrivals(vUserHandles, vNewVertices, order);
    Tet3* pStartTet = bStartingUp ? hc.findNearbyTet(*span.getVertices().front()) : createInitialTet(order);
    if (pStartTet == nullptr)
        return;
    bStartingUp = true;
    if (order == Order::AS_GIVEN)
        bStartingUp = !insertAll(InGivenOrder(vArrived), pStartTet);
    else {
        const std::size_t numStored = hc.getNumVertices();
        if (numStored != vUserHandles.size() || numStored != vNewVertices.size()) {
            vNewVertices.clear();
            hc.getVertices(vNewVertices);
        }
        bStartingUp = !triangulate(vNewVertices, pStartTet);
    }
    if (!bStartingUp)
        forgetArrivals();
}

// What a batch along the curve is to bring in, the vertex store tells. A call that ran out of memory, or was
// one of those, may have stored vertices that are not noted; they are added in curve order.
void Dt3::noteArrivals(const std::vector<Point3*>& vUserHandles, const std::vector<Point3*>& vNewVertices,
                       Order order)
{
    const std::size_t numStored = hc.getNumVertices();
    if (numArrived == numStored)
        return;
    std::vector<Point3*> vStored;
    const bool bNewOnly = numArrived + vNewVertices.size() == numStored;
    if (!bNewOnly)
        hc.getVertices(vStored);
    for (Point3* pVtx : bNewOnly ? vNewVertices : vStored)
        span.tryAdd(pVtx);
    if (order == Order::ALONG_CURVE && span.isFullDimensional())
        return;
    vArrived.insert(vArrived.end(), vUserHandles.begin(), vUserHandles.end());
    vArrived.insert(vArrived.end(), vStored.begin(), vStored.end());
    numArrived = numStored;
}

void Dt3::forgetArrivals()
{
    std::vector<Point3*>().swap(vArrived);
}

Tet3* Dt3::createInitialTet(Order order)
{
    VORN_ASSERT(!bFullDimensional);
    if (!span.isFullDimensional())
        return nullptr;
    std::vector<Point3*> vVertices = vArrived;
    if (order == Order::ALONG_CURVE) {
        vVertices.clear();
        hc.getVertices(vVertices);
    }
    AffineBasis first(predicates);
    for (auto it = vVertices.begin(); it != vVertices.end() && !first.isFullDimensional(); ++it)
        first.tryAdd(*it);

    std::vector<Point3*> vCorners = first.getVertices();
    const auto getOrientation = [&] {
        return predicates.getOrientation3(vCorners[0], vCorners[1], vCorners[2], vCorners[3]);
    };
    if (getOrientation() == ORIENTATION3_NEGATIVE)
        std::swap(vCorners[0], vCorners[1]);
    const Orientation3 ori = getOrientation();
    VORN_ASSERT_TEXT(ori == ORIENTATION3_POSITIVE, "ori==ORIENTATION3_POSITIVE");
    Tet3* pFirstTet = createTet(vCorners[0], vCorners[1], vCorners[2], vCorners[3]);
    bFullDimensional = true;
    numMeshVertices = 4;
    return pFirstTet;
}

// Adds the vertices of the batch that earlier calls have stored but not brought into the mesh, if there are
// any; all are in curve order then.
void Dt3::addLeftOut(const std::vector<Point3*>& vUserHandles, std::vector<Point3*>& vNewVertices) const
{
    std::vector<Point3*> vWanted;
    std::copy_if(vUserHandles.begin(), vUserHandles.end(), std::back_inserter(vWanted),
                 [](const Point3* pVtx) { return pVtx->getOneTet() == nullptr; });
    std::sort(vWanted.begin(), vWanted.end(), std::less<>());
    vWanted.erase(std::unique(vWanted.begin(), vWanted.end()), vWanted.end());
    if (vWanted.size() == vNewVertices.size())
        return;
    hc.sort(vWanted);
    vNewVertices.swap(vWanted);
}

} // namespace VORN3D
