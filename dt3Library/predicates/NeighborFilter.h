// The filter for the neighbours of a tetrahedron (laneFilters.h), for the processor that the program runs on.
#pragma once

#include "predicates/laneFilters.h"

namespace VORN3D
{

using NeighborFilter = NeighborVerdicts (*)(Point3* const (&apCorner)[4], const Point3* const (&apApex)[4],
                                            const Point3& q);

/// For any processor.
NeighborVerdicts judgeNeighbors(Point3* const (&apCorner)[4], const Point3* const (&apApex)[4],
                                const Point3& q);

/// For processors with AVX2; null if the library was built without it.
NeighborFilter getAvx2NeighborFilter();

/// The fastest one that runs here.
NeighborFilter chooseNeighborFilter();

} // namespace VORN3D
