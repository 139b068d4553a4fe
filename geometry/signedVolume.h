// Volumes of tetrahedra whose relative error is small whatever their shape, and whose sign is exact. Sums of
// volumes of one sign, and ratios, are then as accurate.
#pragma once

#include "scaledDouble.h"
#include "vorn3d/Point3.h"

#include <array>

namespace VORN3D
{

class Tet3;

/// (b - a) x (c - a) . (d - a), six times the volume, with a relative error below 2^-43: exactly zero iff the
/// points are coplanar, else of the sign of their orientation. For all finite points.
ScaledDouble getSixfoldVolume(const Point3& a, const Point3& b, const Point3& c, const Point3& d);

/// The volume of the tetrahedron with its corner i replaced by p, sixfold: the distance of p from facet i, in
/// a unit of the facet's, positive on the inner side.
ScaledDouble getSixfoldVolume(const Tet3& tet, int i, const Point3& p);

/// from / (from - to), for numbers of which neither is zero, of opposite signs: where a linear function with
/// these values at 0 and 1 is zero.
double findZero(const ScaledDouble& from, const ScaledDouble& to);

/// The barycentric coordinates of a point of the closed tetrahedron, with errors below 2^-40: exactly zero
/// where it is in the plane of the facet opposite a corner, and positive elsewhere unless beyond the range of
/// doubles.
std::array<double, 4> getBarycentricCoordinates(const Tet3& tet, const Point3& p);

} // namespace VORN3D
