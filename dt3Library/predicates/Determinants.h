// The two determinants of the predicates, written once for every kind of number they are evaluated in:
// doubles, magnitudes (which yields the permanent), values with tails, expansions, and wide integers.
//
// The order of the operations is that of Shewchuk 1997, on which the error bounds depend.
#pragma once

#include <cmath>

namespace VORN3D
{

/// One row of a determinant: a point, usually relative to the point that is asked about.
template <class T>
struct Row
{
    T x;
    T y;
    T z;
};

/// The minor of two rows in the columns x and y.
template <class T>
[[gnu::always_inline]] inline auto minor2(const Row<T>& p, const Row<T>& q)
{
    return p.x * q.y - q.x * p.y;
}

/// | a |  Negative iff a, b, c appear counter-clockwise from the origin of the rows,
/// | b |  zero iff they are coplanar with it.
/// | c |
template <class T>
[[gnu::always_inline]] inline auto orientationDeterminant(const Row<T>& a, const Row<T>& b, const Row<T>& c)
{
    return minor2(b, c) * a.z + minor2(c, a) * b.z + minor2(a, b) * c.z;
}

/// The square of a point's distance from the origin of the rows.
template <class T>
[[gnu::always_inline]] inline auto lift(const Row<T>& p)
{
    return p.x * p.x + p.y * p.y + p.z * p.z;
}

template <class Minor, class T>
[[gnu::always_inline]] inline auto lifted(const Minor& minor, const Row<T>& p)
{
    return minor * lift(p);
}

/// | a  lift(a) |  For a positively oriented tetrahedron a, b, c, d: positive iff the origin of the rows is
/// | b  lift(b) |  outside its circumsphere, zero iff it is on it.
/// | c  lift(c) |
/// | d  lift(d) |
template <class T>
[[gnu::always_inline]] inline auto inSphereDeterminant(const Row<T>& a, const Row<T>& b, const Row<T>& c,
                                                       const Row<T>& d)
{
    const auto ab = minor2(a, b);
    const auto bc = minor2(b, c);
    const auto cd = minor2(c, d);
    const auto da = minor2(d, a);
    const auto ac = minor2(a, c);
    const auto bd = minor2(b, d);
    const auto abc = bc * a.z - ac * b.z + ab * c.z;
    const auto bcd = cd * b.z - bd * c.z + bc * d.z;
    const auto cda = da * c.z + ac * d.z + cd * a.z;
    const auto dab = ab * d.z + bd * a.z + da * b.z;
    return (lifted(abc, d) - lifted(dab, c)) + (lifted(cda, b) - lifted(bcd, a));
}

/// The row p - origin, differences rounded.
inline Row<double> difference(const double* p, const double* origin)
{
    return {p[0] - origin[0], p[1] - origin[1], p[2] - origin[2]};
}

/// A number that knows only how large it can be: every product and sum of a determinant in absolute values.
struct Magnitude
{
    double value;
};

inline Magnitude operator+(Magnitude a, Magnitude b)
{
    return {a.value + b.value};
}
inline Magnitude operator-(Magnitude a, Magnitude b)
{
    return {a.value + b.value};
}
inline Magnitude operator*(Magnitude a, Magnitude b)
{
    return {a.value * b.value};
}

inline Row<Magnitude> getMagnitudes(const Row<double>& p)
{
    return {{std::fabs(p.x)}, {std::fabs(p.y)}, {std::fabs(p.z)}};
}

} // namespace VORN3D
