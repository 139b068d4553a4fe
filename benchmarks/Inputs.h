#pragma once
// The point sets of the benchmarks. They are computed, not read, but for a scan that comes with the sources,
// so that every library gets the same points in the same order, and anybody can repeat a row from its name
// and size.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench
{

struct Xyz
{
    double x, y, z;
};

struct Family
{
    const char* name;
    const char* description;
    /// The points have one Delaunay tetrahedralization only, so that exact libraries agree on its size.
    bool bUnique;
    /// About num points (a grid needs a cube number).
    std::vector<Xyz> (*make)(std::size_t num, std::uint64_t seed);
};

const std::vector<Family>& getFamilies();

/// Throws std::invalid_argument if there is no such family.
const Family& getFamily(const std::string& name);

std::vector<Xyz> makeInput(const std::string& family, std::size_t num, std::uint64_t seed = 1);

/// Points of which each is close to the one before: they follow a smooth closed curve through the unit cube.
std::vector<Xyz> makeCoherentPoints(std::size_t num);

/// The points in a library's own type.
template <class Points>
Points emplaceAll(const std::vector<Xyz>& vXyz)
{
    Points points;
    points.reserve(vXyz.size());
    for (const Xyz& p : vXyz)
        points.emplace_back(p.x, p.y, p.z);
    return points;
}

} // namespace bench
