#pragma once

#include "FileFormat.h"

#include <array>
#include <string>

namespace VORN3D::program
{

using Coordinates = std::array<double, 3>;

/// Appends one point to the bytes of a file. Reading them gives the same doubles again.
using AppendFunction = void(std::string& bytes, const Coordinates& point);

/// The formats in which points are written.
const FileFormats<AppendFunction>& getPointWriters();

} // namespace VORN3D::program
