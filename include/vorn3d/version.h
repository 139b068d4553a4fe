#pragma once

#include "Export.h"

#include <string>

namespace VORN3D
{

/// A part of the version (major.minor.revision) of the library that the program runs with.
///@{
VORN3D_EXPORT int getMajorVersionNumber();
VORN3D_EXPORT int getMinorVersionNumber();
VORN3D_EXPORT int getRevisionNumber();
///@}

/// True if the library was built in its release configuration, false for the diagnostic one.
VORN3D_EXPORT bool isRelease();

/// Name, configuration and version, for instance "Vorn3D, DEBUG, v0.99.0".
VORN3D_EXPORT std::string getVorn3DVersion();

} // namespace VORN3D
