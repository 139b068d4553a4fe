// Who has how much room: the Voronoi cells of points in a box, which they share among them, and the
// neighbours of one cell with the area of the face between.
#include <vorn3d/geometry/VoronoiCells.h>

#include <iostream>

int main()
{
    // The corners of a lattice of cubes, and one point at the middle of one of them.
    std::vector<VORN3D::Point3> vPoints;
    for (int i = 0; i < 27; ++i)
        vPoints.emplace_back(i % 3, i / 3 % 3, i / 9);
    vPoints.emplace_back(0.5, 0.5, 0.5);

    VORN3D::Vorn_3D triangulation;
    std::vector<VORN3D::Point3*> vHandles;
    triangulation.insert(vPoints, vHandles);

    const VORN3D::Bbox3 box({{-0.5, -0.5, -0.5}, {2.5, 2.5, 2.5}});
    const VORN3D::VoronoiCells cells = VORN3D::makeVoronoiCells(triangulation, vHandles, box);
    double sum = 0;
    for (const double volume : cells.measures.vVolumes)
        sum += volume;
    std::cout << "volumes: " << cells.measures.vVolumes[26] << " in a corner, " << cells.measures.vVolumes[13]
              << " beside the last point, " << cells.measures.vVolumes[27] << " at the last point, " << sum
              << " together\n";

    std::cout << "the cell of the last point has the neighbours";
    for (std::size_t face = cells.vFirstFace[27]; face < cells.vFirstFace[28]; ++face)
        std::cout << ' ' << cells.vNeighbors[face];
    std::cout << ",\neach beyond a face of area " << cells.vFaceAreas[cells.vFirstFace[27]] << '\n';
}
