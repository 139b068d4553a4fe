#include "vorn3d/Segment3.h"

#include <iostream>

namespace VORN3D
{

void Segment3::debug() const
{
    std::cout << "Segment3: " << m_src << "," << m_trg << std::endl;
}

} // namespace VORN3D
