// Range checks for the local indices of triangles and tetrahedra.
#pragma once

namespace VORN3D
{

inline bool range02(int index)
{
    return static_cast<unsigned>(index) <= 2u;
}

inline bool range03(int index)
{
    return static_cast<unsigned>(index) <= 3u;
}

} // namespace VORN3D
