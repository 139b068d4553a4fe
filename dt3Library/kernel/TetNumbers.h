// TetNumbers numbers the live tetrahedra without a gap: by the place of their records in the pool, the last
// ones taking the numbers of the dead.
#pragma once

#include "kernel/TetStore.h"
#include "nalo_tools/PoolOrder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

/// Of the mesh as it is between two insertions.
class TetNumbers
{
public:
    explicit TetNumbers(const TetStore& tets);

    std::size_t getNumTets() const { return m_numTets; }

    /// The number of a live tetrahedron.
    std::uint32_t getNumber(const Tet3* pTet) const
    {
        const std::size_t place = m_order.getPlace(pTet);
        return place < m_numTets ? static_cast<std::uint32_t>(place) : m_vNumberOfMoved[place - m_numTets];
    }

    /// Calls visit(Tet3*) in the order of the numbers.
    template <typename Visitor>
    void forEachTet(Visitor visit) const
    {
        std::size_t numLeft = m_numTets;
        auto moved = m_vMoved.begin();
        m_pool.forEachBlock([&](Tet3* pFirst, std::size_t size) {
            size = std::min(size, numLeft);
            numLeft -= size;
            for (Tet3* pTet = pFirst; pTet < pFirst + size; ++pTet)
                visit(pTet->hasBeenVisited ? *moved++ : pTet);
        });
    }

private:
    const SimplePool<Tet3>& m_pool;
    PoolOrder<Tet3> m_order;
    std::size_t m_numTets;
    std::vector<Tet3*> m_vMoved;                 // the live ones at places from m_numTets on
    std::vector<std::uint32_t> m_vNumberOfMoved; // at those places
};

} // namespace VORN3D
