// Normals of triangles of any shape and size.
#pragma once

#include "vectors.h"
#include "vorn3d/Point3.h"

namespace VORN3D
{

/// (b - a) x (c - a), divided by its length, with an error below 10^-12 also where the triangle is a needle.
/// The points must not be collinear.
Vec getUnitNormal(const Point3& a, const Point3& b, const Point3& c);

} // namespace VORN3D
