// What the library needs of vorn3d/hosting.h: the stream for its text, and the ends of the process.
#pragma once

#include "vorn3d/hosting.h"

#include <ostream>
#include <string>

namespace VORN3D
{

/// The stream for all text.
std::ostream& messages();

/// Calls the fatal handler, if there is one.
void tellFatal(const std::string& message);

/// Ends the process with exit status 1, unless the fatal handler throws.
[[noreturn]] void endProcess(const std::string& message);

} // namespace VORN3D
