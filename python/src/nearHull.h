// Points that rounding has put beyond the hull.
#pragma once

#include <vorn3d/geometry/interpolate.h>

#include <vector>

namespace VORN3D::python
{

/// Gives the points that are outside the hull, but no farther from it than the tolerance in any coordinate,
/// the weights of the nearest place in it; their rows in the matrix are empty.
void fillRowsNearHull(InterpolationMatrix& matrix, const Vorn_3D& dt, const std::vector<Point3>& vPoints,
                      double tolerance);

} // namespace VORN3D::python
