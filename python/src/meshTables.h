// Tables about the mesh, by the numbers of a Triangulation, of which they need a Reading.
#pragma once

#include "Triangulation.h"

#include <array>
#include <vector>

namespace VORN3D::python
{

/// The neighbours of all vertices in compressed rows: those of point i are vVertices[vStarts[i]] up to,
/// without, vVertices[vStarts[i + 1]]. A point that is equal to an earlier one has none.
struct VertexNeighbors
{
    std::vector<Index> vStarts;
    std::vector<Index> vVertices;
};

VertexNeighbors makeVertexNeighbors(const Triangulation& triangulation, const Pulse& pulse);

/// The centres of the circumscribed spheres, and their squared radii, for each tetrahedron.
std::vector<std::array<double, 4>> makeCircumspheres(const Triangulation& triangulation);

} // namespace VORN3D::python
