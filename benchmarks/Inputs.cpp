#include "Inputs.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <random>
#include <stdexcept>

namespace bench
{

namespace
{

using Points = std::vector<Xyz>;

constexpr double PI = 3.14159265358979323846;

// The distributions of the standard library differ between implementations; its generators do not.
class Random
{
public:
    explicit Random(std::uint64_t seed) : m_generator(seed) {}

    /// Of [0, 1), a multiple of 2^-53.
    double uniform() { return std::ldexp(static_cast<double>(m_generator() >> 11), -53); }
    double uniform(double min, double max) { return min + (max - min) * uniform(); }
    double angle() { return uniform(0.0, 2.0 * PI); }
    std::size_t index(std::size_t num) { return static_cast<std::size_t>(m_generator() % num); }

    /// Standard normal, by the method of Box and Muller.
    double gaussian() { return std::sqrt(-2.0 * std::log(1.0 - uniform())) * std::cos(angle()); }

    Xyz inCube()
    {
        const double x = uniform(), y = uniform(), z = uniform();
        return {x, y, z};
    }

    Xyz onSphere()
    {
        const double x = gaussian(), y = gaussian(), z = gaussian();
        const double length = std::sqrt(x * x + y * y + z * z);
        return {x / length, y / length, z / length};
    }

private:
    std::mt19937_64 m_generator;
};

template <class MakePoint>
Points collect(std::size_t num, MakePoint makePoint)
{
    Points vPoints;
    vPoints.reserve(num);
    while (vPoints.size() < num)
        vPoints.push_back(makePoint());
    return vPoints;
}

Points makeUniform(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    return collect(num, [&] { return random.inCube(); });
}

Points makeClustersOfSize(std::size_t num, std::uint64_t seed, double sigma)
{
    Random random(seed);
    const Points vCentres = collect(100, [&] { return random.inCube(); });
    return collect(num, [&] {
        const Xyz& c = vCentres[random.index(vCentres.size())];
        const double x = random.gaussian(), y = random.gaussian(), z = random.gaussian();
        return Xyz{c.x + sigma * x, c.y + sigma * y, c.z + sigma * z};
    });
}

Points makeClusters(std::size_t num, std::uint64_t seed)
{
    return makeClustersOfSize(num, seed, 0.01);
}

Points makeDeepClusters(std::size_t num, std::uint64_t seed)
{
    return makeClustersOfSize(num, seed, 1e-6);
}

// A point at parameter t of a helix of radius 1 with 10 turns of height 0.5.
Xyz onHelix(double t)
{
    const double phi = 20.0 * PI * t;
    return {std::cos(phi), std::sin(phi), 5.0 * t};
}

Points makeHelixTube(std::size_t num, std::uint64_t seed)
{
    constexpr double RADIUS = 0.1;
    Random random(seed);
    return collect(num, [&] {
        const Xyz c = onHelix(random.uniform());
        const Xyz direction = random.onSphere();
        const double r = RADIUS * std::cbrt(random.uniform());
        return Xyz{c.x + r * direction.x, c.y + r * direction.y, c.z + r * direction.z};
    });
}

Points makeSnapped(std::size_t num, std::uint64_t seed)
{
    const auto snap = [](double value) { return std::floor(value * 1024.0) / 1024.0; };
    Points vPoints = makeUniform(num, seed);
    for (Xyz& p : vPoints)
        p = {snap(p.x), snap(p.y), snap(p.z)};
    return vPoints;
}

Points makeGrid(std::size_t num, std::uint64_t)
{
    const auto side = static_cast<std::size_t>(std::lround(std::cbrt(static_cast<double>(num))));
    std::size_t next = 0;
    return collect(side * side * side, [&] {
        const std::size_t i = next++;
        return Xyz{double(i / side / side), double(i / side % side), double(i % side)};
    });
}

Points makeSphere(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    return collect(num, [&] { return random.onSphere(); });
}

Points makeFlat(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    return collect(num, [&] {
        const double x = random.uniform(), y = random.uniform();
        return Xyz{x, y, 0.0};
    });
}

Points makeLine(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    return collect(num, [&] { return Xyz{random.uniform(), 0.0, 0.0}; });
}

Points makePlane(std::size_t num, std::uint64_t seed)
{
    Points vPoints = makeFlat(num, seed);
    vPoints.push_back({0.5, 0.5, 1.0});
    return vPoints;
}

Points makePlaneGrid(std::size_t num, std::uint64_t)
{
    const auto side = static_cast<std::size_t>(std::lround(std::sqrt(static_cast<double>(num))));
    std::size_t next = 0;
    Points vPoints = collect(side * side, [&] {
        const std::size_t i = next++;
        return Xyz{double(i / side), double(i % side), 0.0};
    });
    const double mid = double(side) / 2.0;
    vPoints.push_back({mid, mid, double(side)});
    return vPoints;
}

// One unit in the last place above or below a plane, or on it.
Points makeNearPlane(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    return collect(num, [&] {
        const double x = random.uniform(), y = random.uniform();
        const double offset = static_cast<double>(random.index(3)) - 1.0;
        return Xyz{x, y, 1.0 + offset * std::ldexp(1.0, -52)};
    });
}

Points makeSegments(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    bool bFirst = false;
    return collect(num, [&] {
        bFirst = !bFirst;
        const double t = random.uniform();
        return bFirst ? Xyz{t, 0.0, 0.0} : Xyz{0.5, t, 1.0};
    });
}

Points makeWithOutlier(std::size_t num, std::uint64_t seed, double distance)
{
    Points vPoints = makeUniform(num - 1, seed);
    vPoints.push_back({distance, 0.7 * distance, 0.4 * distance});
    return vPoints;
}

Points makeOutlier(std::size_t num, std::uint64_t seed)
{
    return makeWithOutlier(num, seed, 1e6);
}

Points makeFarOutlier(std::size_t num, std::uint64_t seed)
{
    return makeWithOutlier(num, seed, 1e12);
}

Points makeCylinder(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    return collect(num, [&] {
        const double phi = random.angle(), height = random.uniform();
        return Xyz{std::cos(phi), std::sin(phi), height};
    });
}

Points makeCubeSurface(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    return collect(num, [&] {
        const double u = random.uniform(), v = random.uniform();
        const std::size_t side = random.index(6);
        const double level = side % 2 == 0 ? 0.0 : 1.0;
        if (side < 2)
            return Xyz{level, u, v};
        return side < 4 ? Xyz{u, level, v} : Xyz{u, v, level};
    });
}

Points makeHelixCurve(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    return collect(num, [&] { return onHelix(random.uniform()); });
}

Points makeMomentCurve(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    return collect(num, [&] {
        const double t = random.uniform();
        return Xyz{t, t * t, t * t * t};
    });
}

Points makeNeedles(std::size_t num, std::uint64_t seed)
{
    Points vPoints = makeUniform(num, seed);
    for (Xyz& p : vPoints)
        p = {p.x * 1e6, p.y, p.z};
    return vPoints;
}

Points makeDuplicates(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    const Points vDistinct = collect(std::max<std::size_t>(num / 1000, 4), [&] { return random.inCube(); });
    return collect(num, [&] { return vDistinct[random.index(vDistinct.size())]; });
}

// Millimetres in the coordinates of a national survey.
Points makeGeoreferenced(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    const auto millimetres = [&](double min, double max) {
        return std::round(random.uniform(min, max) * 1e3) / 1e3;
    };
    return collect(num, [&] {
        const double east = millimetres(465000.0, 466000.0);
        const double north = millimetres(5428000.0, 5429000.0);
        return Xyz{east, north, millimetres(100.0, 180.0)};
    });
}

// A survey of hilly ground, with records that have lost their coordinates.
Points makeGeoreferencedOrigin(std::size_t num, std::uint64_t seed)
{
    constexpr std::size_t NUM_LOST = 5;
    Random random(seed);
    const auto millimetres = [](double x) { return std::round(x * 1e3) / 1e3; };
    Points vPoints = collect(num - NUM_LOST, [&] {
        const double x = random.uniform(0.0, 1000.0), y = random.uniform(0.0, 1000.0);
        const double height = 140.0 + 30.0 * std::sin(x / 150.0) * std::cos(y / 110.0);
        return Xyz{millimetres(465000.0 + x), millimetres(5428000.0 + y),
                   millimetres(height + random.uniform(-0.2, 0.2))};
    });
    const Points vLost = collect(NUM_LOST, [&] {
        const double x = random.uniform(), y = random.uniform();
        return Xyz{millimetres(x), millimetres(y), 0.0};
    });
    vPoints.insert(vPoints.end(), vLost.begin(), vLost.end());
    return vPoints;
}

Points makeTorus(std::size_t num, std::uint64_t seed)
{
    Random random(seed);
    return collect(num, [&] {
        const double a = random.angle(), b = random.angle(), distance = 2.0 + std::cos(b);
        return Xyz{distance * std::cos(a), distance * std::sin(a), std::sin(b)};
    });
}

Points readScan(std::size_t num, std::uint64_t /*seed*/)
{
    std::ifstream file(BENCH_DATA_DIR "/spot/spot.xyz");
    Points vPoints;
    for (Xyz p; vPoints.size() < num && file >> p.x >> p.y >> p.z;)
        vPoints.push_back(p);
    return vPoints;
}

} // namespace

const std::vector<Family>& getFamilies()
{
    static const std::vector<Family> vFamilies = {
        {"uniform", "uniform in a cube", true, makeUniform},
        {"clusters", "100 Gaussian clusters", true, makeClusters},
        {"deepClusters", "100 Gaussian clusters of 10^-6 of the size of all", true, makeDeepClusters},
        {"helix", "in a tube along a helix", true, makeHelixTube},
        {"snapped", "uniform, snapped to multiples of 2^-10", false, makeSnapped},
        {"grid", "integer grid", false, makeGrid},
        {"sphere", "on a sphere, rounded", true, makeSphere},
        {"plane", "on a plane, and one point off it", true, makePlane},
        {"segments", "on two skew segments", true, makeSegments},
        {"outlier", "cluster, and one point 10^6 times its size away", true, makeOutlier},
        {"farOutlier", "cluster, and one point 10^12 times its size away", true, makeFarOutlier},
        {"georeferenced", "millimetres at a large offset", false, makeGeoreferenced},
        {"georeferencedOrigin", "ground in millimetres at a large offset, and five points at the origin",
         false, makeGeoreferencedOrigin},
        {"cylinder", "on a cylinder, rounded", true, makeCylinder},
        {"cubeSurface", "on the faces of a cube", true, makeCubeSurface},
        {"planeGrid", "square grid, and one point off it", false, makePlaneGrid},
        {"nearPlane", "at most one unit in the last place off a plane", true, makeNearPlane},
        {"helixCurve", "on a helix", true, makeHelixCurve},
        {"momentCurve", "on the curve (t, t^2, t^3)", true, makeMomentCurve},
        {"needles", "uniform in a box of 10^6 by 1 by 1", true, makeNeedles},
        {"duplicates", "each point a thousand times", true, makeDuplicates},
        {"flat", "all on a plane: no mesh", true, makeFlat},
        {"line", "all on a line: no mesh", true, makeLine},
        {"torus", "on a torus, rounded", true, makeTorus},
        {"scan", "the first of the points scanned from a cow", true, readScan},
    };
    return vFamilies;
}

const Family& getFamily(const std::string& name)
{
    for (const Family& family : getFamilies())
        if (name == family.name)
            return family;
    throw std::invalid_argument("there is no input named \"" + name + "\"");
}

std::vector<Xyz> makeInput(const std::string& family, std::size_t num, std::uint64_t seed)
{
    return getFamily(family).make(num, seed);
}

std::vector<Xyz> makeCoherentPoints(std::size_t num)
{
    const auto swing = [](double turns, double t) { return 0.5 + 0.49 * std::sin(2.0 * PI * turns * t); };
    std::size_t next = 0;
    return collect(num, [&] {
        const double t = double(next++) / double(num);
        return Xyz{swing(31.0, t), swing(43.0, t), swing(59.0, t)};
    });
}

} // namespace bench
