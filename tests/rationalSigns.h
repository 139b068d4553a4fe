// The oracle of the predicate tests: the signs of the two determinants in GMP rationals, from their
// definitions.
#pragma once

#include <array>
#include <cstddef>
#include <gmpxx.h>
#include <vector>

namespace VORN3D
{

using Coordinates = std::array<double, 3>;

namespace rational
{

using Vector = std::array<mpz_class, 3>;

/// The points times the common denominator of all their coordinates, a positive factor that no sign depends
/// on.
template <std::size_t N>
std::array<Vector, N> getScaled(const std::array<Coordinates, N>& points)
{
    mpz_class denominator = 1;
    for (const Coordinates& p : points)
        for (double x : p)
            denominator = lcm(denominator, mpq_class(x).get_den());
    std::array<Vector, N> scaled;
    for (std::size_t i = 0; i < N; ++i)
        for (std::size_t k = 0; k < 3; ++k) {
            const mpq_class x(points[i][k]);
            scaled[i][k] = x.get_num() * (denominator / x.get_den());
        }
    return scaled;
}

inline Vector subtract(const Vector& a, const Vector& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

inline mpz_class dot(const Vector& a, const Vector& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// a x b . c
inline mpz_class getVolume(const Vector& a, const Vector& b, const Vector& c)
{
    return (a[1] * b[2] - a[2] * b[1]) * c[0] + (a[2] * b[0] - a[0] * b[2]) * c[1] +
           (a[0] * b[1] - a[1] * b[0]) * c[2];
}

} // namespace rational

/// Sign of (b - a) x (c - a) . (d - a).
inline int getVolumeSign(const std::array<Coordinates, 4>& points)
{
    using namespace rational;
    const auto p = getScaled(points);
    return sgn(getVolume(subtract(p[1], p[0]), subtract(p[2], p[0]), subtract(p[3], p[0])));
}

/// Positive if the last point is outside the sphere through the first four, zero on it, negative inside, for
/// a positive volume of the four; the other way round for a negative volume.
inline int getSphereSign(const std::array<Coordinates, 5>& points)
{
    // With the first corner as origin, the sphere is |p|^2 = u . p, and Cramer's rule gives volume * u: the
    // volumes with one corner replaced by its square length.
    using namespace rational;
    const auto p = getScaled(points);
    const Vector a = subtract(p[1], p[0]);
    const Vector b = subtract(p[2], p[0]);
    const Vector c = subtract(p[3], p[0]);
    const Vector q = subtract(p[4], p[0]);
    return sgn(mpz_class(getVolume(a, b, c) * dot(q, q) - dot(a, a) * getVolume(q, b, c) -
                         dot(b, b) * getVolume(a, q, c) - dot(c, c) * getVolume(a, b, q)));
}

} // namespace VORN3D
