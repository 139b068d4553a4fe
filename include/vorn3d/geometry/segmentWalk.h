#pragma once

#include "locateClosed.h"

#include <array>
#include <vector>

namespace VORN3D
{

/// A piece of a segment between two places where it goes from one face of the mesh into another.
struct SegmentPiece3
{
    /// The tetrahedron that the piece lies in, or one of those around the facet or edge that it lies in.
    Tet3* pTet;

    /// EDGE, FACET or CELL: the face of pTet whose relative interior contains the piece without its ends.
    LocationKind3 kind;

    /// All four corner indices of pTet, those of the face first, as in Location3.
    std::array<int, 4> aIndex;

    /// Where on the segment the piece begins and ends, from 0 at its first end to 1 at its second. The exit
    /// of a piece is the entry of the next one, exactly; a piece may be too short for the two to differ.
    ///@{
    double entry;
    double exit;
    ///@}
};

/// The pieces in which the segment from p to q crosses the mesh, in order, each of positive length; the
/// segment goes through cells, facets and edges, and through the vertices between two pieces. It is cut off
/// at the hull, so the first entry is positive if p is outside, and the last exit less than 1 if q is. Empty
/// if the segment misses the hull or only touches it in a point, if p equals q, if one of them is not finite
/// or if there is no mesh.
///
/// Which faces are crossed, and in which order, is exact for all finite points; the parameters have an error
/// of a few units in the 13th digit, relative to the parameter and to its distance from 1. Takes the walk
/// that locates p, from pStart if that is not null, for p outside a walk over the hull's facets that p sees,
/// and time in proportion to the number of tetrahedra crossed, and of those around the vertices and edges
/// met.
VORN3D_GEOMETRY_EXPORT std::vector<SegmentPiece3> segmentWalk(const Vorn_3D& dt, const Point3& p,
                                                              const Point3& q, Tet3* pStart = nullptr);

} // namespace VORN3D
