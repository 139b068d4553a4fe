#pragma once

#include "ExitStatus.h"

#include <CLI/CLI.hpp>

namespace VORN3D::program
{

/// Declares `vorn3d generate`; when it is given on the command line, parsing runs it and sets the status.
void addGenerateCommand(CLI::App& app, ExitStatus& status);

} // namespace VORN3D::program
