#include "nalo_tools/endProcess.h"

#include <cstdlib>

namespace VORN3D
{

void endProcess(const std::string& message)
{
    messages().flush();
    tellFatal(message);
    std::exit(1);
}

} // namespace VORN3D
