#pragma once

#include "vorn3d/Point3.h"

#include <cmath>

namespace VORN3D
{

/// False if a coordinate is infinite or not a number.
inline bool isFinite(const Point3& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y()) && std::isfinite(p.z());
}

} // namespace VORN3D
