#include "vorn3d/VornException.h"

namespace VORN3D
{

VornException::~VornException() = default;

const char* VornException::what() const noexcept
{
    return "\n  VORN EXCEPTION due to a bug _or_ wrong usage of Vorn. If you think it is a \n"
           "  bug, please report the incident together with the program's output to the\n"
           "  maintainers: the Vorn3D developers, through the project's issue tracker.\n";
}

} // namespace VORN3D
