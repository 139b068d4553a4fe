#pragma once

#include "../Vorn_3D.h"

#include <array>

namespace VORN3D
{

/// The faces of a tetrahedron that a point can lie on, and none of them.
enum class LocationKind3 { VERTEX, EDGE, FACET, CELL, OUTSIDE };

/// Where a point lies in the mesh.
struct Location3
{
    /// The tetrahedron; null if there is no mesh or the point is not finite.
    Tet3* pTet = nullptr;

    /// The face of pTet whose relative interior contains the point.
    LocationKind3 kind = LocationKind3::OUTSIDE;

    /// All four corner indices of pTet, in an order that names the face: its corners come first, one for a
    /// vertex, two for an edge, three for a facet. For OUTSIDE the first three are a hull facet that the
    /// point is strictly beyond. The three corners of a facet appear counter-clockwise from outside pTet, and
    /// the fourth index is the one opposite it.
    std::array<int, 4> aIndex = {0, 1, 2, 3};
};

/// Finds the face of the mesh, that is the vertex, open edge, open facet or open tetrahedron, whose relative
/// interior contains p; these faces are disjoint and fill the convex hull with its boundary, so there is
/// exactly one, or none if p is outside.
///
/// Of the tetrahedra around a vertex, an edge or a facet any may be the answer's. Exact for any finite p. The
/// walk starts at pStart, several times as fast where that is close to p; if it is null, the walk starts from
/// a vertex that is near p on a space-filling curve.
///
/// Source: O. Devillers, S. Pion, M. Teillaud, Walking in a triangulation (2002).
VORN3D_GEOMETRY_EXPORT Location3 locateClosed(const Vorn_3D& dt, const Point3& p, Tet3* pStart = nullptr);

} // namespace VORN3D
