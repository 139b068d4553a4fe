#include "PointSets.h"

#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>

namespace VORN3D::tests
{
namespace
{

using Points = std::vector<Point3>;

Point3 scaled(const Point3& p, double factor, double offset = 0.0)
{
    return {p.x() * factor + offset, p.y() * factor + offset, p.z() * factor + offset};
}

/// num points, each made by make(random, i).
template <class Make>
Points repeat(std::size_t num, Make make)
{
    Random random(num);
    Points vPoints;
    for (std::size_t i = 0; i < num; ++i)
        vPoints.push_back(make(random, static_cast<double>(i)));
    return vPoints;
}

template <class Change>
Points changed(Points vPoints, Change change)
{
    Random random(vPoints.size());
    for (Point3& p : vPoints)
        p = change(random, p);
    return vPoints;
}

Points joined(Points vFirst, const Points& vSecond)
{
    vFirst.insert(vFirst.end(), vSecond.begin(), vSecond.end());
    return vFirst;
}

Points uniform(std::size_t num)
{
    return repeat(num, [](Random& r, double) { return r.inCube(0, 1); });
}

Points ball(std::size_t num)
{
    return repeat(num, [](Random& r, double) { return r.inBall(); });
}

Points grid(std::size_t num)
{
    const auto side = static_cast<int>(std::ceil(std::cbrt(static_cast<double>(num))));
    Points vPoints;
    for (int x = 0; x < side; ++x)
        for (int y = 0; y < side; ++y)
            for (int z = 0; z < side; ++z)
                vPoints.emplace_back(x, y, z);
    return vPoints;
}

double shiftedByOneUlp(Random& r, double x)
{
    const double aTargets[3] = {-std::numeric_limits<double>::infinity(), x,
                                std::numeric_limits<double>::infinity()};
    return std::nextafter(x, aTargets[r.below(3)]);
}

Point3 shiftedByOneUlp(Random& r, const Point3& p)
{
    return {shiftedByOneUlp(r, p.x()), shiftedByOneUlp(r, p.y()), shiftedByOneUlp(r, p.z())};
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

/// Circles of lattice points around the z axis, at whole heights.
Points latticeCylinder(std::size_t num)
{
    Points vCircle;
    for (int x = -65; x <= 65; ++x)
        for (int y = -65; y <= 65; ++y)
            if (x * x + y * y == 65 * 65)
                vCircle.emplace_back(x, y, 0);
    return repeat(num, [&](Random&, double i) {
        const Point3& p = vCircle[static_cast<std::size_t>(i) % vCircle.size()];
        return Point3(p.x(), p.y(), std::floor(i / static_cast<double>(vCircle.size())));
    });
}

Points cubeSurface(std::size_t num)
{
    return repeat(num, [](Random& r, double i) {
        std::array<double, 3> v = {r.whole(0, 100), r.whole(0, 100), r.whole(0, 100)};
        v[static_cast<std::size_t>(i) % 3] = 100 * r.whole(0, 1);
        return Point3(v[0], v[1], v[2]);
    });
}

/// Whole numbers on the plane x + 2y + 3z = 0.
Points tiltedPlane(std::size_t num)
{
    return repeat(num, [](Random& r, double) {
        const double y = r.whole(-500, 500), z = r.whole(-500, 500);
        return Point3(-2 * y - 3 * z, y, z);
    });
}

/// The corners of an octahedron, then points exactly on its facets and edges, then points in the planes of
/// the facets and on the lines of the edges, but outside.
Points octahedron(std::size_t num)
{
    const int size = 1 << 20;
    Points vPoints = {{size, 0, 0}, {-size, 0, 0}, {0, size, 0}, {0, -size, 0}, {0, 0, size}, {0, 0, -size}};
    return joined(vPoints, repeat(num, [&](Random& r, double i) {
                      const bool bOutside = r.below(4) == 0;
                      const double x = r.whole(0, bOutside ? 2 * size : size);
                      const double y =
                          r.below(3) == 0 ? 0.0 : r.whole(0, static_cast<int>(std::fabs(size - x)));
                      const auto octant = static_cast<unsigned>(i);
                      return Point3((octant & 1) ? x : -x, (octant & 2) ? y : -y,
                                    (octant & 4) ? size - x - y : x + y - size);
                  }));
}

/// Points in the coordinate planes and on the axes inside an octahedron that has the origin as a vertex: they
/// lie on facets and edges inside the hull.
Points insideOctahedron(std::size_t num)
{
    const int size = 1 << 20;
    const Points vCorners = {{0, 0, 0},     {size, 0, 0}, {-size, 0, 0}, {0, size, 0},
                             {0, -size, 0}, {0, 0, size}, {0, 0, -size}};
    return joined(vCorners, repeat(num, [&](Random& r, double i) {
                      std::array<double, 3> v = {r.whole(-size / 3, size / 3), r.whole(-size / 3, size / 3),
                                                 r.whole(-size / 3, size / 3)};
                      v[static_cast<std::size_t>(i) % 3] = 0;
                      if (r.below(3) == 0)
                          v[(static_cast<std::size_t>(i) + 1) % 3] = 0;
                      return Point3(v[0], v[1], v[2]);
                  }));
}

/// Boxes in a row, all corners of one on a common sphere, with their centres and the centres of their facets.
Points boxes(std::size_t num)
{
    return repeat(num, [](Random&, double i) {
        const auto k = static_cast<int>(i);
        return Point3(k % 3 + 2 * (k / 27), 2 * (k / 3 % 3), 4 * (k / 9 % 3));
    });
}

Points ulpNeighbours(std::size_t num)
{
    Random random(1);
    const Points vCentres = uniform(num / 50 + 1);
    return repeat(num, [&](Random& r, double i) {
        return shiftedByOneUlp(r, vCentres[static_cast<std::size_t>(i) % vCentres.size()]);
    });
}

template <int exponent>
Points clusterAndOutlier(std::size_t num)
{
    Points vPoints = ball(num);
    vPoints.emplace_back(std::pow(10.0, exponent), 0.3, 0.2);
    return vPoints;
}

/// Each point outside the hull of those before it.
Points spiral(std::size_t num)
{
    return repeat(num, [&](Random&, double i) {
        const double z = std::sin(0.37 * i), radius = 1 + i;
        const double flat = std::sqrt(1 - z * z);
        return Point3(radius * flat * std::cos(2.4 * i), radius * flat * std::sin(2.4 * i), radius * z);
    });
}

/// A thin bundle and points far around it.
Points needles(std::size_t num)
{
    return repeat(num, [](Random& r, double i) {
        if (static_cast<int>(i) % 20 == 7)
            return scaled(r.onSphere(), 1e6);
        return Point3(r.real(-1e-9, 1e-9), r.real(-1e-9, 1e-9), r.real(-1, 1));
    });
}

Points wholeRange(std::size_t num)
{
    return repeat(num, [](Random& r, double) {
        const auto any = [&] { return std::ldexp(r.real(-2, 2), static_cast<int>(r.whole(-1074, 1023))); };
        return Point3(any(), any(), any());
    });
}

Points spot(std::size_t num)
{
    std::ifstream file(VORN3D_DATA_DIR "/spot/spot.xyz");
    Points vPoints;
    for (double x, y, z; vPoints.size() < num && file >> x >> y >> z;)
        vPoints.emplace_back(x, y, z);
    return vPoints;
}

double roundedTo(double unit, double x)
{
    return std::round(x / unit) * unit;
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
    constexpr bool bGeneral = true, bQuadratic = true;
    using Size = std::size_t;
    static const std::vector<PointSet> vSets = {
        {"UniformCube", uniform, bGeneral, false},
        {"Ball", ball, bGeneral, false},
        {"Clusters",
         [](Size num) {
             return repeat(num, [](Random& r, double i) {
                 Random centre(static_cast<std::uint64_t>(i) % 7);
                 const Point3 c = centre.inCube(-100, 100), a = r.inBall(), b = r.inBall(), d = r.inBall();
                 return Point3(c.x() + a.x() + b.x() + d.x(), c.y() + a.y() + b.y() + d.y(),
                               c.z() + a.z() + b.z() + d.z());
             });
         },
         bGeneral, false},
        {"Grid", grid, false, false},
        {"GridOneUlpOff",
         [](Size num) {
             return changed(grid(num),
                            [](Random& r, Point3 p) { return shiftedByOneUlp(r, scaled(p, 1, 1)); });
         },
         false, false},
        {"GridTenths",
         [](Size num) { return changed(grid(num), [](Random&, Point3 p) { return scaled(p, 0.1); }); }, false,
         false},
        {"LatticeSphere", latticeSphere, false, false},
        {"RoundedSphere",
         [](Size num) { return repeat(num, [](Random& r, double) { return r.onSphere(); }); }, false, false},
        {"SphereAndCentre",
         [](Size num) {
             return joined(latticeSphere(num), {{0, 0, 0}, {1e-300, 0, 0}});
         },
         false, false},
        {"LatticeCylinder", latticeCylinder, false, false},
        {"RoundedCylinder",
         [](Size num) {
             return repeat(
                 num, [](Random& r, double i) { return Point3(std::cos(i), std::sin(i), r.real(0, 10)); });
         },
         false, false},
        {"CubeSurface", cubeSurface, false, false},
        {"TiltedPlane", tiltedPlane, false, false},
        {"PlaneAndPoint",
         [](Size num) {
             return joined(tiltedPlane(num), {{1, 0, 0}});
         },
         false, false},
        {"PointAndPlane",
         [](Size num) {
             return joined({{1, 0, 0}}, tiltedPlane(num));
         },
         false, false},
        {"TwoPlanes",
         [](Size num) {
             return repeat(num, [](Random& r, double) {
                 return Point3(r.whole(0, 40), r.whole(0, 1), r.whole(0, 40));
             });
         },
         false, false},
        {"Line",
         [](Size num) {
             return repeat(num, [](Random& r, double) { return scaled({1, 2, 3}, r.whole(-900, 900)); });
         },
         false, false},
        {"TwoSkewLines",
         [](Size num) {
             return repeat(num, [](Random&, double i) {
                 return static_cast<int>(i) % 2 == 0 ? Point3(i, 0, 0) : Point3(0, i, 1);
             });
         },
         false, bQuadratic},
        {"LineThroughPlane",
         [](Size num) {
             return repeat(num, [](Random& r, double i) {
                 return static_cast<int>(i) % 3 == 0 ? Point3(0, 0, i)
                                                     : Point3(r.whole(-9, 9), r.whole(-9, 9), 0);
             });
         },
         false, bQuadratic},
        {"Axes",
         [](Size num) {
             return repeat(num, [](Random&, double i) {
                 const auto k = static_cast<int>(i);
                 return Point3(k % 3 == 0 ? i : 0, k % 3 == 1 ? i : 0, k % 3 == 2 ? i : 0);
             });
         },
         false, bQuadratic},
        {"MomentCurve",
         [](Size num) { return repeat(num, [](Random&, double i) { return Point3(i, i * i, i * i * i); }); },
         bGeneral, bQuadratic},
        {"Helix",
         [](Size num) {
             return repeat(
                 num, [](Random&, double i) { return Point3(std::cos(i / 5), std::sin(i / 5), i / 50); });
         },
         false, bQuadratic},
        {"Needles", needles, bGeneral, false},
        {"Duplicates",
         [](Size num) {
             return repeat(num,
                           [&](Random& r, double) { return Random(r.below(num / 30 + 1)).inCube(0, 1); });
         },
         false, false},
        {"OutlierAt1e1", clusterAndOutlier<1>, bGeneral, false},
        {"OutlierAt1e3", clusterAndOutlier<3>, bGeneral, false},
        {"OutlierAt1e6", clusterAndOutlier<6>, bGeneral, false},
        {"OutlierAt1e12", clusterAndOutlier<12>, bGeneral, false},
        {"Utm",
         [](Size num) {
             return repeat(num, [](Random& r, double) {
                 return Point3(roundedTo(0.001, 512345 + r.real(0, 9)),
                               roundedTo(0.001, 5412345 + r.real(0, 9)),
                               roundedTo(0.001, 432 + r.real(0, 0.5)));
             });
         },
         false, false},
        {"Ecef",
         [](Size num) {
             return repeat(num, [](Random& r, double) {
                 const double a = r.real(0.8, 0.8001), b = r.real(0.2, 0.2001), radius = 6371000;
                 return Point3(roundedTo(0.001, radius * std::cos(a) * std::cos(b)),
                               roundedTo(0.001, radius * std::cos(a) * std::sin(b)),
                               roundedTo(0.001, radius * std::sin(a)));
             });
         },
         false, false},
        {"OctahedronFacets", octahedron, false, false},
        {"InsideOctahedron", insideOctahedron, false, false},
        {"Boxes", boxes, false, false},
        {"UlpNeighbours", ulpNeighbours, false, false},
        {"Spiral", spiral, bGeneral, false},
        {"SignedZeros",
         [](Size num) {
             return repeat(num, [](Random& r, double) {
                 const auto any = [&] { return std::copysign(r.whole(0, 2), r.whole(0, 1) - 0.5); };
                 return Point3(any(), any(), any());
             });
         },
         false, false},
        {"Tiny",
         [](Size num) {
             return changed(grid(num),
                            [](Random& r, Point3 p) { return scaled(shiftedByOneUlp(r, p), 1e-310); });
         },
         false, false},
        {"Small",
         [](Size num) { return changed(uniform(num), [](Random&, Point3 p) { return scaled(p, 1e-160); }); },
         bGeneral, false},
        {"Huge",
         [](Size num) { return changed(ball(num), [](Random&, Point3 p) { return scaled(p, 1.79e308); }); },
         bGeneral, false},
        {"WholeRange", wholeRange, false, bQuadratic},
        {"Spot", spot, false, false},
    };
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
