#pragma once

#include "output/OutputFile.h"

#include <string>
#include <vector>

namespace VORN3D
{
class Point3;
class Vorn_3D;
} // namespace VORN3D

namespace VORN3D::program
{

struct Surface;

/// What the tetrahedra of a picture may be coloured by.
inline const std::vector<std::string> pictureQuantities{"size", "ratio", "index"};

/// Throws InputError if the path is no name for a picture, or if this build cannot make pictures.
void checkPicturePath(const std::string& path);

/// Renders the mesh, which must exist, cut open in the middle, as a PNG image of 1200 x 900 pixels.
void writePicture(const Vorn_3D& triangulation, const std::string& quantity, OutputFile& file);

/// Renders points and, beside them, their surface, as a PNG image of 1600 x 800 pixels.
void writeSurfacePicture(const std::vector<const Point3*>& vPoints, const Surface& surface, OutputFile& file);

} // namespace VORN3D::program
