#pragma once

#include "output/OutputFile.h"

#include <string>
#include <vector>

namespace VORN3D
{
class Vorn_3D;
}

namespace VORN3D::program
{

/// What the tetrahedra of a picture may be coloured by.
inline const std::vector<std::string> pictureQuantities{"size", "ratio", "index"};

/// Throws InputError if the path is no name for a picture, or if this build cannot make pictures.
void checkPicturePath(const std::string& path);

/// Renders the mesh, which must exist, cut open in the middle, as a PNG image of 1200 x 900 pixels.
void writePicture(const Vorn_3D& triangulation, const std::string& quantity, OutputFile& file);

} // namespace VORN3D::program
