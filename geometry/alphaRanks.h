// The order of a mesh's simplices by the alpha from which on they are in the complex.
#pragma once

#include "meshFaces.h"

#include <array>
#include <cstdint>
#include <vector>

namespace VORN3D
{

/// The ranks of edges, triangles and tetrahedra, from 1 on, and for each rank the value; 0 for rank 0, that
/// of vertices.
struct AlphaRanks
{
    std::vector<std::uint32_t> vEdges;
    std::vector<std::uint32_t> vTriangles;
    std::vector<std::uint32_t> vTets;
    std::vector<double> vValues;
};

/// The points are those of the mesh, by their numbers.
AlphaRanks rankSimplices(const std::vector<std::array<double, 3>>& vPoints, const MeshArrays& mesh,
                         const MeshFaces& faces);

} // namespace VORN3D
