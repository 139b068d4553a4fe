#include "vorn3d/testDataGenerators.h"

#include "nalo_tools/assertion.h"

#include <atomic>
#include <cstdint>
#include <ctime>

namespace VORN3D
{

namespace
{

// A linear congruential generator with 15-bit output, ours so that a seed means the same data on every
// platform and so that threads do not share a state.
class RandomNumbers15
{
public:
    explicit RandomNumbers15(unsigned int seed) : m_state(seed) {}

    /// 0 to 32767.
    unsigned int next()
    {
        m_state = m_state * 214013u + 2531011u;
        return (m_state >> 16) & 0x7fffu;
    }

private:
    std::uint32_t m_state;
};

// Successive calls differ even within one second: the kth one reseeds k times.
RandomNumbers15 seedByTime()
{
    static std::atomic<int> numCalls{0};
    const int k = numCalls.fetch_add(1, std::memory_order_relaxed);
    RandomNumbers15 random(static_cast<unsigned int>(std::time(nullptr)));
    for (int i = 0; i < k; ++i)
        random = RandomNumbers15(random.next());
    return random;
}

void checkBounds(double min, double max)
{
    VORN_REQUIRE_TEXT(min < max, "min<max");
}

} // namespace

void generateRandomNumbers(std::size_t num, double min, double max, std::vector<double>& vOut,
                           unsigned int seed)
{
    RandomNumbers15 random = seed == 0 ? seedByTime() : RandomNumbers15(seed);
    checkBounds(min, max);
    constexpr double step = 1.0 / 32768;
    for (std::size_t i = 0; i < num; ++i)
        vOut.push_back(min + (random.next() * (max - min)) * step);
}

void generateRandomPoints(std::size_t num, double min, double max, std::vector<Point3>& vOut,
                          unsigned int seed)
{
    checkBounds(min, max);
    // Two points for three requested ones: the established count, on which stored results depend.
    const std::size_t numPoints = (2 * num + 2) / 3;
    std::vector<double> vNumbers;
    generateRandomNumbers(3 * numPoints, min, max, vNumbers, seed);
    for (std::size_t i = 0; i < vNumbers.size(); i += 3)
        vOut.emplace_back(vNumbers[i], vNumbers[i + 1], vNumbers[i + 2]);
}

} // namespace VORN3D
