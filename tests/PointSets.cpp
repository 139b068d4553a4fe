#include "PointSets.h"

#include <array>
#include <cmath>
#include <fstream>

namespace VORN3D::tests
{
namespace
{

using Points = std::vector<Point3>;
using Maker = std::function<Points(std::size_t)>;

/// num points, each made by make(random, i).
Maker each(const std::function<Point3(Random&, int)>& make)
{
    return [make](std::size_t num) {
        Random random(num);
        Points vPoints;
        for (std::size_t i = 0; i < num; ++i)
            vPoints.push_back(make(random, static_cast<int>(i)));
        return vPoints;
    };
}

Maker changed(const Maker& make, const std::function<Point3(Random&, const Point3&)>& change)
{
    return [make, change](std::size_t num) {
        Points vPoints = make(num);
        Random random(vPoints.size());
        for (Point3& p : vPoints)
            p = change(random, p);
        return vPoints;
    };
}

/// The points of a set and some more, before and after it.
Maker between(const Points& vFirst, const Maker& make, const Points& vLast)
{
    return [vFirst, make, vLast](std::size_t num) {
        Points vPoints = vFirst;
        for (const Points& vMore : {make(num), vLast})
            vPoints.insert(vPoints.end(), vMore.begin(), vMore.end());
        return vPoints;
    };
}

Point3 scaled(const Point3& p, double factor)
{
    return {p.x() * factor, p.y() * factor, p.z() * factor};
}

Maker scaled(const Maker& make, double factor)
{
    return changed(make, [factor](Random&, const Point3& p) { return scaled(p, factor); });
}

double shiftedByOneUlp(Random& r, double x)
{
    const double aTargets[3] = {-HUGE_VAL, x, HUGE_VAL};
    return std::nextafter(x, aTargets[r.below(3)]);
}

Point3 shiftedByOneUlp(Random& r, const Point3& p)
{
    return {shiftedByOneUlp(r, p.x()), shiftedByOneUlp(r, p.y()), shiftedByOneUlp(r, p.z())};
}

double inMillimetres(double x)
{
    return std::round(x * 1000) / 1000;
}

/// A lattice with its least corner at (first, first, first).
template <int first>
Points grid(std::size_t num)
{
    const int end = first + static_cast<int>(std::ceil(std::cbrt(static_cast<double>(num))));
    Points vPoints;
    for (int x = first; x < end; ++x)
        for (int y = first; y < end; ++y)
            for (int z = first; z < end; ++z)
                vPoints.emplace_back(x, y, z);
    return vPoints;
}

/// Lattice points exactly on a sphere around the origin.
Points latticeSphere(std::size_t num)
{
    Points vPoints;
    for (const int radius : {15, 65, 325, 1105}) {
        vPoints.clear();
        for (int x = -radius; x <= radius; ++x)
            for (int y = -radius; y <= radius; ++y) {
                const int rest = radius * radius - x * x - y * y;
                const int z = rest < 0 ? 0 : static_cast<int>(std::lround(std::sqrt(rest)));
                if (z * z != rest)
                    continue;
                vPoints.emplace_back(x, y, z);
                if (z != 0)
                    vPoints.emplace_back(x, y, -z);
            }
        if (vPoints.size() >= num)
            break;
    }
    Random(num).shuffle(vPoints);
    vPoints.resize(std::min(num, vPoints.size()));
    return vPoints;
}

/// Twelve lattice points on a circle at every whole height.
Point3 onLatticeCylinder(Random&, int i)
{
    static constexpr int aLattice[3][2] = {{5, 0}, {4, 3}, {3, 4}};
    const auto& [x, y] = aLattice[i % 3];
    const int z = i / 12;
    return i / 3 % 4 == 0   ? Point3(x, y, z)
           : i / 3 % 4 == 1 ? Point3(-y, x, z)
           : i / 3 % 4 == 2 ? Point3(-x, -y, z)
                            : Point3(y, -x, z);
}

Point3 onCubeSurface(Random& r, int i)
{
    std::array<double, 3> v = {r.whole(0, 100), r.whole(0, 100), r.whole(0, 100)};
    v[static_cast<std::size_t>(i) % 3] = 100 * r.whole(0, 1);
    return {v[0], v[1], v[2]};
}

/// Whole numbers on the plane x + 2y + 3z = 0.
Point3 onTiltedPlane(Random& r, int)
{
    const double y = r.whole(-500, 500), z = r.whole(-500, 500);
    return {-2 * y - 3 * z, y, z};
}

constexpr int SIZE = 1 << 20;

/// Points exactly on the facets and edges of an octahedron, and points in the planes of the facets and on
/// the lines of the edges, but outside.
Point3 onOctahedron(Random& r, int i)
{
    const double x = r.whole(0, r.below(4) == 0 ? 2 * SIZE : SIZE);
    const double y = r.below(3) == 0 ? 0.0 : r.whole(0, static_cast<int>(std::fabs(SIZE - x)));
    return {(i & 1) ? x : -x, (i & 2) ? y : -y, (i & 4) ? SIZE - x - y : x + y - SIZE};
}

/// Points in the coordinate planes and on the axes inside an octahedron: as the origin is a vertex, they lie
/// on facets and edges inside the hull.
Point3 inCoordinatePlanes(Random& r, int i)
{
    std::array<double, 3> v = {r.whole(-SIZE / 3, SIZE / 3), r.whole(-SIZE / 3, SIZE / 3),
                               r.whole(-SIZE / 3, SIZE / 3)};
    const auto axis = static_cast<std::size_t>(i);
    v[axis % 3] = 0;
    if (r.below(3) == 0)
        v[(axis + 1) % 3] = 0;
    return {v[0], v[1], v[2]};
}

Point3 inCluster(Random& r, int i)
{
    const Point3 origin(0, 0, 0), c = Random(static_cast<std::uint64_t>(i % 7)).inCube(-100, 100);
    return c + ((r.inBall() - origin) + (r.inBall() - origin) + (r.inBall() - origin));
}

/// Each point outside the hull of those before it.
Point3 onSpiral(Random&, int i)
{
    const double z = std::sin(0.37 * i), flat = std::sqrt(1 - z * z);
    return scaled({flat * std::cos(2.4 * i), flat * std::sin(2.4 * i), z}, 1 + i);
}

/// A thin bundle and points far around it.
Point3 inBundle(Random& r, int i)
{
    if (i % 20 == 7)
        return scaled(r.onSphere(), 1e6);
    return {r.real(-1e-9, 1e-9), r.real(-1e-9, 1e-9), r.real(-1, 1)};
}

Point3 onGlobe(Random& r, int)
{
    const double a = r.real(0.8, 0.8001), b = r.real(0.2, 0.2001), radius = 6371000;
    return {inMillimetres(radius * std::cos(a) * std::cos(b)),
            inMillimetres(radius * std::cos(a) * std::sin(b)), inMillimetres(radius * std::sin(a))};
}

Points spot(std::size_t num)
{
    std::ifstream file(VORN3D_DATA_DIR "/spot/spot.xyz");
    Points vPoints;
    for (double x, y, z; vPoints.size() < num && file >> x >> y >> z;)
        vPoints.emplace_back(x, y, z);
    return vPoints;
}

std::vector<PointSet> listPointSets()
{
    const Points vOctahedron = {{0, 0, 0},     {SIZE, 0, 0}, {-SIZE, 0, 0}, {0, SIZE, 0},
                                {0, -SIZE, 0}, {0, 0, SIZE}, {0, 0, -SIZE}};
    constexpr bool bGeneral = true, bQuadratic = true;
    const auto draw = [](auto f) { return each([f](Random& r, int) { return f(r); }); };
    const auto curve = [](auto f) { return each([f](Random&, int i) { return f(i); }); };
    const auto drawThrice = [draw](auto f) {
        return draw([f](Random& r) { return Point3{f(r), f(r), f(r)}; });
    };
    const auto ball = draw([](Random& r) { return r.inBall(); });
    const auto cube = draw([](Random& r) { return r.inCube(0, 1); });
    const auto outlierAt = [ball](double x) { return between({}, ball, {{x, 0.3, 0.2}}); };
    return {
        {"UniformCube", cube, bGeneral},
        {"Ball", ball, bGeneral},
        {"Clusters", each(inCluster), bGeneral},
        {"Grid", grid<0>},
        {"GridOneUlpOff", changed(grid<1>, [](Random& r, const Point3& p) { return shiftedByOneUlp(r, p); })},
        {"GridTenths", scaled(grid<0>, 0.1)},
        {"LatticeSphere", latticeSphere},
        {"RoundedSphere", draw([](Random& r) { return r.onSphere(); })},
        {"SphereAndCentre", between({}, latticeSphere, {{0, 0, 0}, {1e-300, 0, 0}})},
        {"LatticeCylinder", each(onLatticeCylinder)},
        {"RoundedCylinder",
         each([](Random& r, int i) { return Point3(std::cos(i), std::sin(i), r.real(0, 10)); })},
        {"CubeSurface", each(onCubeSurface)},
        {"TiltedPlane", each(onTiltedPlane)},
        {"PlaneAndPoint", between({}, each(onTiltedPlane), {{1, 0, 0}})},
        {"TwoPlanes", draw([](Random& r) {
             return Point3{r.whole(0, 40), r.whole(0, 1), r.whole(0, 40)};
         })},
        {"Line", draw([](Random& r) {
             return scaled({1, 2, 3}, r.whole(-900, 900));
         })},
        {"TwoSkewLines", curve([](int i) { return i % 2 == 0 ? Point3(i, 0, 0) : Point3(0, i, 1); }), false,
         bQuadratic},
        {"LineThroughPlane", each([](Random& r, int i) {
             return i % 3 == 0 ? Point3(0, 0, i) : Point3{r.whole(-9, 9), r.whole(-9, 9), 0};
         }),
         false, bQuadratic},
        {"Axes",
         curve([](int i) { return Point3(i % 3 == 0 ? i : 0, i % 3 == 1 ? i : 0, i % 3 == 2 ? i : 0); }),
         false, bQuadratic},
        {"MomentCurve", curve([](double i) { return Point3(i, i * i, i * i * i); }), bGeneral, bQuadratic},
        {"Helix", curve([](double i) { return Point3(std::cos(i / 5), std::sin(i / 5), i / 50); }), false,
         bQuadratic},
        {"Needles", each(inBundle), bGeneral},
        {"Duplicates", draw([](Random& r) { return Random(r.below(50)).inCube(0, 1); })},
        {"OutlierAt1e6", outlierAt(1e6), bGeneral},
        {"OutlierAt1e12", outlierAt(1e12), bGeneral},
        {"Utm", changed(cube,
                        [](Random&, const Point3& p) {
                            return Point3(inMillimetres(512345 + 9 * p.x()),
                                          inMillimetres(5412345 + 9 * p.y()), inMillimetres(432 + p.z()));
                        })},
        {"Ecef", each(onGlobe)},
        {"OctahedronFacets", between({vOctahedron.begin() + 1, vOctahedron.end()}, each(onOctahedron), {})},
        {"InsideOctahedron", between(vOctahedron, each(inCoordinatePlanes), {})},
        // In a row, all corners of one on a common sphere, with their centres and those of their facets.
        {"Boxes",
         curve([](int i) { return Point3(i % 3 + 2 * (i / 27), 2 * (i / 3 % 3), 4 * (i / 9 % 3)); })},
        {"UlpNeighbours",
         draw([](Random& r) { return shiftedByOneUlp(r, Random(r.below(7)).inCube(0, 1)); })},
        {"Spiral", each(onSpiral), bGeneral},
        {"SignedZeros",
         drawThrice([](Random& r) { return std::copysign(r.whole(0, 2), r.whole(0, 1) - 0.5); })},
        {"Tiny",
         scaled(changed(grid<0>, [](Random& r, const Point3& p) { return shiftedByOneUlp(r, p); }), 1e-310)},
        {"Small", scaled(cube, 1e-160), bGeneral},
        {"Huge", scaled(ball, 1.79e308), bGeneral},
        {"WholeRange", drawThrice([](Random& r) {
             const double mantissa = r.real(-2, 2);
             return std::ldexp(mantissa, static_cast<int>(r.whole(-1074, 1023)));
         }),
         false, bQuadratic},
        {"Spot", spot},
    };
}

} // namespace

double Random::real(double min, double max)
{
    return min + (max - min) * std::ldexp(static_cast<double>(m_engine() >> 11), -53);
}

Point3 Random::inCube(double min, double max)
{
    const double x = real(min, max), y = real(min, max);
    return {x, y, real(min, max)};
}

Point3 Random::inBall()
{
    for (;;) {
        const Point3 p = inCube(-1, 1);
        if (p.x() * p.x() + p.y() * p.y() + p.z() * p.z() <= 1)
            return p;
    }
}

Point3 Random::onSphere()
{
    const Point3 p = inBall();
    return scaled(p, 1 / std::sqrt(p.x() * p.x() + p.y() * p.y() + p.z() * p.z()));
}

const std::vector<PointSet>& getPointSets()
{
    static const std::vector<PointSet> vSets = listPointSets();
    return vSets;
}

std::vector<Point3> makePoints(const PointSet& set, std::size_t num)
{
    std::vector<Point3> vPoints = set.make(num);
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        vPoints[i].setCustomIndex(static_cast<int>(i));
    return vPoints;
}

} // namespace VORN3D::tests
