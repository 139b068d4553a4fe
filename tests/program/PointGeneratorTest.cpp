// Generated test data: each shape where it should be, and the same for ever.
#include "PointGenerator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace VORN3D::program
{

namespace
{

constexpr std::size_t num = 20000;

std::vector<Coordinates> generate(const std::string& shape, std::size_t numPoints, std::uint64_t seed = 1)
{
    PointGenerator generator(shape, numPoints, seed);
    std::vector<Coordinates> vPoints(numPoints);
    for (Coordinates& point : vPoints)
        point = generator.next();
    return vPoints;
}

double getLength(const Coordinates& p)
{
    return std::sqrt(p[0] * p[0] + p[1] * p[1] + p[2] * p[2]);
}

/// The share of the points for which the predicate holds.
template <typename Predicate>
double getShare(const std::vector<Coordinates>& vPoints, Predicate predicate)
{
    const auto count = std::count_if(vPoints.begin(), vPoints.end(), predicate);
    return static_cast<double>(count) / static_cast<double>(vPoints.size());
}

TEST(PointGenerator, FillsTheShapes)
{
    constexpr double tolerance = 0.02;
    const auto vCube = generate("cube", num);
    const auto vBall = generate("ball", num);
    const auto vSphere = generate("sphere", num);
    const auto vClusters = generate("clusters", num);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(getShare(vCube, [&](const auto& p) { return p[axis] >= 0.0 && p[axis] < 1.0; }), 1.0);
        EXPECT_NEAR(getShare(vCube, [&](const auto& p) { return p[axis] < 0.25; }), 0.25, tolerance);
        // Slices of equal height of a sphere have equal areas.
        EXPECT_NEAR(getShare(vSphere, [&](const auto& p) { return p[axis] < -0.5; }), 0.25, tolerance);
        EXPECT_NEAR(getShare(vBall, [&](const auto& p) { return p[axis] < 0.0; }), 0.5, tolerance);
        EXPECT_EQ(getShare(vClusters, [&](const auto& p) { return std::abs(p[axis] - 0.5) < 0.55; }), 1.0);
    }
    EXPECT_EQ(getShare(vBall, [](const auto& p) { return getLength(p) <= 1.0; }), 1.0);
    EXPECT_NEAR(getShare(vBall, [](const auto& p) { return getLength(p) < 0.5; }), 0.125, tolerance);
    EXPECT_EQ(getShare(vSphere, [](const auto& p) { return std::abs(getLength(p) - 1.0) < 1e-15; }), 1.0);
}

TEST(PointGenerator, GridHoldsEachPointOfItsCubeOnce)
{
    const auto vPoints = generate("grid", 27);
    EXPECT_EQ(std::set<Coordinates>(vPoints.begin(), vPoints.end()).size(), 27u);
    for (const Coordinates& p : vPoints)
        EXPECT_TRUE(p[0] >= 0 && p[0] < 3 && p[1] >= 0 && p[1] < 3 && p[2] >= 0 && p[2] < 3);
    EXPECT_EQ(generate("grid", 28).back(), (Coordinates{3, 2, 1}));
}

TEST(PointGenerator, DependsOnTheSeedAlone)
{
    for (const std::string& shape : PointGenerator::getShapeNames()) {
        SCOPED_TRACE(shape);
        EXPECT_EQ(generate(shape, 100, 7), generate(shape, 100, 7));
        EXPECT_EQ(generate(shape, 100, 7) != generate(shape, 100, 8), shape != "grid");
    }
}

TEST(PointGenerator, TakesTheGeneratorThatTheLanguageFixes)
{
    // The standard states the 10000th number for the seed 5489; here it is the first coordinate of point
    // 3334.
    constexpr std::uint64_t number = 9981545732273789042u;
    EXPECT_EQ(generate("cube", 3334, 5489).back()[0], static_cast<double>(number >> 11) * 0x1p-53);
}

} // namespace

} // namespace VORN3D::program
