#include "vorn3d/geometry/pointDensity.h"

#include "nalo_tools/assertion.h"
#include "signedVolume.h"
#include "vertexStar.h"

#include <algorithm>
#include <limits>

namespace VORN3D
{

namespace
{

std::size_t getIndex(const Point3& vtx)
{
    VORN_REQUIRE_TEXT(vtx.getCustomIndex() >= 0, "pointDensity(): custom index of a vertex >= 0");
    return static_cast<std::size_t>(vtx.getCustomIndex());
}

std::vector<Point3*> listVertices(const Vorn_3D& dt)
{
    std::vector<Point3*> vVertices;
    dt.getVertices(vVertices);
    return vVertices;
}

/// For each index six times the volume of the tetrahedra around its vertex.
std::vector<double> sumVolumes(const Vorn_3D& dt, std::size_t numIndices)
{
    std::vector<double> vSums(numIndices, 0.0);
    if (!dt.is3D())
        return vSums;
    std::vector<Tet3*> vTets;
    dt.getTetrahedra(vTets);
    for (const Tet3* pTet : vTets) {
        const Corners corners = getCorners(*pTet);
        const double volume =
            getScaledBy(getSixfoldVolume(*corners[0], *corners[1], *corners[2], *corners[3]), 0);
        for (const Point3* pCorner : corners)
            vSums[getIndex(*pCorner)] += volume;
    }
    return vSums;
}

} // namespace

std::vector<double> pointDensity(const Vorn_3D& dt, const std::vector<double>& vMasses)
{
    const std::vector<Point3*> vVertices = listVertices(dt);
    std::size_t numIndices = 0;
    for (const Point3* pVtx : vVertices)
        numIndices = std::max(numIndices, getIndex(*pVtx) + 1);
    VORN_REQUIRE_TEXT(vMasses.empty() || vMasses.size() >= numIndices,
                      "pointDensity(): masses for all custom indices");
    const std::vector<double> vSums = sumVolumes(dt, numIndices);
    std::vector<double> vDensities(numIndices, std::numeric_limits<double>::quiet_NaN());
    for (const Point3* pVtx : vVertices)
        if (pVtx->getOneTet() != nullptr) {
            const std::size_t i = getIndex(*pVtx);
            vDensities[i] = (vMasses.empty() ? 1.0 : vMasses[i]) * 24.0 / vSums[i];
        }
    return vDensities;
}

} // namespace VORN3D
