// The driver: from an insertion call to a sequence of single vertices, and the start-up before there is a
// mesh.
#include "kernel/Dt3.h"
#include "vorn3d/hosting.h"

#include "nalo_tools/assertion.h"
#include "nalo_tools/log.h"
#include "values/isFinite.h"
#include "vertexStore/WalkStarts.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace VORN3D
{

namespace
{

constexpr int HILBERT_BITS = 27;

// So many vertices are inserted from one call of the progress observer to the next.
constexpr std::size_t OBSERVED_VERTICES = 4096;

void requireFinite(const Point3* pPoints, std::size_t numPoints)
{
    const Point3* pEnd = pPoints + numPoints;
    const Point3* pBad = std::find_if_not(pPoints, pEnd, isFinite);
    if (pBad == pEnd)
        return;
    logError("Dt3::insert()",
             "the coordinates of point " + std::to_string(pBad - pPoints) + " are not finite");
    VORN_ASSERT(isFinite(*pBad));
}

using Positions = std::vector<std::uint32_t>;

// Recursive halving: the median of [first, last) goes to level k, the medians of its halves to level k + 1,
// and so on; what remains at the last level goes there in order.
void distribute(std::uint32_t first, std::uint32_t last, std::size_t k, std::vector<Positions>& vLevels)
{
    const std::size_t lastLevel = vLevels.size() - 1;
    std::uint32_t num = last - first;
    while (num > 1 && k < lastLevel) {
        const std::uint32_t mid = first + num / 2;
        vLevels[k].push_back(mid);
        ++k;
        distribute(first, mid, k, vLevels);
        first = mid + 1;
        num = last - first;
    }
    if (first == last)
        return;
    VORN_ASSERT_TEXT(num > 0, "num>0");
    for (std::uint32_t position = first; position < last; ++position)
        vLevels[k].push_back(position);
}

// The order of insertion of n vertices on a curve, from coarse to fine: each level is spread evenly over the
// curve, the last one holds runs of about 16 consecutive vertices. Alternating the direction makes the end of
// one level lie near the start of the next.
Positions makeInsertionOrder(std::size_t n)
{
    VORN_ASSERT(n <= UINT32_MAX);
    const auto numHalvings = static_cast<int>(std::ceil(std::log(double(n)) / std::log(2.0)));
    std::vector<Positions> vLevels(static_cast<std::size_t>(std::max(numHalvings - 4, 0)) + 1);
    distribute(0, static_cast<std::uint32_t>(n), 0, vLevels);
    Positions vOrder;
    vOrder.reserve(n);
    for (std::size_t k = 0; k < vLevels.size(); ++k)
        if (k % 2 == 0)
            vOrder.insert(vOrder.end(), vLevels[k].rbegin(), vLevels[k].rend());
        else
            vOrder.insert(vOrder.end(), vLevels[k].begin(), vLevels[k].end());
    return vOrder;
}

} // namespace

Dt3::Dt3() : hc(HILBERT_BITS), spannedFlat(predicates) {}

void Dt3::insert(std::vector<Point3>& vInputPoints, std::vector<Point3*>& vUserHandles)
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
        startUp(vInputPoints.size(), vNewVertices);
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
        insertVertex(&pVtx, pLastTet);
        return pVtx;
    }
    extendSpan({pVtx});
    Tet3* pFirstTet = createInitialTet();
    if (pFirstTet != nullptr && hc.getNumVertices() > 4) {
        std::vector<Point3*> vNone;
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
    const Positions vOrder = makeInsertionOrder(vVertices.size());
    WalkStarts walkStarts(vVertices, vOrder);
    std::size_t numWalkTests = 0;
    for (std::size_t numDone = 0; numDone < vOrder.size(); ++numDone) {
        if (numDone % OBSERVED_VERTICES == 0 && !isToGoOn(numDone, vOrder.size()))
            return false;
        if (numDone % WalkStarts::SAMPLE_SIZE == 0)
            walkStarts.judge(std::exchange(numWalkTests, 0));
        Point3* pVtx = vVertices[vOrder[numDone]];
        const Insertion insertion = insertVertex(&pVtx, walkStarts.getStart(numDone, pLastTet));
        pLastTet = insertion.pTet;
        numWalkTests += insertion.numWalkTests;
    }
    isToGoOn(vOrder.size(), vOrder.size());
    return true;
}

bool Dt3::isToGoOn(std::size_t numDone, std::size_t numTotal) const
{
    return !progressObserver || progressObserver(numDone, numTotal);
}

// The first batch that makes the triangulation three-dimensional brings in what earlier calls have stored. If
// it ends early, the next batch does.
void Dt3::startUp(std::size_t numPoints, std::vector<Point3*>& vNewVertices)
{
    if (!bFullDimensional)
        extendSpan(vNewVertices);
    Tet3* pStartTet = bStartingUp ? hc.findNearbyTet(*spannedFlat.getVertices().front()) : createInitialTet();
    if (pStartTet == nullptr)
        return;
    bStartingUp = true;
    const std::size_t numStored = hc.getNumVertices();
    if (numStored != numPoints || numStored != vNewVertices.size()) {
        vNewVertices.clear();
        hc.getVertices(vNewVertices);
    }
    bStartingUp = !triangulate(vNewVertices, pStartTet);
}

// A call that ran out of memory may have stored vertices that were not looked at.
void Dt3::extendSpan(const std::vector<Point3*>& vNewVertices)
{
    if (hc.getNumVertices() == numSpanned)
        return;
    std::vector<Point3*> vStored;
    const bool bNewOnly = numSpanned + vNewVertices.size() == hc.getNumVertices();
    if (!bNewOnly)
        hc.getVertices(vStored);
    for (Point3* pVtx : bNewOnly ? vNewVertices : vStored)
        spannedFlat.tryAdd(pVtx);
    numSpanned = hc.getNumVertices();
}

Tet3* Dt3::createInitialTet()
{
    VORN_ASSERT(!bFullDimensional);
    if (!spannedFlat.isFullDimensional())
        return nullptr;
    std::vector<Point3*> vVertices;
    hc.getVertices(vVertices);
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
