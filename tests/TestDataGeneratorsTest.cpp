#include "vorn3d/testDataGenerators.h"

#include "outcomes.h"

#include <limits>
#include <set>
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
    EXPECT_EQ(getNumbers(3, 0, 32768, 1), (std::vector<double>{41, 18467, 6334}));
    EXPECT_EQ(getNumbers(2, -1e300, 1e300, 1),
              (std::vector<double>{-1e300 + 41 * 2e300 * 0x1p-15, -1e300 + 18467 * 2e300 * 0x1p-15}));
}

TEST(RandomNumbers, SeedZeroGivesFreshDataOnEveryCallOfAnyThread)
{
    std::vector<double> vOther, vNumbers = {42};
    std::thread other([&] { vOther = getNumbers(20, 0, 1, 0); });
    generateRandomNumbers(20, 0, 1, vNumbers, 0);
    other.join();
    ASSERT_EQ(vNumbers.size(), 21u);
    EXPECT_EQ(vNumbers[0], 42) << "numbers are appended";
    std::set<std::vector<double>> sequences = {{vNumbers.begin() + 1, vNumbers.end()}, vOther};
    for (int i = 0; i < 3; ++i)
        sequences.insert(getNumbers(20, 0, 1, 0));
    EXPECT_EQ(sequences.size(), 5u);
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
