#pragma once

#include <array>
#include <charconv>
#include <string>

namespace VORN3D::program
{

/// Appends the shortest digits that read back as the same number.
template <typename Number>
void appendNumber(std::string& text, Number value)
{
    // The longest such number, as -2.2250738585072014e-308, has 24 characters.
    std::array<char, 32> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    text.append(digits.data(), result.ptr);
}

} // namespace VORN3D::program
