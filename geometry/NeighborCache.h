// The neighbours of vertices that were asked for lately, for queries of which each is near the one before.
#pragma once

#include "vertexStar.h"

#include <array>
#include <cstdint>
#include <vector>

namespace VORN3D
{

class NeighborCache
{
public:
    /// With the coordinates, so that a look at all of them reads one piece of memory.
    struct Neighbor
    {
        Point3* pVtx;
        std::array<double, 3> coordinates;
    };
    using Neighbors = std::vector<Neighbor>;

    NeighborCache() : m_vSlots(NUM_SLOTS) {}

    /// The vertices that an edge joins with vtx, each once; valid until the next call.
    const Neighbors& getNeighbors(const Point3& vtx)
    {
        // Multiplicative hashing.
        const std::uint64_t product = reinterpret_cast<std::uintptr_t>(&vtx) * UINT64_C(0x9E3779B97F4A7C15);
        Slot& slot = m_vSlots[product >> (64 - LOG_NUM_SLOTS)];
        if (slot.pVtx != &vtx) {
            slot.pVtx = &vtx;
            slot.vNeighbors.clear();
            AddressSet<Point3> seen;
            forEachNeighborVertex(vtx, [&](Point3* pNeighbor) {
                if (seen.insert(pNeighbor))
                    slot.vNeighbors.push_back({pNeighbor, {pNeighbor->x(), pNeighbor->y(), pNeighbor->z()}});
                return false;
            });
        }
        return slot.vNeighbors;
    }

private:
    static constexpr int LOG_NUM_SLOTS = 12;
    static constexpr std::size_t NUM_SLOTS = std::size_t{1} << LOG_NUM_SLOTS;

    struct Slot
    {
        const Point3* pVtx = nullptr;
        Neighbors vNeighbors;
    };

    std::vector<Slot> m_vSlots;
};

} // namespace VORN3D
