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
std::vector<std::string> getPictureQuantities();

/// Renders the mesh, cut open in the middle, as a PNG image of 1200 x 900 pixels.
void writePicture(const Vorn_3D& triangulation, const std::string& quantity, OutputFile& file);

} // namespace VORN3D::program
