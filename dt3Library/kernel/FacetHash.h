// FacetHash pairs the facets of the tetrahedra that an insertion builds around its new vertex, if they are
// too many for EdgeMatrix.
//
// Such a facet contains the new vertex and one edge of the cavity's surface, so the edge identifies it;
// exactly the two tetrahedra on the two triangles at that edge have it in common. A slot keeps the sum of the
// addresses of the tetrahedra that have named its edge: once both have, each finds its partner as the sum
// less itself, without a branch on who came first. A facet of the new convex hull stays alone and its partner
// is null.
//
// Open addressing with linear probing. A slot counts only if it carries the stamp of the current insertion,
// so that starting anew costs nothing; the table is sized for the current insertion, to stay in a cache.
#pragma once

#include "kernel/EdgeKey.h"
#include "nalo_tools/ScratchList.h"
#include "vorn3d/Point3.h"
#include "vorn3d/Tet3.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

/// The tetrahedra that share a facet at the edge between two vertices.
struct TwoTetStruct
{
    EdgeKey edge;
    std::uintptr_t sumOfTets = 0;
    std::uint64_t stamp = 0;
};

class FacetHash
{
public:
    FacetHash() : m_vSlots(MIN_SLOTS, TwoTetStruct{}), m_mask(MIN_SLOTS - 1) {}

    /// Forgets everything and makes room for `numEdges` edges. O(1) unless the table must grow.
    void start(std::size_t numEdges)
    {
        ++m_stamp;
        m_mask = MIN_SLOTS - 1;
        while (m_mask < SLOTS_PER_EDGE * numEdges)
            m_mask = 2 * m_mask + 1;
        if (m_vSlots.size() <= m_mask)
            m_vSlots.resize(m_mask + 1, TwoTetStruct{});
    }

    /// Names the facet of pTet at an edge. Returns its slot.
    std::uint32_t matchFacet(const Tet3* pTet, const EdgeKey& edge)
    {
        const std::size_t index = findSlot(edge);
        TwoTetStruct& slot = m_vSlots[index];
        const std::uintptr_t sumBefore = slot.sumOfTets & getMaskIfUsed(slot);
        slot = {edge, sumBefore + reinterpret_cast<std::uintptr_t>(pTet), m_stamp};
        return static_cast<std::uint32_t>(index);
    }

    /// The tetrahedron that shares the slot's facet with pTet; null while there is none.
    Tet3* takePartner(std::uint32_t slot, const Tet3* pTet) const
    {
        return reinterpret_cast<Tet3*>(m_vSlots[slot].sumOfTets - reinterpret_cast<std::uintptr_t>(pTet));
    }

    /// Enters the tetrahedra of a star, one by one.
    class Matcher
    {
    public:
        explicit Matcher(FacetHash& edges) : m_edges(edges) {}

        /// Enters pTet, whose base is a, b, c. Appends the slots of its facets opposite these three.
        void match(const Tet3* pTet, const Point3* a, const Point3* b, const Point3* c,
                   ScratchList<std::uint32_t>::Appender& slots)
        {
            slots.append(m_edges.matchFacet(pTet, {b, c}));
            slots.append(m_edges.matchFacet(pTet, {c, a}));
            slots.append(m_edges.matchFacet(pTet, {a, b}));
        }

    private:
        FacetHash& m_edges;
    };

private:
    static constexpr std::size_t MIN_SLOTS = 128;
    static constexpr std::size_t SLOTS_PER_EDGE = 2;

    std::size_t findSlot(const EdgeKey& edge) const
    {
        std::size_t index = edge.getHash() & m_mask;
        // A slot of another edge: one condition, and seldom true.
        while ((((m_vSlots[index].edge.low ^ edge.low) | (m_vSlots[index].edge.high ^ edge.high)) &
                getMaskIfUsed(m_vSlots[index])) != 0)
            index = (index + 1) & m_mask;
        return index;
    }

    // All bits set if the slot counts, none otherwise: whether it does is as good as random, so nothing
    // branches.
    std::uintptr_t getMaskIfUsed(const TwoTetStruct& slot) const
    {
        return std::uintptr_t{0} - std::uintptr_t{slot.stamp == m_stamp};
    }

    std::vector<TwoTetStruct> m_vSlots;
    std::size_t m_mask;
    // 64 bits never run out. Stamp 0 is that of slots never used.
    std::uint64_t m_stamp = 0;
};

} // namespace VORN3D
