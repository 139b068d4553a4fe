// The stages of the adaptive kernels, one object per determinant: each member takes the value one stage
// further and says whether its sign is now certain. Points are given by their coordinates, which must lie in
// the range of the floating-point stages.
#pragma once

#include "predicates/Determinants.h"
#include "predicates/ExactSign.h"
#include "predicates/NaloTest3.h"

namespace VORN3D
{

/// The difference of two points: rounded, and the rounding errors.
struct SplitDifference
{
    Row<double> head;
    Row<double> tail;

    SplitDifference(const double* p, const double* origin);
    bool isExact() const { return tail.x == 0.0 && tail.y == 0.0 && tail.z == 0.0; }
};

class AdaptiveOrientation
{
public:
    AdaptiveOrientation(const NaloTest3& constants, const OrientationPoints& points, double permanent);

    /// Exact determinant of the rounded differences.
    bool decideB();
    /// Adds the terms of first order in the tails; follows stage B.
    bool decideC();
    /// Exact determinant of the exact differences; always decides.
    bool decideExactly();

    double getDeterminant() const { return m_det; }

private:
    const NaloTest3& m_constants;
    SplitDifference m_a, m_b, m_c;
    double m_permanent;
    double m_det;
};

class AdaptiveSphere
{
public:
    AdaptiveSphere(const NaloTest3& constants, const SpherePoints& points, double permanent);

    /// As those of AdaptiveOrientation, but the last evaluates the coordinates instead of differences.
    bool decideB();
    bool decideC();
    bool decideExactly();

    double getDeterminant() const { return m_det; }

private:
    const NaloTest3& m_constants;
    SpherePoints m_points;
    SplitDifference m_a, m_b, m_c, m_d;
    double m_permanent;
    double m_det;
};

/// A value with the exact sign of the insphere determinant, from the coordinates themselves.
double evaluateSphereExactly(const SpherePoints& points);

} // namespace VORN3D
