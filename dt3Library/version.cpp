#include "vorn3d/version.h"

#include "nalo_tools/assertion.h"

namespace VORN3D
{

namespace
{

std::string composeVersion()
{
    return std::string("Vorn3D, ") + (isRelease() ? "RELEASE" : "DEBUG") + ", v" +
           std::to_string(getMajorVersionNumber()) + "." + std::to_string(getMinorVersionNumber()) + "." +
           std::to_string(getRevisionNumber());
}

} // namespace

int getMajorVersionNumber()
{
    return VORN3D_VERSION_MAJOR;
}

int getMinorVersionNumber()
{
    return VORN3D_VERSION_MINOR;
}

int getRevisionNumber()
{
    return VORN3D_VERSION_REVISION;
}

bool isRelease()
{
    return !bDiagnostic;
}

std::string getVorn3DVersion()
{
    // Local, so that it is there for a client's static initialisers too.
    static const std::string text = composeVersion();
    return text;
}

} // namespace VORN3D
