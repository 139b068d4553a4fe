#pragma once

namespace VORN3D::program
{

/// Whether this program was built with VTK, which some of its formats and its pictures need.
bool hasVtk();

constexpr const char* vtkMissing =
    "this needs VTK, which the program was built without (install Debian's libvtk9-dev and build it again)";

} // namespace VORN3D::program
