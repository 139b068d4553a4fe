#include "PointGenerator.h"

#include "InputError.h"

#include <algorithm>
#include <cmath>

namespace VORN3D::program
{

namespace
{

constexpr std::size_t numClusters = 64;
constexpr double clusterRadius = 0.05;

/// The side of the smallest cube of integer points that holds num of them.
std::uint64_t getGridSide(std::uint64_t num)
{
    std::uint64_t side = 1;
    while (side * side * side < num)
        ++side;
    return side;
}

double getSquaredLength(const Coordinates& p)
{
    return p[0] * p[0] + p[1] * p[1] + p[2] * p[2];
}

} // namespace

struct PointGenerator::Shape
{
    std::string name;
    std::string description;
    ShapeFunction pFunction;
};

const std::vector<PointGenerator::Shape>& PointGenerator::getShapes()
{
    static const std::vector<Shape> vShapes{
        {"cube", "uniform in the unit cube", &PointGenerator::getInCube},
        {"ball", "uniform in the ball of radius 1 around the origin", &PointGenerator::getInBall},
        {"sphere", "uniform on the surface of that ball, up to rounding", &PointGenerator::getOnSphere},
        {"grid", "integer points, row by row, in a cube just large enough (takes no seed)",
         &PointGenerator::getOnGrid},
        {"clusters", "dense towards the centres of 64 balls of radius 0.05", &PointGenerator::getInCluster},
    };
    return vShapes;
}

std::vector<std::string> PointGenerator::getShapeNames()
{
    std::vector<std::string> vNames;
    for (const Shape& shape : getShapes())
        vNames.push_back(shape.name);
    return vNames;
}

std::string PointGenerator::describeShapes()
{
    constexpr std::size_t columnWidth = 10;
    std::string text;
    for (const Shape& shape : getShapes())
        text += "\n  " + shape.name + std::string(columnWidth - shape.name.size(), ' ') + shape.description;
    return text;
}

PointGenerator::PointGenerator(const std::string& shape, std::uint64_t numPoints, std::uint64_t seed)
    : m_random(seed), m_gridSide(getGridSide(numPoints))
{
    const auto& vShapes = getShapes();
    const auto found =
        std::find_if(vShapes.begin(), vShapes.end(), [&](const Shape& s) { return s.name == shape; });
    if (found == vShapes.end())
        throw InputError(shape, "unknown shape");
    m_pShape = found->pFunction;
}

/// Uniform in [0, 1), in steps of 2^-53.
double PointGenerator::getUniform()
{
    return static_cast<double>(m_random() >> 11) * 0x1p-53;
}

Coordinates PointGenerator::getInCube()
{
    const double x = getUniform();
    const double y = getUniform();
    const double z = getUniform();
    return {x, y, z};
}

Coordinates PointGenerator::getInBall()
{
    Coordinates p{};
    do {
        p[0] = getUniformSymmetric();
        p[1] = getUniformSymmetric();
        p[2] = getUniformSymmetric();
    } while (getSquaredLength(p) > 1.0);
    return p;
}

/// Marsaglia, Choosing a point from the surface of a sphere, 1972.
Coordinates PointGenerator::getOnSphere()
{
    double u = 0.0;
    double v = 0.0;
    double s = 0.0;
    do {
        u = getUniformSymmetric();
        v = getUniformSymmetric();
        s = u * u + v * v;
    } while (s >= 1.0);
    const double factor = 2.0 * std::sqrt(1.0 - s);
    return {u * factor, v * factor, 1.0 - 2.0 * s};
}

Coordinates PointGenerator::getOnGrid()
{
    const std::uint64_t i = m_gridIndex++;
    const std::uint64_t column = i % m_gridSide;
    const std::uint64_t row = i / m_gridSide % m_gridSide;
    const std::uint64_t layer = i / m_gridSide / m_gridSide;
    return {static_cast<double>(column), static_cast<double>(row), static_cast<double>(layer)};
}

Coordinates PointGenerator::getInCluster()
{
    while (m_vCenters.size() < numClusters)
        m_vCenters.push_back(getInCube());
    Coordinates p = getInBall();
    const Coordinates& center = m_vCenters[m_random() % numClusters];
    const double scale = clusterRadius * getSquaredLength(p);
    for (std::size_t i = 0; i < p.size(); ++i)
        p[i] = center[i] + scale * p[i];
    return p;
}

} // namespace VORN3D::program
