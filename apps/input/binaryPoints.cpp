#include "InputError.h"
#include "input/coordinates.h"
#include "input/pointFormats.h"
#include "littleEndian.h"

namespace VORN3D::program
{

namespace
{

constexpr std::size_t bytesPerPoint = 3 * sizeof(double);
constexpr std::size_t pointsPerBlock = std::size_t(1) << 15;

Point3 decodePoint(const char* pBytes)
{
    return {decodeLittleEndian(pBytes), decodeLittleEndian(pBytes + 8), decodeLittleEndian(pBytes + 16)};
}

} // namespace

std::vector<Point3> readBinary(ByteSource& source)
{
    std::vector<Point3> vPoints;
    std::vector<char> block(pointsPerBlock * bytesPerPoint);
    std::size_t numBytes = block.size();
    while (numBytes == block.size()) {
        numBytes = source.read(block.data(), block.size());
        if (numBytes % bytesPerPoint != 0)
            throw InputError(source.getName(),
                             "the last point is incomplete: the size is not a multiple of 24 bytes");
        for (std::size_t i = 0; i < numBytes; i += bytesPerPoint) {
            vPoints.push_back(decodePoint(&block[i]));
            if (!isFinite(vPoints.back()))
                throw InputError(source.getName(),
                                 "point " + std::to_string(vPoints.size()) +
                                     " (counted from 1) has a coordinate that is not finite");
        }
    }
    return vPoints;
}

} // namespace VORN3D::program
