#include "output/pointWriters.h"

#include "littleEndian.h"

#include <charconv>

namespace VORN3D::program
{

namespace
{

/// The shortest digits that read back as the same double.
void appendNumber(std::string& text, double value)
{
    // The longest such number, as -2.2250738585072014e-308, has 24 characters.
    std::array<char, 32> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    text.append(digits.data(), result.ptr);
}

void appendText(std::string& bytes, const Coordinates& point)
{
    appendNumber(bytes, point[0]);
    bytes += ' ';
    appendNumber(bytes, point[1]);
    bytes += ' ';
    appendNumber(bytes, point[2]);
    bytes += '\n';
}

void appendBinary(std::string& bytes, const Coordinates& point)
{
    for (const double coordinate : point) {
        const DoubleBytes encoded = encodeLittleEndian(coordinate);
        bytes.append(encoded.data(), encoded.size());
    }
}

} // namespace

const FileFormats<AppendFunction>& getPointWriters()
{
    static const FileFormats<AppendFunction> vFormats{
        {"text",
         {".xyz", ".txt"},
         "x y z on each line, in the fewest digits that read back exactly",
         appendText},
        {"bin", {".bin"}, "three little-endian doubles for each point", appendBinary},
    };
    return vFormats;
}

} // namespace VORN3D::program
