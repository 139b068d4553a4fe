// The floating-point filters of the hot loops: a point against all four facets of a tetrahedron, and against
// the circumscribed spheres of all its neighbours.
//
// Lane i is for facet i. Let the rows be the corners minus the point, starting with corner 1: then the rows
// opposite corner i are i, i + 1 and i + 2 (modulo 4), and what belongs to the other facets comes of turning
// the lanes. With the 2x2 minors M of rows i and i + 1 and S of rows i and i + 2 in two columns, the 3x3
// minor of the rows opposite corner i is r_i M_i+1 - r_i+1 S_i + r_i+2 M_i with a third column r. Of the
// columns x, y, z it is, with the sign of lane i alternating, six times the volume that the point makes with
// facet i.
//
// The neighbour beyond facet i has three rows in common with the tetrahedron. Its lifted determinant is
// expanded by the fourth, that of its apex, for which all 3x3 minors in the columns x, y, z and w, the
// squared length, are needed, once for all neighbours.
//
// Error bounds. Let e = 2^-53 and l the largest squared length, as computed. A coordinate difference is at
// most sqrt(l (1 + 4e)), so the permanent of a volume is at most 6 l^(3/2) (1 + 10e) and that of the lifted
// determinant at most 24 l^(5/2) (1 + 20e). The roundings on the longest path to a result, but for the last,
// which cannot change the sign:
//
//     difference 1, w: differences 2, product 1, sums 2                                               1,  5
//     M and S of x and y: factors 2, product 1, difference 1; of z and w: 6, 1, 1                     4,  8
//     3x3 minors x y z: factors 5, product 1, sums 2; x y w: 9, 1, 2; z w x and z w y: 9, 1, 2        8, 12
//     lifted determinant: factors 13 (apex w by x y z, other columns alike), product 1, sums 2           16
//
// With terms of second order that is less than 7.1e for the volumes and 16.1e for the lifted determinant,
// times their permanents: errors are below 43e l^(3/2) and 387e l^(5/2). The comparisons are of squares,
// which need no root, with constants rounded up to 44e and 390e to cover their own roundings.
//
// Underflow adds at most 2^-1075 a product, times factors that are below 1 if l < 1, and below l^(3/2)
// otherwise: far less than the square root of `TINY` in the first case, and than the bound itself in the
// second. Overflow makes the threshold infinite or the square not a number, and the filter undecided.
#pragma once

#include "predicates/Lanes.h"
#include "vorn3d/Point3.h"

namespace VORN3D
{

/// A set of facets of a tetrahedron, or of the neighbours beyond them: bit i stands for the one opposite
/// corner i.
using FacetMask = LaneMask;
constexpr FacetMask ALL_FACETS = 0xF;

/// On which sides of a tetrahedron's facets a point certainly is; undecided facets are in neither set.
struct CertainSides
{
    FacetMask inside;
    FacetMask beyond;
};

/// What is certain of a point and the neighbours of a tetrahedron: in conflict are those whose circumscribed
/// spheres contain the point. Undecided neighbours are in neither set. In one word, which is returned in a
/// register.
class NeighborVerdicts
{
public:
    NeighborVerdicts(FacetMask inConflict, FacetMask notInConflict, FacetMask inside)
        : m_masks(inConflict | notInConflict << 4 | inside << 8)
    {
    }

    FacetMask getInConflict() const { return m_masks & ALL_FACETS; }
    FacetMask getUndecided() const { return ~(m_masks | m_masks >> 4) & ALL_FACETS; }

    /// The facets of the tetrahedron that the point is on the inner side of.
    FacetMask getInside() const { return m_masks >> 8; }

private:
    FacetMask m_masks;
};

namespace laneFilters
{

constexpr double EPSILON = 0x1p-53;
constexpr double VOLUME_BOUND = (44.0 * EPSILON) * (44.0 * EPSILON);
constexpr double SPHERE_BOUND = (390.0 * EPSILON) * (390.0 * EPSILON);
constexpr double TINY = 1e-290;

/// Points minus an origin, one a lane.
template <class AnyLanes>
struct RelativePoints
{
    RelativePoints(const Point3* p0, const Point3* p1, const Point3* p2, const Point3* p3,
                   const Point3& origin)
    {
        AnyLanes::loadTransposed(p0->getCoordinates(), p1->getCoordinates(), p2->getCoordinates(),
                                 p3->getCoordinates(), x, y, z);
        x = x - AnyLanes::broadcast(origin.x());
        y = y - AnyLanes::broadcast(origin.y());
        z = z - AnyLanes::broadcast(origin.z());
        w = x * x + y * y + z * z;
    }

    AnyLanes x;
    AnyLanes y;
    AnyLanes z;
    AnyLanes w; // squared length
};

/// Two columns of four rows.
template <class AnyLanes>
class Columns
{
public:
    Columns(const AnyLanes& p, const AnyLanes& q)
        : m_next(p * q.turned() - p.turned() * q), m_opposite(p * q.turnedTwice() - p.turnedTwice() * q)
    {
    }

    /// The 3x3 minors with a third column.
    AnyLanes getMinorsWith(const AnyLanes& r) const
    {
        return r * m_next.turned() - r.turned() * m_opposite + r.turnedTwice() * m_next;
    }

private:
    AnyLanes m_next;
    AnyLanes m_opposite;
};

/// The lanes that are positive if the sign of every other lane, from lane 1, is changed.
template <class AnyLanes>
inline LaneMask getPositiveAlternating(const AnyLanes& lanes)
{
    return lanes.getNegative() ^ 0b0101u;
}

template <class AnyLanes>
inline LaneMask getCertain(const AnyLanes& volumes, double maxSquaredLength)
{
    const double threshold = VOLUME_BOUND * (maxSquaredLength * maxSquaredLength * maxSquaredLength) + TINY;
    return (volumes * volumes).getGreater(AnyLanes::broadcast(threshold));
}

} // namespace laneFilters

/// The filter for the sides of the facets.
template <class AnyLanes>
inline CertainSides getCertainSides(Point3* const (&apCorner)[4], const Point3& q)
{
    using namespace laneFilters;
    const RelativePoints<AnyLanes> corners(apCorner[1], apCorner[2], apCorner[3], apCorner[0], q);
    const AnyLanes volumes = Columns<AnyLanes>(corners.x, corners.y).getMinorsWith(corners.z);
    const LaneMask certain = getCertain(volumes, corners.w.getMax());
    const LaneMask positive = getPositiveAlternating(volumes);
    return {certain & positive, certain & ~positive};
}

/// The filter for the circumscribed spheres of the neighbours of a tetrahedron, whose corners opposite the
/// common facets are apApex. All must be positively oriented.
template <class AnyLanes>
inline NeighborVerdicts getNeighborVerdicts(Point3* const (&apCorner)[4], const Point3* const (&apApex)[4],
                                            const Point3& q)
{
    using namespace laneFilters;
    const RelativePoints<AnyLanes> corners(apCorner[1], apCorner[2], apCorner[3], apCorner[0], q);
    const RelativePoints<AnyLanes> apices(apApex[0], apApex[1], apApex[2], apApex[3], q);
    const Columns<AnyLanes> xy(corners.x, corners.y);
    const Columns<AnyLanes> zw(corners.z, corners.w);
    const AnyLanes volumes = xy.getMinorsWith(corners.z);
    const AnyLanes determinants =
        (apices.x * zw.getMinorsWith(corners.y) - apices.y * zw.getMinorsWith(corners.x)) +
        (apices.z * xy.getMinorsWith(corners.w) - apices.w * volumes);

    const double maxSquaredLength = corners.w.getMax();
    const AnyLanes l = apices.w.max(AnyLanes::broadcast(maxSquaredLength));
    const AnyLanes threshold =
        (l * l) * (l * l) * l * AnyLanes::broadcast(SPHERE_BOUND) + AnyLanes::broadcast(TINY);
    const LaneMask certain = (determinants * determinants).getGreater(threshold);
    const LaneMask positive = getPositiveAlternating(determinants);
    return {certain & positive, certain & ~positive,
            getCertain(volumes, maxSquaredLength) & getPositiveAlternating(volumes)};
}

} // namespace VORN3D
