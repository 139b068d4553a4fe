// The point of the hull that is nearest to one outside.
#pragma once

#include "vorn3d/geometry/interpolate.h"

namespace VORN3D
{

/// Appends the nearest point of the hull as the weighted mean of one to three corners of a hull facet, in
/// floating-point arithmetic. The search starts at a hull facet that p is strictly beyond and goes from facet
/// to facet, nearer with each step.
void appendClosestHullPoint(const Point3& p, Tet3& tet, int facet, std::vector<VertexWeight3>& vWeights);

} // namespace VORN3D
