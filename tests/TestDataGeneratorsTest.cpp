#include "vorn3d/testDataGenerators.h"

#include "outcomes.h"
#include "vorn3d/VornException.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <thread>

namespace VORN3D
{

namespace
{

/// The nth output (from 0) of the generator, in closed form: its state after n + 1 steps is
/// a^(n+1) seed + c (a^n + ... + a + 1) modulo 2^32.
std::uint64_t getNthOutput(std::uint64_t seed, int n)
{
    constexpr std::uint64_t a = 214013, c = 2531011, modulus = std::uint64_t(1) << 32;
    std::uint64_t power = 1, powerSum = 0;
    for (int i = 0; i <= n; ++i) {
        powerSum = (powerSum + power) % modulus;
        power = power * a % modulus;
    }
    const std::uint64_t state = (power * (seed % modulus) + c * powerSum) % modulus;
    return state / 65536 % 32768;
}

std::vector<double> getNumbers(std::size_t num, double min, double max, unsigned int seed)
{
    std::vector<double> vNumbers;
    generateRandomNumbers(num, min, max, vNumbers, seed);
    return vNumbers;
}

TEST(RandomNumbers, AreTheGeneratorsOutputsScaledToTheRange)
{
    ASSERT_EQ(getNthOutput(1, 0), 41u);
    ASSERT_EQ(getNthOutput(1, 1), 18467u);
    const double aRange[][2] = {{0, 1}, {-1, 1}, {0.1, 0.3}, {-1e300, 1e-300}, {1e15, 1e15 + 1}};
    for (const unsigned int seed : {1u, 7u, 32768u, 4294967295u})
        for (const auto& [min, max] : aRange) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", " << min << " to " << max);
            const std::vector<double> vNumbers = getNumbers(50, min, max, seed);
            ASSERT_EQ(vNumbers.size(), 50u);
            for (int n = 0; n < 50; ++n) {
                const double output = static_cast<double>(getNthOutput(seed, n));
                const double expected = min + std::ldexp(output * (max - min), -15);
                EXPECT_EQ(vNumbers[static_cast<std::size_t>(n)], expected) << n;
            }
        }
}

TEST(RandomNumbers, SeedZeroGivesFreshDataOnEveryCallOfAnyThread)
{
    std::vector<double> vOther, vNumbers = {42};
    std::thread other([&] { vOther = getNumbers(20, 0, 1, 0); });
    generateRandomNumbers(20, 0, 1, vNumbers, 0);
    other.join();
    ASSERT_EQ(vNumbers.size(), 21u);
    EXPECT_EQ(vNumbers[0], 42) << "numbers are appended";
    EXPECT_NE(std::vector<double>(vNumbers.begin() + 1, vNumbers.end()), vOther);
}

TEST(RandomPoints, AreTwoForThreeRequestedMadeOfConsecutiveNumbers)
{
    for (const auto& [num, numPoints] : std::vector<std::pair<std::size_t, std::size_t>>{
             {0, 0}, {1, 1}, {2, 2}, {3, 2}, {4, 3}, {10, 7}, {999, 666}}) {
        SCOPED_TRACE(num);
        std::vector<Point3> vPoints(1);
        generateRandomPoints(num, 0, 100, vPoints, 1);
        ASSERT_EQ(vPoints.size(), 1 + numPoints);
        const std::vector<double> vNumbers = getNumbers(3 * num, 0, 100, 1);
        for (std::size_t i = 0; i < numPoints; ++i) {
            const Point3& p = vPoints[1 + i];
            EXPECT_EQ(p, Point3(vNumbers[3 * i], vNumbers[3 * i + 1], vNumbers[3 * i + 2]));
            EXPECT_TRUE(p.getOneTet() == nullptr && p.getCustomIndex() == -1);
        }
    }
}

TEST(RandomData, BoundsMustAscend)
{
    const auto expectThrow = [](auto call) {
        EXPECT_THAT(outputOf([&] { EXPECT_THROW(call(), VornException); }),
                    testing::MatchesRegex("\n      Vorn, , ERROR: Condition \\[ min<max failed ]\n\n"
                                          "      dt3Library/testDataGenerators.cpp:[0-9]+\n"));
    };
    std::vector<double> vNumbers;
    std::vector<Point3> vPoints;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& bounds :
         {std::pair(1.0, 1.0), std::pair(2.0, 1.0), std::pair(nan, 1.0), std::pair(1.0, nan)})
        for (const unsigned int seed : {0u, 1u}) {
            expectThrow([&] { generateRandomNumbers(5, bounds.first, bounds.second, vNumbers, seed); });
            expectThrow([&] { generateRandomPoints(5, bounds.first, bounds.second, vPoints, seed); });
        }
    EXPECT_TRUE(vNumbers.empty() && vPoints.empty());
}

} // namespace

} // namespace VORN3D
