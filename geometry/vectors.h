// Vectors for loops, where the calls to Vector3's members would count.
#pragma once

#include "vorn3d/Point3.h"

#include <algorithm>
#include <cmath>

namespace VORN3D
{

struct Vec
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline Vec operator+(const Vec& a, const Vec& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec operator-(const Vec& a, const Vec& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec operator*(double factor, const Vec& a)
{
    return {factor * a.x, factor * a.y, factor * a.z};
}
inline double dot(const Vec& a, const Vec& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec cross(const Vec& a, const Vec& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline Vec getVector(const Point3& from, const Point3& to)
{
    return {to.x() - from.x(), to.y() - from.y(), to.z() - from.z()};
}

/// The largest component.
inline double getExtent(const Vec& v)
{
    return std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
}

} // namespace VORN3D
