#include "squaredRadius.h"

#include "circumspheres.h"
#include "pointDifferences.h"
#include "predicates/IntegerRows.h"

namespace VORN3D
{

namespace
{

/// use(numerator, denominator) of the squared radius.
template <class Integer, std::size_t N, class Use>
auto withFractionOf(const std::array<Row<Integer>, N>& rows, int unitExponent, const Use& use)
{
    // The degrees of numerator and denominator differ by two; a quarter of the fraction is wanted.
    const auto fraction = getRadiusFraction(rows);
    return use(LongFloat(fraction.numerator, 2 * unitExponent - 2), LongFloat(fraction.denominator, 0));
}

template <std::size_t N, class Use>
auto withFractionOf(const PointArray<N>& points, const Use& use)
{
    IntegerDifferences<N> differences;
    if (!differences.load(points, getExtent(getDifferences(points))))
        return withLongRows(points, [&](const auto& rows, int unitExponent) {
            return withFractionOf(rows, unitExponent, use);
        });
    const int numZeros = differences.countTrailingZeros();
    const int unitExponent = differences.unitExponent;
    if (numZeros >= 54)
        return withFractionOf(differences.template getRows<WideInteger<8>>(numZeros), unitExponent + numZeros,
                              use);
    if (numZeros >= 32)
        return withFractionOf(differences.template getRows<WideInteger<30>>(numZeros),
                              unitExponent + numZeros, use);
    return withFractionOf(differences.template getRows<WideInteger<62>>(0), unitExponent, use);
}

template <class Use>
auto withFractionOf(const SimplexPoints& simplex, const Use& use)
{
    const auto& p = simplex.apPoint;
    switch (simplex.numPoints) {
    case 2:
        return withFractionOf(PointArray<2>{p[0], p[1]}, use);
    case 3:
        return withFractionOf(PointArray<3>{p[0], p[1], p[2]}, use);
    default:
        return withFractionOf(p, use);
    }
}

} // namespace

LongQuotient getSquaredRadius(const SimplexPoints& simplex)
{
    return withFractionOf(simplex, [](const LongFloat& numerator, const LongFloat& denominator) {
        return numerator / denominator;
    });
}

int compareSquaredRadii(const SimplexPoints& a, const SimplexPoints& b)
{
    return withFractionOf(a, [&b](const LongFloat& numA, const LongFloat& denA) {
        return withFractionOf(b, [&](const LongFloat& numB, const LongFloat& denB) {
            return compare(numA * denB, numB * denA);
        });
    });
}

} // namespace VORN3D
