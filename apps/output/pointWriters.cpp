#include "output/pointWriters.h"

#include "littleEndian.h"
#include "output/numberText.h"

namespace VORN3D::program
{

namespace
{

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
