#include "input/coordinates.h"

#include <cmath>

namespace VORN3D::program
{

namespace
{

constexpr double maxCount = 9007199254740992.0;

[[noreturn]] void failOnField(FieldStatus status, const FieldCursor& fields, const LineReader& lines,
                              const std::string& meaning)
{
    if (status == FieldStatus::missing)
        lines.fail("the " + meaning + " is missing");
    const char* reason = status == FieldStatus::notFinite ? " is not finite" : " is not a number";
    lines.fail("the " + meaning + " " + fields.describeField() + reason);
}

} // namespace

double readValue(FieldCursor& fields, const LineReader& lines, const char* meaning)
{
    double value = 0.0;
    const FieldStatus status = fields.readNumber(value);
    if (status != FieldStatus::number)
        failOnField(status, fields, lines, meaning);
    return value;
}

bool isFinite(const Point3& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y()) && std::isfinite(p.z());
}

Point3 readCoordinates(FieldCursor& fields, const LineReader& lines)
{
    const double x = readValue(fields, lines, "x coordinate");
    const double y = readValue(fields, lines, "y coordinate");
    const double z = readValue(fields, lines, "z coordinate");
    return {x, y, z};
}

std::size_t readCount(FieldCursor& fields, const LineReader& lines, const char* meaning)
{
    const FieldCursor start = fields;
    const double value = readValue(fields, lines, meaning);
    if (value < 0.0 || value > maxCount || value != std::floor(value))
        lines.fail(std::string("the ") + meaning + " " + start.describeField() + " is not a count");
    return static_cast<std::size_t>(value);
}

} // namespace VORN3D::program
