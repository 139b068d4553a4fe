// Reads the convex hull of the points from the mesh: a facet without a neighbour is a triangle of the hull.
// Its corners come in the order in which they appear counter-clockwise from outside, as file formats for
// surfaces want them.
#include <vorn3d/Vorn_3D.h>

#include <array>
#include <cmath>
#include <iostream>

namespace
{

using HullTriangle = std::array<const VORN3D::Point3*, 3>;

std::vector<HullTriangle> getHull(const VORN3D::Vorn_3D& triangulation)
{
    std::vector<VORN3D::Tet3*> vTets;
    triangulation.getTetrahedra(vTets);
    std::vector<HullTriangle> vHull;
    for (const VORN3D::Tet3* pTet : vTets)
        for (int i = 0; i < 4; ++i)
            if (pTet->getOppTet(i) == nullptr) {
                int i0, i1, i2;
                pTet->getFacetIndices(i, i0, i1, i2);
                vHull.push_back({pTet->getCorner(i0), pTet->getCorner(i1), pTet->getCorner(i2)});
            }
    return vHull;
}

} // namespace

int main()
{
    // The corners of a box, its middle and a few points more within.
    std::vector<VORN3D::Point3> vPoints{{0, 0, 0}, {2, 0, 0}, {0, 3, 0}, {2, 3, 0},   {0, 0, 4},  {2, 0, 4},
                                        {0, 3, 4}, {2, 3, 4}, {1, 1, 2}, {0.5, 2, 3}, {1.5, 2, 1}};
    VORN3D::Vorn_3D triangulation;
    triangulation.insert(vPoints);

    double area = 0;
    double volume = 0;
    const std::vector<HullTriangle> vHull = getHull(triangulation);
    const VORN3D::Point3 origin(0, 0, 0);
    for (const auto& [a, b, c] : vHull) {
        // Twice the area, in the direction to the outside.
        const VORN3D::Vector3 normal = crossProduct(*b - *a, *c - *a);
        area += std::sqrt(dotProduct(normal, normal)) / 2;
        volume += dotProduct(*a - origin, normal) / 6;
    }
    std::cout << vHull.size() << " triangles, area " << area << ", volume " << volume << '\n';
}
