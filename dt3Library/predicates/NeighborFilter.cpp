#include "predicates/NeighborFilter.h"

namespace VORN3D
{

NeighborVerdicts judgeNeighbors(Point3* const (&apCorner)[4], const Point3* const (&apApex)[4],
                                const Point3& q)
{
    return getNeighborVerdicts<Lanes>(apCorner, apApex, q);
}

NeighborFilter chooseNeighborFilter()
{
#ifdef __x86_64__
    if (NeighborFilter filter = getAvx2NeighborFilter(); filter != nullptr && __builtin_cpu_supports("avx2"))
        return filter;
#endif
    return judgeNeighbors;
}

} // namespace VORN3D
