// Numbers for what is met in the mesh.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace VORN3D
{

/// A set of keys other than zero, which it numbers from 0 in the order of their coming. It keeps its memory
/// when it is cleared, for the next of many small sets.
class NumberedSet
{
public:
    NumberedSet() : m_vKeys(NUM_FIRST_SLOTS, 0), m_vNumbers(NUM_FIRST_SLOTS) {}

    /// The number of the key, and whether it is new to the set.
    std::pair<std::uint32_t, bool> insert(std::uint64_t key)
    {
        const std::size_t slot = findSlot(key);
        if (m_vKeys[slot] != 0)
            return {m_vNumbers[slot], false};
        const std::uint32_t number = m_size++;
        m_vKeys[slot] = key;
        m_vNumbers[slot] = number;
        if (2 * std::size_t{m_size} > m_vKeys.size())
            grow();
        return {number, true};
    }
    std::pair<std::uint32_t, bool> insert(const void* p) { return insert(getKey(p)); }

    /// The number of the key, or -1.
    std::int64_t find(std::uint64_t key) const
    {
        const std::size_t slot = findSlot(key);
        return m_vKeys[slot] == 0 ? -1 : std::int64_t{m_vNumbers[slot]};
    }
    std::int64_t find(const void* p) const { return find(getKey(p)); }

    void clear()
    {
        m_vKeys.assign(NUM_FIRST_SLOTS, 0);
        m_size = 0;
    }

private:
    static constexpr std::size_t NUM_FIRST_SLOTS = 128;

    static std::uint64_t getKey(const void* p) { return reinterpret_cast<std::uintptr_t>(p); }

    // The slot that holds the key, or where it belongs.
    std::size_t findSlot(std::uint64_t key) const
    {
        // Multiplicative hashing; the upper half of the product is the well mixed one.
        const std::size_t mask = m_vKeys.size() - 1;
        auto i = static_cast<std::size_t>((key * UINT64_C(0x9E3779B97F4A7C15)) >> 32) & mask;
        while (m_vKeys[i] != 0 && m_vKeys[i] != key)
            i = (i + 1) & mask;
        return i;
    }

    void grow()
    {
        const std::vector<std::uint64_t> vKeys = std::move(m_vKeys);
        const std::vector<std::uint32_t> vNumbers = std::move(m_vNumbers);
        m_vKeys.assign(2 * vKeys.size(), 0);
        m_vNumbers.resize(m_vKeys.size());
        for (std::size_t i = 0; i < vKeys.size(); ++i)
            if (vKeys[i] != 0) {
                const std::size_t slot = findSlot(vKeys[i]);
                m_vKeys[slot] = vKeys[i];
                m_vNumbers[slot] = vNumbers[i];
            }
    }

    std::vector<std::uint64_t> m_vKeys; // a power of two of slots; 0 where nothing is
    std::vector<std::uint32_t> m_vNumbers;
    std::uint32_t m_size = 0;
};

} // namespace VORN3D
