// Floating-point numbers as bytes, least significant first, on machines of either byte order.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>

namespace VORN3D::program
{

using DoubleBytes = std::array<char, 8>;
using FloatBytes = std::array<char, 4>;

inline double decodeLittleEndian(const char* pBytes)
{
    std::uint64_t bits = 0;
    for (int i = 7; i >= 0; --i)
        bits = bits << 8 | static_cast<unsigned char>(pBytes[i]);
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

template <typename Bits, typename Number>
std::array<char, sizeof(Bits)> encodeBits(Number value)
{
    static_assert(sizeof(Bits) == sizeof(Number));
    Bits bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    std::array<char, sizeof(Bits)> bytes{};
    for (char& byte : bytes) {
        byte = static_cast<char>(bits & 0xff);
        bits >>= 8;
    }
    return bytes;
}

inline DoubleBytes encodeLittleEndian(double value)
{
    return encodeBits<std::uint64_t>(value);
}

inline FloatBytes encodeLittleEndian(float value)
{
    return encodeBits<std::uint32_t>(value);
}

} // namespace VORN3D::program
