// Floating-point expansions: exact sums of doubles, the arithmetic of the adaptive predicates.
//
// An expansion holds its value as the exact sum of components of increasing magnitude that do not overlap,
// zeros removed (a zero value is the one component 0). Sources: Dekker 1971; Shewchuk, "Adaptive Precision
// Floating-Point Arithmetic and Fast Robust Geometric Predicates", Discrete & Computational Geometry 18,
// 1997, whose theorems on the capacities and on the strongly non-overlapping property hold for every
// operation here.
//
// Requires IEEE double arithmetic, rounded once per operation to nearest even, and magnitudes for which
// neither an operation overflows nor a product's tail underflows.
#pragma once

#include <cfloat>
#include <cmath>
#include <cstddef>

#if defined(__FAST_MATH__)
#error "exact arithmetic needs strict IEEE semantics: do not compile with -ffast-math"
#endif
#if FLT_EVAL_METHOD != 0
#error "exact arithmetic needs every operation rounded to double: no extended-precision intermediates"
#endif

namespace VORN3D
{

/// Splits a double into two halves of at most 26 bits each.
inline constexpr double dekkerSplitter = 134217729.0; // 2^27 + 1

/// The rounded result of an operation and its rounding error: head + tail is the exact result.
struct HeadTail
{
    double head;
    double tail;
};

inline HeadTail twoSum(double a, double b)
{
    const double head = a + b;
    const double bVirtual = head - a;
    const double aVirtual = head - bVirtual;
    return {head, (a - aVirtual) + (b - bVirtual)};
}

/// As twoSum, for |a| >= |b|.
inline HeadTail fastTwoSum(double a, double b)
{
    const double head = a + b;
    return {head, b - (head - a)};
}

inline HeadTail twoDiff(double a, double b)
{
    const double head = a - b;
    const double bVirtual = a - head;
    const double aVirtual = head + bVirtual;
    return {head, (a - aVirtual) + (bVirtual - b)};
}

/// A factor together with its two halves.
struct SplitFactor
{
    double value;
    double high;
    double low;

    SplitFactor(double factor, double splitter) : value(factor)
    {
        const double scaled = splitter * factor;
        high = scaled - (scaled - factor);
        low = factor - high;
    }
};

inline HeadTail twoProduct(const SplitFactor& a, const SplitFactor& b)
{
    const double head = a.value * b.value;
    const double error = ((head - a.high * b.high) - a.low * b.high) - a.high * b.low;
    return {head, a.low * b.low - error};
}

/// h = e * b; h has room for 2 * elen components and is not e. Returns the length of h.
int scaleExpansion(int elen, const double* e, double b, double* h, double splitter = dekkerSplitter);

/// h = e + f; h has room for elen + flen components and is neither e nor f. Returns the length of h.
int sumExpansions(int elen, const double* e, int flen, const double* f, double* h);

/// An expansion of at most Capacity components. The operators return the capacity that the exact result
/// needs.
template <int Capacity>
class Expansion
{
public:
    /// Room for a result that the two operations above write.
    Expansion() : m_size(0) {}

    explicit Expansion(double value) : m_size(1) { m_aComponent[0] = value; }

    explicit Expansion(const HeadTail& sum) : m_size(0)
    {
        static_assert(Capacity >= 2, "head and tail");
        if (sum.tail != 0.0)
            m_aComponent[m_size++] = sum.tail;
        if (sum.head != 0.0 || m_size == 0)
            m_aComponent[m_size++] = sum.head;
    }

    /// Copies the components in use only, from an expansion of the same or a smaller capacity.
    Expansion(const Expansion& other) : m_size(0) { assign(other); }
    template <int Smaller>
    Expansion(const Expansion<Smaller>& other) : m_size(0)
    {
        static_assert(Smaller <= Capacity, "an expansion must fit");
        assign(other);
    }
    Expansion& operator=(const Expansion& other)
    {
        if (this != &other)
            assign(other);
        return *this;
    }

    int size() const { return m_size; }
    const double* data() const { return m_aComponent; }
    double operator[](int i) const { return m_aComponent[i]; }

    /// The component of the largest magnitude; it has the sign of the value.
    double getMostSignificant() const { return m_aComponent[m_size - 1]; }

    /// The value rounded to a double (relative error below 2^-52); it has the sign of the value.
    double getEstimate() const
    {
        double sum = 0.0;
        for (int i = 0; i < m_size; ++i)
            sum += m_aComponent[i];
        return sum;
    }

    Expansion operator-() const
    {
        Expansion negated;
        for (int i = 0; i < m_size; ++i)
            negated.m_aComponent[i] = -m_aComponent[i];
        negated.m_size = m_size;
        return negated;
    }

    template <int N, int M>
    friend Expansion<N + M> operator+(const Expansion<N>& e, const Expansion<M>& f);
    template <int N>
    friend Expansion<2 * N> operator*(const Expansion<N>& e, const Expansion<1>& b);

private:
    template <int Other>
    void assign(const Expansion<Other>& other)
    {
        m_size = other.size();
        for (int i = 0; i < m_size; ++i)
            m_aComponent[i] = other[i];
    }

    double m_aComponent[static_cast<std::size_t>(Capacity)];
    int m_size;
};

template <int N, int M>
Expansion<N + M> operator+(const Expansion<N>& e, const Expansion<M>& f)
{
    Expansion<N + M> sum;
    sum.m_size = sumExpansions(e.size(), e.data(), f.size(), f.data(), sum.m_aComponent);
    return sum;
}

template <int N, int M>
Expansion<N + M> operator-(const Expansion<N>& e, const Expansion<M>& f)
{
    return e + -f;
}

template <int N>
Expansion<2 * N> operator*(const Expansion<N>& e, const Expansion<1>& b)
{
    Expansion<2 * N> product;
    product.m_size = scaleExpansion(e.size(), e.data(), b[0], product.m_aComponent);
    return product;
}

inline Expansion<2> operator*(const Expansion<1>& a, const Expansion<1>& b)
{
    return Expansion<2>(twoProduct(SplitFactor(a[0], dekkerSplitter), SplitFactor(b[0], dekkerSplitter)));
}

template <int N>
Expansion<4 * N> operator*(const Expansion<N>& e, const Expansion<2>& f)
{
    const Expansion<2 * N> low = e * Expansion<1>(f[0]);
    if (f.size() == 1)
        return low;
    return low + e * Expansion<1>(f[1]);
}

} // namespace VORN3D
