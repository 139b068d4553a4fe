#include "vertexStore/HilbertGrid.h"

#include <cstring>

namespace VORN3D
{

namespace
{

// The curve as a state machine: row = octant 4 * bx + 2 * by + bz, column = state.
constexpr std::uint8_t HILBERT_DIGIT[8][12] = {
    {0, 0, 0, 2, 4, 6, 4, 6, 2, 2, 4, 6}, {1, 7, 3, 3, 3, 5, 7, 7, 5, 1, 5, 1},
    {3, 1, 7, 1, 5, 1, 3, 5, 3, 5, 7, 7}, {2, 6, 4, 0, 2, 2, 0, 4, 4, 6, 6, 0},
    {7, 3, 1, 5, 7, 7, 5, 1, 1, 3, 3, 5}, {6, 4, 2, 4, 0, 4, 6, 0, 6, 0, 2, 2},
    {4, 2, 6, 6, 6, 0, 2, 2, 0, 4, 0, 4}, {5, 5, 5, 7, 1, 3, 1, 3, 7, 7, 1, 3}};
constexpr std::uint8_t HILBERT_NEXT[8][12] = {
    {1, 2, 0, 6, 11, 4, 5, 6, 10, 4, 7, 10}, {2, 6, 9, 0, 11, 4, 7, 1, 3, 4, 2, 3},
    {3, 0, 10, 6, 0, 8, 5, 6, 1, 8, 11, 2},  {2, 7, 9, 11, 7, 8, 3, 10, 1, 8, 2, 6},
    {4, 8, 1, 9, 5, 0, 1, 9, 10, 2, 7, 10},  {5, 8, 1, 0, 9, 6, 1, 4, 3, 7, 5, 3},
    {3, 0, 11, 9, 0, 10, 11, 9, 5, 2, 8, 4}, {5, 7, 11, 8, 7, 6, 11, 10, 9, 3, 5, 4}};

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
    unsigned state = 0;
    std::uint32_t key = 0;
    for (int shift = numBits - 3; shift >= 0; shift -= 3) {
        hx *= 0.5;
        hy *= 0.5;
        hz *= 0.5;
        const unsigned bx = takeUpperHalfBit(dx, hx);
        const unsigned by = takeUpperHalfBit(dy, hy);
        const unsigned bz = takeUpperHalfBit(dz, hz);
        const unsigned octant = 4 * bx + 2 * by + bz;
        key += std::uint32_t{HILBERT_DIGIT[octant][state]} << shift;
        state = HILBERT_NEXT[octant][state];
    }
    return key;
}

} // namespace VORN3D
