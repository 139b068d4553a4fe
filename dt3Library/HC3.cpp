#include "HC3.h"

#include "nalo_tools/assertion.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <new>

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

// Halves the cell along one axis: returns the half in which the offset d lies and makes d relative to it.
unsigned takeUpperHalfBit(double& d, double halfExtent)
{
    const bool bUpper = d >= halfExtent;
    d -= bUpper ? halfExtent : 0.0;
    return bUpper;
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
    recordPool.init(4, -1);
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

    auto hint = sIdxVtx.cend();
    for (const std::uint64_t keyAndIndex : vHIndexIndexPair) {
        const auto i = static_cast<std::uint32_t>(keyAndIndex);
        const auto [position, bNew] = store(hint, static_cast<std::uint32_t>(keyAndIndex >> 32), vInput[i]);
        vUserHandles[i] = (*position)->pVtx;
        if (bNew)
            vNewVertices.push_back((*position)->pVtx);
        hint = std::next(position);
    }
}

std::pair<Point3*, Tet3*> HC3::insert(const Point3* p)
{
    if (bbox.add(*p))
        growBox(LATER_ENLARGEMENT);
    const std::uint32_t hIndex = getHilbertIndex(*p);
    IdxVtx probe{hIndex, nullptr};
    const auto [position, bNew] = store(sIdxVtx.lower_bound(&probe), hIndex, *p);
    Point3* pVtx = (*position)->pVtx;
    if (pVtx->getOneTet() != nullptr || sIdxVtx.size() == 1)
        return {pVtx, pVtx->getOneTet()};
    const auto neighbor = position == sIdxVtx.begin() ? std::next(position) : std::prev(position);
    return {pVtx, (*neighbor)->pVtx->getOneTet()};
}

Tet3* HC3::findNearbyTet(const Point3& q) const
{
    if (sIdxVtx.empty())
        return nullptr;
    IdxVtx probe{getHilbertIndex(q), nullptr};
    const auto isInMesh = [](const IdxVtx* pRecord) {
        VORN_ASSERT_TEXT(pRecord->pVtx != nullptr, "pVtx!=0");
        return pRecord->pVtx->getOneTet() != nullptr;
    };
    const auto start = sIdxVtx.lower_bound(&probe);
    const auto next = std::find_if(start, sIdxVtx.end(), isInMesh);
    if (next != sIdxVtx.end())
        return (*next)->pVtx->getOneTet();
    const auto previous = std::find_if(std::make_reverse_iterator(start), sIdxVtx.rend(), isInMesh);
    return previous == sIdxVtx.rend() ? nullptr : (*previous)->pVtx->getOneTet();
}

void HC3::getVertices(std::vector<Point3*>& out) const
{
    out.reserve(out.size() + sIdxVtx.size());
    for (const IdxVtx* pRecord : sIdxVtx)
        out.push_back(pRecord->pVtx);
}

void HC3::reindex()
{
    rangeX = bbox.getRangeX();
    rangeY = bbox.getRangeY();
    rangeZ = bbox.getRangeZ();
    bValid = true;

    std::vector<IdxVtx*> vRecords(sIdxVtx.begin(), sIdxVtx.end());
    sIdxVtx.clear();
    for (IdxVtx* pRecord : vRecords)
        pRecord->hIndex = getHilbertIndex(*pRecord->pVtx);
    std::sort(vRecords.begin(), vRecords.end(), Func_ltIdxVtxPtr());
    sIdxVtx.insert(vRecords.begin(), vRecords.end());
}

// One pair a point, key in the upper and input index in the lower half, in ascending order.
std::vector<std::uint64_t> HC3::getSortedKeyIndexPairs(const std::vector<Point3>& vInput) const
{
    VORN_ASSERT(vInput.size() <= UINT32_MAX);
    std::vector<std::uint64_t> vPairs;
    vPairs.reserve(vInput.size());
    for (const Point3& p : vInput)
        vPairs.push_back(std::uint64_t{getHilbertIndex(p)} << 32 | vPairs.size());
    std::sort(vPairs.begin(), vPairs.end());
    return vPairs;
}

void HC3::growBox(double enlargement)
{
    bbox.enlargeBounds(enlargement);
    reindex();
}

// Puts p into the order, as a new vertex unless there is one with its coordinates; tells which.
std::pair<HC3::Set::iterator, bool> HC3::store(Set::const_iterator hint, std::uint32_t hIndex,
                                               const Point3& p)
{
    if (pSpareRecord == nullptr) {
        pSpareRecord = recordPool.newElement();
        pSpareVertex = vertexPool.newElement();
    }
    new (pSpareVertex) Point3(p);
    new (pSpareRecord) IdxVtx{hIndex, pSpareVertex};
    const auto position = sIdxVtx.insert(hint, pSpareRecord);
    const bool bNew = *position == pSpareRecord;
    if (bNew)
        pSpareRecord = nullptr;
    return {position, bNew};
}

} // namespace VORN3D
