#include "circumcenterSides.h"

#include "circumspheres.h"
#include "pointDifferences.h"
#include "predicates/FloatFilter.h"
#include "predicates/IntegerRows.h"

namespace VORN3D
{

namespace
{

using FourSigns = std::array<Sign, 4>;
constexpr FourSigns ALL_UNDECIDED = {Sign::undecided, Sign::undecided, Sign::undecided, Sign::undecided};

/// The filters' range of the largest difference: products of six are normal numbers, and so are their bounds.
/// Underflow within, of products that are less than 2^-1022, is far below any bound.
bool isInFilterRange(double extent)
{
    return extent >= 0x1p-150 && extent <= 0x1p150;
}

Sign getSignBeyond(double value, double errorBound)
{
    return std::fabs(value) > errorBound ? getSign(value) : Sign::undecided;
}

// Error bounds, with e = 2^-53 and m the largest difference, all as computed. A term of the fully expanded
// polynomial is off by the roundings on its path, differences included, and their number times e, a little
// more for higher orders, times the sum of all terms in absolute value, bounds the error.
//
//                                        terms at most   roundings
//     minor of two rows                  2 m^2           4
//     lift                               3 m^2           5
//     component of the numerator         18 m^4          5 + 4 + 1 + 2 = 12
//     coordinate u, v, w                 108 m^6         4 + 12 + 1 + 2 = 19
//     determinant                        6 m^3           4 + 1 + 1 + 2 = 8
//     coordinate of the origin           72 m^6          2 * 8 + 1 + 1 = 18, of the squared determinants
//                                        324 m^6         19 + 2 + 1 = 22, of the others
//
// 108 * 19 = 2052 and 72 * 18 + 324 * 22 = 8424; the rest is for higher orders and the bound's own roundings.
constexpr double COORDINATE_BOUND = 2060.0 * 0x1p-53;
constexpr double ORIGIN_BOUND = 8450.0 * 0x1p-53;

// Of the scalar product of two differences: terms at most 3 m^2, roundings 2 + 1 + 2.
constexpr double DIAMETRAL_BOUND = 16.0 * 0x1p-53;

template <class Integer>
FourSigns getSigns(const std::array<Row<Integer>, 3>& rows)
{
    const auto list = [](const auto&... coordinates) {
        return FourSigns{static_cast<Sign>(coordinates.getSign())...};
    };
    return std::apply(list, getBarycentricCoordinates(getCircumsphere(rows)));
}

template <class Integer>
Sign getSign(const std::array<Row<Integer>, 2>& rows)
{
    return static_cast<Sign>(dot(rows[0], rows[1]).getSign());
}

} // namespace

FourSigns filterCircumcenterSides(const TetPoints& tet)
{
    const std::array<Row<double>, 3> rows = getDifferences(tet);
    const double extent = getExtent(rows);
    if (!isInFilterRange(extent))
        return ALL_UNDECIDED;
    const auto [u, v, w, origin] = getBarycentricCoordinates(getCircumsphere(rows));
    const double cube = extent * extent * extent;
    const double errorBound = COORDINATE_BOUND * (cube * cube);
    return {getSignBeyond(u, errorBound), getSignBeyond(v, errorBound), getSignBeyond(w, errorBound),
            getSignBeyond(origin, ORIGIN_BOUND * (cube * cube))};
}

FourSigns getCircumcenterSidesByIntegers(const TetPoints& tet)
{
    IntegerDifferences<4> differences;
    if (!differences.load(tet, getExtent(getDifferences(tet))))
        return ALL_UNDECIDED;
    // Few bits do for neighbours on a lattice, whose signs are often zero; half the width for coordinates of
    // single precision.
    const int numZeros = differences.countTrailingZeros();
    if (numZeros >= 54)
        return getSigns(differences.getRows<WideInteger<8>>(numZeros));
    if (numZeros >= 32)
        return getSigns(differences.getRows<WideInteger<30>>(numZeros));
    return getSigns(differences.getRows<WideInteger<62>>(0));
}

FourSigns getCircumcenterSidesInExtendedRange(const TetPoints& tet)
{
    return withLongRows(tet, [](const auto& rows, int) { return getSigns(rows); });
}

FourSigns getCircumcenterSides(const TetPoints& tet)
{
    const auto isDecided = [](const FourSigns& signs) {
        return std::find(signs.begin(), signs.end(), Sign::undecided) == signs.end();
    };
    FourSigns signs = filterCircumcenterSides(tet);
    if (!isDecided(signs))
        signs = getCircumcenterSidesByIntegers(tet);
    return isDecided(signs) ? signs : getCircumcenterSidesInExtendedRange(tet);
}

Sign filterDiametralSide(const TrianglePoints& points)
{
    const std::array<Row<double>, 2> rows = getDifferences(points);
    const double extent = getExtent(rows);
    if (!isInFilterRange(extent))
        return Sign::undecided;
    return getSignBeyond(dot(rows[0], rows[1]), DIAMETRAL_BOUND * (extent * extent));
}

Sign getDiametralSideByIntegers(const TrianglePoints& points)
{
    IntegerDifferences<3> differences;
    if (!differences.load(points, getExtent(getDifferences(points))))
        return Sign::undecided;
    return getSign(differences.getRows<WideInteger<62>>(0));
}

Sign getDiametralSideInExtendedRange(const TrianglePoints& points)
{
    return withLongRows(points, [](const auto& rows, int) { return getSign(rows); });
}

Sign getDiametralSide(const TrianglePoints& points)
{
    Sign sign = filterDiametralSide(points);
    if (sign == Sign::undecided)
        sign = getDiametralSideByIntegers(points);
    return sign == Sign::undecided ? getDiametralSideInExtendedRange(points) : sign;
}

} // namespace VORN3D
