#pragma once

#include "Export.h"
#include "Point3.h"

#include <iosfwd>

namespace VORN3D
{

/// A triangle by pointers to its three corners and its three neighbours; it owns neither. Neighbour i lies
/// across the edge opposite corner i, which joins the corners (i+1) mod 3 and (i+2) mod 3.
///
/// An index outside 0 to 2 throws VornException. Vorn_3D does not use this class; it is for clients that work
/// on surfaces, such as the hull.
class VORN3D_EXPORT Triangle3
{
public:
    /// The triangle of three points, which must outlive it; its three neighbours are null.
    Triangle3(Point3* p0, Point3* p1, Point3* p2);

    /// Corner i (0 to 2).
    Point3* getCorner(int i) const;

    /// The neighbour across the edge opposite corner i (0 to 2), or null.
    Triangle3* getNeig(int i) const;

    /// Sets one side of a neighbour link (null clears it).
    void setNeig(int i, Triangle3* pNeighbor);

    /// The index of a corner, compared by address. If p is none: -999, after a message on standard error.
    int getIntraTriangleIndex(const Point3* p) const;

    /// The index of the edge from p1 to p2, or from p2 to p1, that is of the corner opposite it. If there is
    /// no such edge: -999, after messages on standard error and standard output.
    int getIntraTriangleIndex(const Point3* p1, const Point3* p2) const;

    /// The mean of the three corners, in floating-point arithmetic.
    Point3 getBarycenter() const;

private:
    Point3* m_aCorner[3];
    Triangle3* m_aNeighbor[3];
};

/// The addresses of the three corners.
VORN3D_EXPORT std::ostream& operator<<(std::ostream& os, const Triangle3& triangle);

} // namespace VORN3D
