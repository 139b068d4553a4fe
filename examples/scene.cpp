// Draws a mesh: writes a scene that Geomview opens, with one vertex highlighted.
#include <vorn3d/Vorn_3D.h>

#include <fstream>
#include <iostream>

int main()
{
    std::vector<VORN3D::Point3> vPoints{{0, 0, 0}, {1, 0, 0}, {0, 1, 0},
                                        {0, 0, 1}, {1, 1, 1}, {0.4, 0.4, 0.4}};
    VORN3D::Vorn_3D triangulation;
    std::vector<VORN3D::Point3*> vHandles;
    triangulation.insert(vPoints, vHandles);
    triangulation.show("example.list", vHandles.back());

    // The scene is text: a tetrahedron is drawn as four triangles and four points.
    std::ifstream scene("example.list");
    std::string word;
    int numTriangles = 0;
    int numPoints = 0;
    while (scene >> word) {
        numTriangles += word == "OFF" ? 1 : 0;
        numPoints += word == "VECT" ? 1 : 0;
    }
    std::cout << "drawn: " << numTriangles << " triangles and " << numPoints << " points\n";
}
