#pragma once

#include "../Vorn_3D.h"

#include <cstddef>
#include <vector>

namespace VORN3D
{

/// An order for many queries: the positions of the points in it. Neighbours in space mostly follow each
/// other, so that searches which start at the last answer are short.
///
/// The order is that of a curve through the cells of a lattice in the box of the points (G. Morton, A
/// computer oriented geodetic data base, 1966); points that are not finite come anywhere. O(n log n).
VORN3D_GEOMETRY_EXPORT std::vector<std::size_t> makeSpatialOrder(const std::vector<Point3>& vPoints);

} // namespace VORN3D
