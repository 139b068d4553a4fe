#include "unitNormal.h"

#include "predicates/FloatFilter.h"
#include "predicates/IntegerRows.h"
#include "rowProducts.h"
#include "scaledDouble.h"

#include <algorithm>
#include <cmath>

namespace VORN3D
{

namespace
{

// Of the product of the sides' extents. The differences are rounded once, each coordinate of the cross
// product has an error below 2^-50 times that product.
constexpr double LEAST_GOOD_SHARE = 0x1p-10;

// Of a product of two differences: with less of it what underflows counts, with more its square overflows.
constexpr double LEAST_ORDINARY_PRODUCT = 0x1p-400;
constexpr double LARGEST_ORDINARY_PRODUCT = 0x1p400;

Vec toUnit(const Vec& v)
{
    return (1.0 / std::hypot(v.x, v.y, v.z)) * v;
}

[[gnu::noinline]] Vec getNormalByIntegers(const PointArray<3>& points)
{
    return withLongRows(points, [](const auto& rows, int) {
        const auto product = cross(rows[0], rows[1]);
        const ScaledDouble x = roundToScaled(product.x, 0);
        const ScaledDouble y = roundToScaled(product.y, 0);
        const ScaledDouble z = roundToScaled(product.z, 0);
        const int exponent = std::max({getBinaryMagnitude(x), getBinaryMagnitude(y), getBinaryMagnitude(z)});
        return toUnit({getScaledBy(x, exponent), getScaledBy(y, exponent), getScaledBy(z, exponent)});
    });
}

} // namespace

Vec getUnitNormal(const Point3& a, const Point3& b, const Point3& c)
{
    const PointArray<3> points = {b.getCoordinates(), c.getCoordinates(), a.getCoordinates()};
    const Row<double> u = difference(points[0], points[2]);
    const Row<double> v = difference(points[1], points[2]);
    const Row<double> product = cross(u, v);
    const double extent = maxAbs(u.x, u.y, u.z) * maxAbs(v.x, v.y, v.z);
    if (extent >= LEAST_ORDINARY_PRODUCT && extent <= LARGEST_ORDINARY_PRODUCT &&
        maxAbs(product.x, product.y, product.z) > LEAST_GOOD_SHARE * extent)
        return toUnit({product.x, product.y, product.z});
    return getNormalByIntegers(points);
}

} // namespace VORN3D
