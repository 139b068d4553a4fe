// HilbertGrid numbers the cells of a box along a three-dimensional Hilbert curve.
//
// Each axis of the box is cut into 2^(numBits / 3) slabs of its own, so that cells have the proportions of
// the box.
#pragma once

#include "vorn3d/Point3.h"

#include <cstdint>

namespace VORN3D
{

struct HilbertGrid
{
    double minX;
    double minY;
    double minZ;
    double rangeX;
    double rangeY;
    double rangeZ;

    /// The key of q, of numBits bits (a multiple of 3, up to 30). A point outside the box gets the key of a
    /// cell at its boundary.
    std::uint32_t getKey(const Point3& q, int numBits) const;
};

} // namespace VORN3D
