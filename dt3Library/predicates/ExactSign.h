// The stages behind the inline filter that need no expansions, one function each. A stage that cannot tell
// the sign of the determinant says so, and the next one is asked; tests call them one by one.
#pragma once

#include "predicates/Determinants.h"

#include <array>
#include <cstddef>

namespace VORN3D
{

/// The coordinates of the points of a determinant; the last point is the origin of its rows.
template <std::size_t numPoints>
using PointArray = std::array<const double*, numPoints>;
using OrientationPoints = PointArray<4>;
using SpherePoints = PointArray<5>;

template <class T>
inline auto evaluate(const std::array<Row<T>, 3>& rows)
{
    return orientationDeterminant(rows[0], rows[1], rows[2]);
}

template <class T>
inline auto evaluate(const std::array<Row<T>, 4>& rows)
{
    return inSphereDeterminant(rows[0], rows[1], rows[2], rows[3]);
}

/// What a stage says of a determinant's sign.
enum class Sign : int { negative = -1, zero = 0, positive = 1, undecided = 2 };

inline Sign getSign(double value)
{
    return static_cast<Sign>((value > 0.0) - (value < 0.0));
}

/// Lattice stage. True if the determinant as the filter evaluates it is exact, because all coordinates are
/// multiples of a power of two and the differences, the largest of which is `extent`, small multiples of it.
bool isExactOnLattice(const OrientationPoints& points, double extent);
bool isExactOnLattice(const SpherePoints& points, double extent);

/// Permanent filter: the determinant in floating point, and the same with every product in absolute value.
struct PermanentFilter
{
    double det;
    double permanent;

    /// Undecided unless |det| exceeds the error bound, or if anything may have over- or underflowed.
    Sign getSign(double relativeErrorBound, double extent) const;
};
PermanentFilter evaluateWithPermanent(const OrientationPoints& points);
PermanentFilter evaluateWithPermanent(const SpherePoints& points);

/// Integer stage. Undecided unless all differences, the largest of which is `extent`, are multiples of a
/// common power of two, below 2^62 times it.
Sign getSignByIntegers(const OrientationPoints& points, double extent);
Sign getSignByIntegers(const SpherePoints& points, double extent);

/// True if every coordinate is zero or of a magnitude from 2^-130 to 2^130. Then no operation on expansions
/// over- or underflows: differences that are not zero are at least 2^-182, so that even a product of five,
/// times the square of the precision, stays above 2^-1022.
bool areInExpansionRange(const OrientationPoints& points);
bool areInExpansionRange(const SpherePoints& points);

/// Extended-range stage: decides for any finite coordinates.
Sign getSignInExtendedRange(const OrientationPoints& points);
Sign getSignInExtendedRange(const SpherePoints& points);

/// True if each product of the sphere determinant has a factor that is zero, so that the permanent is truly
/// zero and not only by underflow.
bool isPermanentZero(const SpherePoints& points);

} // namespace VORN3D
