// Doubles as eight bytes, least significant first, on machines of either byte order.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>

namespace VORN3D::program
{

using DoubleBytes = std::array<char, 8>;

inline double decodeLittleEndian(const char* pBytes)
{
    std::uint64_t bits = 0;
    for (int i = 7; i >= 0; --i)
        bits = bits << 8 | static_cast<unsigned char>(pBytes[i]);
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

inline DoubleBytes encodeLittleEndian(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    DoubleBytes bytes{};
    for (char& byte : bytes) {
        byte = static_cast<char>(bits & 0xff);
        bits >>= 8;
    }
    return bytes;
}

} // namespace VORN3D::program
