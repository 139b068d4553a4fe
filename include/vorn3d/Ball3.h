#pragma once

#include "Export.h"
#include "Point3.h"

namespace VORN3D
{

/// A sphere, given by its centre and the square of its radius.
class VORN3D_EXPORT Ball3
{
public:
    /// The squared radius is expected to be zero or positive; nothing is checked.
    Ball3(double x, double y, double z, double sqRadius) : m_center(x, y, z), m_sqRadius(sqRadius) {}

    /// The centre.
    Point3 getCenter() const { return m_center; }
    /// The square of the radius, as given.
    double getSqRadius() const { return m_sqRadius; }
    /// The radius; not a number if its square is negative.
    double getRadius() const;

    /// Prints centre and radius on standard output.
    void debug() const;

private:
    Point3 m_center;
    double m_sqRadius;
};

} // namespace VORN3D
