// The predicates of the triangulation, for all services.
#pragma once

#include "predicates/ExactSign.h"
#include "predicates/NaloTest3.h"

namespace VORN3D
{

inline const NaloTest3& getPredicates()
{
    static const NaloTest3 predicates;
    return predicates;
}

/// True iff e is exactly on the sphere through four points that are not coplanar.
inline bool isOnSphere(const Point3& a, const Point3& b, const Point3& c, const Point3& d, const Point3& e)
{
    const SpherePoints points = {a.getCoordinates(), b.getCoordinates(), c.getCoordinates(),
                                 d.getCoordinates(), e.getCoordinates()};
    const FilterResult filtered = filterSphere(points[0], points[1], points[2], points[3], points[4]);
    if (filtered.isCertain())
        return false;
    if (filtered.det == 0.0 && isExactOnLattice(points, filtered.extent))
        return true;
    return getPredicates().insphereadapt(a, b, c, d, e, evaluateWithPermanent(points).permanent) == 2;
}

} // namespace VORN3D
