// The order of points along a Hilbert curve that is as fine as the points need it to be.
//
// The curve that vertices are kept along (HilbertGrid.h) has one grid, with the proportions of the box of all
// points: a far outlier leaves a whole cluster in one cell, and in a long thin box what is near on the curve
// is far in space. This one is made of cubes: the smallest one around all the points, and wherever more than
// MAX_RUN of them share a cell of it, a cube of their own.
#pragma once

#include "vorn3d/Point3.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

/// So many points in a cell need no finer order.
constexpr std::size_t MAX_RUN = 64;

/// Sorts by the upper half of each number, keeping the order of equal ones. vScratch has at least as many
/// elements. O(n).
void sortByUpperHalf(std::uint64_t* pNumbers, std::size_t num, std::uint64_t* pScratch);

/// The positions of the points along the curve; points that share a cell in the end come as they are given.
/// O(n) for each of the cubes inside each other, which are one or two where the points are not hostile.
std::vector<std::uint32_t> getFineOrder(const Point3* const* ppPoints, std::size_t num);

} // namespace VORN3D
