#include "distanceOrder.h"

#include "predicates/FloatFilter.h"
#include "predicates/IntegerRows.h"

namespace VORN3D
{

namespace
{

template <class Integer>
Sign compareLifts(const std::array<Row<Integer>, 2>& rows)
{
    return static_cast<Sign>((lift(rows[0]) - lift(rows[1])).getSign());
}

} // namespace

Sign compareDistancesByIntegers(const PointArray<3>& points)
{
    const Row<double> a = difference(points[0], points[2]);
    const Row<double> b = difference(points[1], points[2]);
    IntegerDifferences<3> differences;
    if (!differences.load(points, std::max(maxAbs(a.x, a.y, a.z), maxAbs(b.x, b.y, b.z))))
        return Sign::undecided;
    return compareLifts(differences.getRows<WideInteger<62>>(0));
}

Sign compareDistancesInExtendedRange(const PointArray<3>& points)
{
    return withLongRows(points, [](const auto& rows, int) { return compareLifts(rows); });
}

Sign compareDistances(const PointArray<3>& points, double sqDistanceA, double sqDistanceB)
{
    Sign sign = compareDistancesByFilter(sqDistanceA, sqDistanceB);
    if (sign == Sign::undecided)
        sign = compareDistancesByIntegers(points);
    return sign == Sign::undecided ? compareDistancesInExtendedRange(points) : sign;
}

bool DistanceOrder::isBeforeExactly(const Distant& a, const Distant& b) const
{
    if (a.pVtx == b.pVtx)
        return false;
    const PointArray<3> points = {a.pVtx->getCoordinates(), b.pVtx->getCoordinates(),
                                  m_query.getCoordinates()};
    const Sign sign = compareDistances(points, a.sqDistance, b.sqDistance);
    return sign == Sign::zero ? *a.pVtx < *b.pVtx : sign == Sign::negative;
}

} // namespace VORN3D
