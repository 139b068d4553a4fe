#pragma once

#include "../Vorn_3D.h"

#include <cstddef>

namespace VORN3D
{

/// Measures of the shape and the size of a tetrahedron with volume V, surface A, edges of lengths l,
/// circumscribed sphere of radius R and inscribed sphere of radius r = 3 V / A. All are computed in doubles:
/// the volume with a relative error below 10^-12 whatever the shape, the others with errors that grow as the
/// tetrahedron becomes flat. Ratios and angles do not depend on the unit of the coordinates and are good for
/// all finite ones.
struct TetQuality3
{
    /// V; beyond the range of doubles infinite or zero.
    double volume;

    /// The least and the greatest l, by the same rule.
    ///@{
    double shortestEdge;
    double longestEdge;
    ///@}

    /// The longest l by the shortest: from 1 up.
    double edgeRatio;

    /// 6 sqrt(2) V by the cube of the longest l: 1 for the regular tetrahedron, 0 for flat ones.
    double volumeRatio;

    /// 3 r / R: 1 for the regular tetrahedron, towards 0 for flat and pointed ones. Source: V. Parthasarathy,
    /// C. Graichen, A. Hathaway, A comparison of tetrahedron quality measures (1994), where it is inverted.
    double radiusRatio;

    /// R by the shortest l: sqrt(6) / 4 for the regular tetrahedron, unbounded. What Delaunay refinement
    /// bounds; it does not see slivers, flat tetrahedra with four good edges around them. Source: G. Miller,
    /// D. Talmor, S.-H. Teng, N. Walkington, A Delaunay based numerical method for three dimensions (1995).
    double radiusEdgeRatio;

    /// The least and the greatest of the six angles between facets, in degrees; arccos(1/3), about 70.53, in
    /// the regular tetrahedron.
    ///@{
    double leastAngle;
    double greatestAngle;
    ///@}
};

/// Measures one tetrahedron of a mesh.
VORN3D_GEOMETRY_EXPORT TetQuality3 measureTet(const Tet3& tet);

/// The same for a whole mesh.
struct MeshQuality
{
    /// Of one measure over all tetrahedra. The mean is that of the numbers, not weighted by volume.
    struct Range
    {
        double least = 0.0;    ///< the least value
        double greatest = 0.0; ///< the greatest one
        double mean = 0.0;     ///< their mean
    };

    /// How many tetrahedra there are.
    std::size_t numTets = 0;

    /// The volume of the hull: the sum of all, none of which is negative, so that its relative error is small
    /// too.
    double volume = 0.0;

    /// The measures of TetQuality3 with these names.
    ///@{
    Range edgeRatio;
    Range radiusRatio;
    Range radiusEdgeRatio;
    Range leastAngle;
    Range greatestAngle;
    ///@}
};

/// Measures all tetrahedra, in time linear in their number. All values are zero if there is no mesh.
VORN3D_GEOMETRY_EXPORT MeshQuality measureMesh(const Vorn_3D& dt);

} // namespace VORN3D
