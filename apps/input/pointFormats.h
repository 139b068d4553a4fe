// One reader for each format of point files. They give the points in the order of the file and throw
// InputError, with a line number where there are lines, on anything that is not a list of finite points.
#pragma once

#include "input/readPoints.h"

namespace VORN3D::program
{

/// Three coordinates a line, in any common separation, with an optional line of column names first.
std::vector<Point3> readText(ByteSource& source);

/// The same with as many numbers as one likes after the coordinates, the same many on each line.
PointTable readTextTable(ByteSource& source);

/// Points as above, with an optional first line that holds the number of points.
std::vector<Point3> readPts(ByteSource& source);

/// TetGen's list of numbered nodes, counted from 0 or 1.
std::vector<Point3> readNode(ByteSource& source);

/// Three little-endian doubles a point, nothing else.
std::vector<Point3> readBinary(ByteSource& source);

/// The vertices of a surface or cloud, as text or binary.
std::vector<Point3> readPly(ByteSource& source);

/// The points of what VTK's readers make of a file. Those of the first two round coordinates to single
/// precision; the others keep the precision of the file.
std::vector<Point3> readObj(ByteSource& source);
std::vector<Point3> readStl(ByteSource& source);
std::vector<Point3> readVtp(ByteSource& source);
std::vector<Point3> readVtu(ByteSource& source);
std::vector<Point3> readVtk(ByteSource& source);

} // namespace VORN3D::program
