#include "vorn3d/Point3.h"

#include "vorn3d/hosting.h"

#include <iomanip>

namespace VORN3D
{

Point3 Point3::operator+(const Vector3& v) const
{
    return {x() + v.x(), y() + v.y(), z() + v.z()};
}

Vector3 Point3::operator-(const Point3& other) const
{
    return {x() - other.x(), y() - other.y(), z() - other.z()};
}

void Point3::debug() const
{
    messages() << "Point3: " << x() << "," << y() << "," << z() << std::endl;
}

std::ostream& operator<<(std::ostream& os, const Point3& p)
{
    return os << static_cast<const void*>(&p) << "\t" << std::setw(8) << p.x() << ", " << std::setw(8)
              << p.y() << ", " << std::setw(8) << p.z();
}

Point3 getCircumcenter(const Point3& p0, const Point3& p1, const Point3& p2, const Point3& p3)
{
    // The centre c satisfies 2 (pi - p0) . (c - p0) = |pi - p0|^2 for i = 1, 2, 3; solved by Cramer's rule.
    const Vector3 a = p1 - p0;
    const Vector3 b = p2 - p0;
    const Vector3 c = p3 - p0;
    const Vector3 bc = crossProduct(b, c);
    const Vector3 numerator =
        dotProduct(a, a) * bc + dotProduct(b, b) * crossProduct(c, a) + dotProduct(c, c) * crossProduct(a, b);
    return p0 + numerator / (2.0 * dotProduct(a, bc));
}

} // namespace VORN3D
