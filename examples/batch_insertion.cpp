// Inserts a batch of points and reads the mesh back: which vertex each input point became, the corners of the
// tetrahedra and their neighbours. Custom indices tell which input point a vertex came from.
#include <vorn3d/Vorn_3D.h>

#include <iostream>

namespace
{

/// "-" stands for the outside of the convex hull.
void printTetrahedron(const VORN3D::Tet3& tet)
{
    std::cout << "corners:";
    for (int i = 0; i < 4; ++i)
        std::cout << ' ' << tet.getCorner(i)->getCustomIndex();
    std::cout << ", opposite them in the neighbours:";
    for (int i = 0; i < 4; ++i) {
        if (const VORN3D::Point3* pVertex = tet.getOppVtxInOppTet(i, true))
            std::cout << ' ' << pVertex->getCustomIndex();
        else
            std::cout << " -";
    }
    std::cout << '\n';
}

} // namespace

int main()
{
    // The fifth point repeats the second.
    std::vector<VORN3D::Point3> vPoints{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {2, 2, 2}};
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        vPoints[i].setCustomIndex(static_cast<int>(i));

    VORN3D::Vorn_3D triangulation;
    std::vector<VORN3D::Point3*> vHandles;
    triangulation.insert(vPoints, vHandles);
    for (std::size_t i = 0; i < vHandles.size(); ++i)
        std::cout << "input point " << i << " is vertex " << vHandles[i]->getCustomIndex() << '\n';

    std::vector<VORN3D::Tet3*> vTets;
    triangulation.getTetrahedra(vTets);
    for (const VORN3D::Tet3* pTet : vTets)
        printTetrahedron(*pTet);
}
