#include "vertexStore/HC3.h"

#include "nalo_tools/assertion.h"
#include "nalo_tools/endProcess.h"
#include "values/squaredDistance.h"
#include "vertexStore/FineCurve.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <iterator>
#include <new>

namespace VORN3D
{

namespace
{

// The first batch of a process gets a tight margin, all later growth doubles the box.
constexpr double FIRST_ENLARGEMENT = 0.1;
constexpr double LATER_ENLARGEMENT = 1.0;

double takeBatchEnlargement()
{
    static std::atomic<bool> bFirst{true};
    return bFirst.exchange(false, std::memory_order_relaxed) ? FIRST_ENLARGEMENT : LATER_ENLARGEMENT;
}

// Indices of points in the order of their coordinates; equal points in ascending order.
std::vector<std::uint32_t> getLexicalOrder(const std::vector<Point3>& vInput,
                                           const std::vector<std::uint32_t>& vIndices)
{
    struct Entry
    {
        double x;
        std::uint32_t index;
    };
    std::vector<Entry> vEntries;
    vEntries.reserve(vIndices.size());
    for (const std::uint32_t i : vIndices)
        vEntries.push_back({vInput[i].x(), i});
    std::sort(vEntries.begin(), vEntries.end(), [&vInput](const Entry& a, const Entry& b) {
        if (a.x != b.x)
            return a.x < b.x;
        const Point3& p = vInput[a.index];
        const Point3& q = vInput[b.index];
        return p == q ? a.index < b.index : p < q;
    });
    std::vector<std::uint32_t> vSorted(vEntries.size());
    std::transform(vEntries.begin(), vEntries.end(), vSorted.begin(),
                   [](const Entry& entry) { return entry.index; });
    return vSorted;
}

// The order in which new vertices of one key are inserted: as they came, or if they are many, along a finer
// curve.
std::vector<std::uint32_t> getInsertionOrder(const std::vector<Point3>& vInput,
                                             std::vector<std::uint32_t> vIndices)
{
    std::sort(vIndices.begin(), vIndices.end());
    if (vIndices.size() <= MAX_RUN)
        return vIndices;
    std::vector<const Point3*> vPoints(vIndices.size());
    std::transform(vIndices.begin(), vIndices.end(), vPoints.begin(),
                   [&vInput](std::uint32_t i) { return &vInput[i]; });
    std::vector<std::uint32_t> vFine = getFineOrder(vPoints.data(), vPoints.size());
    for (std::uint32_t& position : vFine)
        position = vIndices[position];
    return vFine;
}

} // namespace

HC3::HC3(int numBitsWanted) : numBits(numBitsWanted)
{
    if (static_cast<unsigned>(numBits) > 32 || numBits % 3 != 0) {
        messages() << "HC3::HC3(..): invalid bitlength" << std::endl;
        DEBUG_ASSERT(false);
        endProcess("HC3::HC3(..): invalid bitlength");
    }
    vertexPool.init(4, -1);
}

void HC3::clear()
{
    bbox = Bbox3();
    bValid = false;
    vertexPool.rewind();
    sIdxVtx.clear();
    pSpareVertex = nullptr;
}

std::uint32_t HC3::getHilbertIndex(const Point3& q) const
{
    VORN_ASSERT(bValid);
    return grid.getKey(q, numBits);
}

void HC3::insert(const std::vector<Point3>& vInput, std::vector<Point3*>& vUserHandles,
                 std::vector<Point3*>& vNewVertices)
{
    VORN_ASSERT(vUserHandles.empty());
    if (Bbox3 grown = bbox; grown.add(vInput)) {
        grown.enlargeBounds(takeBatchEnlargement());
        takeOver(grown);
    }

    const std::vector<std::uint64_t> vHIndexIndexPair = getSortedKeyIndexPairs(vInput);
    const std::size_t siz = vInput.size();
    VORN_ASSERT_TEXT(vHIndexIndexPair.size() == siz, "vHIndexIndexPair.size()==siz");
    vUserHandles.resize(siz, nullptr);
    vNewVertices.reserve(vNewVertices.size() + siz);

    for (std::size_t k = 0; k < siz; ++k) {
        // In curve order the input is read all over the place; the next points are on their way meanwhile.
        __builtin_prefetch(&vInput[static_cast<std::uint32_t>(vHIndexIndexPair[std::min(k + 16, siz - 1)])]);
        const auto hIndex = static_cast<std::uint32_t>(vHIndexIndexPair[k] >> 32);
        if (k + MAX_RUN < siz && vHIndexIndexPair[k + MAX_RUN] >> 32 == hIndex) {
            std::vector<std::uint32_t> vRun;
            for (; k < siz && vHIndexIndexPair[k] >> 32 == hIndex; ++k)
                vRun.push_back(static_cast<std::uint32_t>(vHIndexIndexPair[k]));
            storeLongRun(hIndex, vRun, vInput, vUserHandles, vNewVertices);
            --k;
            continue;
        }
        const auto i = static_cast<std::uint32_t>(vHIndexIndexPair[k]);
        const auto [position, bNew] = store(hIndex, vInput[i]);
        vUserHandles[i] = sIdxVtx[position].pVtx;
        if (bNew)
            vNewVertices.push_back(vUserHandles[i]);
    }
}

// A new vertex is not in the mesh yet; its neighbour on the curve, as a rule the one before it, is near in
// space.
std::pair<Point3*, Tet3*> HC3::insert(const Point3* p)
{
    if (Bbox3 grown = bbox; grown.add(*p)) {
        grown.enlargeBounds(LATER_ENLARGEMENT);
        takeOver(grown);
    }
    const CurveOrder::Position position = store(getHilbertIndex(*p), *p).position;
    Point3* pVtx = sIdxVtx[position].pVtx;
    if (pVtx->getOneTet() != nullptr || sIdxVtx.size() == 1)
        return {pVtx, pVtx->getOneTet()};
    const bool bFirst = position == sIdxVtx.getBegin();
    const auto neighbor = bFirst ? sIdxVtx.getNext(position) : sIdxVtx.getPrevious(position);
    return {pVtx, sIdxVtx[neighbor].pVtx->getOneTet()};
}

Tet3* HC3::findNearbyTet(const Point3& q) const
{
    if (sIdxVtx.empty())
        return nullptr;
    const auto getTetAt = [this](CurveOrder::Position position) {
        const Point3* pVtx = sIdxVtx[position].pVtx;
        VORN_ASSERT_TEXT(pVtx != nullptr, "pVtx!=0");
        return pVtx->getOneTet();
    };
    const CurveOrder::Position start = sIdxVtx.findLowerBound({getHilbertIndex(q), nullptr});
    for (auto position = start; !(position == sIdxVtx.getEnd()); position = sIdxVtx.getNext(position))
        if (Tet3* pTet = getTetAt(position))
            return pTet;
    for (auto position = start; !(position == sIdxVtx.getBegin());) {
        position = sIdxVtx.getPrevious(position);
        if (Tet3* pTet = getTetAt(position))
            return pTet;
    }
    return nullptr;
}

const Point3* HC3::findNearMeshVertex(const Point3& q, std::size_t numLooks) const
{
    const Point3* pNearest = nullptr;
    double least = HUGE_VAL;
    const auto look = [&](const IdxVtx& record) {
        const double sqDistance = getSquaredDistance(q, *record.pVtx);
        if (sqDistance < least && record.pVtx->getOneTet() != nullptr) {
            least = sqDistance;
            pNearest = record.pVtx;
        }
    };
    Point3 probe(q);
    const CurveOrder::Position start = sIdxVtx.findLowerBound({getHilbertIndex(q), &probe});
    auto position = start;
    for (std::size_t i = 0; i < numLooks && !(position == sIdxVtx.getEnd()); ++i) {
        look(sIdxVtx[position]);
        position = sIdxVtx.getNext(position);
    }
    position = start;
    for (std::size_t i = 0; i < numLooks && !(position == sIdxVtx.getBegin()); ++i) {
        position = sIdxVtx.getPrevious(position);
        look(sIdxVtx[position]);
    }
    sIdxVtx.forEachOfSample(numLooks, look);
    return pNearest;
}

void HC3::getVertices(std::vector<Point3*>& out) const
{
    out.reserve(out.size() + sIdxVtx.size());
    for (const IdxVtx& record : sIdxVtx.getAll())
        out.push_back(record.pVtx);
}

bool HC3::owns(const Point3* pVtx) const
{
    if (sIdxVtx.empty())
        return false;
    Point3 probe(*pVtx);
    const CurveOrder::Position position = sIdxVtx.findLowerBound({getHilbertIndex(probe), &probe});
    return !(position == sIdxVtx.getEnd()) && sIdxVtx[position].pVtx == pVtx;
}

void HC3::sort(std::vector<Point3*>& vVertices) const
{
    std::vector<IdxVtx> vRecords;
    vRecords.reserve(vVertices.size());
    for (Point3* pVtx : vVertices)
        vRecords.push_back({getHilbertIndex(*pVtx), pVtx});
    std::sort(vRecords.begin(), vRecords.end());
    std::transform(vRecords.begin(), vRecords.end(), vVertices.begin(),
                   [](const IdxVtx& record) { return record.pVtx; });
}

void HC3::reindex()
{
    takeOver(bbox);
}

// Computes all keys anew; running out of memory changes nothing.
void HC3::takeOver(const Bbox3& box)
{
    const HilbertGrid newGrid = {box.getMinX(),   box.getMinY(),   box.getMinZ(),
                                 box.getRangeX(), box.getRangeY(), box.getRangeZ()};
    std::vector<IdxVtx> vRecords = sIdxVtx.getAll();
    for (IdxVtx& record : vRecords)
        record.hIndex = newGrid.getKey(*record.pVtx, numBits);
    std::sort(vRecords.begin(), vRecords.end());
    sIdxVtx.assign(vRecords);
    bbox = box;
    grid = newGrid;
    bValid = true;
}

// In the order of these pairs, points are stored by key and, within a key, as they came: so the first of
// equal points makes the vertex. One pair a point, key in the upper and input index in the lower half, in
// ascending order.
std::vector<std::uint64_t> HC3::getSortedKeyIndexPairs(const std::vector<Point3>& vInput) const
{
    VORN_REQUIRE(vInput.size() <= UINT32_MAX);
    std::vector<std::uint64_t> vPairs;
    vPairs.reserve(vInput.size());
    for (const Point3& p : vInput)
        vPairs.push_back(std::uint64_t{getHilbertIndex(p)} << 32 | vPairs.size());
    std::vector<std::uint64_t> vScratch(vPairs.size());
    sortByUpperHalf(vPairs.data(), vPairs.size(), vScratch.data());
    return vPairs;
}

// Where the record is, or belongs.
HC3::Found HC3::find(const IdxVtx& record) const
{
    const CurveOrder::Position position = sIdxVtx.findLowerBound(record);
    return {position, !(position == sIdxVtx.getEnd()) && !(record < sIdxVtx[position])};
}

// Puts p into the order, as a new vertex unless there is one with its coordinates. The order compares
// vertices, so that p becomes one to be looked up; if it is found to be a duplicate, its record waits for the
// next point.
HC3::Stored HC3::store(std::uint32_t hIndex, const Point3& p)
{
    const IdxVtx record{hIndex, makeSpareVertex(p)};
    const auto [position, bFound] = find(record);
    if (bFound)
        return {position, false};
    const CurveOrder::Position inserted = sIdxVtx.insert(position, record);
    pSpareVertex = nullptr;
    return {inserted, true};
}

Point3* HC3::makeSpareVertex(const Point3& p)
{
    if (pSpareVertex == nullptr)
        pSpareVertex = vertexPool.newElement();
    return new (pSpareVertex) Point3(p);
}

// Stores the points vInput[i] for all i of vRun, ascending, which have the same key. They are looked up in
// the order of their coordinates, so that neighbours in it are in the cache; but the records of the vertices
// lie in the order in which these are inserted.
void HC3::storeLongRun(std::uint32_t hIndex, const std::vector<std::uint32_t>& vRun,
                       const std::vector<Point3>& vInput, std::vector<Point3*>& vUserHandles,
                       std::vector<Point3*>& vNewVertices)
{
    const std::vector<std::uint32_t> vLexical = getLexicalOrder(vInput, vRun);
    std::vector<std::uint32_t> vNew;
    for (std::size_t k = 0; k < vLexical.size(); ++k) {
        const std::uint32_t i = vLexical[k];
        if (k > 0 && vInput[vLexical[k - 1]] == vInput[i])
            continue;
        Point3 probe(vInput[i]);
        const auto [position, bFound] = find({hIndex, &probe});
        if (bFound)
            vUserHandles[i] = sIdxVtx[position].pVtx;
        else
            vNew.push_back(i);
    }

    for (const std::uint32_t i : getInsertionOrder(vInput, vNew)) {
        vUserHandles[i] = makeSpareVertex(vInput[i]);
        pSpareVertex = nullptr;
        vNewVertices.push_back(vUserHandles[i]);
    }
    for (const std::uint32_t i : vNew) {
        const IdxVtx record{hIndex, vUserHandles[i]};
        sIdxVtx.insert(find(record).position, record);
    }
    Point3* pVtx = nullptr;
    for (const std::uint32_t i : vLexical) {
        if (vUserHandles[i] != nullptr)
            pVtx = vUserHandles[i];
        vUserHandles[i] = pVtx;
    }
}

} // namespace VORN3D
