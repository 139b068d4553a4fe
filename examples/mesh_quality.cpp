// Measures the tetrahedra of a mesh: how good they are for computing with them.
#include <vorn3d/geometry/MeshQuality.h>

#include <iomanip>
#include <iostream>
#include <utility>

namespace
{

void print(const std::string& name, const VORN3D::MeshQuality::Range& range)
{
    std::cout << name << ": " << range.least << " to " << range.greatest << ", mean " << range.mean << '\n';
}

} // namespace

int main()
{
    // A prism on a rhombus of equilateral triangles, with a point in the middle.
    const double height = 0.8660254037844386;
    std::vector<VORN3D::Point3> vPoints{{0.75, height / 2, 0.4}};
    for (const double z : {0.0, 0.8})
        for (const auto& [x, y] :
             {std::pair(0.0, 0.0), std::pair(1.0, 0.0), std::pair(0.5, height), std::pair(1.5, height)})
            vPoints.emplace_back(x, y, z);
    VORN3D::Vorn_3D triangulation;
    triangulation.insert(vPoints);

    std::cout << std::fixed << std::setprecision(3);
    const VORN3D::MeshQuality quality = measureMesh(triangulation);
    std::cout << "volume " << quality.volume << '\n';
    print("radius ratio", quality.radiusRatio);
    print("least dihedral angle", quality.leastAngle);
    print("radius by shortest edge", quality.radiusEdgeRatio);

    std::vector<VORN3D::Tet3*> vTets;
    triangulation.getTetrahedra(vTets);
    int numPoor = 0;
    for (const VORN3D::Tet3* pTet : vTets)
        numPoor += measureTet(*pTet).radiusRatio < 0.7;
    std::cout << "radius ratio below 0.7: " << numPoor << " of " << vTets.size() << '\n';
}
