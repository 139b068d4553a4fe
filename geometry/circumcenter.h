// Centres of circumscribed spheres with a small error whatever the tetrahedron's shape, in a frame in which
// products of a few coordinates of the vertices around a query neither over- nor underflow.
#pragma once

#include "predicates/ExactSign.h"
#include "vectors.h"
#include "vorn3d/Point3.h"

#include <array>
#include <cmath>
#include <optional>

namespace VORN3D
{

/// Vectors from an origin, in a unit that is a power of two: 1 for coordinates of ordinary size, else one
/// that exceeds the largest coordinate difference of the origin and another point.
class LocalFrame
{
public:
    LocalFrame() = default;

    /// For p as the other point; the origin must outlive the frame.
    LocalFrame(const Point3& origin, const Point3& p);

    Vec getVector(const double* from, const double* to) const
    {
        return m_unitExponent == 0 ? Vec{to[0] - from[0], to[1] - from[1], to[2] - from[2]}
                                   : getScaledVector(from, to);
    }
    Vec getLocal(const Point3& p) const { return getVector(m_pOrigin->getCoordinates(), p.getCoordinates()); }

    /// The vector in the unit of the coordinates, infinite or zero where that over- or underflows.
    Vec getUnscaled(const Vec& v) const
    {
        return m_unitExponent == 0 ? v
                                   : Vec{std::ldexp(v.x, m_unitExponent), std::ldexp(v.y, m_unitExponent),
                                         std::ldexp(v.z, m_unitExponent)};
    }

    const Point3& getOrigin() const { return *m_pOrigin; }
    int getUnitExponent() const { return m_unitExponent; }

private:
    Vec getScaledVector(const double* from, const double* to) const;

    const Point3* m_pOrigin = nullptr;
    int m_unitExponent = 0;
    // Their product is the reciprocal of the unit, which need not be a double. The first is for coordinates,
    // whose differences need not be doubles, the others for these.
    double m_factor = 1.0;
    double m_secondFactor = 1.0;
    double m_thirdFactor = 1.0;
};

/// The frame of a tetrahedron, in which its extent is of ordinary size. Its origin is the first corner.
LocalFrame makeFrame(const std::array<Point3*, 4>& corners);

/// From the last of four points to the centre of their circumscribed sphere, with an error of some 10^-10 of
/// the centre's distance and of their distances. None if they are coplanar.
std::optional<Vec> getCenterFromLast(const LocalFrame& frame, const OrientationPoints& points);

} // namespace VORN3D
