// The exact number types against GMP, and the floating-point semantics that they rely on.
#include "predicates/ExactSign.h"
#include "predicates/Expansion.h"
#include "predicates/FloatFilter.h"
#include "predicates/NaloTest3.h"
#include "predicates/WideInteger.h"

#include <gtest/gtest.h>

#include <cmath>
#include <gmpxx.h>
#include <random>
#include <vector>

namespace VORN3D
{

namespace
{

using Generator = std::mt19937_64;

mpq_class getSum(const std::vector<double>& components)
{
    mpq_class sum;
    for (double component : components)
        sum += mpq_class(component);
    return sum;
}

/// Doubles of any bits with exponents from -60 to 60, and some with very few bits, which cancel often.
double drawDouble(Generator& random)
{
    const auto mantissa =
        static_cast<double>(static_cast<long long>(random()) >> (random() % 2 == 0 ? 11 : 61));
    return std::ldexp(mantissa, static_cast<int>(random() % 120) - 60);
}

/// A random expansion, made by adding doubles one after the other.
std::vector<double> drawExpansion(Generator& random, const NaloTest3& predicates)
{
    std::vector<double> expansion = {drawDouble(random)};
    for (auto numMore = random() % 8; numMore > 0; --numMore) {
        const double next = drawDouble(random);
        std::vector<double> sum(expansion.size() + 1);
        const int length = predicates.fast_expansion_sum_zeroelim(static_cast<int>(expansion.size()),
                                                                  expansion.data(), 1, &next, sum.data());
        sum.resize(static_cast<std::size_t>(length));
        expansion = sum;
    }
    return expansion;
}

/// The value of the least significant bit that is set in x.
double getLowestBit(double x)
{
    int exponent;
    const auto mantissa = static_cast<long long>(std::ldexp(std::frexp(x, &exponent), 53));
    return std::ldexp(static_cast<double>(mantissa & -mantissa), exponent - 53);
}

/// Expects components that increase in magnitude without overlapping, none zero unless it is the only one.
void expectProper(const std::vector<double>& expansion)
{
    ASSERT_FALSE(expansion.empty());
    for (std::size_t i = 1; i < expansion.size(); ++i) {
        ASSERT_NE(expansion[i - 1], 0.0);
        ASSERT_LT(std::fabs(expansion[i - 1]), getLowestBit(expansion[i]));
    }
}

TEST(ExpansionTest, PrimitivesAreExact)
{
    const NaloTest3 predicates;
    for (unsigned seed = 0; seed < 3000 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Generator random(seed);
        const std::vector<double> e = drawExpansion(random, predicates);
        std::vector<double> f = drawExpansion(random, predicates);
        if (seed % 10 == 0) {
            f = e;
            for (double& component : f)
                component = -component;
        }
        std::vector<double> sum(e.size() + f.size());
        sum.resize(static_cast<std::size_t>(predicates.fast_expansion_sum_zeroelim(
            static_cast<int>(e.size()), e.data(), static_cast<int>(f.size()), f.data(), sum.data())));
        expectProper(sum);
        EXPECT_EQ(getSum(sum), getSum(e) + getSum(f));

        const double factor = seed % 7 == 0 ? 0.0 : drawDouble(random);
        std::vector<double> product(2 * e.size());
        product.resize(static_cast<std::size_t>(predicates.scale_expansion_zeroelim(
            static_cast<int>(e.size()), e.data(), factor, product.data())));
        expectProper(product);
        EXPECT_EQ(getSum(product), getSum(e) * mpq_class(factor));
    }
}

template <int N>
mpz_class toMpz(const WideInteger<N>& a)
{
    mpz_class value = a.getFill() == 0 ? 0 : -1;
    for (int i = WideInteger<N>::numWords - 1; i >= 0; --i)
        value = (value << 64) + mpz_class(static_cast<unsigned long>(a[i]));
    return value;
}

/// Below 2^N in magnitude; words of all ones and all zeros are frequent, as carries run through them.
template <int N>
WideInteger<N> drawInteger(Generator& random)
{
    WideInteger<N> a(0);
    for (int i = 0; i < WideInteger<N>::numWords; ++i)
        a[i] = random() % 4 == 0 ? 0 : random() % 3 == 0 ? ~Word(0) : random();
    Word& top = a[WideInteger<N>::numWords - 1];
    const int numTopBits = N % 64;
    const Word mask = (Word(1) << numTopBits) - 1;
    top = random() % 2 == 0 ? top & mask : top | ~mask;
    if (toMpz(a) == -(mpz_class(1) << N))
        a[0] = 1;
    return a;
}

template <int N, int M>
void expectExactOperations()
{
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(testing::Message() << N << ", " << M << ", " << seed);
        Generator random(seed);
        const WideInteger<N> a = drawInteger<N>(random);
        const WideInteger<M> b = drawInteger<M>(random);
        ASSERT_EQ(toMpz(a + b), toMpz(a) + toMpz(b));
        ASSERT_EQ(toMpz(a - b), toMpz(a) - toMpz(b));
        ASSERT_EQ(toMpz(a * b), toMpz(a) * toMpz(b));
        ASSERT_EQ(a.getSign(), sgn(toMpz(a)));
    }
}

TEST(WideIntegerTest, OperationsAreExactAtTheirWidths)
{
    expectExactOperations<62, 62>();
    expectExactOperations<125, 62>();
    expectExactOperations<64, 191>();
    expectExactOperations<2099, 2099>();
}

TEST(WideIntegerTest, ShiftsByAnyNumberOfBits)
{
    for (long long value : {0LL, 1LL, -1LL, (1LL << 53) - 1, -(1LL << 53) + 1, -12345678901LL})
        for (unsigned shift : {0u, 1u, 11u, 63u, 64u, 65u, 127u, 128u, 200u, 255u})
            EXPECT_EQ(toMpz(WideInteger<320>::shifted(value, static_cast<int>(shift))),
                      mpz_class(static_cast<long>(value)) << shift);
}

// A product that is fused with the sum that follows it is not rounded: then the two equal products below do
// not cancel, and the error bounds and error-free transformations do not hold.
TEST(FloatingPointTest, ProductsAreNotFusedWithSums)
{
    const double x = 1.0 + 0x1p-30;
    const double a[] = {0.0, 0.0, 1.0};
    const double b[] = {x, x, 0.0};
    const double c[] = {x, x, 0.0};
    const double d[] = {0.0, 0.0, 0.0};
    EXPECT_EQ(evaluateWithPermanent(OrientationPoints{a, b, c, d}).det, 0.0) << "in the library";
    EXPECT_EQ(filterOrientation(a, b, c, d).det, 0.0) << "in code that includes the filter";
    EXPECT_EQ(twoProduct(SplitFactor(x, dekkerSplitter), SplitFactor(x, dekkerSplitter)).tail, 0x1p-60);
}

} // namespace

} // namespace VORN3D
