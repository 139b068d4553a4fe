// With m the largest coordinate from the last point, the numerator of the centre is computed with an error of
// some 30 m^4 2^-53 in each coordinate. The quotient is good if the denominator is not much less than m^3;
// else numerator and denominator are evaluated in integers.
#include "circumcenter.h"

#include "circumspheres.h"
#include "predicates/FloatFilter.h"
#include "predicates/IntegerRows.h"
#include "scaledDouble.h"

#include <algorithm>

namespace VORN3D
{

namespace
{

// Of the origin and another point: then some hundred powers of two are left for all others.
constexpr double LEAST_ORDINARY = 0x1p-60;
constexpr double LARGEST_ORDINARY = 0x1p60;

constexpr double LEAST_GOOD_VOLUME = 0x1p-16; // of a cube with the tetrahedron's extent, sixfold

template <class Integer>
std::optional<Vec> evaluateInIntegers(const std::array<Row<Integer>, 3>& rows, int unitExponent)
{
    const auto sphere = getCircumsphere(rows);
    const ScaledDouble det = roundToScaled(sphere.det, 3 * unitExponent);
    if (det.mantissa == 0.0)
        return std::nullopt;
    const auto divide = [&](const auto& numerator) {
        const ScaledDouble value = roundToScaled(numerator, 4 * unitExponent);
        return std::ldexp(value.mantissa / det.mantissa, value.exponent - det.exponent - 1);
    };
    return Vec{divide(sphere.numerator.x), divide(sphere.numerator.y), divide(sphere.numerator.z)};
}

[[gnu::noinline]] std::optional<Vec> getCenterByIntegers(const OrientationPoints& points, int frameExponent)
{
    const auto evaluateInUnits = [frameExponent](const auto& rows, int unitExponent) {
        return evaluateInIntegers(rows, unitExponent - frameExponent);
    };
    double extent = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        const Row<double> row = difference(points[i], points[3]);
        extent = std::max(extent, maxAbs(row.x, row.y, row.z));
    }
    IntegerDifferences<4> differences;
    if (differences.load(points, extent))
        return evaluateInUnits(differences.getRows<WideInteger<62>>(0), differences.unitExponent);
    return withLongRows(points, evaluateInUnits);
}

Row<double> toRow(const Vec& v)
{
    return {v.x, v.y, v.z};
}

} // namespace

LocalFrame::LocalFrame(const Point3& origin, const Point3& p) : m_pOrigin(&origin)
{
    const Row<double> row = difference(p.getCoordinates(), origin.getCoordinates());
    const double extent = std::min(maxAbs(row.x, row.y, row.z), DBL_MAX);
    if (extent == 0.0 || (extent >= LEAST_ORDINARY && extent <= LARGEST_ORDINARY))
        return;
    m_unitExponent = std::ilogb(extent) + 1;
    m_factor = m_unitExponent > 0 ? std::ldexp(1.0, -m_unitExponent / 2) : 1.0;
    const int rest = m_unitExponent > 0 ? m_unitExponent - m_unitExponent / 2 : m_unitExponent;
    m_secondFactor = std::ldexp(1.0, -(rest / 2));
    m_thirdFactor = std::ldexp(1.0, -(rest - rest / 2));
}

Vec LocalFrame::getScaledVector(const double* from, const double* to) const
{
    const auto getScaled = [this](double a, double b) {
        return (b * m_factor - a * m_factor) * m_secondFactor * m_thirdFactor;
    };
    return {getScaled(from[0], to[0]), getScaled(from[1], to[1]), getScaled(from[2], to[2])};
}

LocalFrame makeFrame(const std::array<Point3*, 4>& corners)
{
    const auto getHalfExtent = [&](const Point3* p) {
        return maxAbs(p->x() / 2 - corners[0]->x() / 2, p->y() / 2 - corners[0]->y() / 2,
                      p->z() / 2 - corners[0]->z() / 2);
    };
    const Point3* pFarthest =
        *std::max_element(corners.begin(), corners.end(), [&](const Point3* a, const Point3* b) {
            return getHalfExtent(a) < getHalfExtent(b);
        });
    return {*corners[0], *pFarthest};
}

std::optional<Vec> getCenterFromLast(const LocalFrame& frame, const OrientationPoints& points)
{
    const std::array<Row<double>, 3> rows = {toRow(frame.getVector(points[3], points[0])),
                                             toRow(frame.getVector(points[3], points[1])),
                                             toRow(frame.getVector(points[3], points[2]))};
    const auto sphere = getCircumsphere(rows);
    double extent = 0.0;
    for (const Row<double>& row : rows)
        extent = std::max(extent, maxAbs(row.x, row.y, row.z));
    if (!(std::fabs(sphere.det) > LEAST_GOOD_VOLUME * (extent * extent * extent)) || extent < 0x1p-200)
        return getCenterByIntegers(points, frame.getUnitExponent());
    return (0.5 / sphere.det) * Vec{sphere.numerator.x, sphere.numerator.y, sphere.numerator.z};
}

} // namespace VORN3D
