#include "vertexStore/HilbertGrid.h"

#include "vertexStore/HilbertCurve.h"

#include <cstring>

namespace VORN3D
{

namespace
{

// Halves the cell along one axis: returns the half in which the offset d lies and makes d relative to it. The
// halves are equally likely, so nothing branches: what d is reduced by is masked.
unsigned takeUpperHalfBit(double& d, double halfExtent)
{
    const bool bUpper = d >= halfExtent;
    std::uint64_t bits;
    std::memcpy(&bits, &halfExtent, sizeof(bits));
    bits &= std::uint64_t{0} - std::uint64_t{bUpper};
    double reduction;
    std::memcpy(&reduction, &bits, sizeof(reduction));
    d -= reduction;
    return bUpper;
}

} // namespace

std::uint32_t HilbertGrid::getKey(const Point3& q, int numBits) const
{
    double dx = q.x() - minX;
    double dy = q.y() - minY;
    double dz = q.z() - minZ;
    double hx = rangeX;
    double hy = rangeY;
    double hz = rangeZ;
    HilbertCurve curve;
    std::uint32_t key = 0;
    for (int shift = numBits - 3; shift >= 0; shift -= 3) {
        hx *= 0.5;
        hy *= 0.5;
        hz *= 0.5;
        const unsigned bx = takeUpperHalfBit(dx, hx);
        const unsigned by = takeUpperHalfBit(dy, hy);
        const unsigned bz = takeUpperHalfBit(dz, hz);
        key += curve.enter(4 * bx + 2 * by + bz) << shift;
    }
    return key;
}

} // namespace VORN3D
