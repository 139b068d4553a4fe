#pragma once

#include "../Vorn_3D.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

/// The boundary of the convex hull, as the closed triangle surface that the mesh has there.
///
/// All vertices on the boundary are vertices of the surface, those in the middle of a flat side or of a
/// straight edge included, so that its triangles are facets of tetrahedra; mergeCoplanarTriangles() tells
/// which are corners of the hull. The topology is exact. Area and volume are as good as doubles are where
/// products of three coordinate differences neither over- nor underflow.
struct HullSurface
{
    /// For each triangle the numbers of its corners, counter-clockwise from outside. The triangles are in the
    /// order of the tetrahedra in Vorn_3D::getArrays().
    std::vector<std::array<std::uint32_t, 3>> vTriangles;

    /// For each triangle the three across its edges: neighbour i has not its corner i.
    std::vector<std::array<std::uint32_t, 3>> vNeighbors;

    /// For each triangle the tetrahedron that has it as a facet.
    std::vector<std::uint32_t> vTets;

    /// The numbers of the points on the surface, ascending.
    std::vector<std::uint32_t> vVertices;

    double area = 0.0;   ///< of all triangles
    double volume = 0.0; ///< within
};

/// The surface of the hull, empty if there is no mesh. Points and tetrahedra are numbered as by
/// Vorn_3D::getArrays(); a corner that has no handle in vUserHandles throws VornException. Takes time in
/// proportion to the size of the mesh and, for h triangles, h log h.
VORN3D_GEOMETRY_EXPORT HullSurface makeHullSurface(const Vorn_3D& dt,
                                                   const std::vector<Point3*>& vUserHandles);

/// How many flat sides of the hull meet in a vertex of its surface: one, two, or more.
enum class HullPlace3 { IN_FACET, ON_EDGE, CORNER };

/// The hull as a convex polyhedron: its facets are maximal flat polygons, not triangles, and its corners are
/// the extreme points alone.
struct HullPolygons
{
    /// Facet i has the corners vFirst[i] to vFirst[i + 1] - 1; one entry more than facets.
    std::vector<std::size_t> vFirst;

    /// The corners of all facets, counter-clockwise from outside: numbers of points.
    std::vector<std::uint32_t> vCorners;

    /// For each entry of vCorners the facet beyond the edge from this corner to the facet's next one.
    std::vector<std::uint32_t> vNeighbors;

    /// For each triangle of the surface the facet of which it is a part.
    std::vector<std::uint32_t> vFacetOfTriangle;

    /// For each entry of HullSurface::vVertices where it is.
    std::vector<HullPlace3> vPlaces;
};

/// Merges the triangles of a hull's surface that lie in one plane; vUserHandles as they were when it was
/// made. Exact, in time in proportion to their number.
VORN3D_GEOMETRY_EXPORT HullPolygons mergeCoplanarTriangles(const HullSurface& surface,
                                                           const std::vector<Point3*>& vUserHandles);

} // namespace VORN3D
