#pragma once

#include "FileFormat.h"
#include "input/ByteSource.h"

#include "vorn3d/Point3.h"

#include <string>
#include <vector>

namespace VORN3D::program
{

using ReadFunction = std::vector<Point3>(ByteSource&);

/// The formats in which points are read.
const FileFormats<ReadFunction>& getPointFormats();

/// Reads all points of a file, at least one. The custom index of each is its place in the file, counted from
/// 0. The format is chosen by its name or, if that is empty, by the path; "-" is standard input. Throws
/// InputError.
std::vector<Point3> readPoints(const std::string& path, const std::string& formatName);

/// Points and further numbers, the same many for each.
struct PointTable
{
    std::vector<Point3> vPoints;
    std::size_t numColumns = 0;
    /// One name for each column: from the file, or "value1" and so on.
    std::vector<std::string> vColumnNames;
    /// Those of point i begin at numColumns * i.
    std::vector<double> vValues;
};

using ReadTableFunction = PointTable(ByteSource&);

/// The formats in which such tables are read.
const FileFormats<ReadTableFunction>& getTableFormats();

/// Reads a table of at least one point and one column; else as readPoints().
PointTable readPointTable(const std::string& path, const std::string& formatName);

} // namespace VORN3D::program
