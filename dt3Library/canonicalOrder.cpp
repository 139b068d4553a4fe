#include "vorn3d/canonicalOrder.h"

#include "nalo_tools/assertion.h"
#include "vertexStore/HilbertCurve.h"

#include <algorithm>

namespace VORN3D
{

namespace
{

constexpr int BITS_PER_AXIS = 20;
constexpr unsigned NUM_LEVELS = 16;

struct Place
{
    std::uint64_t key; // level, the coarsest first, and cell on the curve
    std::uint64_t index;
    std::size_t position;
};

// A bijection that makes all bits depend on all (the finaliser of SplitMix64: G. Steele, D. Lea, C. Flood,
// Fast splittable pseudorandom number generators, OOPSLA 2014).
std::uint64_t mix(std::uint64_t x)
{
    x += 0x9e3779b97f4a7c15u;
    x = (x ^ x >> 30) * 0xbf58476d1ce4e5b9u;
    x = (x ^ x >> 27) * 0x94d049bb133111ebu;
    return x ^ x >> 31;
}

// 0 for the coarsest; each has about an eighth of the points of the next.
unsigned getLevel(std::uint64_t index)
{
    unsigned level = NUM_LEVELS - 1;
    for (std::uint64_t hash = mix(index); level > 0 && hash % 8 == 0; hash /= 8)
        --level;
    return level;
}

// The cube in which cells are counted. Coordinates are halved, as their differences may be too large.
class Cube
{
public:
    explicit Cube(const Bbox3& box)
        : m_minX(0.5 * box.getMinX()), m_minY(0.5 * box.getMinY()), m_minZ(0.5 * box.getMinZ()),
          m_extent(std::max(
              {0.5 * box.getMaxX() - m_minX, 0.5 * box.getMaxY() - m_minY, 0.5 * box.getMaxZ() - m_minZ}))
    {
    }

    std::uint64_t getKey(const Point3& p) const
    {
        const std::uint32_t x = getSlab(p.x(), m_minX);
        const std::uint32_t y = getSlab(p.y(), m_minY);
        const std::uint32_t z = getSlab(p.z(), m_minZ);
        HilbertCurve curve;
        std::uint64_t key = 0;
        for (int bit = BITS_PER_AXIS - 1; bit >= 0; --bit)
            key = key << 3 | curve.enter((x >> bit & 1) << 2 | (y >> bit & 1) << 1 | (z >> bit & 1));
        return key;
    }

private:
    // Here alone floating point decides; what is rounded is rounded alike everywhere.
    std::uint32_t getSlab(double x, double min) const
    {
        constexpr std::uint32_t NUM_SLABS = std::uint32_t{1} << BITS_PER_AXIS;
        const double slab = (0.5 * x - min) / m_extent * NUM_SLABS;
        if (slab >= NUM_SLABS)
            return NUM_SLABS - 1;
        return slab > 0 ? static_cast<std::uint32_t>(slab) : 0;
    }

    double m_minX;
    double m_minY;
    double m_minZ;
    double m_extent;
};

} // namespace

std::vector<std::size_t> getCanonicalOrder(const std::vector<Point3>& vPoints,
                                           const std::vector<std::uint64_t>& vIndices, const Bbox3& box)
{
    VORN_REQUIRE(vIndices.size() == vPoints.size());
    VORN_REQUIRE(box.isValid() || vPoints.empty());
    const Cube cube(box);
    std::vector<Place> vPlaces(vPoints.size());
    for (std::size_t i = 0; i < vPlaces.size(); ++i) {
        const std::uint64_t level = getLevel(vIndices[i]);
        vPlaces[i] = {level << 3 * BITS_PER_AXIS | cube.getKey(vPoints[i]), vIndices[i], i};
    }
    std::sort(vPlaces.begin(), vPlaces.end(), [](const Place& a, const Place& b) {
        return a.key != b.key ? a.key < b.key : a.index < b.index;
    });
    std::vector<std::size_t> vPositions(vPlaces.size());
    std::transform(vPlaces.begin(), vPlaces.end(), vPositions.begin(),
                   [](const Place& place) { return place.position; });
    return vPositions;
}

} // namespace VORN3D
