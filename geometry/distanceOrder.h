// The order of points by their distance from a query, exact for all finite coordinates.
//
// Squared distances are compared as computed where their rounding cannot matter. Let e = 2^-53. A coordinate
// difference has a relative error of at most e, its square one of 3e, and two sums add 2e: a squared distance
// as computed is within 6e of the true one, up to terms of second order, which the sixth e covers, and up to
// 3 * 2^-1075 for squares that underflow. So one is certainly less than another if it is less than 1 - 16e
// times that minus 2^-1060, roundings of this expression included. An overflow makes the larger one infinite,
// and then nothing is certain.
//
// Otherwise the difference of the two is evaluated in integers (predicates/IntegerRows.h).
#pragma once

#include "predicates/ExactSign.h"
#include "vorn3d/Point3.h"

namespace VORN3D
{

/// The signs of |a - q|^2 - |b - q|^2 for points = {a, b, q}, as the stages of the comparison find it.
///@{
Sign compareDistancesByFilter(double sqDistanceA, double sqDistanceB);
Sign compareDistancesByIntegers(const PointArray<3>& points);
Sign compareDistancesInExtendedRange(const PointArray<3>& points);
///@}

/// The same sign, by stages of growing cost, never undecided. The squared distances are as computed by
/// DistanceOrder::measure().
Sign compareDistances(const PointArray<3>& points, double sqDistanceA, double sqDistanceB);

/// A vertex, and its squared distance from a query as computed.
struct Distant
{
    Point3* pVtx;
    double sqDistance;
};

/// A total order of distinct points: by distance from the query, then by coordinates.
class DistanceOrder
{
public:
    explicit DistanceOrder(const Point3& query) : m_query(query) {}

    const Point3& getQuery() const { return m_query; }

    Distant measure(Point3* pVtx) const { return measure(pVtx, pVtx->getCoordinates()); }

    /// The same for somebody who has the vertex's coordinates at hand.
    Distant measure(Point3* pVtx, const double* coordinates) const
    {
        return {pVtx, lift(difference(coordinates, m_query.getCoordinates()))};
    }

    /// True if a comes before b.
    bool operator()(const Distant& a, const Distant& b) const
    {
        const Sign filtered = compareDistancesByFilter(a.sqDistance, b.sqDistance);
        return filtered == Sign::undecided ? isBeforeExactly(a, b) : filtered == Sign::negative;
    }

private:
    [[gnu::noinline]] bool isBeforeExactly(const Distant& a, const Distant& b) const;

    const Point3& m_query;
};

inline Sign compareDistancesByFilter(double sqDistanceA, double sqDistanceB)
{
    constexpr double FACTOR = 1.0 - 0x1p-49;
    constexpr double TINY = 0x1p-1060;
    constexpr double LARGEST = 0x1.fffffffffffffp+1023;
    if (sqDistanceA < sqDistanceB * FACTOR - TINY && sqDistanceB <= LARGEST)
        return Sign::negative;
    if (sqDistanceB < sqDistanceA * FACTOR - TINY && sqDistanceA <= LARGEST)
        return Sign::positive;
    return Sign::undecided;
}

} // namespace VORN3D
