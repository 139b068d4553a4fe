// Doubles as bit patterns.
#pragma once

#include <cstdint>
#include <cstring>

namespace VORN3D
{

inline std::uint64_t getBits(double x)
{
    std::uint64_t bits;
    std::memcpy(&bits, &x, sizeof bits);
    return bits;
}

inline double getDouble(std::uint64_t bits)
{
    double x;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

/// The power of two in a normal number: the p with p <= |x| < 2p.
inline double getPowerOfTwo(double x)
{
    return getDouble(getBits(x) & 0x7ff0000000000000u);
}

/// The exponent of a power of two that is normal.
inline int getExponent(double p)
{
    return static_cast<int>(getBits(p) >> 52) - 1023;
}

/// 1 / p for a power of two whose reciprocal is normal.
inline double getReciprocal(double p)
{
    return getDouble(0x7fe0000000000000u - getBits(p));
}

} // namespace VORN3D
