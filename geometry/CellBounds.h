// The regions to which Voronoi cells are clipped.
#pragma once

#include "ConvexCell.h"
#include "VoronoiDual.h"
#include "vorn3d/Bbox3.h"
#include "vorn3d/Vorn_3D.h"
#include "vorn3d/geometry/HullSurface.h"

#include <array>
#include <map>

namespace VORN3D
{

class CellBounds
{
public:
    virtual ~CellBounds() = default;

    /// Whether a corner of a site's cell is in the region.
    virtual bool contains(const std::array<double, 3>& position, const Point3& site) const = 0;

    /// A box that contains the region, seen from a site, with a scale as ConvexCell wants it.
    ConvexCell makeBox(const Point3& site, double scale) const;

    /// Cuts off what is in the box and not in the region.
    virtual void finish(ConvexCell& cell, const Point3& site) const = 0;

protected:
    explicit CellBounds(const Bbox3& box) : m_box(box) {}

    const Bbox3 m_box;
};

class BoxBounds : public CellBounds
{
public:
    explicit BoxBounds(const Bbox3& box) : CellBounds(box) {}

    bool contains(const std::array<double, 3>& position, const Point3& site) const override;
    void finish(ConvexCell&, const Point3&) const override {}
};

using FacetCorners = std::array<const Point3*, 3>;

/// The hull of the points of a mesh.
class HullBounds : public CellBounds
{
public:
    HullBounds(const Vorn_3D& dt, const std::vector<Point3*>& vHandles);

    bool contains(const std::array<double, 3>& position, const Point3& site) const override;
    void finish(ConvexCell& cell, const Point3& site) const override;

private:
    FacetCorners getTriangle(std::uint32_t i) const;
    bool cutByFacetBeyond(ConvexCell& cell, const Vec& corner, const Point3& site) const;

    const Vorn_3D& m_dt;
    const std::vector<Point3*>& m_vHandles;
    const HullSurface m_surface;
    std::map<FacetCorners, std::uint32_t> m_triangles; // by their corners, sorted
};

} // namespace VORN3D
