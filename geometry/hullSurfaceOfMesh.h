// The surface of the hull for those who have the mesh as numbers already.
#pragma once

#include "vorn3d/geometry/HullSurface.h"

namespace VORN3D
{

/// As makeHullSurface(), for the arrays of vHandles.
HullSurface makeHullSurfaceOfMesh(const MeshArrays& mesh, const std::vector<Point3*>& vHandles);

} // namespace VORN3D
