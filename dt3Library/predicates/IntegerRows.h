// Points as rows of integers, exactly: their differences against the last point in units of a common power of
// two. Any polynomial in the differences then has an exact value; the evaluators of Determinants.h take such
// rows as they are.
//
// Differences below 2^62 units are the fast case (IntegerDifferences); integers of up to 2,098 bits hold all
// finite doubles (withLongRows).
#pragma once

#include "predicates/DoubleBits.h"
#include "predicates/ExactSign.h"
#include "predicates/Expansion.h"
#include "predicates/WideInteger.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace VORN3D
{

/// Doubles as multiples of a power of two.
class MultipleOf
{
public:
    explicit MultipleOf(double unit) : m_unit(unit), m_scale(getReciprocal(unit)) {}

    /// x / unit, for |x| below 2^62 units.
    [[gnu::always_inline]] long long operator()(double x)
    {
        const long long multiple = static_cast<long long>(x * m_scale);
        m_remainders |= getBits(static_cast<double>(multiple) * m_unit - x);
        return multiple;
    }

    /// True if every number so far was a multiple.
    bool isExact() const { return m_remainders == 0; }

private:
    double m_unit;
    double m_scale;
    std::uint64_t m_remainders = 0;
};

/// The differences of the points against the last one as integers below 2^62.
template <std::size_t N>
struct IntegerDifferences
{
    static constexpr std::size_t numValues = 3 * (N - 1);
    std::array<long long, numValues> aValue;
    /// The unit of the values is 2 to this power.
    int unitExponent;

    /// False if the differences, of which `extent` is the largest as rounded, are not such integers times a
    /// common power of two.
    bool load(const PointArray<N>& points, double extent);

    /// The number of binary digits 0 at the end of all values.
    int countTrailingZeros() const
    {
        unsigned long long digits = 0;
        for (long long value : aValue)
            digits |= static_cast<unsigned long long>(value);
        return digits == 0 ? 0 : __builtin_ctzll(digits);
    }

    template <class Integer>
    [[gnu::always_inline]] std::array<Row<Integer>, N - 1> getRows(int shift) const
    {
        std::array<Row<Integer>, N - 1> rows;
        for (std::size_t i = 0; i + 1 < N; ++i)
            rows[i] = {Integer{aValue[3 * i] >> shift}, Integer{aValue[3 * i + 1] >> shift},
                       Integer{aValue[3 * i + 2] >> shift}};
        return rows;
    }
};

template <std::size_t N>
bool IntegerDifferences<N>::load(const PointArray<N>& points, double extent)
{
    if (!(extent >= 0x1p-900 && extent <= 0x1p900))
        return false;
    // The finest unit for which the largest difference stays below 2^62.
    const double unit = getPowerOfTwo(extent) * 0x1p-61;
    MultipleOf getMultiple(unit);
    unitExponent = getExponent(unit);
    std::array<double, numValues> aTail;
    std::uint64_t tailBits = 0;
    for (std::size_t i = 0; i + 1 < N; ++i)
        for (std::size_t k = 0; k < 3; ++k) {
            const HeadTail value = twoDiff(points[i][k], points[N - 1][k]);
            aValue[3 * i + k] = getMultiple(value.head);
            aTail[3 * i + k] = value.tail;
            tailBits |= getBits(value.tail);
        }
    if (tailBits != 0)
        for (std::size_t i = 0; i < numValues; ++i)
            aValue[i] += getMultiple(aTail[i]);
    return getMultiple.isExact();
}

/// mantissa * 2^exponent, the mantissa odd unless it is zero.
struct Decoded
{
    long long mantissa;
    int exponent;

    explicit Decoded(double x)
    {
        const long long wide = static_cast<long long>(std::ldexp(std::frexp(x, &exponent), 53));
        const int numZeros = wide == 0 ? 0 : __builtin_ctzll(static_cast<unsigned long long>(wide));
        mantissa = wide >> numZeros;
        exponent += numZeros - 53;
    }
};

/// The place of the binary digits of all coordinates: multiples of 2^low, below 2^high.
struct DigitRange
{
    int low = INT_MAX;
    int high = INT_MIN;

    bool isEmpty() const { return low > high; }
};

template <std::size_t N>
DigitRange getDigitRange(const PointArray<N>& points)
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
WideInteger<Bits> getInteger(double x, int unitExponent)
{
    const Decoded decoded(x);
    return WideInteger<Bits>::shifted(decoded.mantissa,
                                      decoded.mantissa == 0 ? 0 : decoded.exponent - unitExponent);
}

/// The differences of coordinates that are multiples of 2^unitExponent and below 2^Bits of them.
template <int Bits, std::size_t N>
std::array<Row<WideInteger<Bits + 1>>, N - 1> getLongRows(const PointArray<N>& points, int unitExponent)
{
    const auto getDifference = [&](std::size_t i, int coordinate) {
        return getInteger<Bits>(points[i][coordinate], unitExponent) -
               getInteger<Bits>(points[N - 1][coordinate], unitExponent);
    };
    std::array<Row<WideInteger<Bits + 1>>, N - 1> rows;
    for (std::size_t i = 0; i + 1 < N; ++i)
        rows[i] = {getDifference(i, 0), getDifference(i, 1), getDifference(i, 2)};
    return rows;
}

/// use(rows, unitExponent) for any finite coordinates, in the narrowest of a few widths; the widest holds the
/// digits of all finite doubles, 2^-1074 to 2^1024.
template <std::size_t N, class Use>
auto withLongRows(const PointArray<N>& points, const Use& use)
{
    const DigitRange range = getDigitRange(points);
    const int low = range.isEmpty() ? 0 : range.low;
    const int numBits = range.isEmpty() ? 0 : range.high - range.low;
    if (numBits <= 125)
        return use(getLongRows<125>(points, low), low);
    if (numBits <= 509)
        return use(getLongRows<509>(points, low), low);
    return use(getLongRows<2098>(points, low), low);
}

} // namespace VORN3D
