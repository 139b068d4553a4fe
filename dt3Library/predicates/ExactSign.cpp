#include "predicates/ExactSign.h"

#include "predicates/DoubleBits.h"
#include "predicates/FloatFilter.h"

#include <cmath>
#include <utility>

namespace VORN3D
{

namespace
{

/// True if all coordinates are multiples of the power of two `unit`.
template <std::size_t N>
bool areMultiplesOf(const PointArray<N>& points, double unit)
{
    // Adding 2^52 units rounds to a multiple of the unit; what that changes shows in the bits of the
    // difference.
    const double rounder = unit * 0x1p52;
    std::uint64_t changes = 0;
    for (const double* p : points)
        for (int i = 0; i < 3; ++i) {
            const double magnitude = std::fabs(p[i]);
            changes |= getBits(((magnitude + rounder) - rounder) - magnitude);
        }
    return changes == 0;
}

/// True if all coordinates are multiples of a power of two that exceeds the extent 2^-numBits times. The
/// guard keeps products of five differences in the range of doubles.
template <std::size_t N>
bool spanFewUnits(const PointArray<N>& points, double extent, int numBits)
{
    const bool bInRange = extent >= 0x1p-180 && extent <= 0x1p180;
    return bInRange && areMultiplesOf(points, getPowerOfTwo(extent) * std::ldexp(2.0, -numBits));
}

/// Determinant and permanent, of rows with rounded differences. Without loops over the rows, which the
/// compiler would spill to memory.
template <std::size_t N, std::size_t... I>
PermanentFilter evaluateBoth(const PointArray<N>& points, std::index_sequence<I...>)
{
    const std::array<Row<double>, N - 1> rows = {difference(points[I], points[N - 1])...};
    const std::array<Row<Magnitude>, N - 1> magnitudes = {getMagnitudes(rows[I])...};
    return {evaluate(rows), evaluate(magnitudes).value};
}

template <std::size_t N>
bool areZeroOrBetween(const PointArray<N>& points, double least, double largest)
{
    bool bBetween = true;
    for (const double* p : points)
        for (int i = 0; i < 3; ++i) {
            const double magnitude = std::fabs(p[i]);
            bBetween &= (magnitude == 0.0) | ((magnitude >= least) & (magnitude <= largest));
        }
    return bBetween;
}

} // namespace

bool isExactOnLattice(const OrientationPoints& points, double extent)
{
    // Six products of three differences: below 6 * 2^48 < 2^53 units.
    return spanFewUnits(points, extent, 16);
}

bool isExactOnLattice(const SpherePoints& points, double extent)
{
    // 24 products of three differences and a lift of three squares: below 72 * 2^45 < 2^53 units.
    return spanFewUnits(points, extent, 9);
}

Sign PermanentFilter::getSign(double relativeErrorBound, double extent) const
{
    // The last term covers underflow, as in the inline filter, with the extent for every largest difference.
    const double growth = 1.0 + extent;
    const double errorBound =
        relativeErrorBound * permanent + filterConstants::tiny * (growth * growth * growth);
    return FilterResult{det, errorBound, extent}.isCertain() ? VORN3D::getSign(det) : Sign::undecided;
}

PermanentFilter evaluateWithPermanent(const OrientationPoints& points)
{
    return evaluateBoth(points, std::make_index_sequence<3>());
}

PermanentFilter evaluateWithPermanent(const SpherePoints& points)
{
    return evaluateBoth(points, std::make_index_sequence<4>());
}

bool areInExpansionRange(const OrientationPoints& points)
{
    return areZeroOrBetween(points, 0x1p-130, 0x1p130);
}

bool areInExpansionRange(const SpherePoints& points)
{
    return areZeroOrBetween(points, 0x1p-130, 0x1p130);
}

bool isPermanentZero(const SpherePoints& points)
{
    // The products are all ways to take from each row one of x, y, z and the lift, a different one from each.
    // One of them is not zero iff (Hall's theorem) any k of these four columns have entries in at least k
    // rows. The lift has an entry wherever another column has one.
    unsigned x = 0;
    unsigned y = 0;
    unsigned z = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        x = 2 * x + (points[i][0] != points[4][0]);
        y = 2 * y + (points[i][1] != points[4][1]);
        z = 2 * z + (points[i][2] != points[4][2]);
    }
    const auto hasTwo = [](unsigned rows) { return (rows & (rows - 1)) != 0; };
    const bool bNonZero =
        x != 0 && y != 0 && z != 0 && hasTwo(x | y) && hasTwo(x | z) && hasTwo(y | z) && (x | y | z) == 15;
    return !bNonZero;
}

} // namespace VORN3D
