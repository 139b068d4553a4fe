#include "vorn3d/geometry/locateClosed.h"

#include "predicates.h"

#include <algorithm>

namespace VORN3D
{

namespace
{

/// A facet's corners and the one opposite it.
std::array<int, 4> nameFacet(const Tet3& tet, int opp3)
{
    std::array<int, 4> aIndex;
    tet.getFacetIndices(opp3, aIndex[0], aIndex[1], aIndex[2]);
    aIndex[3] = opp3;
    return aIndex;
}

/// A point of the closed tetrahedron is in the planes of the facets opposite the corners that do not span its
/// face: three of them for a vertex, none for the interior.
void nameFace(const Point3& p, Location3& location)
{
    std::array<bool, 4> bInPlane;
    for (int i = 0; i < 4; ++i)
        bInPlane[static_cast<std::size_t>(i)] =
            getPredicates().getOrientation3(location.pTet, i, &p) == ORIENTATION3_COPLANAR;
    const auto itOther = std::stable_partition(location.aIndex.begin(), location.aIndex.end(),
                                               [&](int i) { return !bInPlane[static_cast<std::size_t>(i)]; });
    location.kind = static_cast<LocationKind3>(itOther - location.aIndex.begin() - 1);
    if (location.kind == LocationKind3::FACET)
        location.aIndex = nameFacet(*location.pTet, location.aIndex[3]);
}

} // namespace

Location3 locateClosed(const Vorn_3D& dt, const Point3& p, Tet3* pStart)
{
    Location3 location;
    int seenFacet;
    location.pTet = dt.locateClosed(p, pStart, seenFacet);
    if (location.pTet == nullptr)
        return location;
    if (seenFacet >= 0)
        location.aIndex = nameFacet(*location.pTet, seenFacet);
    else
        nameFace(p, location);
    return location;
}

} // namespace VORN3D
