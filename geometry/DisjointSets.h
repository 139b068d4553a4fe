// Sets of numbers that are joined one by one.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <vector>

namespace VORN3D
{

/// Union-find with path halving.
class DisjointSets
{
public:
    explicit DisjointSets(std::size_t num) : m_vParents(num)
    {
        std::iota(m_vParents.begin(), m_vParents.end(), 0U);
    }

    /// The least element of the set, so that it can stand for it.
    std::uint32_t find(std::uint32_t i)
    {
        while (m_vParents[i] != i)
            i = m_vParents[i] = m_vParents[m_vParents[i]];
        return i;
    }

    /// True if they were in two sets.
    bool join(const std::array<std::uint32_t, 2>& elements)
    {
        const std::uint32_t i = find(elements[0]);
        const std::uint32_t k = find(elements[1]);
        m_vParents[std::max(i, k)] = std::min(i, k);
        return i != k;
    }

private:
    std::vector<std::uint32_t> m_vParents;
};

} // namespace VORN3D
