#include "InputError.h"
#include "input/coordinates.h"
#include "input/pointFormats.h"

namespace VORN3D::program
{

namespace
{

/// True if no field of the line is a number: a line of column names.
bool isHeader(std::string_view line)
{
    for (FieldCursor fields(line); !fields.atEnd(); fields.skipField()) {
        double value = 0.0;
        if (fields.readNumber(value) != FieldStatus::notANumber)
            return false;
    }
    return true;
}

bool isOneNumber(std::string_view line)
{
    FieldCursor fields(line);
    double value = 0.0;
    return fields.readNumber(value) == FieldStatus::number && fields.atEnd();
}

/// Reads points from the current line to the end of the text.
std::vector<Point3> readPoints(LineReader& lines, std::string_view line)
{
    std::vector<Point3> vPoints;
    do {
        FieldCursor fields(line);
        vPoints.push_back(readCoordinates(fields, lines));
    } while (lines.nextWithFields(line));
    return vPoints;
}

/// The same, but the current line may be a header.
std::vector<Point3> readTable(LineReader& lines, std::string_view line)
{
    const bool bPoints = !isHeader(line) || lines.nextWithFields(line);
    return bPoints ? readPoints(lines, line) : std::vector<Point3>();
}

} // namespace

std::vector<Point3> readText(ByteSource& source)
{
    LineReader lines(source);
    std::string_view line;
    return lines.nextWithFields(line) ? readTable(lines, line) : std::vector<Point3>();
}

std::vector<Point3> readPts(ByteSource& source)
{
    LineReader lines(source);
    std::string_view line;
    if (!lines.nextWithFields(line))
        return {};
    if (!isOneNumber(line))
        return readTable(lines, line);

    FieldCursor fields(line);
    const std::size_t numAnnounced = readCount(fields, lines, "number of points");
    std::vector<Point3> vPoints = lines.nextWithFields(line) ? readTable(lines, line) : std::vector<Point3>();
    if (vPoints.size() != numAnnounced)
        throw InputError(source.getName(), "announces " + std::to_string(numAnnounced) +
                                               " points but holds " + std::to_string(vPoints.size()));
    return vPoints;
}

} // namespace VORN3D::program
