#include "nalo_tools/log.h"

#include "vorn3d/hosting.h"

#include <cstdlib>

namespace VORN3D
{

namespace
{

void report(const std::string& line)
{
    messages() << "\n      " << line << "\n\n" << std::flush;
}

} // namespace

void logError(const std::string& place, const std::string& message)
{
    report(place + ", ERROR: " + message);
}

void logWarning(const std::string& place, const std::string& message)
{
    report(place + ", WARNING: " + message);
}

void logInfo(const std::string& place, const std::string& message)
{
    report(place + ", INFO: " + message);
}

void logInfo(const std::string& message)
{
    report("INFO: " + message);
}

void goToHell(const std::string& reason)
{
    logError("goToHell", " reason: " + reason);
    tellFatal(reason);
    // Volatile, so that the compiler must perform the access; the abort is reached only where null is mapped.
    const volatile int* pNowhere = nullptr;
    messages() << *pNowhere << std::endl;
    std::abort();
}

} // namespace VORN3D
