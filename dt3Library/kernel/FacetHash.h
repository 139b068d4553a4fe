// FacetHash pairs the facets of the tetrahedra that an insertion builds around its new vertex, if they are
// too many for EdgeMatrix.
//
// Such a facet contains the new vertex and one edge of the cavity's surface, so the edge identifies it;
// exactly the two tetrahedra on the two triangles at that edge have it in common. A slot keeps the sum of the
// addresses of the tetrahedra that have named its edge: once both have, each finds its partner as the sum
// less itself, without a branch on who came first. A facet of the new convex hull stays alone and its partner
// is null.
//
// Open addressing with linear probing. Slots are small, and the table is sized for the current insertion, to
// stay in a cache.
#pragma once

#include "vorn3d/Tet3.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

class FacetHash
{
    // The tetrahedra that share a facet at an edge, which is named by the numbers of its ends, the smaller
    // one in the upper half.
    struct Slot
    {
        std::uint64_t edge;
        std::uintptr_t sumOfTets;
    };

    static constexpr std::uint64_t NO_EDGE = 0; // from the first vertex to itself
    static constexpr std::size_t SLOTS_PER_EDGE = 2;

public:
    /// Forgets everything and makes room for `numEdges` edges. Linear in these.
    void start(std::size_t numEdges)
    {
        m_numBits = 7;
        while (std::size_t{1} << m_numBits < SLOTS_PER_EDGE * numEdges)
            ++m_numBits;
        const std::size_t numSlots = std::size_t{1} << m_numBits;
        if (m_vSlots.size() < numSlots)
            m_vSlots.resize(numSlots);
        std::fill_n(m_vSlots.begin(), numSlots, Slot{NO_EDGE, 0});
    }

    /// Enters the tetrahedra of a star, one by one. Works on registers; the table must not be used otherwise
    /// meanwhile.
    class Matcher
    {
    public:
        explicit Matcher(FacetHash& edges)
            : m_pSlots(edges.m_vSlots.data()), m_mask((std::size_t{1} << edges.m_numBits) - 1),
              m_shift(64 - edges.m_numBits)
        {
        }

        /// Enters pTet at an edge of its base. Returns where its partner there will be found.
        std::uint32_t match(const Tet3* pTet, std::uint32_t source, std::uint32_t target) const
        {
            const std::uint64_t edge =
                std::uint64_t{std::min(source, target)} << 32 | std::max(source, target);
            std::size_t index = edge * UINT64_C(0x9E3779B97F4A7C15) >> m_shift;
            // A slot of another edge: one condition, and seldom true.
            while (((m_pSlots[index].edge != edge) & (m_pSlots[index].edge != NO_EDGE)) != 0)
                index = (index + 1) & m_mask;
            m_pSlots[index].edge = edge;
            m_pSlots[index].sumOfTets += reinterpret_cast<std::uintptr_t>(pTet);
            return static_cast<std::uint32_t>(index);
        }

    private:
        Slot* const m_pSlots;
        const std::size_t m_mask;
        const unsigned m_shift;
    };

    /// The tetrahedron that shares the facet with pTet; null if there is none.
    Tet3* takePartner(std::uint32_t slot, const Tet3* pTet) const
    {
        return reinterpret_cast<Tet3*>(m_vSlots[slot].sumOfTets - reinterpret_cast<std::uintptr_t>(pTet));
    }

private:
    std::vector<Slot> m_vSlots;
    unsigned m_numBits = 0;
};

} // namespace VORN3D
