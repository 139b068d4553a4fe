#pragma once

#include "../Vorn_3D.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

/// What becomes of Voronoi cells that extend beyond the convex hull of the points: they stay whole, some of
/// them unbounded, or only their part in the hull is taken.
enum class VoronoiClip3 { NONE, HULL };

/// Size and place of Voronoi cells, one entry for each point, in the units of the coordinates. A point that
/// is equal to an earlier one has no cell: its entries are as those of a clipped cell of which nothing is
/// left, that is volume and area 0.
///
/// Values are as good as doubles are where products of four coordinate differences neither over- nor
/// underflow.
struct VoronoiMeasures
{
    /// Volumes; infinite for unbounded cells.
    std::vector<double> vVolumes;

    /// Areas of the whole surface, that on the boundary of the region included; infinite for unbounded cells.
    std::vector<double> vAreas;

    /// Centroids x, y, z; NaN for unbounded cells and where there is no volume.
    std::vector<std::array<double, 3>> vCentroids;
};

/// The Voronoi diagram: the cell of a point is the closed set of places that are not farther from it than
/// from any other point. Cells are convex polyhedra that fill space, or the region to which they are clipped.
///
/// Points, and so cells, are numbered as by Vorn_3D::getArrays(). Cell i has the faces vFirstFace[i] to
/// vFirstFace[i + 1] - 1, face k the corners vFirstCorner[k] to vFirstCorner[k + 1] - 1. A face between two
/// cells is listed for each of them.
///
/// Without clipping the topology is exact for all finite coordinates: vertices on a common empty sphere share
/// one corner, however many they are; all faces have positive area and all their corners are strictly convex;
/// both cells at a face list the same corners, in opposite order. Cells on the hull are unbounded, and closed
/// by corners at infinity, one for each facet of the hull's polyhedron, so that for them, too, corners +
/// faces = edges + 2, if the edges between corners at infinity, where there are any, count as the border of
/// one more face.
///
/// Clipped to a region, cells that no corner leads out of the region stay exact. The others are made by
/// cutting the region by the planes halfway to their neighbours, in doubles: each is a closed polyhedron with
/// corners of its own. What it has beside a plane is left out if it is less than some 10^-13 of the distance
/// from the cell's point, so that of a face as thin as that its other side may be missing.
///
/// Source: F. Aurenhammer, Voronoi diagrams - a survey of a fundamental geometric data structure (1991).
struct VoronoiCells
{
    /// Volume, area and centroid of each cell.
    VoronoiMeasures measures;

    /// For each cell its first face; one entry more than points.
    std::vector<std::size_t> vFirstFace;

    /// For each face the point whose cell is beyond: with vFirstFace the dual graph, in compressed rows.
    /// NO_INDEX on the boundary of the region.
    std::vector<std::uint32_t> vNeighbors;

    /// For each face its area; infinite for unbounded faces.
    std::vector<double> vFaceAreas;

    /// For each face its first corner; one entry more than faces.
    std::vector<std::size_t> vFirstCorner;

    /// The corners of all faces, counter-clockwise from outside the cell: indices of vCorners.
    std::vector<std::uint32_t> vFaceCorners;

    /// Where corners are: x, y, z. From numFiniteCorners on corners are at infinity, in the direction of
    /// this unit vector, an outward normal of the hull.
    std::vector<std::array<double, 3>> vCorners;

    /// How many corners are not at infinity. All of them, if the cells are clipped.
    std::uint32_t numFiniteCorners = 0;
};

/// The cells of all points, clipped or whole. Without a mesh no point has a cell. Throws VornException if a
/// vertex has no handle in vUserHandles.
///
/// Takes time and memory in proportion to the size of the mesh, whose edges are the faces at most; a cell
/// that is cut, by its neighbours times its corners. Clipping to the hull takes a walk for each corner of a
/// cell in addition; the volumes then sum to the hull's as if its boundary were off by 10^-11 of its extent.
VORN3D_GEOMETRY_EXPORT VoronoiCells makeVoronoiCells(const Vorn_3D& dt,
                                                     const std::vector<Point3*>& vUserHandles,
                                                     VoronoiClip3 clip = VoronoiClip3::NONE);

/// The same, clipped to a box, which must not be empty (else VornException). The volumes sum to the box's
/// volume, with a relative error below 10^-9 if the box is not much smaller than its distance from points
/// whose cells it cuts. Cells of points outside the box may reach into it, others have no volume and no face.
VORN3D_GEOMETRY_EXPORT VoronoiCells makeVoronoiCells(const Vorn_3D& dt,
                                                     const std::vector<Point3*>& vUserHandles,
                                                     const Bbox3& box);

/// What makeVoronoiCells() has as measures, in less time and memory.
///@{
VORN3D_GEOMETRY_EXPORT VoronoiMeasures measureVoronoiCells(const Vorn_3D& dt,
                                                           const std::vector<Point3*>& vUserHandles,
                                                           VoronoiClip3 clip = VoronoiClip3::NONE);
VORN3D_GEOMETRY_EXPORT VoronoiMeasures measureVoronoiCells(const Vorn_3D& dt,
                                                           const std::vector<Point3*>& vUserHandles,
                                                           const Bbox3& box);
///@}

} // namespace VORN3D
