#include "vorn3d/Ball3.h"

#include "vorn3d/hosting.h"

#include <cmath>

namespace VORN3D
{

double Ball3::getRadius() const
{
    return std::sqrt(m_sqRadius);
}

void Ball3::debug() const
{
    messages() << "Ball3: " << m_center << ", r=" << getRadius() << std::endl;
}

} // namespace VORN3D
