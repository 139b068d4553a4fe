// Tells on which face of the mesh a point lies: a vertex, an edge, a facet, inside a tetrahedron, or none.
#include <vorn3d/geometry/locateClosed.h>

#include <iostream>

int main()
{
    // Two tetrahedra, above and below the triangle of the first three points.
    std::vector<VORN3D::Point3> vPoints{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {1, 1, 4}, {1, 1, -4}};
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        vPoints[i].setCustomIndex(static_cast<int>(i));
    VORN3D::Vorn_3D triangulation;
    triangulation.insert(vPoints);

    const char* const aKind[] = {"at vertex", "on edge", "on facet", "in tetrahedron", "beyond facet"};
    VORN3D::Tet3* pLast = nullptr;
    for (const VORN3D::Point3& query : std::vector<VORN3D::Point3>{
             {4, 0, 0}, {2, 0, 0}, {1, 1, 0}, {1, 0.5, 0.5}, {1, 1, 1}, {1, 1, -3.9}, {3, 3, 3}}) {
        // Each search starts where the last one ended.
        const VORN3D::Location3 location = locateClosed(triangulation, query, pLast);
        pLast = location.pTet;
        const bool bOutside = location.kind == VORN3D::LocationKind3::OUTSIDE;
        const std::size_t numCorners = bOutside ? 3 : static_cast<std::size_t>(location.kind) + 1;
        std::cout << aKind[static_cast<int>(location.kind)];
        for (std::size_t i = 0; i < numCorners; ++i)
            std::cout << ' ' << location.pTet->getCorner(location.aIndex[i])->getCustomIndex();
        std::cout << '\n';
    }
}
