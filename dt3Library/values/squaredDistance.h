#pragma once

#include "vorn3d/Point3.h"

namespace VORN3D
{

/// As computed in floating point; infinite for points far apart.
inline double getSquaredDistance(const Point3& p, const Point3& q)
{
    const double dx = p.x() - q.x();
    const double dy = p.y() - q.y();
    const double dz = p.z() - q.z();
    return dx * dx + dy * dy + dz * dz;
}

} // namespace VORN3D
