// FacetHash pairs the facets of the tetrahedra that an insertion builds around its new vertex.
//
// Such a facet is identified by the edge that it shares with the surface of the cavity. Around that surface,
// which is consistently oriented, an edge a -> b of one triangle is the edge b -> a of its neighbour, so each
// facet looks for the reversed edge. A facet of the new convex hull finds none and stays alone.
//
// Open addressing with linear probing; slots are valid only if they carry the stamp of the current insertion,
// so that starting anew costs nothing. A paired slot stays in place: no edge comes a third time.
#pragma once

#include "vorn3d/Point3.h"
#include "vorn3d/Tet3.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D {

/// A facet of a new tetrahedron that waits for the tetrahedron beyond it.
struct TwoTetStruct
{
    Point3* pSource;
    Point3* pTarget;
    Tet3* pTet;
    std::int32_t ici;
    std::uint32_t stamp;
};

class FacetHash
{
public:
    FacetHash() : m_vSlots(MIN_SLOTS, TwoTetStruct{}), m_mask(MIN_SLOTS - 1) {}

    /// Forgets everything; expects about `numEdges` edges. O(1) unless the table must grow.
    void start(std::size_t numEdges)
    {
        std::size_t numSlots = MIN_SLOTS;
        while (numSlots < 2 * numEdges)
            numSlots *= 2;
        useSlots(numSlots);
        startStamp();
        m_numUsed = 0;
        numStoredTCS = 0;
    }

    /// The waiting facet at the edge pTarget -> pSource, or null, in which case (pTet, ici) now waits at
    /// pSource -> pTarget.
    const TwoTetStruct* matchFacet(Tet3* pTet, int ici, Point3* pSource, Point3* pTarget)
    {
        TwoTetStruct* pSlot = &m_vSlots[getKey(pSource, pTarget)];
        while (pSlot->stamp == m_stamp) {
            if (pSlot->pSource == pTarget && pSlot->pTarget == pSource) {
                --numStoredTCS;
                return pSlot;
            }
            pSlot = getNextSlot(pSlot);
        }
        *pSlot = {pSource, pTarget, pTet, ici, m_stamp};
        ++numStoredTCS;
        if (2 * ++m_numUsed > m_mask)
            grow();
        return nullptr;
    }

    /// The number of facets that wait.
    std::size_t getNumStored() const { return numStoredTCS; }

private:
    static constexpr std::size_t MIN_SLOTS = 128;

    // The same for both directions of an edge. Vertices lie 40 bytes apart, so the lowest bits say nothing.
    std::size_t getKey(const Point3* pSource, const Point3* pTarget) const
    {
        const auto sum = (reinterpret_cast<std::uintptr_t>(pSource) >> 3) +
                         (reinterpret_cast<std::uintptr_t>(pTarget) >> 3);
        return static_cast<std::size_t>((sum * UINT64_C(0x9E3779B97F4A7C15)) >> 40) & m_mask;
    }

    TwoTetStruct* getNextSlot(TwoTetStruct* pSlot)
    {
        const auto index = static_cast<std::size_t>(pSlot - m_vSlots.data());
        return &m_vSlots[(index + 1) & m_mask];
    }

    void useSlots(std::size_t numSlots)
    {
        m_mask = numSlots - 1;
        if (m_vSlots.size() < numSlots)
            m_vSlots.resize(numSlots, TwoTetStruct{});
    }

    // A new stamp makes every slot free. Stamp 0 is that of slots never used.
    void startStamp()
    {
        if (++m_stamp != 0)
            return;
        m_vSlots.assign(m_vSlots.size(), TwoTetStruct{});
        m_stamp = 1;
    }

    void grow();

    std::vector<TwoTetStruct> m_vSlots;
    std::size_t m_mask;
    std::uint32_t m_stamp = 0;
    std::size_t m_numUsed = 0;
    std::size_t numStoredTCS = 0;
};

} // namespace VORN3D
