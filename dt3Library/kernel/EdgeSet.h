// EdgeSet holds the edges that a search across the hull has met. Open addressing with linear probing, at most
// half full. A slot counts only if it carries the current stamp, so that clearing costs nothing.
#pragma once

#include "kernel/EdgeKey.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

class EdgeSet
{
public:
    EdgeSet() : m_vSlots(MIN_SLOTS) {}

    void clear()
    {
        ++m_stamp;
        m_numUsed = 0;
        m_mask = MIN_SLOTS - 1;
    }

    /// Says whether the edge is new to the set.
    bool insert(const EdgeKey& edge)
    {
        if (2 * m_numUsed > m_mask)
            grow();
        // Whether it is new is as good as random, so nothing branches on it.
        Slot& slot = findSlot(edge);
        const bool bNew = slot.stamp != m_stamp;
        slot = {edge, m_stamp};
        m_numUsed += bNew;
        return bNew;
    }

private:
    struct Slot
    {
        EdgeKey edge;
        std::uint64_t stamp = 0;
    };

    static constexpr std::size_t MIN_SLOTS = 64;

    Slot& findSlot(const EdgeKey& edge)
    {
        std::size_t index = edge.getHash() & m_mask;
        while (m_vSlots[index].stamp == m_stamp && !(m_vSlots[index].edge == edge))
            index = (index + 1) & m_mask;
        return m_vSlots[index];
    }

    // Doubles the part of the table that is in use.
    void grow();

    std::vector<Slot> m_vSlots;
    std::size_t m_mask = MIN_SLOTS - 1;
    std::size_t m_numUsed = 0;
    // 64 bits never run out. Stamp 0 is that of slots never used.
    std::uint64_t m_stamp = 1;
};

} // namespace VORN3D
