// The exact signs and squared radii of smallest circumscribed spheres, each stage and the whole, against
// rational arithmetic over the whole range of doubles.
#include "squaredRadius.h"
#include "circumcenterSides.h"
#include "hostilePoints.h"
#include "rationalSphere.h"

#include <gtest/gtest.h>
#include <map>

namespace VORN3D::tests
{
namespace
{

mpq_class getPowerOf2(int exponent)
{
    mpq_class power = 1;
    if (exponent >= 0)
        mpq_mul_2exp(power.get_mpq_t(), power.get_mpq_t(), static_cast<unsigned long>(exponent));
    else
        mpq_div_2exp(power.get_mpq_t(), power.get_mpq_t(), static_cast<unsigned long>(-exponent));
    return power;
}

mpq_class getInteger(std::uint64_t digits)
{
    return mpq_class(static_cast<unsigned long>(digits >> 32)) * getPowerOf2(32) +
           static_cast<unsigned long>(digits & 0xffffffff);
}

void expectRounded(const LongQuotient& quotient, const mpq_class& exact)
{
    EXPECT_EQ(quotient.high >> 63, 1u);
    const mpq_class unit = getPowerOf2(quotient.exponent - 128);
    const mpq_class digits = (getInteger(quotient.high) * getPowerOf2(64) + getInteger(quotient.low)) * unit;
    EXPECT_EQ(digits == exact, !quotient.bMore);
    EXPECT_TRUE(digits <= exact && exact < digits + unit);
    const double rounded = quotient.roundUp();
    if (std::isfinite(rounded)) {
        EXPECT_GE(mpq_class(rounded), exact);
    }
    EXPECT_LT(mpq_class(std::nextafter(rounded, 0.0)), exact) << rounded;
}

SimplexPoints getSimplex(const std::vector<Coordinates>& points)
{
    SimplexPoints simplex = {{}, static_cast<int>(points.size())};
    for (std::size_t i = 0; i < points.size(); ++i)
        simplex.apPoint[i] = points[i].data();
    return simplex;
}

class CountedStages
{
public:
    /// The first of the points as an edge, a triangle or a tetrahedron.
    void expectRight(const std::vector<Coordinates>& points)
    {
        std::vector<RationalPoint> rationals;
        for (const Coordinates& p : points)
            rationals.push_back(toRational(p));
        const auto sphere = getSmallestSphere(rationals);
        if (!sphere)
            return;
        expectRounded(getSquaredRadius(getSimplex(points)), sphere->sqRadius);
        if (!m_vLast.empty()) {
            const int order = cmp(m_lastSqRadius, sphere->sqRadius);
            EXPECT_EQ(compareSquaredRadii(getSimplex(m_vLast), getSimplex(points)),
                      (order > 0) - (order < 0));
            m_numEqual += order == 0;
        }
        m_vLast = points;
        m_lastSqRadius = sphere->sqRadius;
        if (points.size() == 4)
            expectRightSides({points[0].data(), points[1].data(), points[2].data(), points[3].data()},
                             *sphere);
        if (points.size() == 3)
            expectRightSide({points[0].data(), points[1].data(), points[2].data()},
                            static_cast<Sign>(sgn(dot(getDifference(rationals[0], rationals[2]),
                                                      getDifference(rationals[1], rationals[2])))));
    }

    int getNumDecided(const std::string& stage) { return m_numDecided[stage]; }
    int getNumEqual() const { return m_numEqual; }

private:
    void expectRightSides(const TetPoints& tet, const RationalSphere& sphere)
    {
        const auto filtered = filterCircumcenterSides(tet);
        const auto byIntegers = getCircumcenterSidesByIntegers(tet);
        const auto extended = getCircumcenterSidesInExtendedRange(tet);
        const auto sides = getCircumcenterSides(tet);
        for (std::size_t i = 0; i < 4; ++i) {
            const auto expected = static_cast<Sign>(sgn(sphere.vCoordinates[i]));
            expectUndecidedOr("filter of sides", filtered[i], expected);
            expectUndecidedOr("integers of sides", byIntegers[i], expected);
            EXPECT_EQ(extended[i], expected);
            EXPECT_EQ(sides[i], expected);
        }
    }

    void expectRightSide(const TrianglePoints& points, Sign expected)
    {
        expectUndecidedOr("filter of an edge", filterDiametralSide(points), expected);
        expectUndecidedOr("integers of an edge", getDiametralSideByIntegers(points), expected);
        EXPECT_EQ(getDiametralSideInExtendedRange(points), expected);
        EXPECT_EQ(getDiametralSide(points), expected);
    }

    void expectUndecidedOr(const std::string& stage, Sign sign, Sign expected)
    {
        if (sign == Sign::undecided)
            return;
        EXPECT_EQ(sign, expected) << stage;
        ++m_numDecided[stage];
    }

    std::vector<Coordinates> m_vLast;
    mpq_class m_lastSqRadius;
    std::map<std::string, int> m_numDecided;
    int m_numEqual = 0;
};

TEST(SquaredRadius, AndSidesOfCentresAreTheTrueOnesInEveryStage)
{
    Generator random(1);
    CountedStages stages;
    for (const Values& values : getAllValues())
        for (const Shape& shape : getAllShapes())
            for (int round = 0; round < 6; ++round) {
                FivePoints five = shape.make(random, values);
                if (round % 2 == 0)
                    nudge(five, random);
                std::array<std::size_t, 4> order = {0, 1, 2, 3};
                do {
                    SCOPED_TRACE(values.name + ", " + shape.name);
                    std::vector<Coordinates> points = {five[order[0]], five[order[1]], five[order[2]],
                                                       five[order[3]]};
                    points.resize(static_cast<std::size_t>(drawInt(random, 2, 4)));
                    stages.expectRight(points);
                    if (testing::Test::HasFailure())
                        return;
                } while (std::next_permutation(order.begin(), order.end()));
            }
    for (const char* stage :
         {"filter of sides", "integers of sides", "filter of an edge", "integers of an edge"})
        EXPECT_GT(stages.getNumDecided(stage), 500) << stage;
    EXPECT_GT(stages.getNumEqual(), 500);
}

} // namespace
} // namespace VORN3D::tests
