#pragma once

#include "output/pointWriters.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace VORN3D::program
{

/// Generates the points of a shape, one after the other. The same shape, number and seed give the same
/// points, bit by bit, on every platform: the standard's generator is portable, its distributions are not, so
/// only sums, products and square roots, which IEEE arithmetic rounds in one way, turn its numbers into
/// coordinates.
class PointGenerator
{
public:
    /// The grid depends on the number of points, nothing else does. Throws InputError if there is no such
    /// shape.
    PointGenerator(const std::string& shape, std::uint64_t numPoints, std::uint64_t seed);

    Coordinates next() { return (this->*m_pShape)(); }

    static std::vector<std::string> getShapeNames();

    /// One indented line for each shape, on a new line each.
    static std::string describeShapes();

private:
    using ShapeFunction = Coordinates (PointGenerator::*)();
    struct Shape;

    static const std::vector<Shape>& getShapes();

    Coordinates getInCube();
    Coordinates getInBall();
    Coordinates getOnSphere();
    Coordinates getOnGrid();
    Coordinates getInCluster();

    double getUniform();
    double getUniformSymmetric() { return 2.0 * getUniform() - 1.0; }

    std::mt19937_64 m_random;
    ShapeFunction m_pShape;
    std::uint64_t m_gridSide;
    std::uint64_t m_gridIndex = 0;
    std::vector<Coordinates> m_vCenters;
};

} // namespace VORN3D::program
