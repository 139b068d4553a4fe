#include "ExactSign.h"

#include "Determinants.h"
#include "Expansion.h"
#include "WideInteger.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace VORN3D
{

namespace
{

/// The power of two in a normal number: 2^k <= |x| < 2^(k+1).
double getPowerOfTwo(double x)
{
    std::uint64_t bits;
    std::memcpy(&bits, &x, sizeof bits);
    bits &= 0x7ff0000000000000u;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

template <std::size_t N>
bool areInRange(const std::array<const double*, N>& points, double least, double largest)
{
    bool bInRange = true;
    for (const double* p : points)
        for (int i = 0; i < 3; ++i) {
            const double magnitude = std::fabs(p[i]);
            bInRange &= (magnitude == 0.0) | ((magnitude >= least) & (magnitude <= largest));
        }
    return bInRange;
}

/// True if all coordinates are multiples of the power of two `unit`.
template <std::size_t N>
bool areMultiplesOf(const std::array<const double*, N>& points, double unit)
{
    // Adding 2^52 units rounds to a multiple of the unit.
    const double rounder = unit * 0x1p52;
    bool bMultiples = true;
    for (const double* p : points)
        for (int i = 0; i < 3; ++i) {
            const double magnitude = std::fabs(p[i]);
            bMultiples &= (magnitude + rounder) - rounder == magnitude;
        }
    return bMultiples;
}

/// Differences below 2^numBits units: `extent` is the largest. The guard keeps products of five in range.
template <std::size_t N>
bool spanFewUnits(const std::array<const double*, N>& points, double extent, int numBits)
{
    if (!(extent >= 0x1p-180 && extent <= 0x1p180))
        return false;
    return areMultiplesOf(points, std::ldexp(getPowerOfTwo(extent), 1 - numBits));
}

/// The rows of the determinant, differences rounded.
template <std::size_t N>
std::array<Row<double>, N - 1> getRows(const std::array<const double*, N>& points)
{
    std::array<Row<double>, N - 1> rows;
    for (std::size_t i = 0; i + 1 < N; ++i)
        rows[i] = difference(points[i], points[N - 1]);
    return rows;
}

template <class T>
auto evaluate(const std::array<Row<T>, 3>& rows)
{
    return orientationDeterminant(rows[0], rows[1], rows[2]);
}

template <class T>
auto evaluate(const std::array<Row<T>, 4>& rows)
{
    return inSphereDeterminant(rows[0], rows[1], rows[2], rows[3]);
}

template <std::size_t N>
std::array<Row<Magnitude>, N> getMagnitudes(const std::array<Row<double>, N>& rows)
{
    std::array<Row<Magnitude>, N> magnitudes;
    for (std::size_t i = 0; i < N; ++i)
        magnitudes[i] = getMagnitudes(rows[i]);
    return magnitudes;
}

/// The differences of the points against the last one, as multiples of a common power of two.
template <std::size_t N>
struct IntegerRows
{
    std::array<std::int64_t, 3 * (N - 1)> aDifference;

    /// False if there is no power of two of which all differences are multiples below 2^62.
    bool load(const std::array<const double*, N>& points);

    template <int Bits>
    std::array<Row<WideInteger<Bits>>, N - 1> getRows(int shift) const
    {
        using Integer = WideInteger<Bits>;
        std::array<Row<Integer>, N - 1> rows;
        for (std::size_t i = 0; i + 1 < N; ++i)
            rows[i] = {Integer(aDifference[3 * i] >> shift), Integer(aDifference[3 * i + 1] >> shift),
                       Integer(aDifference[3 * i + 2] >> shift)};
        return rows;
    }
};

template <std::size_t N>
bool IntegerRows<N>::load(const std::array<const double*, N>& points)
{
    constexpr std::size_t numValues = 3 * (N - 1);
    std::array<HeadTail, numValues> aValue;
    double extent = 0.0;
    for (std::size_t i = 0; i < numValues; ++i) {
        aValue[i] = twoDiff(points[i / 3][i % 3], points[N - 1][i % 3]);
        extent = std::max(extent, std::fabs(aValue[i].head));
    }
    if (!(extent >= 0x1p-900 && extent <= 0x1p900))
        return false;
    // The finest unit for which the largest difference stays below 2^62.
    const double unit = getPowerOfTwo(extent) * 0x1p-61;
    const double scale = 1.0 / unit;
    bool bMultiples = true;
    const auto getMultiple = [&](double x) {
        const std::int64_t multiple = static_cast<std::int64_t>(x * scale);
        bMultiples &= static_cast<double>(multiple) * unit == x;
        return multiple;
    };
    for (std::size_t i = 0; i < numValues; ++i)
        aDifference[i] = getMultiple(aValue[i].head) + getMultiple(aValue[i].tail);
    return bMultiples;
}

template <std::size_t N>
Sign evaluateInWords(const std::array<const double*, N>& points)
{
    IntegerRows<N> integers;
    if (!integers.load(points))
        return Sign::undecided;
    std::uint64_t digits = 0;
    for (std::int64_t difference : integers.aDifference)
        digits |= static_cast<std::uint64_t>(difference);
    const int numZeros = __builtin_ctzll(digits);
    const int sign = numZeros >= 32 ? evaluate(integers.template getRows<30>(numZeros)).getSign()
                                    : evaluate(integers.template getRows<62>(0)).getSign();
    return static_cast<Sign>(sign);
}

/// mantissa * 2^exponent, the mantissa odd unless it is zero.
struct Decoded
{
    std::int64_t mantissa;
    int exponent;

    explicit Decoded(double x)
    {
        const std::int64_t wide = static_cast<std::int64_t>(std::ldexp(std::frexp(x, &exponent), 53));
        const int numZeros = wide == 0 ? 0 : __builtin_ctzll(static_cast<unsigned long long>(wide));
        mantissa = wide >> numZeros;
        exponent += numZeros - 53;
    }
};

/// The range of the binary digits of all coordinates: multiples of 2^low, below 2^high.
struct DigitRange
{
    int low = INT_MAX;
    int high = INT_MIN;
};

template <std::size_t N>
DigitRange getDigitRange(const std::array<const double*, N>& points)
{
    DigitRange range;
    for (const double* p : points)
        for (int i = 0; i < 3; ++i)
            if (p[i] != 0.0) {
                range.low = std::min(range.low, Decoded(p[i]).exponent);
                range.high = std::max(range.high, std::ilogb(p[i]) + 1);
            }
    return range;
}

template <int Bits>
Row<WideInteger<Bits>> getIntegers(const double* p, int unitExponent)
{
    const auto getInteger = [unitExponent](double x) {
        const Decoded decoded(x);
        return decoded.mantissa == 0 ? WideInteger<Bits>(0)
                                     : WideInteger<Bits>(decoded.mantissa, decoded.exponent - unitExponent);
    };
    return {getInteger(p[0]), getInteger(p[1]), getInteger(p[2])};
}

/// The sign of the determinant, for coordinates that are multiples of 2^unitExponent and below 2^Bits of
/// them.
template <int Bits, std::size_t N>
Sign getSignAsIntegers(const std::array<const double*, N>& points, int unitExponent)
{
    const Row<WideInteger<Bits>> origin = getIntegers<Bits>(points[N - 1], unitExponent);
    std::array<Row<WideInteger<Bits + 1>>, N - 1> rows;
    for (std::size_t i = 0; i + 1 < N; ++i) {
        const Row<WideInteger<Bits>> p = getIntegers<Bits>(points[i], unitExponent);
        rows[i] = {p.x - origin.x, p.y - origin.y, p.z - origin.z};
    }
    return static_cast<Sign>(evaluate(rows).getSign());
}

/// Takes the narrowest of a few widths; the widest holds the digits of all finite doubles, from 2^-1074 to
/// 2^1024.
template <std::size_t N>
Sign evaluateInExtendedRange(const std::array<const double*, N>& points)
{
    const DigitRange range = getDigitRange(points);
    if (range.low > range.high)
        return Sign::zero;
    const int numBits = range.high - range.low;
    if (numBits <= 125)
        return getSignAsIntegers<125>(points, range.low);
    if (numBits <= 509)
        return getSignAsIntegers<509>(points, range.low);
    return getSignAsIntegers<2098>(points, range.low);
}

} // namespace

bool areInFloatRange(const OrientationPoints& points)
{
    return areInRange(points, 0x1p-130, 0x1p130);
}

bool areInFloatRange(const SpherePoints& points)
{
    return areInRange(points, 0x1p-130, 0x1p130);
}

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

Sign PermanentFilter::getSign(double relativeErrorBound) const
{
    return std::fabs(det) > relativeErrorBound * permanent ? VORN3D::getSign(det) : Sign::undecided;
}

PermanentFilter evaluateWithPermanent(const OrientationPoints& points)
{
    const auto rows = getRows(points);
    return {evaluate(rows), evaluate(getMagnitudes(rows)).value};
}

PermanentFilter evaluateWithPermanent(const SpherePoints& points)
{
    const auto rows = getRows(points);
    return {evaluate(rows), evaluate(getMagnitudes(rows)).value};
}

Sign getSignByIntegers(const OrientationPoints& points)
{
    return evaluateInWords(points);
}

Sign getSignByIntegers(const SpherePoints& points)
{
    return evaluateInWords(points);
}

Sign getSignInExtendedRange(const OrientationPoints& points)
{
    return evaluateInExtendedRange(points);
}

Sign getSignInExtendedRange(const SpherePoints& points)
{
    return evaluateInExtendedRange(points);
}

bool isPermanentZero(const SpherePoints& points)
{
    auto rows = getRows(points);
    for (Row<double>& row : rows)
        row = {double(row.x != 0.0), double(row.y != 0.0), double(row.z != 0.0)};
    return evaluate(getMagnitudes(rows)).value == 0.0;
}

} // namespace VORN3D
