// AddressSet: a set of objects by address, for traversals that must not mark what they visit. Open addressing
// with linear probing, at most half full; the first slots are in the object, so that small sets take no
// memory from elsewhere.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

template <class T>
class AddressSet
{
public:
    AddressSet() = default;
    AddressSet(const AddressSet&) = delete;
    AddressSet& operator=(const AddressSet&) = delete;

    /// Says whether p (not null) is new to the set.
    bool insert(const T* p)
    {
        const T*& slot = find(p);
        if (slot != nullptr)
            return false;
        slot = p;
        if (2 * ++m_numUsed > m_mask)
            grow();
        return true;
    }

    bool contains(const T* p) { return find(p) != nullptr; }

private:
    static constexpr std::size_t NUM_FIRST_SLOTS = 128;

    // The slot that holds p, or where it belongs.
    const T*& find(const T* p)
    {
        // Multiplicative hashing; the upper half of the product is the well mixed one.
        auto i = static_cast<std::size_t>(
            (reinterpret_cast<std::uintptr_t>(p) * UINT64_C(0x9E3779B97F4A7C15)) >> 32);
        for (i &= m_mask; m_pSlots[i] != nullptr && m_pSlots[i] != p;)
            i = (i + 1) & m_mask;
        return m_pSlots[i];
    }

    void grow()
    {
        const std::vector<const T*> vOld(m_pSlots, m_pSlots + m_mask + 1);
        m_vSlots.assign(2 * vOld.size(), nullptr);
        m_pSlots = m_vSlots.data();
        m_mask = m_vSlots.size() - 1;
        for (const T* p : vOld)
            if (p != nullptr)
                find(p) = p;
    }

    std::array<const T*, NUM_FIRST_SLOTS> m_aFirstSlots = {};
    std::vector<const T*> m_vSlots;
    const T** m_pSlots = m_aFirstSlots.data();
    std::size_t m_mask = NUM_FIRST_SLOTS - 1;
    std::size_t m_numUsed = 0;
};

} // namespace VORN3D
