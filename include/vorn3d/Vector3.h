#pragma once

#include "Export.h"

namespace VORN3D
{

class Point3;

/// A vector in space, in the unit of the points. Its operations are plain floating-point arithmetic.
class VORN3D_EXPORT Vector3
{
public:
    /// The zero vector.
    Vector3() = default;
    /// The vector of these components.
    Vector3(double x, double y, double z) : m_x(x), m_y(y), m_z(z) {}

    /// A component.
    ///@{
    double x() const { return m_x; }
    double y() const { return m_y; }
    double z() const { return m_z; }
    ///@}

    /// Component by component.
    ///@{
    Vector3 operator+(const Vector3& other) const;
    Vector3 operator-(const Vector3& other) const;
    Vector3 operator-() const;
    Vector3 operator*(double factor) const;
    Vector3 operator/(double divisor) const;
    ///@}

    /// Exact comparison of the coordinates.
    bool operator==(const Vector3& other) const;
    /// The opposite of ==.
    bool operator!=(const Vector3& other) const { return !(*this == other); }

private:
    double m_x = 0.0;
    double m_y = 0.0;
    double m_z = 0.0;
};

/// The same as v * factor.
VORN3D_EXPORT Vector3 operator*(double factor, const Vector3& v);

/// The scalar product.
VORN3D_EXPORT double dotProduct(const Vector3& a, const Vector3& b);
/// The vector product, by the right-hand rule.
VORN3D_EXPORT Vector3 crossProduct(const Vector3& a, const Vector3& b);

/// The vector of length 1 in the direction of v. A null vector yields the zero vector and a warning on
/// standard output.
VORN3D_EXPORT Vector3 normalize(const Vector3& v);

/// The unit normal of the triangle p0, p1, p2: the direction from which it is seen counter-clockwise.
/// A degenerate triangle yields the zero vector, after up to three warnings on standard output.
VORN3D_EXPORT Vector3 getNormalVector(const Point3& p0, const Point3& p1, const Point3& p2);

} // namespace VORN3D
