#include "vorn3d/geometry/spatialOrder.h"

#include "values/isFinite.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>

namespace VORN3D
{

namespace
{

constexpr double NUM_CELLS = 0x1p16; // along each side of the box

// The digits by which keys of 48 bits are sorted.
constexpr int DIGIT_BITS = 12;
constexpr int NUM_DIGITS = 4;

/// The binary digits of a number below 2^16, with two zeros after each.
std::uint64_t spread(std::uint64_t number)
{
    number = (number | number << 16) & 0xff0000ff;
    number = (number | number << 8) & 0xf00f00f00f;
    number = (number | number << 4) & 0xc30c30c30c3;
    return (number | number << 2) & 0x249249249249;
}

struct Box
{
    std::array<double, 3> low;
    std::array<double, 3> high;
};

Box getBox(const std::vector<Point3>& vPoints)
{
    constexpr double LARGEST = DBL_MAX;
    Box box = {{LARGEST, LARGEST, LARGEST}, {-LARGEST, -LARGEST, -LARGEST}};
    for (const Point3& p : vPoints)
        for (std::size_t k = 0; k < 3 && isFinite(p); ++k) {
            box.low[k] = std::min(box.low[k], p.getCoordinates()[k]);
            box.high[k] = std::max(box.high[k], p.getCoordinates()[k]);
        }
    return box;
}

std::uint64_t getKey(const Box& box, const Point3& p)
{
    std::uint64_t key = 0;
    for (std::size_t k = 0; k < 3; ++k) {
        // Halves, since the sides of the box may be beyond the range of doubles.
        const double side = box.high[k] / 2 - box.low[k] / 2;
        const double place = (p.getCoordinates()[k] / 2 - box.low[k] / 2) / side * NUM_CELLS;
        const double cell = place >= 0.0 ? std::min(place, NUM_CELLS - 1) : 0.0;
        key |= spread(static_cast<std::uint64_t>(cell)) << k;
    }
    return key;
}

struct Entry
{
    std::uint64_t key;
    std::size_t position;
};

/// Sorts by keys, digit by digit from the lowest.
void sortByKey(std::vector<Entry>& vEntries)
{
    constexpr std::size_t NUM_BUCKETS = std::size_t{1} << DIGIT_BITS;
    std::vector<Entry> vTarget(vEntries.size());
    for (int digit = 0; digit < NUM_DIGITS; ++digit) {
        const auto getBucket = [=](const Entry& entry) {
            return (entry.key >> (digit * DIGIT_BITS)) & (NUM_BUCKETS - 1);
        };
        std::vector<std::size_t> vNext(NUM_BUCKETS + 1, 0);
        for (const Entry& entry : vEntries)
            ++vNext[getBucket(entry) + 1];
        std::partial_sum(vNext.begin(), vNext.end(), vNext.begin());
        for (const Entry& entry : vEntries)
            vTarget[vNext[getBucket(entry)]++] = entry;
        vEntries.swap(vTarget);
    }
}

} // namespace

std::vector<std::size_t> makeSpatialOrder(const std::vector<Point3>& vPoints)
{
    const Box box = getBox(vPoints);
    std::vector<Entry> vEntries;
    vEntries.reserve(vPoints.size());
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        vEntries.push_back({getKey(box, vPoints[i]), i});
    sortByKey(vEntries);
    std::vector<std::size_t> vOrder;
    vOrder.reserve(vEntries.size());
    for (const Entry& entry : vEntries)
        vOrder.push_back(entry.position);
    return vOrder;
}

} // namespace VORN3D
