// The commands of the program, one file each. To add one, declare it here and list it in commands.cpp.
#pragma once

#include "ExitStatus.h"

#include <CLI/CLI.hpp>

#include <vector>

namespace VORN3D::program
{

/// Declares a command; when it is given on the command line, parsing runs it and sets the status.
using AddCommand = void(CLI::App& app, ExitStatus& status);

AddCommand addTriangulateCommand;
AddCommand addHullCommand;
AddCommand addAlphaCommand;
AddCommand addInterpolateCommand;
AddCommand addNearestCommand;
AddCommand addVoronoiCommand;
AddCommand addGenerateCommand;

/// All commands in the order in which help lists them.
const std::vector<AddCommand*>& getCommands();

} // namespace VORN3D::program
