#include "signedVolume.h"

#include "predicates/FloatFilter.h"
#include "predicates/IntegerRows.h"
#include "vectors.h"
#include "vertexStar.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace VORN3D
{

namespace
{

// The filter's error bound, which is at least 2^-53 times the largest product that entered, times this.
constexpr double WANTED_ACCURACY = 0x1p-44;

// The sum of the bounds on the errors of four volumes, by that of the volumes. With them the shares are as
// accurate.
constexpr double WANTED_SUM_ACCURACY = 0x1p-41;

// Sums of a few such numbers do not overflow.
constexpr double LARGEST_FILTERED = 0x1p1000;

/// The determinant of Determinants.h, which has the opposite sign.
template <class Integer>
ScaledDouble evaluateVolume(const std::array<Row<Integer>, 3>& rows, int unitExponent)
{
    const ScaledDouble determinant = roundToScaled(evaluate(rows), 3 * unitExponent);
    return {-determinant.mantissa, determinant.exponent};
}

[[gnu::noinline]] ScaledDouble getVolumeByIntegers(const OrientationPoints& points, double extent)
{
    IntegerDifferences<4> differences;
    if (differences.load(points, extent))
        return evaluateVolume(differences.getRows<WideInteger<62>>(0), differences.unitExponent);
    return withLongRows(
        points, [](const auto& rows, int unitExponent) { return evaluateVolume(rows, unitExponent); });
}

} // namespace

ScaledDouble getSixfoldVolume(const Point3& a, const Point3& b, const Point3& c, const Point3& d)
{
    const OrientationPoints points = {a.getCoordinates(), b.getCoordinates(), c.getCoordinates(),
                                      d.getCoordinates()};
    const FilterResult filtered = filterOrientation(points[0], points[1], points[2], points[3]);
    const double magnitude = std::fabs(filtered.det);
    if (magnitude * WANTED_ACCURACY > filtered.errorBound && magnitude <= LARGEST_FILTERED)
        return {-filtered.det, 0};
    return getVolumeByIntegers(points, filtered.extent);
}

ScaledDouble getSixfoldVolume(const Tet3& tet, int i, const Point3& p)
{
    const Corners corners = getCorners(tet);
    std::array<const Point3*, 4> points = {corners[0], corners[1], corners[2], corners[3]};
    points[static_cast<std::size_t>(i)] = &p;
    return getSixfoldVolume(*points[0], *points[1], *points[2], *points[3]);
}

double findZero(const ScaledDouble& from, const ScaledDouble& to)
{
    const int exponent = std::max(getBinaryMagnitude(from), getBinaryMagnitude(to));
    const double scaledFrom = getScaledBy(from, exponent);
    return scaledFrom / (scaledFrom - getScaledBy(to, exponent));
}

namespace
{

/// From volumes of small relative error.
[[gnu::noinline]] std::array<double, 4> getAccurateCoordinates(const Tet3& tet, const Point3& p)
{
    std::array<ScaledDouble, 4> volumes;
    int exponent = INT_MIN;
    for (std::size_t i = 0; i < 4; ++i) {
        volumes[i] = getSixfoldVolume(tet, static_cast<int>(i), p);
        exponent = std::max(exponent, getBinaryMagnitude(volumes[i]));
    }
    std::array<double, 4> shares;
    double sum = 0.0;
    for (std::size_t i = 0; i < 4; ++i) {
        shares[i] = getScaledBy(volumes[i], exponent);
        sum += shares[i];
    }
    for (double& share : shares)
        share /= sum;
    return shares;
}

} // namespace

// With a, b, c, d the corners from p, the four volumes are det(b, c, d), -det(a, c, d), det(a, b, d) and
// -det(a, b, c), made of two cross products. Each term of such a determinant is a product of three
// coordinates, of which each has one rounding; on the way to the determinant it takes five more at most, so
// that the error is below 8e (1 + e)^7 times the permanent, e = 2^-53. The permanent is at most 6 mx my mz,
// those being the largest coordinates; 50e mx my mz covers the roundings of the bound, too, and the last
// terms what underflows (see FloatFilter.h).
std::array<double, 4> getBarycentricCoordinates(const Tet3& tet, const Point3& p)
{
    constexpr double FACTOR = 50.0 * 0x1p-53;
    constexpr double TINY = filterConstants::tiny;
    std::array<Vec, 4> v;
    Vec largest;
    const Corners corners = getCorners(tet);
    for (std::size_t i = 0; i < 4; ++i) {
        v[i] = {corners[i]->x() - p.x(), corners[i]->y() - p.y(), corners[i]->z() - p.z()};
        largest.x = std::max(largest.x, std::fabs(v[i].x));
        largest.y = std::max(largest.y, std::fabs(v[i].y));
        largest.z = std::max(largest.z, std::fabs(v[i].z));
    }
    const Vec ab = cross(v[0], v[1]);
    const Vec cd = cross(v[2], v[3]);
    const std::array<double, 4> volumes = {dot(v[1], cd), -dot(v[0], cd), dot(v[3], ab), -dot(v[2], ab)};
    const double errorBound = (FACTOR * (largest.x * largest.y) + TINY) * largest.z + TINY;
    const double sum = volumes[0] + volumes[1] + volumes[2] + volumes[3];
    if (*std::min_element(volumes.begin(), volumes.end()) > errorBound &&
        4.0 * errorBound < WANTED_SUM_ACCURACY * sum && sum <= LARGEST_FILTERED)
        return {volumes[0] / sum, volumes[1] / sum, volumes[2] / sum, volumes[3] / sum};
    return getAccurateCoordinates(tet, p);
}

} // namespace VORN3D
