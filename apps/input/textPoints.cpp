#include "InputError.h"
#include "input/coordinates.h"
#include "input/pointFormats.h"

#include <algorithm>

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

/// Calls readRow(fields) for the current line and all others to the end of the text.
template <typename ReadRow>
void readRows(LineReader& lines, std::string_view line, const ReadRow& readRow)
{
    do {
        FieldCursor fields(line);
        readRow(fields);
    } while (lines.nextWithFields(line));
}

/// The points of all lines; the current one may be a header.
std::vector<Point3> readTable(LineReader& lines, std::string_view line)
{
    std::vector<Point3> vPoints;
    if (!isHeader(line) || lines.nextWithFields(line))
        readRows(lines, line,
                 [&](FieldCursor& fields) { vPoints.push_back(readCoordinates(fields, lines)); });
    return vPoints;
}

/// The names of the columns after the coordinates.
std::vector<std::string> getColumnNames(std::string_view header)
{
    std::vector<std::string> vNames;
    for (FieldCursor fields(header); !fields.atEnd(); fields.skipField())
        vNames.emplace_back(fields.getField());
    vNames.erase(vNames.begin(),
                 vNames.begin() + std::min<std::ptrdiff_t>(3, static_cast<std::ptrdiff_t>(vNames.size())));
    return vNames;
}

/// Reads a point and its values; the first line tells how many values there are for each.
void readRow(FieldCursor& fields, const LineReader& lines, PointTable& table)
{
    table.vPoints.push_back(readCoordinates(fields, lines));
    const std::size_t numBefore = table.vValues.size();
    while (!fields.atEnd())
        table.vValues.push_back(readValue(fields, lines, "value"));
    const std::size_t num = table.vValues.size() - numBefore;
    if (table.vPoints.size() == 1)
        table.numColumns = num;
    if (num != table.numColumns)
        lines.fail("there are " + std::to_string(num) + " values after the coordinates, not " +
                   std::to_string(table.numColumns) + " as on the first line");
}

} // namespace

std::vector<Point3> readText(ByteSource& source)
{
    LineReader lines(source);
    std::string_view line;
    return lines.nextWithFields(line) ? readTable(lines, line) : std::vector<Point3>();
}

PointTable readTextTable(ByteSource& source)
{
    LineReader lines(source);
    std::string_view line;
    PointTable table;
    bool bRows = lines.nextWithFields(line);
    if (bRows && isHeader(line)) {
        table.vColumnNames = getColumnNames(line);
        bRows = lines.nextWithFields(line);
    }
    if (bRows)
        readRows(lines, line, [&](FieldCursor& fields) { readRow(fields, lines, table); });
    table.vColumnNames.resize(table.numColumns);
    for (std::size_t i = 0; i < table.numColumns; ++i)
        if (table.vColumnNames[i].empty())
            table.vColumnNames[i] = "value" + std::to_string(i + 1);
    return table;
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
