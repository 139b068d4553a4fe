// TetSet: a set of tetrahedra by address, for traversals that must not mark the mesh. Open addressing with
// linear probing in one block of memory, at most half full.
#pragma once

#include "vorn3d/Tet3.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

class TetSet
{
public:
    TetSet() : m_vSlots(128, nullptr) {}

    /// Says whether pTet (not null) is new to the set.
    bool insert(const Tet3* pTet)
    {
        if (!place(pTet))
            return false;
        if (2 * ++m_numUsed > m_vSlots.size())
            grow();
        return true;
    }

private:
    bool place(const Tet3* pTet)
    {
        const std::size_t mask = m_vSlots.size() - 1;
        // Multiplicative hashing; the upper half of the product is the well mixed one.
        auto i = static_cast<std::size_t>(
            (reinterpret_cast<std::uintptr_t>(pTet) * UINT64_C(0x9E3779B97F4A7C15)) >> 32);
        for (i &= mask; m_vSlots[i] != nullptr; i = (i + 1) & mask)
            if (m_vSlots[i] == pTet)
                return false;
        m_vSlots[i] = pTet;
        return true;
    }

    void grow()
    {
        std::vector<const Tet3*> vOld(2 * m_vSlots.size(), nullptr);
        vOld.swap(m_vSlots);
        for (const Tet3* pTet : vOld)
            if (pTet != nullptr)
                place(pTet);
    }

    std::vector<const Tet3*> m_vSlots;
    std::size_t m_numUsed = 0;
};

} // namespace VORN3D
