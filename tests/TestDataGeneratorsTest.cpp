#include "vorn3d/testDataGenerators.h"

#include "outcomes.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <thread>

namespace VORN3D
{

namespace
{

std::vector<double> getNumbers(std::size_t num, double min, double max, unsigned int seed)
{
    std::vector<double> vNumbers;
    generateRandomNumbers(num, min, max, vNumbers, seed);
    return vNumbers;
}

TEST(RandomNumbers, AreTheGeneratorsOutputsScaledToTheRange)
{
    EXPECT_EQ(getNumbers(2, 0, 32768, 1), (std::vector<double>{41, 18467}));
    const double aRange[][2] = {{0, 1}, {0.1, 0.3}, {-1e300, 1e-300}, {1e15, 1e15 + 1}};
    for (const unsigned int seed : {1u, 7u, 32768u, 4294967295u})
        for (const auto& [min, max] : aRange) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", " << min << " to " << max);
            std::uint32_t state = seed;
            for (const double number : getNumbers(50, min, max, seed)) {
                state = state * 214013u + 2531011u;
                EXPECT_EQ(number, min + std::ldexp((state >> 16 & 32767u) * (max - min), -15));
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
    const std::pair<std::size_t, std::size_t> aNum[] = {{0, 0}, {1, 1},  {2, 2},    {3, 2},
                                                        {4, 3}, {10, 7}, {999, 666}};
    for (const auto& [num, numPoints] : aNum) {
        SCOPED_TRACE(num);
        std::vector<Point3> vPoints(1);
        generateRandomPoints(num, 0, 100, vPoints, 1);
        ASSERT_EQ(vPoints.size(), 1 + numPoints);
        const std::vector<double> v = getNumbers(3 * num, 0, 100, 1);
        for (std::size_t i = 0; i < numPoints; ++i)
            EXPECT_EQ(vPoints[1 + i], Point3(v[3 * i], v[3 * i + 1], v[3 * i + 2]));
    }
}

TEST(RandomData, BoundsMustAscend)
{
    std::vector<double> vNumbers;
    std::vector<Point3> vPoints;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [min, max] : {std::pair(1.0, 1.0), std::pair(nan, 1.0), std::pair(1.0, nan)})
        for (const unsigned int seed : {0u, 1u}) {
            expectThrow([&, min = min, max = max] { generateRandomNumbers(5, min, max, vNumbers, seed); },
                        "min<max");
            expectThrow([&, min = min, max = max] { generateRandomPoints(5, min, max, vPoints, seed); },
                        "min<max");
        }
    EXPECT_TRUE(vNumbers.empty() && vPoints.empty());
}

} // namespace

} // namespace VORN3D
