#include "InputError.h"
#include "input/coordinates.h"
#include "input/pointFormats.h"

#include <algorithm>

namespace VORN3D::program
{

namespace
{

/// Bounds what a wrong count in the file can make us allocate in advance.
constexpr std::size_t maxReserve = std::size_t(1) << 20;

/// Reads the line "count [dimension [attributes [markers]]]" and returns the count.
std::size_t readNodeHeader(LineReader& lines, std::string_view line)
{
    FieldCursor fields(line);
    const std::size_t numPoints = readCount(fields, lines, "number of points");
    if (!fields.atEnd() && readCount(fields, lines, "dimension") != 3)
        lines.fail("the dimension is not 3");
    return numPoints;
}

void checkNodeNumber(std::size_t number, std::size_t expected, const LineReader& lines)
{
    if (number != expected)
        lines.fail("expected node " + std::to_string(expected) + ", found node " + std::to_string(number));
}

} // namespace

std::vector<Point3> readNode(ByteSource& source)
{
    LineReader lines(source);
    std::string_view line;
    if (!lines.nextWithFields(line))
        return {};
    const std::size_t numPoints = readNodeHeader(lines, line);

    std::vector<Point3> vPoints;
    vPoints.reserve(std::min(numPoints, maxReserve));
    std::size_t base = 0;
    while (lines.nextWithFields(line)) {
        if (vPoints.size() == numPoints)
            lines.fail("more nodes than the " + std::to_string(numPoints) + " announced");
        FieldCursor fields(line);
        const std::size_t number = readCount(fields, lines, "node number");
        if (vPoints.empty())
            base = number == 1 ? 1 : 0;
        checkNodeNumber(number, base + vPoints.size(), lines);
        vPoints.push_back(readCoordinates(fields, lines));
    }
    if (vPoints.size() < numPoints)
        throw InputError(source.getName(), "announces " + std::to_string(numPoints) + " nodes but holds " +
                                               std::to_string(vPoints.size()));
    return vPoints;
}

} // namespace VORN3D::program
