// How the library ends the process: see vorn3d/hosting.h.
#pragma once

#include "vorn3d/hosting.h"

#include <string>

namespace VORN3D
{

/// Ends the process with exit status 1, unless the fatal handler throws.
[[noreturn]] void endProcess(const std::string& message);

} // namespace VORN3D
