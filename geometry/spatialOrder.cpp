#include "spatialOrder.h"

#include "values/isFinite.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace VORN3D
{

namespace
{

constexpr double NUM_CELLS = 0x1p20; // along each side of the box

/// The binary digits of a number below 2^20, with two zeros after each.
std::uint64_t spread(std::uint64_t number)
{
    number = (number | number << 32) & 0x1f00000000ffff;
    number = (number | number << 16) & 0x1f0000ff0000ff;
    number = (number | number << 8) & 0x100f00f00f00f00f;
    number = (number | number << 4) & 0x10c30c30c30c30c3;
    return (number | number << 2) & 0x1249249249249249;
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

} // namespace

std::vector<std::size_t> makeSpatialOrder(const std::vector<Point3>& vPoints)
{
    const Box box = getBox(vPoints);
    std::vector<std::pair<std::uint64_t, std::size_t>> vKeys;
    vKeys.reserve(vPoints.size());
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        vKeys.emplace_back(getKey(box, vPoints[i]), i);
    std::sort(vKeys.begin(), vKeys.end());
    std::vector<std::size_t> vOrder;
    vOrder.reserve(vKeys.size());
    for (const auto& entry : vKeys)
        vOrder.push_back(entry.second);
    return vOrder;
}

} // namespace VORN3D
