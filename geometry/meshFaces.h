// The triangles and edges of a mesh, numbered.
#pragma once

#include "vorn3d/MeshArrays.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

/// Triangles are numbered by their first tetrahedron and the corner opposite, edges by the numbers of their
/// ends, smaller end first.
struct MeshFaces
{
    explicit MeshFaces(const MeshArrays& mesh);

    std::vector<std::uint32_t> vTriangleCorners; ///< three each, counter-clockwise from outside the first tet
    std::vector<std::uint32_t> vTriangleOfFacet; ///< for tetrahedron t and corner i at 4 t + i
    std::vector<std::size_t> vFacetOfTriangle;   ///< the first of its facets, 4 t + i
    std::vector<std::uint32_t> vEdgeEnds;        ///< two each, the smaller first
    std::vector<std::uint32_t> vEdgeOfSide;      ///< for triangle t the edge opposite its corner i at 3 t + i

    std::size_t getNumTriangles() const { return vTriangleCorners.size() / 3; }
    std::size_t getNumEdges() const { return vEdgeEnds.size() / 2; }

private:
    void listTriangles(const MeshArrays& mesh);
    void listEdges(std::size_t numPoints);
};

} // namespace VORN3D
