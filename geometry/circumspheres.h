// The smallest spheres through two, three and four points: polynomials in the points' differences, written
// once for doubles and for integers of every width.
//
// The last point is the origin of the rows. For a tetrahedron with the other corners u, v, w the centre c
// satisfies 2 u.c = u.u and so on; Cramer's rule gives c = numerator / (2 det) with
//
//     numerator = u.u (v x w) + v.v (w x u) + w.w (u x v)        det = u . (v x w)
//
// The centre's barycentric coordinate for u is c.(v x w) / det, so a positive multiple of numerator.(v x w).
#pragma once

#include "rowProducts.h"

#include <array>
#include <tuple>
#include <type_traits>

namespace VORN3D
{

template <class Normal, class Determinant, class Numerator>
struct Circumsphere
{
    /// v x w, w x u and u x v: of the facets at the origin, towards the corner opposite them if det > 0.
    std::array<Row<Normal>, 3> aNormal;
    /// Six times the volume, by the sign of the orientation origin, u, v, w.
    Determinant det;
    /// 2 det times the centre.
    Row<Numerator> numerator;
};

template <class T>
[[gnu::always_inline]] inline auto getCircumsphere(const std::array<Row<T>, 3>& rows)
{
    const auto& [u, v, w] = rows;
    const auto vw = cross(v, w), wu = cross(w, u), uv = cross(u, v);
    const auto uu = lift(u), vv = lift(v), ww = lift(w);
    const auto det = dot(vw, u);
    const auto x = uu * vw.x + vv * wu.x + ww * uv.x;
    const auto y = uu * vw.y + vv * wu.y + ww * uv.y;
    const auto z = uu * vw.z + vv * wu.z + ww * uv.z;
    using std::decay_t;
    return Circumsphere<decay_t<decltype(vw.x)>, decay_t<decltype(det)>, decay_t<decltype(x)>>{
        {vw, wu, uv}, det, {x, y, z}};
}

/// For each corner, the origin last: the centre's barycentric coordinate times 2 det^2.
template <class Normal, class Determinant, class Numerator>
[[gnu::always_inline]] inline auto
getBarycentricCoordinates(const Circumsphere<Normal, Determinant, Numerator>& sphere)
{
    const auto u = dot(sphere.aNormal[0], sphere.numerator);
    const auto v = dot(sphere.aNormal[1], sphere.numerator);
    const auto w = dot(sphere.aNormal[2], sphere.numerator);
    const auto square = sphere.det * sphere.det;
    return std::make_tuple(u, v, w, (square + square) - (u + v + w));
}

/// A quarter of it is the squared radius.
template <class Numerator, class Denominator>
struct RadiusFraction
{
    Numerator numerator;
    Denominator denominator;
};
template <class Numerator, class Denominator>
RadiusFraction(Numerator, Denominator) -> RadiusFraction<Numerator, Denominator>;

/// Of the smallest sphere through the ends of an edge.
template <class T>
[[gnu::always_inline]] inline auto getRadiusFraction(const std::array<Row<T>, 1>& rows)
{
    return RadiusFraction{lift(rows[0]), T(1)};
}

/// Of the smallest sphere through the corners of a triangle.
template <class T>
[[gnu::always_inline]] inline auto getRadiusFraction(const std::array<Row<T>, 2>& rows)
{
    const auto& [u, v] = rows;
    const auto x = u.x - v.x;
    const Row<std::decay_t<decltype(x)>> side = {x, u.y - v.y, u.z - v.z};
    const auto normal = cross(u, v);
    return RadiusFraction{lift(u) * lift(v) * lift(side), lift(normal)};
}

/// Of the sphere through the corners of a tetrahedron.
template <class T>
[[gnu::always_inline]] inline auto getRadiusFraction(const std::array<Row<T>, 3>& rows)
{
    const auto sphere = getCircumsphere(rows);
    return RadiusFraction{lift(sphere.numerator), sphere.det * sphere.det};
}

} // namespace VORN3D
