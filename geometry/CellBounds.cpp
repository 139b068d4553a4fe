#include "CellBounds.h"

#include "predicates.h"
#include "unitNormal.h"
#include "vertexStar.h"
#include "vorn3d/geometry/locateClosed.h"

#include <algorithm>

namespace VORN3D
{

namespace
{

FacetCorners getFacetCorners(const Tet3& tet, int opp)
{
    int i0, i1, i2;
    tet.getFacetIndices(opp, i0, i1, i2);
    return {tet.getCorner(i0), tet.getCorner(i1), tet.getCorner(i2)};
}

/// The inner side of a facet of the hull as a site sees it.
HalfSpace getInnerSide(const Point3& site, const FacetCorners& facet)
{
    const Vec normal = getUnitNormal(*facet[0], *facet[1], *facet[2]);
    const bool bSite = std::find(facet.begin(), facet.end(), &site) != facet.end();
    return {normal, bSite ? 0.0 : dot(normal, getVector(site, *facet[0]))};
}

/// The same for the same facet in whatever order.
FacetCorners getSorted(FacetCorners facet)
{
    std::sort(facet.begin(), facet.end());
    return facet;
}

Bbox3 getBox(const Vorn_3D& dt)
{
    std::vector<Point3*> vVertices;
    dt.getVertices(vVertices);
    Bbox3 box;
    for (const Point3* pVtx : vVertices)
        box.add(*pVtx);
    return box;
}

} // namespace

ConvexCell CellBounds::makeBox(const Point3& site, double scale) const
{
    return {getVector(site, m_box.getMinPoint()), getVector(site, m_box.getMaxPoint()), NO_INDEX, scale};
}

bool BoxBounds::contains(const std::array<double, 3>& position, const Point3&) const
{
    const auto& [x, y, z] = position;
    return x >= m_box.getMinX() && x <= m_box.getMaxX() && y >= m_box.getMinY() && y <= m_box.getMaxY() &&
           z >= m_box.getMinZ() && z <= m_box.getMaxZ();
}

HullBounds::HullBounds(const Vorn_3D& dt, const std::vector<Point3*>& vHandles)
    : CellBounds(getBox(dt)), m_dt(dt), m_vHandles(vHandles), m_surface(makeHullSurface(dt, vHandles))
{
    for (std::uint32_t i = 0; i < m_surface.vTriangles.size(); ++i)
        m_triangles[getSorted(getTriangle(i))] = i;
}

FacetCorners HullBounds::getTriangle(std::uint32_t i) const
{
    const auto& [a, b, c] = m_surface.vTriangles[i];
    return {m_vHandles[a], m_vHandles[b], m_vHandles[c]};
}

bool HullBounds::contains(const std::array<double, 3>& position, const Point3& site) const
{
    const auto& [x, y, z] = position;
    return locateClosed(m_dt, {x, y, z}, site.getOneTet()).kind != LocationKind3::OUTSIDE;
}

/// The facets at the site first, which cut off most.
void HullBounds::finish(ConvexCell& cell, const Point3& site) const
{
    forEachTetAroundVertex(site, [&](const StarTet& reached, const Corners& corners,
                                     const OppTets& neighbors) {
        for (std::size_t i = 0; i < 4; ++i)
            if (neighbors[i] == nullptr && corners[i] != &site)
                cell.cut(getInnerSide(site, getFacetCorners(*reached.pTet, static_cast<int>(i))), NO_INDEX);
        return false;
    });
    // A convex polyhedron whose corners are in the hull is in it. Each cut leaves other corners.
    std::size_t numInside = 0;
    while (numInside < cell.getCorners().size())
        numInside = cutByFacetBeyond(cell, cell.getCorners()[numInside], site) ? 0 : numInside + 1;
}

/// Cuts off a corner that is outside the hull. False if it is not, but for rounding: then no facet that it is
/// beyond cuts anything off. These facets hang together.
bool HullBounds::cutByFacetBeyond(ConvexCell& cell, const Vec& corner, const Point3& site) const
{
    const Point3 p(site.x() + corner.x, site.y() + corner.y, site.z() + corner.z);
    const Location3 location = locateClosed(m_dt, p, site.getOneTet());
    if (location.pTet == nullptr || location.kind != LocationKind3::OUTSIDE)
        return false;
    std::vector<std::uint32_t> vBeyond = {
        m_triangles.at(getSorted(getFacetCorners(*location.pTet, location.aIndex[3])))};
    for (std::size_t i = 0; i < vBeyond.size(); ++i) {
        if (cell.cut(getInnerSide(site, getTriangle(vBeyond[i])), NO_INDEX))
            return true;
        for (const std::uint32_t neighbor : m_surface.vNeighbors[vBeyond[i]]) {
            const auto [a, b, c] = getTriangle(neighbor);
            if (std::find(vBeyond.begin(), vBeyond.end(), neighbor) == vBeyond.end() &&
                getPredicates().getOrientation3(a, b, c, &p) == ORIENTATION3_POSITIVE)
                vBeyond.push_back(neighbor);
        }
    }
    return false;
}

} // namespace VORN3D
