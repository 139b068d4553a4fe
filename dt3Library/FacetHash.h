// FacetHash pairs the facets of the tetrahedra that an insertion builds around its new vertex.
//
// Such a facet contains the new vertex and one edge of the cavity's surface, so the edge identifies it;
// exactly the two tetrahedra on the two triangles at that edge have it in common. A slot keeps the sum of the
// addresses of the tetrahedra that have named its edge: once both have, each finds its partner as the sum
// less itself, without a branch on who came first. A facet of the new convex hull stays alone and its partner
// is null.
//
// Open addressing with linear probing. A slot counts only if it carries the stamp of the current insertion,
// so that starting anew costs nothing; the table is sized for the current insertion and stays in the
// first-level cache.
#pragma once

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
    std::uintptr_t low;
    std::uintptr_t high;
    std::uintptr_t sumOfTets;
    std::uint64_t stamp;
};

class FacetHash
{
public:
    FacetHash() : m_vSlots(MIN_SLOTS, TwoTetStruct{}), m_mask(MIN_SLOTS - 1) {}

    /// Forgets everything and expects up to `numEdges` edges. O(1) unless the table must grow.
    void start(std::size_t numEdges)
    {
        std::size_t numSlots = MIN_SLOTS;
        while (numSlots < 4 * numEdges)
            numSlots *= 2;
        useSlots(numSlots);
        ++m_stamp;
        m_numUsed = 0;
        numStoredTCS = 0;
    }

    /// Names the facet of pTet at the edge p, q. Returns its slot, which is valid until more edges than
    /// expected have come.
    std::size_t matchFacet(const Tet3* pTet, const Point3* p, const Point3* q)
    {
        const auto u = reinterpret_cast<std::uintptr_t>(p);
        const auto v = reinterpret_cast<std::uintptr_t>(q);
        const std::uintptr_t low = u < v ? u : v;
        const std::uintptr_t high = u < v ? v : u;
        const std::size_t slot = findSlot(low, high);
        const bool bWaiting = m_vSlots[slot].stamp == m_stamp;
        const std::uintptr_t sum = bWaiting ? m_vSlots[slot].sumOfTets : 0;
        m_vSlots[slot] = {low, high, sum + reinterpret_cast<std::uintptr_t>(pTet), m_stamp};
        m_numUsed += !bWaiting;
        numStoredTCS += bWaiting ? std::size_t(-1) : std::size_t(1);
        return slot;
    }

    /// The tetrahedron that shares the slot's facet with pTet; null while there is none.
    Tet3* getPartner(std::size_t slot, const Tet3* pTet) const
    {
        return reinterpret_cast<Tet3*>(m_vSlots[slot].sumOfTets - reinterpret_cast<std::uintptr_t>(pTet));
    }

    /// Keeps the table at most half full where the number of edges is not known in advance.
    void growIfNeeded()
    {
        if (2 * m_numUsed > m_mask)
            grow();
    }

    /// The number of facets that wait for their partner.
    std::size_t getNumStored() const { return numStoredTCS; }

private:
    static constexpr std::size_t MIN_SLOTS = 128;

    std::size_t findSlot(std::uintptr_t low, std::uintptr_t high) const
    {
        // Vertices lie 40 bytes apart; the golden ratio spreads their addresses over the upper bits.
        auto slot =
            static_cast<std::size_t>((((low >> 3) + (high >> 3)) * UINT64_C(0x9E3779B97F4A7C15)) >> 40) &
            m_mask;
        while (isTakenByOther(m_vSlots[slot], low, high))
            slot = (slot + 1) & m_mask;
        return slot;
    }

    // One condition for the branch predictor, and nearly always false.
    bool isTakenByOther(const TwoTetStruct& slot, std::uintptr_t low, std::uintptr_t high) const
    {
        return (slot.stamp == m_stamp) & (((slot.low ^ low) | (slot.high ^ high)) != 0);
    }

    void useSlots(std::size_t numSlots)
    {
        m_mask = numSlots - 1;
        if (m_vSlots.size() < numSlots)
            m_vSlots.resize(numSlots, TwoTetStruct{});
    }

    void grow();

    std::vector<TwoTetStruct> m_vSlots;
    std::size_t m_mask;
    // 64 bits never run out. Stamp 0 is that of slots never used.
    std::uint64_t m_stamp = 0;
    std::size_t m_numUsed = 0;
    std::size_t numStoredTCS = 0;
};

} // namespace VORN3D
