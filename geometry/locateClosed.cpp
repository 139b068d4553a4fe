#include "vorn3d/geometry/locateClosed.h"

#include "faces.h"
#include "predicates.h"

namespace VORN3D
{

namespace
{

/// The face whose relative interior contains a point of the closed tetrahedron: its corners are those
/// opposite which the point is not in the facet's plane.
FaceMask findFace(const Tet3& tet, const Point3& p)
{
    FaceMask face = 0;
    for (int i = 0; i < 4; ++i)
        if (getPredicates().getOrientation3(&tet, i, &p) != ORIENTATION3_COPLANAR)
            face |= 1u << i;
    return face;
}

} // namespace

Location3 locateClosed(const Vorn_3D& dt, const Point3& p, Tet3* pStart)
{
    Location3 location;
    int seenFacet;
    location.pTet = dt.locateClosed(p, pStart, seenFacet);
    if (location.pTet == nullptr)
        return location;
    const bool bOutside = seenFacet >= 0;
    const FaceMask face = bOutside ? WHOLE_TET & ~(1u << seenFacet) : findFace(*location.pTet, p);
    if (!bOutside)
        location.kind = getKind(face);
    location.aIndex = orderCorners(*location.pTet, face);
    return location;
}

} // namespace VORN3D
