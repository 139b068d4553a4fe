#pragma once

#include "../Vorn_3D.h"

#include <cstddef>
#include <vector>

namespace VORN3D
{

/// What a point outside the hull is given: no weights, so that its value is not a number; the nearest vertex
/// (see nearestVertex()); or the weights of the hull's point that is nearest to it, up to the rounding of
/// that point.
enum class OutsideHull3 { NOTHING, NEAREST, CLAMP };

/// A vertex of the mesh and the share that its value has in an interpolated one.
struct VertexWeight3
{
    Point3* pVtx;  ///< the vertex
    double weight; ///< its share
};

/// The weights of the corners of the tetrahedron that contains p, its barycentric coordinates: of one
/// tetrahedron the linear function with the corners' values, of all a continuous one. Only vertices whose
/// weight is positive appear. Empty if p is not finite or there is no mesh.
///
/// The choice of the tetrahedron, and which weights are zero, is exact; at a vertex its weight is 1. Weights
/// are positive, have an error below 10^-12 in tetrahedra of any shape, and sum to 1 up to rounding; so
/// linear functions are reproduced, to 10^-12 of the largest difference of coordinates. The walk starts at
/// pStart, or near p if that is null (see Vorn_3D::locate()).
VORN3D_GEOMETRY_EXPORT std::vector<VertexWeight3>
interpolateLinear(const Vorn_3D& dt, const Point3& p, OutsideHull3 outside = OutsideHull3::NOTHING,
                  Tet3* pStart = nullptr);

/// Sibson's natural neighbour coordinates: if p became a vertex, its Voronoi cell would take volume from the
/// cells around it, the natural neighbours of p; the weight of each is its share in what is taken. The
/// interpolated function is continuous inside the hull, and differentiable but at the vertices. Empty if p is
/// not finite or there is no mesh.
///
/// The choice of the neighbours is exact: the corners of the tetrahedra whose circumscribed spheres have p
/// inside them, not on them. All of them appear, even if a share is so small that it is rounded to zero. At a
/// vertex its weight is 1. Weights are not negative and sum to 1 up to rounding; volumes are computed
/// in doubles, and then corrected by the least relative changes for which the weighted mean of the neighbours
/// is p, as it is for the true ones; so linear functions are reproduced, to 10^-12 of the largest difference
/// of coordinates. On the boundary of the hull, where the cell of p has no end, and where rounding leaves
/// nothing of the volumes or they are beyond the range of doubles, the weights are those of
/// interpolateLinear().
///
/// The mesh is only read. Takes a walk, from pStart or near p if that is null, and time in proportion to the
/// number of these tetrahedra, on well spread points some 20.
///
/// Source: R. Sibson, A vector identity for the Dirichlet tessellation, Math. Proc. Cambridge Phil. Soc. 87
/// (1980).
VORN3D_GEOMETRY_EXPORT std::vector<VertexWeight3>
interpolateNatural(const Vorn_3D& dt, const Point3& p, OutsideHull3 outside = OutsideHull3::NOTHING,
                   Tet3* pStart = nullptr);

/// How a value is made of those at the vertices: by interpolateLinear(), by interpolateNatural(), or as that
/// of the nearestVertex().
enum class InterpolationMethod3 { LINEAR, NATURAL, NEAREST };

/// The weights of many points as a sparse matrix in compressed rows (CSR). Row i is that of point i: the
/// entries from rowStart i up to, without, rowStart i + 1; a point without weights has an empty row. Columns
/// are the custom indices of the vertices.
struct VORN3D_GEOMETRY_EXPORT InterpolationMatrix
{
    /// One more than there are rows; the first is 0.
    std::vector<std::size_t> vRowStart;

    /// The entries: custom index of a vertex, and its weight.
    ///@{
    std::vector<int> vColumn;
    std::vector<double> vWeight;
    ///@}

    /// The interpolated values of all points, numColumns for each. vValues holds numColumns values for each
    /// custom index: those of index i begin at numColumns * i. Empty rows give values that are not a number.
    /// Too few values throw VornException.
    std::vector<double> apply(const std::vector<double>& vValues, std::size_t numColumns = 1) const;
};

/// The weights of many points. Custom indices of the vertices must not be negative, as they are if no index
/// was set before the insertion: that throws VornException. For the method NEAREST points outside the hull
/// have weights in any case.
///
/// The points are looked up in an order in which neighbours follow each other, so that walks are short;
/// besides, the time is that of the single calls.
VORN3D_GEOMETRY_EXPORT InterpolationMatrix makeInterpolationMatrix(
    const Vorn_3D& dt, const std::vector<Point3>& vPoints,
    InterpolationMethod3 method = InterpolationMethod3::LINEAR, OutsideHull3 outside = OutsideHull3::NOTHING);

} // namespace VORN3D
