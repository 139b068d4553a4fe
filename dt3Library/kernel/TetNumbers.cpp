#include "kernel/TetNumbers.h"

#include "nalo_tools/assertion.h"

#include <algorithm>
#include <limits>

namespace VORN3D
{

namespace
{

// The places of dead records below numTets, ascending.
std::vector<std::uint32_t> findHoles(const TetStore& tets, const PoolOrder<Tet3>& order, std::size_t numTets)
{
    std::vector<std::uint32_t> vHoles;
    tets.forEachDead([&](const Tet3* pTet) {
        if (const std::size_t place = order.getPlace(pTet); place < numTets)
            vHoles.push_back(static_cast<std::uint32_t>(place));
    });
    std::sort(vHoles.begin(), vHoles.end());
    return vHoles;
}

} // namespace

TetNumbers::TetNumbers(const TetStore& tets)
    : m_pool(tets.getPool()), m_order(m_pool), m_numTets(tets.getNumTets())
{
    VORN_REQUIRE_TEXT(m_numTets < std::numeric_limits<std::uint32_t>::max(),
                      "fewer than 2^32 - 1 tetrahedra");
    const std::vector<std::uint32_t> vHoles = findHoles(tets, m_order, m_numTets);
    m_vNumberOfMoved.reserve(m_order.getNumElements() - m_numTets);
    std::size_t numBefore = 0;
    m_pool.forEachBlock([&](Tet3* pFirst, std::size_t size) {
        for (std::size_t i = std::max(m_numTets, numBefore); i < numBefore + size; ++i) {
            Tet3* pTet = pFirst + (i - numBefore);
            if (pTet->hasBeenVisited) {
                m_vNumberOfMoved.push_back(0);
                continue;
            }
            VORN_ASSERT(m_vMoved.size() < vHoles.size());
            m_vNumberOfMoved.push_back(vHoles[m_vMoved.size()]);
            m_vMoved.push_back(pTet);
        }
        numBefore += size;
    });
    VORN_ASSERT(m_vMoved.size() == vHoles.size());
}

} // namespace VORN3D
