// The comparison of distances: each of its stages and the whole against rational arithmetic, over the whole
// range of doubles.
#include "distanceOrder.h"
#include "hostilePoints.h"

#include <gtest/gtest.h>
#include <map>

namespace VORN3D::tests
{
namespace
{

using ThreePoints = std::array<Coordinates, 3>;

int compareRationally(const ThreePoints& points)
{
    using namespace rational;
    const auto p = getScaled(points);
    const Vector a = subtract(p[0], p[2]);
    const Vector b = subtract(p[1], p[2]);
    return sgn(mpz_class(dot(a, a) - dot(b, b)));
}

class CountedStages
{
public:
    void expectRight(const ThreePoints& points)
    {
        const PointArray<3> pointers = {points[0].data(), points[1].data(), points[2].data()};
        const auto expected = static_cast<Sign>(compareRationally(points));
        const double a = lift(difference(pointers[0], pointers[2]));
        const double b = lift(difference(pointers[1], pointers[2]));
        expectUndecidedOr("filter", compareDistancesByFilter(a, b), expected);
        expectUndecidedOr("integers", compareDistancesByIntegers(pointers), expected);
        ASSERT_EQ(compareDistancesInExtendedRange(pointers), expected);
        ASSERT_EQ(compareDistances(pointers, a, b), expected);
        m_numEqual += expected == Sign::zero;
    }

    int getNumDecided(const std::string& stage) { return m_numDecided[stage]; }
    int getNumEqual() const { return m_numEqual; }

private:
    void expectUndecidedOr(const std::string& stage, Sign sign, Sign expected)
    {
        if (sign == Sign::undecided)
            return;
        EXPECT_EQ(sign, expected) << stage;
        ++m_numDecided[stage];
    }

    std::map<std::string, int> m_numDecided;
    int m_numEqual = 0;
};

TEST(DistanceOrder, HasTheSignOfTheTrueDifferenceInEveryStage)
{
    Generator random(1);
    CountedStages stages;
    for (const Values& values : getAllValues())
        for (const Shape& shape : getAllShapes())
            for (int round = 0; round < 100; ++round) {
                FivePoints five = shape.make(random, values);
                if (round % 2 == 0)
                    nudge(five, random);
                std::array<std::size_t, 3> order = {0, 1, 2};
                do {
                    SCOPED_TRACE(values.name + ", " + shape.name);
                    stages.expectRight({five[order[0]], five[order[1]], five[order[2]]});
                    if (testing::Test::HasFailure())
                        return;
                } while (std::next_permutation(order.begin(), order.end()));
            }
    EXPECT_GT(stages.getNumDecided("filter"), 10000);
    EXPECT_GT(stages.getNumDecided("integers"), 10000);
    EXPECT_GT(stages.getNumEqual(), 1000);
}

} // namespace
} // namespace VORN3D::tests
