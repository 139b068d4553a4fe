#include "predicates/ExactKernels.h"

#include "predicates/ExactSign.h"
#include "predicates/Expansion.h"

#include <cmath>

namespace VORN3D
{

namespace
{

using Exact = Expansion<1>;

Row<Exact> getExactRow(const Row<double>& p)
{
    return {Exact(p.x), Exact(p.y), Exact(p.z)};
}

Row<Exact> getExactRow(const double* p)
{
    return {Exact(p[0]), Exact(p[1]), Exact(p[2])};
}

Row<Expansion<2>> getExactRow(const SplitDifference& p)
{
    return {Expansion<2>({p.head.x, p.tail.x}), Expansion<2>({p.head.y, p.tail.y}),
            Expansion<2>({p.head.z, p.tail.z})};
}

/// A value and its first-order change: (v, t) stands for v + t with products of two t neglected.
struct Perturbed
{
    double value;
    double change;
};

Perturbed operator+(const Perturbed& a, const Perturbed& b)
{
    return {a.value + b.value, a.change + b.change};
}
Perturbed operator-(const Perturbed& a, const Perturbed& b)
{
    return {a.value - b.value, a.change - b.change};
}
Perturbed operator*(const Perturbed& a, const Perturbed& b)
{
    return {a.value * b.value, a.value * b.change + b.value * a.change};
}

Row<Perturbed> getPerturbedRow(const SplitDifference& p)
{
    return {{p.head.x, p.tail.x}, {p.head.y, p.tail.y}, {p.head.z, p.tail.z}};
}

/// The sign classes of the insphere kernels.
int getSignClass(Sign sign)
{
    return sign == Sign::positive ? 1 : sign == Sign::negative ? 0 : 2;
}

SpherePoints getPoints(const Point3& a, const Point3& b, const Point3& c, const Point3& d, const Point3& e)
{
    return {a.getCoordinates(), b.getCoordinates(), c.getCoordinates(), d.getCoordinates(),
            e.getCoordinates()};
}

} // namespace

/// Scaling twice by each coordinate keeps the expansion shorter than multiplying by the lift's expansion.
template <int N>
Expansion<12 * N> lifted(const Expansion<N>& minor, const Row<Expansion<1>>& p)
{
    return minor * p.x * p.x + minor * p.y * p.y + minor * p.z * p.z;
}

SplitDifference::SplitDifference(const double* p, const double* origin)
{
    const HeadTail x = twoDiff(p[0], origin[0]);
    const HeadTail y = twoDiff(p[1], origin[1]);
    const HeadTail z = twoDiff(p[2], origin[2]);
    head = {x.head, y.head, z.head};
    tail = {x.tail, y.tail, z.tail};
}

AdaptiveOrientation::AdaptiveOrientation(const NaloTest3& constants, const OrientationPoints& points,
                                         double permanent)
    : m_constants(constants), m_a(points[0], points[3]), m_b(points[1], points[3]), m_c(points[2], points[3]),
      m_permanent(permanent), m_det(0.0)
{
}

bool AdaptiveOrientation::decideB()
{
    m_det = orientationDeterminant(getExactRow(m_a.head), getExactRow(m_b.head), getExactRow(m_c.head))
                .getEstimate();
    return std::fabs(m_det) >= m_constants.o3derrboundB * m_permanent ||
           (m_a.isExact() && m_b.isExact() && m_c.isExact());
}

bool AdaptiveOrientation::decideC()
{
    const double errorBound =
        m_constants.o3derrboundC * m_permanent + m_constants.resulterrbound * std::fabs(m_det);
    m_det += orientationDeterminant(getPerturbedRow(m_a), getPerturbedRow(m_b), getPerturbedRow(m_c)).change;
    return std::fabs(m_det) >= errorBound;
}

bool AdaptiveOrientation::decideExactly()
{
    m_det = orientationDeterminant(getExactRow(m_a), getExactRow(m_b), getExactRow(m_c)).getMostSignificant();
    return true;
}

AdaptiveSphere::AdaptiveSphere(const NaloTest3& constants, const SpherePoints& points, double permanent)
    : m_constants(constants), m_points(points), m_a(points[0], points[4]), m_b(points[1], points[4]),
      m_c(points[2], points[4]), m_d(points[3], points[4]), m_permanent(permanent), m_det(0.0)
{
}

bool AdaptiveSphere::decideB()
{
    m_det = inSphereDeterminant(getExactRow(m_a.head), getExactRow(m_b.head), getExactRow(m_c.head),
                                getExactRow(m_d.head))
                .getEstimate();
    return std::fabs(m_det) >= m_constants.isperrboundB * m_permanent ||
           (m_a.isExact() && m_b.isExact() && m_c.isExact() && m_d.isExact());
}

bool AdaptiveSphere::decideC()
{
    // Shewchuk's 71 e^2 is widened by an eighth, to cover every rounding of the sums below. A product of five
    // differences, each exact but for a factor 1 + e, leaves 10 e^2 of second order. The first order is
    // evaluated with at most 14 roundings on each of the two paths through a tail in x or y, 13 through one
    // in z, and 12 on the two through a tail in a lift: 2 * 14 + 13 + 2 * 12 = 65, times e for the tail. That
    // makes 75 e^2.
    const double errorBound =
        1.125 * m_constants.isperrboundC * m_permanent + m_constants.resulterrbound * std::fabs(m_det);
    m_det += inSphereDeterminant(getPerturbedRow(m_a), getPerturbedRow(m_b), getPerturbedRow(m_c),
                                 getPerturbedRow(m_d))
                 .change;
    return std::fabs(m_det) >= errorBound;
}

double evaluateSphereExactly(const SpherePoints& points)
{
    // The rows (x, y, z, lift, 1) of five points have a cyclic structure: everything below is written for
    // point i and its successors.
    const Row<Exact> p[5] = {getExactRow(points[0]), getExactRow(points[1]), getExactRow(points[2]),
                             getExactRow(points[3]), getExactRow(points[4])};
    const auto at = [](int i) { return i % 5; };

    Expansion<4> nextPair[5]; // minor of i, i+1
    Expansion<4> skipPair[5]; // minor of i, i+2
    for (int i = 0; i < 5; ++i) {
        nextPair[i] = minor2(p[i], p[at(i + 1)]);
        skipPair[i] = minor2(p[i], p[at(i + 2)]);
    }

    Expansion<24> run[5]; // minor of i, i+1, i+2
    Expansion<24> gap[5]; // minor of i, i+1, i+3
    for (int i = 0; i < 5; ++i) {
        const Exact& z0 = p[i].z;
        const Exact& z1 = p[at(i + 1)].z;
        const Exact& z2 = p[at(i + 2)].z;
        const Exact& z3 = p[at(i + 3)].z;
        run[i] = nextPair[at(i + 1)] * z0 - skipPair[i] * z1 + nextPair[i] * z2;
        gap[i] = skipPair[at(i + 1)] * z0 + skipPair[at(i + 3)] * z1 + nextPair[i] * z3;
    }

    const auto liftedMinor = [&](int i) {
        const Expansion<96> others = (run[at(i + 2)] + gap[at(i + 1)]) - (gap[at(i + 3)] + run[at(i + 1)]);
        return lifted(others, p[i]);
    };
    const Expansion<5760> det =
        (liftedMinor(0) + liftedMinor(1)) + (liftedMinor(2) + liftedMinor(3)) + liftedMinor(4);
    return det.getMostSignificant();
}

bool AdaptiveSphere::decideExactly()
{
    m_det = evaluateSphereExactly(m_points);
    return true;
}

int NaloTest3::scale_expansion_zeroelim(int elen, const double* e, double b, double* h) const
{
    return scaleExpansion(elen, e, b, h, splitter);
}

int NaloTest3::fast_expansion_sum_zeroelim(int elen, const double* e, int flen, const double* f,
                                           double* h) const
{
    return sumExpansions(elen, e, flen, f, h);
}

double NaloTest3::orient3dadapt(const Point3& a, const Point3& b, const Point3& c, const Point3& d,
                                double permanent) const
{
    const OrientationPoints points = {a.getCoordinates(), b.getCoordinates(), c.getCoordinates(),
                                      d.getCoordinates()};
    if (!areInExpansionRange(points))
        return static_cast<double>(getSignInExtendedRange(points));
    AdaptiveOrientation stages(*this, points, permanent);
    if (!stages.decideB() && !stages.decideC())
        stages.decideExactly();
    return stages.getDeterminant();
}

int NaloTest3::insphereadapt(const Point3& a, const Point3& b, const Point3& c, const Point3& d,
                             const Point3& e, double permanent) const
{
    const SpherePoints points = getPoints(a, b, c, d, e);
    if (!areInExpansionRange(points))
        return getSignClass(getSignInExtendedRange(points));
    AdaptiveSphere stages(*this, points, permanent);
    if (!stages.decideB() && !stages.decideC())
        stages.decideExactly();
    return getSignClass(getSign(stages.getDeterminant()));
}

int NaloTest3::insphereexact(const Point3& a, const Point3& b, const Point3& c, const Point3& d,
                             const Point3& e) const
{
    const SpherePoints points = getPoints(a, b, c, d, e);
    if (!areInExpansionRange(points))
        return getSignClass(getSignInExtendedRange(points));
    return getSignClass(getSign(evaluateSphereExactly(points)));
}

} // namespace VORN3D
