#pragma once

namespace VORN3D
{
class Tet3;
}

namespace VORN3D::program
{

/// Measures of a tetrahedron, in floating-point arithmetic.
struct TetShape
{
    double volume;
    double edgeRatio;     ///< the longest edge by the shortest; 1 for the regular tetrahedron
    double leastAngle;    ///< the least of the six angles between facets, in degrees
    double greatestAngle; ///< the greatest of them
    bool bFlat;           ///< the volume is below 1e-10 of the cube of the longest edge
};

TetShape measureShape(const Tet3& tet);

/// The part of measureShape() that is quick.
double getVolume(const Tet3& tet);

} // namespace VORN3D::program
