#pragma once

#include "Export.h"

#include <string>

namespace VORN3D
{

/// Starts the named wall-clock timer, or stops it if it is running, with a line on standard output each time.
/// Returns -1 when starting and the elapsed seconds when stopping. Timers of different names are independent.
/// May be called from several threads. After a stop, floating-point output on standard output is in
/// fixed-point notation with precision 6.
VORN3D_EXPORT double timer(const std::string& name);

} // namespace VORN3D

/// Counts an event under its name, or prints all counts on standard output if the name is "GETCOUNTERS". The
/// name is not changed. May be called from several threads. A name in the global namespace, not in VORN3D.
VORN3D_EXPORT void benchCounter(std::string& name);
