#include "vorn3d/Segment3.h"

#include "vorn3d/hosting.h"

namespace VORN3D
{

void Segment3::debug() const
{
    messages() << "Segment3: " << m_src << "," << m_trg << std::endl;
}

} // namespace VORN3D
