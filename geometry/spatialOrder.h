// An order of points in which neighbours in space mostly follow each other.
#pragma once

#include "vorn3d/Point3.h"

#include <cstddef>
#include <vector>

namespace VORN3D
{

/// The positions of the points in the order of a curve through the cells of a lattice in their box (G.
/// Morton, A computer oriented geodetic data base, 1966); points that are not finite anywhere.
std::vector<std::size_t> makeSpatialOrder(const std::vector<Point3>& vPoints);

} // namespace VORN3D
