// The convex hull of points: as the triangles that the mesh has there, counter-clockwise from outside as file
// formats for surfaces want them, and as a polyhedron of flat polygons.
#include <vorn3d/geometry/HullSurface.h>

#include <iostream>

int main()
{
    // The corners of a box, the middles of a side and of an edge, and a few points within.
    std::vector<VORN3D::Point3> vPoints{{0, 0, 0}, {2, 0, 0}, {0, 3, 0}, {2, 3, 0}, {0, 0, 4}, {2, 0, 4},
                                        {0, 3, 4}, {2, 3, 4}, {1, 3, 2}, {1, 0, 0}, {1, 1, 2}, {0.5, 2, 3}};
    VORN3D::Vorn_3D triangulation;
    std::vector<VORN3D::Point3*> vHandles;
    triangulation.insert(vPoints, vHandles);

    const VORN3D::HullSurface surface = makeHullSurface(triangulation, vHandles);
    std::cout << surface.vTriangles.size() << " triangles, area " << surface.area << ", volume "
              << surface.volume << '\n';

    const VORN3D::HullPolygons polygons = mergeCoplanarTriangles(surface, vHandles);
    std::cout << polygons.vFirst.size() - 1 << " flat sides, the first with " << polygons.vFirst[1]
              << " corners\n";
    for (std::size_t i = 0; i < surface.vVertices.size(); ++i)
        if (polygons.vPlaces[i] != VORN3D::HullPlace3::CORNER)
            std::cout << "point " << surface.vVertices[i]
                      << (polygons.vPlaces[i] == VORN3D::HullPlace3::ON_EDGE ? " is on an edge\n"
                                                                             : " is in a side\n");
}
