// The floating-point filters of the hot loops: a point against all four facets of a tetrahedron, and against
// its circumscribed sphere, evaluated for the four corners at a time.
//
// A quantity of each corner (or of the facet opposite it) takes one of four lanes, kept as two pairs, which
// is what the vector units of all current processors hold. Turning the lanes by one is two shuffles, by two
// it is free.
//
// Let the rows a, b, c, d be the corners minus the point. The determinant of three of them is six times the
// volume of the tetrahedron that the point makes with a facet, and the lifted determinant is the sum over the
// corners of their squared lengths times the volume at the facet opposite. With the 2x2 minors M = (ab, bc,
// cd, da) and S = (ac, bd, ca, db) of x and y, all four volumes are z1 M2 - z2 S1 + z3 M1 with the indices
// turned.
//
// Error bounds. Let e = 2^-53 and l the largest squared length, as computed. A coordinate difference is at
// most sqrt(l (1 + 4e)), so the permanent of a volume is at most 6 l^(3/2) (1 + 10e) and that of the lifted
// determinant at most 24 l^(5/2) (1 + 20e). With Shewchuk's bounds (7 + 56e)e and (16 + 224e)e times the
// permanent, errors are below 43e l^(3/2) and 385e l^(5/2); the comparisons are of squares, which need no
// root, with constants rounded up to 44e and 390e to cover their own roundings. (J. Shewchuk, Adaptive
// precision floating-point arithmetic and fast robust geometric predicates, 1997, whose expression for the
// sphere differs from ours only in the order of sums that his bound covers.)
//
// Underflow adds at most 2^-1075 a product, times factors that are below 1 if l < 1, and below l^(3/2)
// otherwise: far less than the square root of `tiny` in the first case, and than the bound itself in the
// second. Overflow makes the threshold infinite or a comparison operand not a number, and the filter
// undecided.
#pragma once

#include "vorn3d/Point3.h"

#include <cfloat>
#include <cmath>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace VORN3D
{

/// Two lanes.
typedef double LanePair __attribute__((vector_size(16)));

/// Four lanes, one for each corner 0 to 3 of a tetrahedron, or for the facet opposite it.
struct Lanes
{
    LanePair lo;
    LanePair hi;

    Lanes operator+(const Lanes& other) const { return {lo + other.lo, hi + other.hi}; }
    Lanes operator-(const Lanes& other) const { return {lo - other.lo, hi - other.hi}; }
    Lanes operator*(const Lanes& other) const { return {lo * other.lo, hi * other.hi}; }

    /// Lane i gets what lane i + 1 (modulo 4) held.
    Lanes turned() const { return {LanePair{lo[1], hi[0]}, LanePair{hi[1], lo[0]}}; }

    /// Lane i gets what lane i + 2 (modulo 4) held.
    Lanes turnedTwice() const { return {hi, lo}; }

    double getMax() const
    {
        const LanePair larger = lo > hi ? lo : hi;
        return larger[0] > larger[1] ? larger[0] : larger[1];
    }

    double getSum() const
    {
        const LanePair sum = lo + hi;
        return sum[0] + sum[1];
    }
};

/// A point in every lane.
struct LanePoint
{
    explicit LanePoint(const Point3& p) : x{p.x(), p.x()}, y{p.y(), p.y()}, z{p.z(), p.z()} {}

    LanePair x;
    LanePair y;
    LanePair z;
};

/// The corners of a tetrahedron relative to a point, and what follows from them.
class CornerLanes
{
public:
    CornerLanes(Point3* const (&apCorner)[4], const LanePoint& q)
    {
        const double* p0 = apCorner[0]->getCoordinates();
        const double* p1 = apCorner[1]->getCoordinates();
        const double* p2 = apCorner[2]->getCoordinates();
        const double* p3 = apCorner[3]->getCoordinates();
        m_x = {LanePair{p0[0], p1[0]} - q.x, LanePair{p2[0], p3[0]} - q.x};
        m_y = {LanePair{p0[1], p1[1]} - q.y, LanePair{p2[1], p3[1]} - q.y};
        m_z = {LanePair{p0[2], p1[2]} - q.z, LanePair{p2[2], p3[2]} - q.z};
    }

    Lanes getSquaredLengths() const { return m_x * m_x + m_y * m_y + m_z * m_z; }

    /// For each facet six times the volume that the point makes with it, positive on the tetrahedron's side.
    Lanes getVolumes() const
    {
        const Lanes m = m_x * m_y.turned() - m_x.turned() * m_y;
        const LanePair s = m_x.lo * m_y.hi - m_x.hi * m_y.lo;
        const Lanes zMinors = {m_z.lo * m.turned().lo, m_z.hi * m.turned().hi};
        const Lanes turnedZ = m_z.turned();
        const Lanes abcToDab = {zMinors.lo - turnedZ.lo * s + m_z.hi * m.lo,
                                zMinors.hi + turnedZ.hi * s + m_z.lo * m.hi};
        constexpr LanePair alternating = {1.0, -1.0};
        const Lanes bcdToAbc = abcToDab.turned();
        return {bcdToAbc.lo * alternating, bcdToAbc.hi * alternating};
    }

private:
    Lanes m_x;
    Lanes m_y;
    Lanes m_z;
};

/// A set of facets: bit i stands for the facet opposite corner i.
using FacetMask = unsigned;
constexpr FacetMask ALL_FACETS = 0xF;

/// Where a point certainly is with respect to a circumscribed sphere.
enum class SphereSide { INSIDE, OUTSIDE, UNDECIDED };

namespace laneFilter
{

constexpr double EPSILON = 0x1p-53;
constexpr double VOLUME_BOUND = (44.0 * EPSILON) * (44.0 * EPSILON);
constexpr double SPHERE_BOUND = (390.0 * EPSILON) * (390.0 * EPSILON);
constexpr double TINY = 1e-290;

inline FacetMask getSignBits(const Lanes& lanes)
{
#ifdef __SSE2__
    return static_cast<FacetMask>(_mm_movemask_pd(lanes.lo) | _mm_movemask_pd(lanes.hi) << 2);
#else
    return unsigned(std::signbit(lanes.lo[0])) | unsigned(std::signbit(lanes.lo[1])) << 1 |
           unsigned(std::signbit(lanes.hi[0])) << 2 | unsigned(std::signbit(lanes.hi[1])) << 3;
#endif
}

} // namespace laneFilter

namespace laneFilter
{

// Negative where the square of a volume exceeds its bound; all is positive if the bound is not finite: an
// overflow decides nothing.
inline Lanes getLackOfVolume(const Lanes& volumes, double maxSquaredLength)
{
    const double threshold = VOLUME_BOUND * (maxSquaredLength * maxSquaredLength * maxSquaredLength) + TINY;
    const LanePair bounds = {threshold, threshold};
    if (!(threshold < DBL_MAX))
        return {bounds, bounds};
    return {bounds - volumes.lo * volumes.lo, bounds - volumes.hi * volumes.hi};
}

} // namespace laneFilter

/// On which sides of a tetrahedron's facets a point certainly is; undecided facets are in neither set.
struct CertainSides
{
    FacetMask inside;
    FacetMask beyond;
};

/// The filter for the sides of the facets, by the largest squared length of the corners.
inline CertainSides getCertainSides(const Lanes& volumes, double maxSquaredLength)
{
    const FacetMask certain = laneFilter::getSignBits(laneFilter::getLackOfVolume(volumes, maxSquaredLength));
    const FacetMask negative = laneFilter::getSignBits(volumes);
    return {certain & ~negative, certain & negative};
}

/// The filter for the circumscribed sphere of a positively oriented tetrahedron.
inline SphereSide getCertainSphereSide(const Lanes& volumes, const Lanes& squaredLengths,
                                       double maxSquaredLength)
{
    using namespace laneFilter;
    const double determinant = (volumes * squaredLengths).getSum();
    const double square = maxSquaredLength * maxSquaredLength;
    const double threshold = SPHERE_BOUND * (square * square * maxSquaredLength) + TINY;
    if (determinant * determinant > threshold)
        return determinant > 0.0 ? SphereSide::INSIDE : SphereSide::OUTSIDE;
    return SphereSide::UNDECIDED;
}

} // namespace VORN3D
