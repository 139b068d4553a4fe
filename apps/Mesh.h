#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace VORN3D
{
class Point3;
class Vorn_3D;
} // namespace VORN3D

namespace VORN3D::program
{

/// A finished triangulation in numbers, as files hold it. Vertices are in the order of the input; where equal
/// points made one vertex, the first of them counts. Valid as long as the triangulation is not changed.
struct Mesh
{
    static constexpr int none = -1;

    using Quadruple = std::array<int, 4>;
    using Triple = std::array<int, 3>;

    std::vector<const Point3*> vVertices;
    std::vector<Quadruple> vCorners;   ///< of each tetrahedron, positively oriented
    std::vector<Quadruple> vNeighbors; ///< across the facet opposite each corner, or none
    std::vector<Triple> vHullFacets;   ///< counter-clockwise from outside
};

/// Lists the mesh, which must exist. The custom indices of the vertices are to be different; those of the
/// tetrahedra are overwritten.
Mesh makeMesh(const Vorn_3D& triangulation);

/// For each vertex whether it is a corner of a hull facet.
std::vector<bool> findHullVertices(const Mesh& mesh);

} // namespace VORN3D::program
