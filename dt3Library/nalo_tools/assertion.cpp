#include "nalo_tools/assertion.h"

#include "nalo_tools/log.h"
#include "vorn3d/VornException.h"
#include "vorn3d/hosting.h"

#include <cstdlib>
#include <iostream>
#include <string>

namespace VORN3D
{

void failAssertion(const char* condition, const char* file, int line)
{
    logError("Vorn, ", std::string("Condition [ ") + condition + " failed ]");
    messages() << "      " << file << ":" << line << std::endl;
    throw VornException();
}

void failDebugAssertion(const char* condition, const char* file, int line)
{
    const std::string message =
        std::string(file) + ":" + std::to_string(line) + ": Assertion `" + condition + "' failed.";
    messages().flush();
    tellFatal(message);
    std::cerr << message << std::endl;
    std::abort();
}

} // namespace VORN3D
