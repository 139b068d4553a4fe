// The spatial questions of the triangulation, answered exactly for any finite coordinates: on which side of a
// triangle a point lies, and whether a point lies inside a tetrahedron's circumsphere.
//
// Both answers are signs of determinants. Stages of growing cost are asked in turn until one is certain: an
// inline filter (FloatFilter.h) first, the others behind it. Every stage is sound, so which one answers never
// changes an answer. docs/exactness.md has the stages, their bounds and derivations, and the share of calls
// that each decides.
//
// All of it relies on IEEE doubles, each operation rounded once to nearest: compile with -ffp-contract=off.
#pragma once

#include "nalo_tools/assertion.h"
#include "nalo_tools/rangeChecks.h"
#include "predicates/FloatFilter.h"
#include "vorn3d/Point3.h"
#include "vorn3d/Tet3.h"

#include <string>

namespace VORN3D
{

/// Side of a point on an oriented plane. The numeric values are part of the design.
enum Orientation3 : int { ORIENTATION3_POSITIVE = 0, ORIENTATION3_NEGATIVE = 1, ORIENTATION3_COPLANAR = 2 };

/// Place of a point on a circumsphere. The numeric values are part of the design.
enum SphereInclusion3 : int {
    SIC_INSIDE = 0,  // strictly inside
    SIC_OUTSIDE = 1, // outside or exactly on the sphere
    SIC_CORNER = 2   // the point is, as an object, a corner of the tetrahedron
};

/// The text for messages: "ORI3_ORIENTATION3_POSITIVE", "ORI3_ORIENTATION3_NEGATIVE" or "ORI3_ZERO". Any
/// other value fails an assertion.
std::string getOrientationText(Orientation3 orientation);

/// Immutable after construction, without hidden state: copies are equivalent and may be used concurrently.
class NaloTest3
{
public:
    NaloTest3() { exactinit(); }

    /// POSITIVE iff (b - a) x (c - a) . (d - a) > 0: seen from d, the points a, b, c run counter-clockwise.
    /// COPLANAR iff it is exactly zero. An odd permutation of the points swaps POSITIVE and NEGATIVE.
    Orientation3 getOrientation3(const Point3* a, const Point3* b, const Point3* c, const Point3* d) const;

    /// Side of q on facet ith of pT. For a positively oriented tetrahedron: POSITIVE iff q is on the same
    /// side as corner ith, NEGATIVE iff it is beyond the facet.
    Orientation3 getOrientation3(const Tet3* pT, int ith, const Point3* q) const;

    /// Place of q on the circumsphere of pT, which must be positively oriented. Two special cases: a corner,
    /// by address, of a tetrahedron whose corners do not all coincide is SIC_CORNER; and a determinant in
    /// which every single product vanishes, as that of five equal points, is SIC_INSIDE.
    SphereInclusion3 sphereInclusionTest(const Tet3* pT, const Point3* q) const;

    /// Computes the constants below from the precision in effect.
    void exactinit();

    /// h = e * b. The component arrays are expansions (Expansion.h); h has room for 2 * elen components and
    /// does not overlap e. Returns the length of h.
    int scale_expansion_zeroelim(int elen, const double* e, double b, double* h) const;

    /// h = e + f; h has room for elen + flen components and overlaps neither. Returns the length of h.
    int fast_expansion_sum_zeroelim(int elen, const double* e, int flen, const double* f, double* h) const;

    /// A value with the exact sign of the orientation determinant of the rows a - d, b - d, c - d, which is
    /// negative for ORIENTATION3_POSITIVE. `permanent` is that determinant in absolute values, as computed in
    /// floating point. Right for all finite points; outside the range of the floating-point stages the value
    /// is -1, 0 or 1.
    double orient3dadapt(const Point3& a, const Point3& b, const Point3& c, const Point3& d,
                         double permanent) const;

    /// The sign class of the insphere determinant of the rows a - e, ..., d - e: 1 positive, 0 negative, 2
    /// zero. `permanent` as above; right for all finite points.
    int insphereadapt(const Point3& a, const Point3& b, const Point3& c, const Point3& d, const Point3& e,
                      double permanent) const;

    /// The same sign class, from the full expansion of the determinant in the coordinates.
    int insphereexact(const Point3& a, const Point3& b, const Point3& c, const Point3& d,
                      const Point3& e) const;

    // Error bounds of Shewchuk 1997, relative to the permanent: A of the filter, B and C of the stages of
    // that name; ccw and icc are the planar ones, kept for completeness.
    double splitter;
    double epsilon;
    double resulterrbound;
    double ccwerrboundA;
    double ccwerrboundB;
    double ccwerrboundC;
    double o3derrboundA;
    double o3derrboundB;
    double o3derrboundC;
    double iccerrboundA;
    double iccerrboundB;
    double iccerrboundC;
    double isperrboundA;
    double isperrboundB;
    double isperrboundC;

private:
    // What is behind the filter stays out of the callers' loops.
    [[gnu::noinline]] Orientation3 resolveOrientation(const Point3& a, const Point3& b, const Point3& c,
                                                      const Point3& d, const FilterResult& filtered) const;
    [[gnu::noinline]] SphereInclusion3 resolveSphere(const Tet3& tet, const Point3& q,
                                                     const FilterResult& filtered) const;
    [[noreturn, gnu::cold]] static void failNullTet();
    [[noreturn, gnu::cold]] static void failFacetIndex();
};

static_assert(sizeof(NaloTest3) == 15 * sizeof(double), "the constants and nothing else");

inline Orientation3 NaloTest3::getOrientation3(const Point3* a, const Point3* b, const Point3* c,
                                               const Point3* d) const
{
    const FilterResult filtered =
        filterOrientation(a->getCoordinates(), b->getCoordinates(), c->getCoordinates(), d->getCoordinates());
    if (filtered.isCertain())
        return filtered.det < 0.0 ? ORIENTATION3_POSITIVE : ORIENTATION3_NEGATIVE;
    return resolveOrientation(*a, *b, *c, *d, filtered);
}

inline Orientation3 NaloTest3::getOrientation3(const Tet3* pT, int ith, const Point3* q) const
{
    if (pT == nullptr)
        failNullTet();
    DEBUG_ASSERT(range03(ith));
    Point3* p0;
    Point3* p1;
    Point3* p2;
    Point3* p3;
    pT->getCorners(p0, p1, p2, p3);
    switch (ith) {
    case 0:
        return getOrientation3(p1, p3, p2, q);
    case 1:
        return getOrientation3(p0, p2, p3, q);
    case 2:
        return getOrientation3(p0, p3, p1, q);
    case 3:
        return getOrientation3(p0, p1, p2, q);
    default:
        failFacetIndex();
    }
}

inline SphereInclusion3 NaloTest3::sphereInclusionTest(const Tet3* pT, const Point3* q) const
{
    Point3* p0;
    Point3* p1;
    Point3* p2;
    Point3* p3;
    pT->getCorners(p0, p1, p2, p3);
    const FilterResult filtered =
        filterSphere(p0->getCoordinates(), p1->getCoordinates(), p2->getCoordinates(), p3->getCoordinates(),
                     q->getCoordinates());
    if (filtered.isCertain())
        return filtered.det < 0.0 ? SIC_INSIDE : SIC_OUTSIDE;
    return resolveSphere(*pT, *q, filtered);
}

} // namespace VORN3D
