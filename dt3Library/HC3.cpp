#include "HC3.h"

#include "nalo_tools/assertion.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <iterator>
#include <new>
#include <numeric>

namespace VORN3D
{

namespace
{

// The curve as a state machine: row = octant 4 * bx + 2 * by + bz, column = state.
constexpr std::uint8_t HILBERT_DIGIT[8][12] = {
    {0, 0, 0, 2, 4, 6, 4, 6, 2, 2, 4, 6}, {1, 7, 3, 3, 3, 5, 7, 7, 5, 1, 5, 1},
    {3, 1, 7, 1, 5, 1, 3, 5, 3, 5, 7, 7}, {2, 6, 4, 0, 2, 2, 0, 4, 4, 6, 6, 0},
    {7, 3, 1, 5, 7, 7, 5, 1, 1, 3, 3, 5}, {6, 4, 2, 4, 0, 4, 6, 0, 6, 0, 2, 2},
    {4, 2, 6, 6, 6, 0, 2, 2, 0, 4, 0, 4}, {5, 5, 5, 7, 1, 3, 1, 3, 7, 7, 1, 3}};
constexpr std::uint8_t HILBERT_NEXT[8][12] = {
    {1, 2, 0, 6, 11, 4, 5, 6, 10, 4, 7, 10}, {2, 6, 9, 0, 11, 4, 7, 1, 3, 4, 2, 3},
    {3, 0, 10, 6, 0, 8, 5, 6, 1, 8, 11, 2},  {2, 7, 9, 11, 7, 8, 3, 10, 1, 8, 2, 6},
    {4, 8, 1, 9, 5, 0, 1, 9, 10, 2, 7, 10},  {5, 8, 1, 0, 9, 6, 1, 4, 3, 7, 5, 3},
    {3, 0, 11, 9, 0, 10, 11, 9, 5, 2, 8, 4}, {5, 7, 11, 8, 7, 6, 11, 10, 9, 3, 5, 4}};

// The first batch of a process gets a tight margin, all later growth doubles the box.
constexpr double FIRST_ENLARGEMENT = 0.1;
constexpr double LATER_ENLARGEMENT = 1.0;

double takeBatchEnlargement()
{
    static std::atomic<bool> bFirst{true};
    return bFirst.exchange(false, std::memory_order_relaxed) ? FIRST_ENLARGEMENT : LATER_ENLARGEMENT;
}

// Halves the cell along one axis: returns the half in which the offset d lies and makes d relative to it. The
// halves are equally likely, so the choice is made on the bits, without a branch.
unsigned takeUpperHalfBit(double& d, double halfExtent)
{
    std::uint64_t bits;
    std::uint64_t bitsOfExcess;
    const double excess = d - halfExtent;
    std::memcpy(&bits, &d, sizeof(d));
    std::memcpy(&bitsOfExcess, &excess, sizeof(excess));
    const std::uint64_t lower = bitsOfExcess >> 63;
    bits = lower != 0 ? bits : bitsOfExcess;
    std::memcpy(&d, &bits, sizeof(d));
    return static_cast<unsigned>(lower ^ 1);
}

// Sorts by the upper half of each number, keeping the order of equal ones: least significant digit first.
void sortByUpperHalf(std::vector<std::uint64_t>& vNumbers)
{
    constexpr unsigned DIGIT_BITS = 11;
    constexpr std::size_t NUM_DIGITS = std::size_t{1} << DIGIT_BITS;
    std::vector<std::uint64_t> vSorted(vNumbers.size());
    for (unsigned shift = 32; shift < 64; shift += DIGIT_BITS) {
        const auto getDigit = [shift](std::uint64_t number) { return (number >> shift) & (NUM_DIGITS - 1); };
        std::size_t aEnd[NUM_DIGITS + 1] = {};
        for (const std::uint64_t number : vNumbers)
            ++aEnd[getDigit(number) + 1];
        std::partial_sum(std::begin(aEnd), std::end(aEnd), std::begin(aEnd));
        for (const std::uint64_t number : vNumbers)
            vSorted[aEnd[getDigit(number)]++] = number;
        vNumbers.swap(vSorted);
    }
}

} // namespace

HC3::HC3(int numBitsWanted) : numBits(numBitsWanted)
{
    if (static_cast<unsigned>(numBits) > 32 || numBits % 3 != 0) {
        std::cout << "HC3::HC3(..): invalid bitlength" << std::endl;
        DEBUG_ASSERT(false);
        std::exit(1);
    }
    vertexPool.init(4, -1);
}

std::uint32_t HC3::getHilbertIndex(const Point3& q) const
{
    VORN_ASSERT(bValid);
    double dx = q.x() - bbox.getMinX();
    double dy = q.y() - bbox.getMinY();
    double dz = q.z() - bbox.getMinZ();
    double hx = rangeX;
    double hy = rangeY;
    double hz = rangeZ;
    unsigned state = 0;
    std::uint32_t key = 0;
    for (int shift = numBits - 3; shift >= 0; shift -= 3) {
        hx *= 0.5;
        hy *= 0.5;
        hz *= 0.5;
        const unsigned bx = takeUpperHalfBit(dx, hx);
        const unsigned by = takeUpperHalfBit(dy, hy);
        const unsigned bz = takeUpperHalfBit(dz, hz);
        const unsigned octant = 4 * bx + 2 * by + bz;
        key += std::uint32_t{HILBERT_DIGIT[octant][state]} << shift;
        state = HILBERT_NEXT[octant][state];
    }
    return key;
}

void HC3::insert(const std::vector<Point3>& vInput, std::vector<Point3*>& vUserHandles,
                 std::vector<Point3*>& vNewVertices)
{
    VORN_ASSERT(vUserHandles.empty());
    if (bbox.add(vInput))
        growBox(takeBatchEnlargement());

    const std::vector<std::uint64_t> vHIndexIndexPair = getSortedKeyIndexPairs(vInput);
    const std::size_t siz = vInput.size();
    VORN_ASSERT_TEXT(vHIndexIndexPair.size() == siz, "vHIndexIndexPair.size()==siz");
    vUserHandles.resize(siz, nullptr);
    vNewVertices.reserve(vNewVertices.size() + siz);

    for (std::size_t k = 0; k < siz; ++k) {
        // In curve order the input is read all over the place; the next points are on their way meanwhile.
        __builtin_prefetch(&vInput[static_cast<std::uint32_t>(vHIndexIndexPair[std::min(k + 16, siz - 1)])]);
        const auto hIndex = static_cast<std::uint32_t>(vHIndexIndexPair[k] >> 32);
        const auto i = static_cast<std::uint32_t>(vHIndexIndexPair[k]);
        const auto [position, bNew] = store(hIndex, vInput[i]);
        vUserHandles[i] = sIdxVtx[position].pVtx;
        if (bNew)
            vNewVertices.push_back(vUserHandles[i]);
    }
}

std::pair<Point3*, Tet3*> HC3::insert(const Point3* p)
{
    if (bbox.add(*p))
        growBox(LATER_ENLARGEMENT);
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

void HC3::getVertices(std::vector<Point3*>& out) const
{
    out.reserve(out.size() + sIdxVtx.size());
    for (const IdxVtx& record : sIdxVtx.getAll())
        out.push_back(record.pVtx);
}

void HC3::reindex()
{
    rangeX = bbox.getRangeX();
    rangeY = bbox.getRangeY();
    rangeZ = bbox.getRangeZ();
    bValid = true;

    std::vector<IdxVtx> vRecords = sIdxVtx.getAll();
    for (IdxVtx& record : vRecords)
        record.hIndex = getHilbertIndex(*record.pVtx);
    std::sort(vRecords.begin(), vRecords.end());
    sIdxVtx.assign(vRecords);
}

// One pair a point, key in the upper and input index in the lower half, in ascending order.
std::vector<std::uint64_t> HC3::getSortedKeyIndexPairs(const std::vector<Point3>& vInput) const
{
    VORN_ASSERT(vInput.size() <= UINT32_MAX);
    std::vector<std::uint64_t> vPairs;
    vPairs.reserve(vInput.size());
    for (const Point3& p : vInput)
        vPairs.push_back(std::uint64_t{getHilbertIndex(p)} << 32 | vPairs.size());
    sortByUpperHalf(vPairs);
    return vPairs;
}

void HC3::growBox(double enlargement)
{
    bbox.enlargeBounds(enlargement);
    reindex();
}

// Puts p into the order, as a new vertex unless there is one with its coordinates.
HC3::Stored HC3::store(std::uint32_t hIndex, const Point3& p)
{
    if (pSpareVertex == nullptr)
        pSpareVertex = vertexPool.newElement();
    new (pSpareVertex) Point3(p);
    const IdxVtx record{hIndex, pSpareVertex};
    const CurveOrder::Position position = sIdxVtx.findLowerBound(record);
    if (!(position == sIdxVtx.getEnd()) && !(record < sIdxVtx[position]))
        return {position, false};
    pSpareVertex = nullptr;
    return {sIdxVtx.insert(position, record), true};
}

} // namespace VORN3D
