// The smallest sphere through two to four points, in GMP rationals.
#pragma once

#include "rationalSigns.h"

#include <optional>

namespace VORN3D::tests
{

using RationalPoint = std::array<mpq_class, 3>;

struct RationalSphere
{
    std::vector<mpq_class> vCoordinates; ///< the centre's barycentric ones
    mpq_class sqRadius;
};

inline RationalPoint getDifference(const RationalPoint& a, const RationalPoint& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

inline mpq_class dot(const RationalPoint& a, const RationalPoint& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline RationalPoint toRational(const Coordinates& p)
{
    return {mpq_class(p[0]), mpq_class(p[1]), mpq_class(p[2])};
}

/// From the first point, with the edges e to the others: centre = sum x_i e_i, where 2 e_k . centre = e_k .
/// e_k for all k, and its square length is half the sum of x_k e_k . e_k. None if the points are degenerate.
inline std::optional<RationalSphere> getSmallestSphere(const std::vector<RationalPoint>& points)
{
    const std::size_t n = points.size() - 1;
    std::vector<RationalPoint> edges;
    for (std::size_t i = 0; i < n; ++i)
        edges.push_back(getDifference(points[i + 1], points[0]));
    std::vector<std::vector<mpq_class>> rows(n, std::vector<mpq_class>(n + 1));
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t k = 0; k < n; ++k)
            rows[i][k] = dot(edges[i], edges[k]);
        rows[i][n] = rows[i][i] / 2;
    }
    // The matrix is positive definite, so that no pivot is zero, or singular.
    for (std::size_t i = 0; i < n; ++i) {
        if (rows[i][i] == 0)
            return std::nullopt;
        for (std::size_t k = 0; k < n; ++k)
            if (k != i) {
                const mpq_class factor = rows[k][i] / rows[i][i];
                for (std::size_t j = i; j <= n; ++j)
                    rows[k][j] -= factor * rows[i][j];
            }
    }
    RationalSphere sphere = {{1}, 0};
    for (std::size_t i = 0; i < n; ++i) {
        const mpq_class x = rows[i][n] / rows[i][i];
        sphere.vCoordinates.push_back(x);
        sphere.vCoordinates[0] -= x;
        sphere.sqRadius += x * dot(edges[i], edges[i]) / 2;
    }
    return sphere;
}

} // namespace VORN3D::tests
