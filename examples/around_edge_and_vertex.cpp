// Walks around an edge, inside the mesh and on its hull, and around a vertex.
#include <vorn3d/Vorn_3D.h>

#include <iostream>
#include <set>

namespace
{

using VORN3D::Edge3;
using VORN3D::Point3;
using VORN3D::Tet3;

/// The edge from p to q, named from one of the tetrahedra around it; there must be one.
Edge3 findEdge(VORN3D::Vorn_3D& triangulation, Point3* p, Point3* q)
{
    std::vector<Tet3*> vTets;
    triangulation.getTetsAroundVertex(p, vTets);
    std::size_t k = 0;
    while (!vTets.at(k)->hasVertex(q))
        ++k;
    // An edge is named by the two corners that are not on it.
    std::vector<int> vOpposite;
    for (int i = 0; i < 4; ++i)
        if (vTets[k]->getCorner(i) != p && vTets[k]->getCorner(i) != q)
            vOpposite.push_back(i);
    return vTets[k]->getEdge(vOpposite[0], vOpposite[1]);
}

std::vector<Tet3*> getTetsAroundEdge(const Edge3& edge)
{
    std::vector<Tet3*> vTets;
    VORN3D::TetAroundEdgeIterator it(edge);
    const VORN3D::TetAroundEdgeIterator start(it);
    do
        vTets.push_back(*it);
    while (!it.nextIsNull() && ++it != start);
    if (!it.nextIsNull())
        return vTets;
    // The walk ended at the hull. What lies on the other side of its start is met in the other sense of
    // turning, which is that of the edge with its two names exchanged.
    VORN3D::TetAroundEdgeIterator back(Edge3(edge.getTet(), edge.getOpp2Index(), edge.getOpp3Index()));
    while (!back.nextIsNull())
        vTets.push_back(*++back);
    return vTets;
}

void printWalk(const std::string& what, const Edge3& edge)
{
    const std::vector<Tet3*> vTets = getTetsAroundEdge(edge);
    std::cout << what << ": " << vTets.size() << " tetrahedra\n";
    for (const Tet3* pTet : vTets) {
        std::set<int> corners;
        for (int i = 0; i < 4; ++i)
            corners.insert(pTet->getCorner(i)->getCustomIndex());
        std::cout << " ";
        for (const int corner : corners)
            std::cout << ' ' << corner;
        std::cout << '\n';
    }
}

void printNeighbors(VORN3D::Vorn_3D& triangulation, Point3* pVtx)
{
    std::vector<Tet3*> vTets;
    triangulation.getTetsAroundVertex(pVtx, vTets);
    std::set<int> neighbors;
    for (const Tet3* pTet : vTets)
        for (int i = 0; i < 4; ++i)
            if (pTet->getCorner(i) != pVtx)
                neighbors.insert(pTet->getCorner(i)->getCustomIndex());
    std::cout << "vertex " << pVtx->getCustomIndex() << ": " << vTets.size() << " tetrahedra, edges to";
    for (const int neighbor : neighbors)
        std::cout << ' ' << neighbor;
    std::cout << '\n';
}

} // namespace

int main()
{
    // Points 0 and 1 are the ends of an axis, the others stand around it.
    std::vector<Point3> vPoints{{0, 0, -1}, {0, 0, 1},   {3, 0, 0},  {1, 3, 0},
                                {-3, 2, 0}, {-3, -2, 0}, {1, -3, 0}, {0, 0, 9}};
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        vPoints[i].setCustomIndex(static_cast<int>(i));
    VORN3D::Vorn_3D triangulation;
    std::vector<Point3*> vHandles;
    triangulation.insert(vPoints, vHandles);

    printWalk("around the edge 0-1, inside", findEdge(triangulation, vHandles[0], vHandles[1]));
    printWalk("around the edge 2-3, on the hull", findEdge(triangulation, vHandles[2], vHandles[3]));
    printNeighbors(triangulation, vHandles[2]);
    printNeighbors(triangulation, vHandles[7]);
}
