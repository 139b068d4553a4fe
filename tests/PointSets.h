// Named point sets that a triangulation must survive: ordinary, degenerate and hostile ones. Each is the same
// on every platform and on every call; the custom index of a point is its position in the set.
#pragma once

#include "vorn3d/Point3.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace VORN3D::tests
{

struct PointSet
{
    std::string name;
    std::function<std::vector<Point3>(std::size_t num)> make; ///< about num points
    bool bGeneral = false;   ///< in general position: exactly one Delaunay tetrahedralization
    bool bQuadratic = false; ///< may have quadratically many tetrahedra
};

/// What tests with a set as their parameter are called.
inline void PrintTo(const PointSet& set, std::ostream* pOs)
{
    *pOs << set.name;
}

const std::vector<PointSet>& getPointSets();

/// The points of a set, numbered; about num of them.
std::vector<Point3> makePoints(const PointSet& set, std::size_t num);

/// Reproducible random numbers (the distributions of the standard library differ between platforms).
class Random
{
public:
    explicit Random(std::uint64_t seed) : m_engine(seed) {}

    /// A whole number in [0, num).
    std::size_t below(std::size_t num) { return static_cast<std::size_t>(m_engine() % num); }
    /// A whole number in [min, max], as a coordinate.
    double whole(int min, int max)
    {
        return min + static_cast<double>(below(static_cast<std::size_t>(max - min + 1)));
    }
    double real(double min, double max);
    Point3 inCube(double min, double max);
    Point3 inBall();
    Point3 onSphere();

    template <class T>
    void shuffle(std::vector<T>& v)
    {
        for (std::size_t i = v.size(); i > 1; --i)
            std::swap(v[i - 1], v[below(i)]);
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace VORN3D::tests
