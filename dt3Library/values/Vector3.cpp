#include "vorn3d/Vector3.h"

#include "vorn3d/hosting.h"

#include "vorn3d/Point3.h"

#include <cmath>

namespace VORN3D
{

Vector3 Vector3::operator+(const Vector3& other) const
{
    return {m_x + other.m_x, m_y + other.m_y, m_z + other.m_z};
}

Vector3 Vector3::operator-(const Vector3& other) const
{
    return {m_x - other.m_x, m_y - other.m_y, m_z - other.m_z};
}

Vector3 Vector3::operator-() const
{
    return {-m_x, -m_y, -m_z};
}

Vector3 Vector3::operator*(double factor) const
{
    return {m_x * factor, m_y * factor, m_z * factor};
}

Vector3 Vector3::operator/(double divisor) const
{
    return {m_x / divisor, m_y / divisor, m_z / divisor};
}

bool Vector3::operator==(const Vector3& other) const
{
    return m_x == other.m_x && m_y == other.m_y && m_z == other.m_z;
}

Vector3 operator*(double factor, const Vector3& v)
{
    return v * factor;
}

double dotProduct(const Vector3& a, const Vector3& b)
{
    return a.x() * b.x() + a.y() * b.y() + a.z() * b.z();
}

Vector3 crossProduct(const Vector3& a, const Vector3& b)
{
    return {a.y() * b.z() - a.z() * b.y(), a.z() * b.x() - a.x() * b.z(), a.x() * b.y() - a.y() * b.x()};
}

Vector3 normalize(const Vector3& v)
{
    const double length = std::sqrt(dotProduct(v, v));
    if (length > 0.0)
        return v / length;
    messages() << "warning: normalize(const Vector3& other), Null length vector!" << std::endl;
    return {};
}

Vector3 getNormalVector(const Point3& p0, const Point3& p1, const Point3& p2)
{
    const Vector3 a = normalize(p1 - p0);
    const Vector3 b = normalize(p2 - p0);
    return normalize(crossProduct(a, b));
}

} // namespace VORN3D
