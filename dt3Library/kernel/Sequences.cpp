#include "kernel/Sequences.h"

#include "nalo_tools/assertion.h"
#include "values/squaredDistance.h"
#include "vertexStore/FineCurve.h"

#include <algorithm>
#include <cmath>

namespace VORN3D
{

namespace
{

using Positions = std::vector<std::uint32_t>;

constexpr std::uint32_t NONE = UINT32_MAX;

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

CoarseToFine::CoarseToFine(const std::vector<Point3*>& vVertices)
    : m_vVertices(vVertices), m_vOrder(makeInsertionOrder(vVertices.size()))
{
}

void CoarseToFine::shortenWalks(std::size_t k)
{
    if (m_bOnFineCurve || k == size())
        return;
    Positions vRest(m_vOrder.begin() + static_cast<std::ptrdiff_t>(k), m_vOrder.end());
    std::sort(vRest.begin(), vRest.end());
    std::vector<const Point3*> vPoints(vRest.size());
    std::transform(vRest.begin(), vRest.end(), vPoints.begin(),
                   [this](std::uint32_t position) { return m_vVertices[position]; });
    const Positions vFine = getFineOrder(vPoints.data(), vPoints.size());
    for (const std::uint32_t place : makeInsertionOrder(vRest.size()))
        m_vOrder[k++] = vRest[vFine[place]];
    m_bOnFineCurve = true;
}

// A linked list of the vertices along the fine curve, emptied from the last one backwards: when a vertex
// leaves it, its neighbours are those of the vertices before it that are next to it on the curve.
void InGivenOrder::shortenWalks(std::size_t /*k*/)
{
    if (!m_vNearEarlier.empty())
        return;
    const std::size_t n = size();
    const Positions vFine = getFineOrder(m_vVertices.data(), n);
    Positions vPrevious(n, NONE);
    Positions vNext(n, NONE);
    for (std::size_t i = 1; i < n; ++i) {
        vPrevious[vFine[i]] = vFine[i - 1];
        vNext[vFine[i - 1]] = vFine[i];
    }
    Positions vNearEarlier(n);
    for (std::size_t k = n; k-- > 0;) {
        const std::uint32_t previous = vPrevious[k];
        const std::uint32_t next = vNext[k];
        if (previous != NONE)
            vNext[previous] = next;
        if (next != NONE)
            vPrevious[next] = previous;
        const auto getSquaredDistanceTo = [&](std::uint32_t other) {
            return other == NONE ? HUGE_VAL : getSquaredDistance(*m_vVertices[k], *m_vVertices[other]);
        };
        vNearEarlier[k] = getSquaredDistanceTo(previous) < getSquaredDistanceTo(next) ? previous : next;
    }
    m_vNearEarlier.swap(vNearEarlier);
}

Tet3* InGivenOrder::getStartNearEarlier(std::size_t k, Tet3* pLastTet) const
{
    const std::uint32_t near = m_vNearEarlier[k];
    return near == NONE ? pLastTet : m_vVertices[near]->getOneTet();
}

} // namespace VORN3D
