// Numbers beyond the range of doubles, and the rounding of long integers to such numbers.
#pragma once

#include "predicates/WideInteger.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace VORN3D
{

/// mantissa * 2^exponent: a number that neither over- nor underflows.
struct ScaledDouble
{
    double mantissa;
    int exponent;
};

/// The exponent of the largest power of two that does not exceed the value's magnitude; INT_MIN for zero.
inline int getBinaryMagnitude(const ScaledDouble& value)
{
    return value.mantissa == 0.0 ? INT_MIN : std::ilogb(value.mantissa) + value.exponent;
}

/// value * 2^-exponent.
inline double getScaledBy(const ScaledDouble& value, int exponent)
{
    return value.mantissa == 0.0 ? 0.0 : std::ldexp(value.mantissa, value.exponent - exponent);
}

/// value * 2^unitExponent, rounded: from as many leading words as are sure to hold 64 binary digits, or from
/// all.
template <int Bits>
ScaledDouble roundPositive(const WideInteger<Bits>& value, int unitExponent)
{
    constexpr int NUM_LEADING_WORDS = 64 / WORD_BITS + 1;
    int top = WideInteger<Bits>::numWords - 1;
    while (top > 0 && value[top] == 0)
        --top;
    const int bottom = std::max(0, top - NUM_LEADING_WORDS + 1);
    double mantissa = 0.0;
    for (int i = top; i >= bottom; --i)
        mantissa = std::ldexp(mantissa, WORD_BITS) + static_cast<double>(value[i]);
    return {mantissa, WORD_BITS * bottom + unitExponent};
}

template <int Bits>
ScaledDouble roundToScaled(const WideInteger<Bits>& value, int unitExponent)
{
    if (value.getSign() >= 0)
        return roundPositive(value, unitExponent);
    const ScaledDouble opposite = roundPositive(WideInteger<1>(0) - value, unitExponent);
    return {-opposite.mantissa, opposite.exponent};
}

} // namespace VORN3D
