// Exact signs about the smallest spheres through faces of the mesh: where a circumcentre lies in its
// tetrahedron, and whether a point lies in the diametral sphere of an edge.
//
// Stages as in the predicates of the triangulation: floating point with a bound on the error, integers below
// 2^62 units, integers of any length. All finite coordinates; which stage answers never changes an answer.
#pragma once

#include "predicates/ExactSign.h"

#include <array>

namespace VORN3D
{

using TrianglePoints = PointArray<3>;
using TetPoints = PointArray<4>;

/// For each corner of a tetrahedron, positively oriented or negatively, the sign of its circumcentre's
/// barycentric coordinate: negative if the facet opposite the corner separates them. The same sign tells
/// where the corner lies to the smallest sphere through the facet's vertices: negative strictly inside, zero
/// on it, positive outside.
std::array<Sign, 4> getCircumcenterSides(const TetPoints& tet);

/// Where the last point lies to the sphere with the first two as ends of a diameter: negative strictly
/// inside, zero on it, positive outside.
Sign getDiametralSide(const TrianglePoints& points);

// The stages, one by one.

/// The filters of the two; undecided where the bound does not tell.
std::array<Sign, 4> filterCircumcenterSides(const TetPoints& tet);
Sign filterDiametralSide(const TrianglePoints& points);

/// Undecided unless all differences are multiples of a common power of two, below 2^62 times it.
std::array<Sign, 4> getCircumcenterSidesByIntegers(const TetPoints& tet);
Sign getDiametralSideByIntegers(const TrianglePoints& points);

/// Decide for any finite coordinates.
std::array<Sign, 4> getCircumcenterSidesInExtendedRange(const TetPoints& tet);
Sign getDiametralSideInExtendedRange(const TrianglePoints& points);

} // namespace VORN3D
