// The mesh as arrays of numbers, as other programs take it, of points inserted in an order of one's own: the
// tetrahedra then depend on the points and that order alone.
#include <vorn3d/Vorn_3D.h>

#include <iostream>
#include <numeric>

int main()
{
    // A lattice has many Delaunay meshes; the order decides which one it is.
    std::vector<VORN3D::Point3> vLattice;
    VORN3D::Bbox3 box;
    for (int i = 0; i < 27; ++i) {
        vLattice.emplace_back(i % 3, i / 3 % 3, i / 9);
        box.add(vLattice.back());
    }
    std::vector<std::uint64_t> vIndices(vLattice.size());
    std::iota(vIndices.begin(), vIndices.end(), 0);

    std::vector<VORN3D::Point3> vPoints;
    for (const std::size_t i : VORN3D::getCanonicalOrder(vLattice, vIndices, box))
        vPoints.push_back(vLattice[i]);
    VORN3D::Vorn_3D triangulation;
    std::vector<VORN3D::Point3*> vHandles;
    triangulation.insertOrdered(vPoints, vHandles);

    const VORN3D::MeshArrays mesh = triangulation.getArrays(vHandles);
    std::size_t numHullFacets = 0;
    for (const std::uint32_t neighbor : mesh.vNeighbors)
        numHullFacets += neighbor == VORN3D::NO_INDEX ? 1 : 0;
    std::cout << mesh.vCorners.size() / 4 << " tetrahedra, " << numHullFacets << " facets on the hull\n"
              << "the first one has the points";
    for (std::size_t i = 0; i < 4; ++i)
        std::cout << ' ' << mesh.vCorners[i];
    std::cout << '\n';
}
