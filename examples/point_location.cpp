// Finds the tetrahedron that contains a point, and says where in it the point lies.
#include <vorn3d/Vorn_3D.h>

#include <iostream>

namespace
{

void locateAndPrint(VORN3D::Vorn_3D& triangulation, const std::string& what, const VORN3D::Point3& query)
{
    std::cout << what << ": ";
    const VORN3D::Tet3* pTet = triangulation.locate(query);
    if (pTet == nullptr) {
        std::cout << "in no tetrahedron\n";
        return;
    }
    if (pTet->hasVertex(query))
        std::cout << "a corner of the tetrahedron of";
    else
        std::cout << "in the tetrahedron of";
    for (int i = 0; i < 4; ++i)
        std::cout << ' ' << pTet->getCorner(i)->getCustomIndex();
    std::cout << '\n';
}

} // namespace

int main()
{
    // Two tetrahedra, above and below the triangle of the first three points.
    std::vector<VORN3D::Point3> vPoints{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {1, 1, 4}, {1, 1, -4}};
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        vPoints[i].setCustomIndex(static_cast<int>(i));
    VORN3D::Vorn_3D triangulation;
    locateAndPrint(triangulation, "before there is a mesh", {1, 1, 1});
    triangulation.insert(vPoints);

    locateAndPrint(triangulation, "above", {1, 1, 1});
    locateAndPrint(triangulation, "below", {1, 1, -1});
    locateAndPrint(triangulation, "at a vertex", {1, 1, 4});
    locateAndPrint(triangulation, "outside", {5, 5, 5});
    // The hull's boundary counts as outside, but for the vertices.
    locateAndPrint(triangulation, "on an edge of the hull", {2, 0, 0});
    // A point between two tetrahedra is given to one of them.
    std::cout << "on the facet between them: "
              << (triangulation.locate({1, 1, 0}) != nullptr ? "in one of the two" : "in no tetrahedron")
              << '\n';
}
