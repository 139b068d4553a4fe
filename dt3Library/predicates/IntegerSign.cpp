// The stages that evaluate a determinant in integers: fixed widths for points that span less than 2^62 of a
// common unit, long ones for all others.
#include "predicates/ExactSign.h"
#include "predicates/IntegerRows.h"

namespace VORN3D
{

namespace
{

template <std::size_t N>
Sign evaluateInExtendedRange(const PointArray<N>& points)
{
    return withLongRows(points,
                        [](const auto& rows, int) { return static_cast<Sign>(evaluate(rows).getSign()); });
}

} // namespace

Sign getSignByIntegers(const OrientationPoints& points, double extent)
{
    IntegerDifferences<4> differences;
    if (!differences.load(points, extent))
        return Sign::undecided;
    return static_cast<Sign>(evaluate(differences.getRows<WideInteger<62>>(0)).getSign());
}

Sign getSignByIntegers(const SpherePoints& points, double extent)
{
    IntegerDifferences<5> differences;
    if (!differences.load(points, extent))
        return Sign::undecided;
    // Half the width is a fraction of the cost, and enough for coordinates of single precision.
    const int numZeros = differences.countTrailingZeros();
    if (numZeros >= 32)
        return static_cast<Sign>(evaluate(differences.getRows<WideInteger<30>>(numZeros)).getSign());
    return static_cast<Sign>(evaluate(differences.getRows<WideInteger<62>>(0)).getSign());
}

Sign getSignInExtendedRange(const OrientationPoints& points)
{
    return evaluateInExtendedRange(points);
}

Sign getSignInExtendedRange(const SpherePoints& points)
{
    return evaluateInExtendedRange(points);
}

} // namespace VORN3D
