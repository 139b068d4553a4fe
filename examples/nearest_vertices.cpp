// Finds the points nearest to a query, exactly, with ties in a fixed order, and the neighbours of a vertex.
#include <vorn3d/geometry/nearestVertex.h>

#include <algorithm>
#include <iostream>

namespace
{

void print(const std::string& what, const std::vector<VORN3D::Point3*>& vVertices)
{
    std::cout << what << ':';
    for (const VORN3D::Point3* pVtx : vVertices)
        std::cout << ' ' << pVtx->getCustomIndex();
    std::cout << '\n';
}

} // namespace

int main()
{
    // The 27 points of a lattice; point 13 is the one in the middle, at 1 1 1.
    std::vector<VORN3D::Point3> vPoints;
    for (int i = 0; i < 27; ++i) {
        vPoints.emplace_back(i / 9, i / 3 % 3, i % 3);
        vPoints.back().setCustomIndex(i);
    }
    VORN3D::Vorn_3D triangulation;
    triangulation.insert(vPoints);

    print("nearest to 0.9 1.2 1.1", {nearestVertex(triangulation, {0.9, 1.2, 1.1})});
    print("nearest from far away", {nearestVertex(triangulation, {100, 101, 1e9})});
    // In the middle of a cell all eight corners are equally near: they come in the order of their
    // coordinates.
    print("nine nearest to 0.5 0.5 0.5", kNearestVertices(triangulation, {0.5, 0.5, 0.5}, 9));

    // Many queries at once, three answers for each.
    const std::vector<VORN3D::Point3> vQueries{{0.1, 0, 0}, {2, 1.9, 2}};
    print("three nearest to each of two", nearestVertices(triangulation, vQueries, 3));

    // The six lattice points around the middle share an edge of the mesh with it, whatever the diagonals.
    const std::vector<VORN3D::Point3*> vNeighbors =
        VORN3D::getVertexNeighbors(nearestVertex(triangulation, {1, 1, 1}));
    const auto isNeighbor = [&](int index) {
        return std::any_of(vNeighbors.begin(), vNeighbors.end(),
                           [=](const VORN3D::Point3* pVtx) { return pVtx->getCustomIndex() == index; });
    };
    std::cout << "neighbours of the middle: 4 " << isNeighbor(4) << ", 22 " << isNeighbor(22) << ", 13 "
              << isNeighbor(13) << '\n';
}
