#pragma once

#include "../Vorn_3D.h"

#include <cstddef>
#include <vector>

namespace VORN3D
{

/// The vertex of the mesh whose Euclidean distance from p is least, for any p inside or outside the hull; of
/// several at the same distance the first by coordinates (Point3::operator<). Null if p is not finite or
/// there is no mesh.
///
/// Exact: distances are compared as real numbers. The search locates p by a walk, from pStart or, if that is
/// null, from a vertex near p on a space-filling curve, and then goes from vertex to vertex along edges of
/// the mesh as long as one is nearer; on well spread points one or two steps, each of which looks at some ten
/// tetrahedra. Outside the hull the number of
/// steps grows with the number of vertices in between.
///
/// Source: in a Delaunay mesh each vertex but the nearest has a neighbour that is nearer, since its closed
/// Voronoi cell does not contain p; among the nearest ones, which are the corners of a convex polytope that
/// the mesh fills, each but the first by coordinates has a neighbour that comes before it, as in the simplex
/// method.
VORN3D_GEOMETRY_EXPORT Point3* nearestVertex(const Vorn_3D& dt, const Point3& p, Tet3* pStart = nullptr);

/// The k vertices of the mesh nearest to p, nearest first, equally distant ones in the order of their
/// coordinates; all vertices of the mesh if it has fewer. Empty if p is not finite or there is no mesh.
///
/// Exact. After the search for the nearest vertex the time grows as k log k on well spread points: each
/// further one is a neighbour, in the mesh, of one found before (see nearestVertex()), and the neighbours are
/// kept in a heap.
VORN3D_GEOMETRY_EXPORT std::vector<Point3*> kNearestVertices(const Vorn_3D& dt, const Point3& p,
                                                             std::size_t k, Tet3* pStart = nullptr);

/// The same for many points: the k nearest vertices of point i begin at k * i. Where there are fewer, the
/// places left are null. The points are looked up in an order in which neighbours follow each other, so that
/// walks are short.
VORN3D_GEOMETRY_EXPORT std::vector<Point3*>
nearestVertices(const Vorn_3D& dt, const std::vector<Point3>& vPoints, std::size_t k = 1);

/// The vertices that an edge of the mesh joins with vtx, each once, in no particular order but always the
/// same. Empty if vtx is not a vertex of a mesh. Takes time linear in the number of tetrahedra around vtx.
VORN3D_GEOMETRY_EXPORT std::vector<Point3*> getVertexNeighbors(const Point3* pVtx);

} // namespace VORN3D
