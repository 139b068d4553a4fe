#include "TetShape.h"

#include "vorn3d/Tet3.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace VORN3D::program
{

namespace
{

constexpr double degreesPerRadian = 57.29577951308232;
constexpr double maxFlatness = 1e-10;

using Corners = std::array<Vector3, 4>;

double getLargestComponent(const Vector3& v)
{
    return std::max({std::abs(v.x()), std::abs(v.y()), std::abs(v.z())});
}

double getLength(const Vector3& v)
{
    return std::sqrt(dotProduct(v, v));
}

/// The same direction with components of at most 1, so that squares neither overflow nor vanish.
Vector3 scaleDown(const Vector3& v)
{
    const double size = getLargestComponent(v);
    return size > 0.0 ? v / size : v;
}

/// The corners relative to the first one.
Corners getRelativeCorners(const Tet3& tet)
{
    Corners corners;
    for (int i = 1; i < 4; ++i)
        corners[static_cast<std::size_t>(i)] = *tet.getCorner(i) - *tet.getCorner(0);
    return corners;
}

double getVolume(const Corners& corners)
{
    return dotProduct(crossProduct(corners[1], corners[2]), corners[3]) / 6.0;
}

/// The outward normal of the facet opposite corner opp3, of any length.
Vector3 getNormal(const Tet3& tet, const Corners& corners, int opp3)
{
    int i0 = 0;
    int i1 = 0;
    int i2 = 0;
    tet.getFacetIndices(opp3, i0, i1, i2);
    const Vector3& origin = corners[static_cast<std::size_t>(i0)];
    const Vector3 a = corners[static_cast<std::size_t>(i1)] - origin;
    const Vector3 b = corners[static_cast<std::size_t>(i2)] - origin;
    return scaleDown(crossProduct(a, b));
}

/// The angle between two facets, accurate for flat and for sharp ones too.
double getDihedralAngle(const Vector3& normal, const Vector3& otherNormal)
{
    const double sine = getLength(crossProduct(normal, otherNormal));
    return std::atan2(sine, -dotProduct(normal, otherNormal)) * degreesPerRadian;
}

/// Calls use(i, j) for the six pairs of corners, or of the facets opposite them.
template <typename Function>
void forEachPair(const Function& use)
{
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = i + 1; j < 4; ++j)
            use(i, j);
}

void measureAngles(const Tet3& tet, const Corners& corners, TetShape& shape)
{
    Corners normals;
    for (int i = 0; i < 4; ++i)
        normals[static_cast<std::size_t>(i)] = getNormal(tet, corners, i);
    shape.leastAngle = 180.0;
    shape.greatestAngle = 0.0;
    forEachPair([&](std::size_t i, std::size_t j) {
        const double angle = getDihedralAngle(normals[i], normals[j]);
        shape.leastAngle = std::min(shape.leastAngle, angle);
        shape.greatestAngle = std::max(shape.greatestAngle, angle);
    });
}

void measureEdges(const Corners& corners, TetShape& shape)
{
    double shortest = INFINITY;
    double longest = 0.0;
    forEachPair([&](std::size_t i, std::size_t j) {
        const double length = getLength(corners[i] - corners[j]);
        shortest = std::min(shortest, length);
        longest = std::max(longest, length);
    });
    shape.edgeRatio = longest / shortest;
    shape.bFlat = getVolume(corners) < maxFlatness * longest * longest * longest;
}

} // namespace

TetShape measureShape(const Tet3& tet)
{
    TetShape shape{};
    Corners corners = getRelativeCorners(tet);
    shape.volume = getVolume(corners);
    double size = 0.0;
    for (const Vector3& corner : corners)
        size = std::max(size, getLargestComponent(corner));
    for (Vector3& corner : corners)
        corner = corner / size;
    measureEdges(corners, shape);
    measureAngles(tet, corners, shape);
    return shape;
}

double getVolume(const Tet3& tet)
{
    return getVolume(getRelativeCorners(tet));
}

} // namespace VORN3D::program
