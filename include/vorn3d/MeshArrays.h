#pragma once

#include <cstdint>
#include <vector>

namespace VORN3D
{

/// Stands for "none" where arrays hold numbers. As a signed number it is -1.
constexpr std::uint32_t NO_INDEX = 0xffffffff;

/// A mesh as numbers, the form in which other programs take it (see Vorn_3D::getArrays()). Points are
/// numbered from 0 as they were given, tetrahedra as they are listed here.
struct MeshArrays
{
    /// The corners of the tetrahedra, four each, positively oriented (see Tet3): for each its point, of equal
    /// points the first.
    std::vector<std::uint32_t> vCorners;

    /// The neighbours of the tetrahedra, four each, number i across the facet opposite corner i: NO_INDEX on
    /// the hull.
    std::vector<std::uint32_t> vNeighbors;

    /// For each point the one that stands for it in vCorners: itself, or the first that is equal to it.
    std::vector<std::uint32_t> vVertices;

    /// For each point a tetrahedron that has it as a corner; NO_INDEX if none has.
    std::vector<std::uint32_t> vTets;
};

} // namespace VORN3D
