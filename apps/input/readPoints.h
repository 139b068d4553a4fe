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

} // namespace VORN3D::program
