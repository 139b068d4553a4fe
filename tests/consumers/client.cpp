// A client that crosses the libraries' borders in the ways that a wrong installation breaks: containers in
// both directions, records read by inline members, text, an exception, a handle from one library given to the
// other.
#include <vorn3d/geometry/locateClosed.h>

#include <iostream>

namespace
{

using VORN3D::Point3;
using VORN3D::Tet3;

bool isMeshSound()
{
    std::vector<Point3> vPoints;
    VORN3D::generateRandomPoints(300, -1.0, 1.0, vPoints, 1);
    std::vector<Point3*> vHandles;
    VORN3D::Vorn_3D triangulation;
    triangulation.insert(vPoints, vHandles);

    bool bSound = vHandles.size() == vPoints.size() && triangulation.checkValidity("client", true);
    for (std::size_t i = 0; i < vHandles.size(); ++i) {
        const Tet3* const pTet = vHandles[i]->getOneTet();
        const VORN3D::Location3 location =
            VORN3D::locateClosed(triangulation, vPoints[i], vHandles[0]->getOneTet());
        bSound = bSound && *vHandles[i] == vPoints[i] && pTet != nullptr && pTet->hasVertex(vHandles[i]) &&
                 location.kind == VORN3D::LocationKind3::VERTEX && location.pTet->hasVertex(vHandles[i]);
    }
    return bSound;
}

bool isWrongUseReported()
{
    try {
        std::vector<double> vNumbers;
        VORN3D::generateRandomNumbers(1, 1.0, 0.0, vNumbers, 1);
        return false;
    } catch (const VORN3D::VornException&) {
        return true;
    }
}

} // namespace

int main()
{
    std::cout << VORN3D::getVorn3DVersion() << '\n';
    return isMeshSound() && isWrongUseReported() ? 0 : 1;
}
