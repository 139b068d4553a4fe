// One-line reports, each framed by empty lines, and the fatal stop.
//
// `place` names the reporting function ("Tet3::getEdge()", "SimplePool::init(..)"); `message` is free text.
// Every report is flushed, so that it is not lost when the process ends abnormally soon after.
#pragma once

#include <string>

namespace VORN3D
{

void logError(const std::string& place, const std::string& message);
void logWarning(const std::string& place, const std::string& message);
void logInfo(const std::string& place, const std::string& message);
void logInfo(const std::string& message);

/// Fatal stop for states that must never be reached: reports the reason and dies by an invalid memory access,
/// so that a debugger or a core file shows the place. Never returns; throws only what the fatal handler
/// throws.
[[noreturn]] void goToHell(const std::string& reason);

} // namespace VORN3D
