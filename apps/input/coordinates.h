#pragma once

#include "input/FieldCursor.h"
#include "input/LineReader.h"

#include "vorn3d/Point3.h"

namespace VORN3D::program
{

bool isFinite(const Point3& p);

/// The next field of the current line as a finite number; `meaning` names it in a message.
double readValue(FieldCursor& fields, const LineReader& lines, const char* meaning);

/// The next three fields of the current line as a point.
Point3 readCoordinates(FieldCursor& fields, const LineReader& lines);

/// The next field of the current line as an integer from 0 to 2^53.
std::size_t readCount(FieldCursor& fields, const LineReader& lines, const char* meaning);

} // namespace VORN3D::program
