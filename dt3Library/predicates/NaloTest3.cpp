#include "predicates/NaloTest3.h"
#include "nalo_tools/endProcess.h"

#include "nalo_tools/log.h"
#include "predicates/ExactSign.h"

namespace VORN3D
{

std::string getOrientationText(Orientation3 orientation)
{
    switch (orientation) {
    case ORIENTATION3_POSITIVE:
        return "ORI3_ORIENTATION3_POSITIVE";
    case ORIENTATION3_NEGATIVE:
        return "ORI3_ORIENTATION3_NEGATIVE";
    case ORIENTATION3_COPLANAR:
        return "ORI3_ZERO";
    }
    failAssertion("false", __FILE__, __LINE__);
}

void NaloTest3::exactinit()
{
    // Halves epsilon until 1 + epsilon rounds to 1; the splitter is 2 to half the number of bits, plus 1.
    // Volatile, so that the sum is rounded to a double before it is compared.
    epsilon = 1.0;
    splitter = 1.0;
    volatile double check = 1.0;
    double lastcheck;
    bool bEveryOther = true;
    do {
        lastcheck = check;
        epsilon *= 0.5;
        if (bEveryOther)
            splitter *= 2.0;
        bEveryOther = !bEveryOther;
        check = 1.0 + epsilon;
    } while (check != 1.0 && check != lastcheck);
    splitter += 1.0;

    const double e = epsilon;
    resulterrbound = (3.0 + 8.0 * e) * e;
    ccwerrboundA = (3.0 + 16.0 * e) * e;
    ccwerrboundB = (2.0 + 12.0 * e) * e;
    ccwerrboundC = (9.0 + 64.0 * e) * e * e;
    o3derrboundA = (7.0 + 56.0 * e) * e;
    o3derrboundB = (3.0 + 28.0 * e) * e;
    o3derrboundC = (26.0 + 288.0 * e) * e * e;
    iccerrboundA = (10.0 + 96.0 * e) * e;
    iccerrboundB = (4.0 + 48.0 * e) * e;
    iccerrboundC = (44.0 + 576.0 * e) * e * e;
    isperrboundA = (16.0 + 224.0 * e) * e;
    isperrboundB = (5.0 + 72.0 * e) * e;
    isperrboundC = (71.0 + 1408.0 * e) * e * e;
}

namespace
{

/// The orientation that a sign of the determinant stands for.
Orientation3 getOrientation(Sign sign)
{
    return sign == Sign::negative   ? ORIENTATION3_POSITIVE
           : sign == Sign::positive ? ORIENTATION3_NEGATIVE
                                    : ORIENTATION3_COPLANAR;
}

/// The sign that one of the sign classes of the insphere kernels stands for.
Sign getSignOfClass(int signClass)
{
    return signClass == 2 ? Sign::zero : signClass == 1 ? Sign::positive : Sign::negative;
}

/// The stages behind the filter, up to the adaptive kernel, which is given the permanent and always decides.
template <class Points, class Kernel>
Sign resolveSign(const Points& points, const FilterResult& filtered, double errorBoundA, Kernel adapt)
{
    if (filtered.det == 0.0 && isExactOnLattice(points, filtered.extent))
        return getSign(filtered.det);
    const PermanentFilter filter = evaluateWithPermanent(points);
    Sign sign = filter.getSign(errorBoundA, filtered.extent);
    if (sign == Sign::undecided)
        sign = getSignByIntegers(points, filtered.extent);
    return sign == Sign::undecided ? adapt(filter.permanent) : sign;
}

} // namespace

Orientation3 NaloTest3::resolveOrientation(const Point3& a, const Point3& b, const Point3& c, const Point3& d,
                                           const FilterResult& filtered) const
{
    const OrientationPoints points = {a.getCoordinates(), b.getCoordinates(), c.getCoordinates(),
                                      d.getCoordinates()};
    return getOrientation(resolveSign(points, filtered, o3derrboundA, [&](double permanent) {
        return getSign(orient3dadapt(a, b, c, d, permanent));
    }));
}

SphereInclusion3 NaloTest3::resolveSphere(const Tet3& tet, const Point3& q,
                                          const FilterResult& filtered) const
{
    Point3 *a, *b, *c, *d;
    tet.getCorners(a, b, c, d);
    if (&q == a || &q == b || &q == c || &q == d)
        return *a == *b && *a == *c && *a == *d ? SIC_INSIDE : SIC_CORNER;
    const SpherePoints points = {a->getCoordinates(), b->getCoordinates(), c->getCoordinates(),
                                 d->getCoordinates(), q.getCoordinates()};
    const Sign sign = resolveSign(points, filtered, isperrboundA, [&](double permanent) {
        return getSignOfClass(insphereadapt(*a, *b, *c, *d, q, permanent));
    });
    const bool bInside = sign == Sign::negative || (sign == Sign::zero && isPermanentZero(points));
    return bInside ? SIC_INSIDE : SIC_OUTSIDE;
}

void NaloTest3::failNullTet()
{
    goToHell("getOrientation3, pC==NULL");
}

void NaloTest3::failFacetIndex()
{
    DEBUG_ASSERT_TEXT(false, "false");
    endProcess("getOrientation3: no such facet");
}

} // namespace VORN3D
