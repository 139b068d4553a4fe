// The mesh as tables of numbers, those of Triangulation. All take time linear in the size of their result,
// and need a Triangulation::Reading.
#pragma once

#include "Triangulation.h"

namespace VORN3D::python
{

/// Corners and neighbours of all tetrahedra; neighbour i is opposite corner i, -1 on the hull.
struct MeshTables
{
    Table<Index> simplices;
    Table<Index> neighbors;
};

MeshTables makeMeshTables(const Triangulation& triangulation);

/// The corners of all facets on the hull, counter-clockwise from outside.
Table<Index> makeHullFacets(const Triangulation& triangulation);

/// For each point the first of those equal to it; -1 if an insertion has ended before it.
Table<Index> makePointToVertex(const Triangulation& triangulation);

/// For each point a tetrahedron that has it as a corner; -1 if there is none.
Table<Index> makeVertexToSimplex(const Triangulation& triangulation);

/// The neighbours of all vertices in compressed rows: those of point i are vertices[starts[i]] up to,
/// without, vertices[starts[i + 1]]. A point that is equal to an earlier one has none.
struct VertexNeighbors
{
    Table<Index> starts;
    Table<Index> vertices;
};

VertexNeighbors makeVertexNeighbors(const Triangulation& triangulation, const Pulse& pulse);

/// The centres of the circumscribed spheres, and their squared radii in a fourth column.
Table<double> makeCircumspheres(const Triangulation& triangulation);

} // namespace VORN3D::python
