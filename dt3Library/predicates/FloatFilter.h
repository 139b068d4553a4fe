// The semi-static filter: the determinants in plain floating point with a bound on their error that depends
// only on the largest difference in each coordinate. It decides nearly all tests, so it is inline and free of
// branches.
//
// Let e = 2^-53, mx, my, mz the largest absolute differences in x, y, z and L the largest lift, all as
// computed.
//
// Orientation. Shewchuk's bound is (7 + 56e)e times the permanent, and the computed permanent is at most
// 6 mx my mz (1 + e)^5. With three more roundings for the product below, (42 + 1024e)e mx my mz is enough;
// 43e is used.
//
// Sphere. Shewchuk's bound is (16 + 224e)e times the permanent, which is at most 24 mx my mz L (1 + e)^8;
// with the roundings of the product below, (384 + 16384e)e mx my mz L is enough; 385e is used.
//
// These hold while nothing over- or underflows. A product that underflows adds an error of at most h =
// 2^-1075, multiplied by the factors that follow it: 6h mz + 3h in the orientation determinant, and h (24 mz
// L + 12 L + 72 mx my mz + 4) in the sphere's. The terms `tiny` below contribute tiny mz + tiny, and tiny mz
// L + tiny L + tiny, which is more: mx my mz is below 2 if L is below 1, and otherwise its term is as nothing
// beside 385e mx my mz L. Sums and differences never underflow. An overflow makes the determinant infinite or
// not a number, since nothing is divided by an infinite intermediate, and then it does not decide.
#pragma once

#include "predicates/Determinants.h"
#include "predicates/Expansion.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace VORN3D
{

/// A determinant as computed, and how far it can be from the exact one.
struct FilterResult
{
    double det;
    double errorBound;
    /// The largest absolute difference of two coordinates that entered.
    double extent;

    /// True if the sign of det is that of the exact determinant; then det is not zero.
    bool isCertain() const
    {
        const double magnitude = std::fabs(det);
        return (magnitude > errorBound) & (magnitude <= DBL_MAX);
    }
};

namespace filterConstants
{
inline constexpr double orientation = 43.0 * 0x1p-53;
inline constexpr double sphere = 385.0 * 0x1p-53;
inline constexpr double tiny = 0x1p-1020;
} // namespace filterConstants

inline double maxAbs(double a, double b, double c)
{
    return std::max(std::max(std::fabs(a), std::fabs(b)), std::fabs(c));
}

inline double maxAbs(double a, double b, double c, double d)
{
    return std::max(std::max(std::fabs(a), std::fabs(b)), std::max(std::fabs(c), std::fabs(d)));
}

inline FilterResult filterOrientation(const double* pa, const double* pb, const double* pc, const double* pd)
{
    using namespace filterConstants;
    const Row<double> a = difference(pa, pd);
    const Row<double> b = difference(pb, pd);
    const Row<double> c = difference(pc, pd);
    const double mx = maxAbs(a.x, b.x, c.x);
    const double my = maxAbs(a.y, b.y, c.y);
    const double mz = maxAbs(a.z, b.z, c.z);
    const double errorBound = (orientation * (mx * my) + tiny) * mz + tiny;
    return {orientationDeterminant(a, b, c), errorBound, maxAbs(mx, my, mz)};
}

inline FilterResult filterSphere(const double* pa, const double* pb, const double* pc, const double* pd,
                                 const double* pe)
{
    using namespace filterConstants;
    const Row<double> a = difference(pa, pe);
    const Row<double> b = difference(pb, pe);
    const Row<double> c = difference(pc, pe);
    const Row<double> d = difference(pd, pe);
    const double mx = maxAbs(a.x, b.x, c.x, d.x);
    const double my = maxAbs(a.y, b.y, c.y, d.y);
    const double mz = maxAbs(a.z, b.z, c.z, d.z);
    const double largestLift = maxAbs(lift(a), lift(b), lift(c), lift(d));
    const double errorBound = ((sphere * (mx * my) + tiny) * mz + tiny) * largestLift + tiny;
    return {inSphereDeterminant(a, b, c, d), errorBound, maxAbs(mx, my, mz)};
}

} // namespace VORN3D
