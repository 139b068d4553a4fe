// The tetrahedra around a vertex, one after the other, without marks on the mesh.
#pragma once

#include "nalo_tools/AddressSet.h"
#include "vorn3d/Point3.h"
#include "vorn3d/Tet3.h"

#include <array>
#include <vector>

namespace VORN3D
{

using Corners = std::array<Point3*, 4>;
using OppTets = std::array<Tet3*, 4>;

inline Corners getCorners(const Tet3& tet)
{
    Corners corners;
    tet.getCorners(corners[0], corners[1], corners[2], corners[3]);
    return corners;
}

inline OppTets getOppTets(const Tet3& tet)
{
    OppTets neighbors;
    tet.getOppTets(neighbors[0], neighbors[1], neighbors[2], neighbors[3]);
    return neighbors;
}

/// A tetrahedron around a vertex, and the one from which it was reached: null for the first.
struct StarTet
{
    Tet3* pTet;
    Tet3* pFrom;
};

/// Calls use(StarTet, its corners, its neighbours) for each tetrahedron around vtx, which must have one, in
/// an order that starts at its getOneTet() and always is the same. Ends early when use answers true.
template <class Use>
void forEachTetAroundVertex(const Point3& vtx, const Use& use)
{
    AddressSet<Tet3> seen;
    std::vector<StarTet> vReached;
    vReached.reserve(64);
    const auto reach = [&](Tet3* pTet, Tet3* pFrom) {
        if (pTet != nullptr && seen.insert(pTet))
            vReached.push_back({pTet, pFrom});
    };
    reach(vtx.getOneTet(), nullptr);
    // The list grows meanwhile.
    std::size_t numDone = 0;
    while (numDone < vReached.size()) {
        const StarTet reached = vReached[numDone++];
        const Corners corners = getCorners(*reached.pTet);
        const OppTets neighbors = getOppTets(*reached.pTet);
        if (use(reached, corners, neighbors))
            return;
        for (std::size_t k = 0; k < 4; ++k)
            if (corners[k] != &vtx)
                reach(neighbors[k], reached.pTet);
    }
}

/// Calls use(vertex) for each vertex that an edge joins with vtx, for some of them more than once. Ends early
/// when use answers true.
template <class Use>
void forEachNeighborVertex(const Point3& vtx, const Use& use)
{
    // Of a tetrahedron with a predecessor only the corner opposite the common facet is new.
    forEachTetAroundVertex(
        vtx, [&](const StarTet& reached, const Corners& corners, const OppTets& neighbors) {
            for (std::size_t i = 0; i < 4; ++i) {
                const bool bNew = reached.pFrom == nullptr || neighbors[i] == reached.pFrom;
                if (bNew && corners[i] != &vtx && use(corners[i]))
                    return true;
            }
            return false;
        });
}

} // namespace VORN3D
