// Facets of tetrahedra in arrays: facet i of tetrahedron t, opposite its corner i, has the number 4 t + i.
#pragma once

#include "vorn3d/MeshArrays.h"

#include <array>
#include <cstddef>

namespace VORN3D
{

/// The corners of the facet opposite each corner, counter-clockwise from outside.
inline constexpr std::array<std::array<std::size_t, 3>, 4> FACET_CORNERS = {
    {{1, 2, 3}, {0, 3, 2}, {0, 1, 3}, {0, 2, 1}}};

/// The facet of a tetrahedron across which its neighbour is.
inline std::size_t getFacetOfNeighbor(const MeshArrays& mesh, std::size_t tet, std::size_t neighbor)
{
    std::size_t facet = 4 * tet;
    while (mesh.vNeighbors[facet] != neighbor)
        ++facet;
    return facet;
}

} // namespace VORN3D
