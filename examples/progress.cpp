// Follows the insertion of a large batch, stops it half-way, and completes it later.
#include <vorn3d/Vorn_3D.h>

#include <algorithm>
#include <iostream>

namespace
{

std::size_t countMeshVertices(const std::vector<VORN3D::Point3*>& vHandles)
{
    const auto isInMesh = [](const VORN3D::Point3* pVtx) { return pVtx->getOneTet() != nullptr; };
    return static_cast<std::size_t>(std::count_if(vHandles.begin(), vHandles.end(), isInMesh));
}

} // namespace

int main()
{
    std::vector<VORN3D::Point3> vPoints;
    VORN3D::generateRandomPoints(30000, 0, 1, vPoints, 3);

    // A program with a window would draw a bar here, and go on until its user pressed a button.
    VORN3D::Vorn_3D triangulation;
    triangulation.setProgressObserver([](std::size_t numDone, std::size_t numTotal) {
        std::cout << numDone << " of " << numTotal << '\n';
        return 2 * numDone < numTotal;
    });
    std::vector<VORN3D::Point3*> vHandles;
    triangulation.insert(vPoints, vHandles);
    std::cout << "stopped: a valid mesh of " << countMeshVertices(vHandles) << " vertices\n";

    triangulation.setProgressObserver(nullptr);
    vHandles.clear();
    triangulation.insert(vPoints, vHandles);
    std::cout << "completed: " << countMeshVertices(vHandles) << " vertices\n";
}
