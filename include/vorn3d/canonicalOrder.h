#pragma once

#include "Bbox3.h"
#include "Export.h"
#include "Point3.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

/// An order of insertion that can be computed for any part of a point set alone: the positions of the points
/// in it. Which of two points comes first is a function of the two, of their indices and of the box, the same
/// on every platform; so the parts of a set agree on it if they are given the indices that their points have
/// in the whole, and the box of the whole. With Vorn_3D::insertOrdered() they then agree on the mesh where
/// they overlap.
///
/// Points come from coarse to fine, in levels, each about eight times as large as the one before; the level
/// is drawn by a hash of the index. Within a level they follow a Hilbert curve of 60 bits in the smallest
/// cube at the lower corner of the box that holds it, equal keys by index (biased randomized insertion: N.
/// Amenta, S. Choi, G. Rote, Incremental constructions con BRIO, SoCG 2003).
///
/// vIndices, distinct, has one index for each point. The box is not empty and should contain all points; one
/// outside it has the place of the next cell at its boundary. VornException is thrown if there are not as
/// many indices as points, or the box is empty though there are points. O(n log n).
VORN3D_EXPORT std::vector<std::size_t> getCanonicalOrder(const std::vector<Point3>& vPoints,
                                                         const std::vector<std::uint64_t>& vIndices,
                                                         const Bbox3& box);

} // namespace VORN3D
