// Vertex handles and custom indices: attaches data of one's own to vertices and tetrahedra, and writes the
// mesh as plain arrays of numbers. A vertex handle is good for the life of the triangulation, a tetrahedron
// handle until the next insertion.
#include <vorn3d/Vorn_3D.h>

#include <iostream>

namespace
{

/// Numbers the tetrahedra in the order in which they are listed.
std::vector<VORN3D::Tet3*> getNumberedTets(const VORN3D::Vorn_3D& triangulation)
{
    std::vector<VORN3D::Tet3*> vTets;
    triangulation.getTetrahedra(vTets);
    for (std::size_t i = 0; i < vTets.size(); ++i)
        vTets[i]->setCustomIndex(static_cast<int>(i));
    return vTets;
}

/// A line a tetrahedron: its number, the numbers of its corners and of its neighbours, -1 beyond the hull.
void printMesh(const VORN3D::Vorn_3D& triangulation)
{
    for (const VORN3D::Tet3* pTet : getNumberedTets(triangulation)) {
        std::cout << "tetrahedron " << pTet->getCustomIndex() << ": corners";
        for (int i = 0; i < 4; ++i)
            std::cout << ' ' << pTet->getCorner(i)->getCustomIndex();
        std::cout << ", neighbours";
        for (int i = 0; i < 4; ++i) {
            const VORN3D::Tet3* pNeighbor = pTet->getOppTet(i);
            std::cout << ' ' << (pNeighbor != nullptr ? pNeighbor->getCustomIndex() : -1);
        }
        std::cout << '\n';
    }
}

} // namespace

int main()
{
    // The client's own data: a custom index is a place in this list.
    const std::vector<std::string> vNames{"south", "east", "north", "top", "middle"};
    std::vector<VORN3D::Point3> vPoints{{0, -2, 0}, {2, 1, 0}, {-2, 1, 0}, {0, 0, 3}};
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        vPoints[i].setCustomIndex(static_cast<int>(i));

    VORN3D::Vorn_3D triangulation;
    std::vector<VORN3D::Point3*> vHandles;
    triangulation.insert(vPoints, vHandles);
    printMesh(triangulation);

    // Handles are in the order of the input. They outlive further insertions, and the input itself.
    vPoints.clear();
    VORN3D::Point3 middle(0, 0, 1);
    middle.setCustomIndex(4);
    vHandles.push_back(triangulation.insert(middle));
    printMesh(triangulation);
    for (const VORN3D::Point3* pVtx : vHandles)
        std::cout << vNames[static_cast<std::size_t>(pVtx->getCustomIndex())] << " at " << pVtx->x() << ' '
                  << pVtx->y() << ' ' << pVtx->z() << '\n';

    // A point that is there already gives the handle of its vertex, which keeps its custom index.
    VORN3D::Point3 again(0, 0, 3);
    std::cout << "inserted again: "
              << vNames[static_cast<std::size_t>(triangulation.insert(again)->getCustomIndex())] << '\n';
}
