#pragma once

#include "ExitStatus.h"

#include <CLI/CLI.hpp>

namespace VORN3D::program
{

/// Declares `vorn3d triangulate`; when it is given on the command line, parsing runs it and sets the status.
void addTriangulateCommand(CLI::App& app, ExitStatus& status);

} // namespace VORN3D::program
