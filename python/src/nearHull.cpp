#include "nearHull.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace VORN3D::python
{

namespace
{

using Weights = std::vector<VertexWeight3>;

// How far p is beyond the plane of a facet that it sees, rounded: at most its distance from the hull.
double getDistanceBeyond(const Tet3& tet, int facet, const Point3& p)
{
    int i0, i1, i2;
    tet.getFacetIndices(facet, i0, i1, i2);
    const Point3& corner = *tet.getCorner(i0);
    const Vector3 normal = crossProduct(*tet.getCorner(i1) - corner, *tet.getCorner(i2) - corner);
    return std::abs(dotProduct(p - corner, normal)) / std::sqrt(dotProduct(normal, normal));
}

bool isNear(const Weights& weights, const Point3& p, double tolerance)
{
    for (int k = 0; k < 3; ++k) {
        double place = 0;
        for (const VertexWeight3& share : weights)
            place += share.weight * share.pVtx->getCoordinates()[k];
        if (!(std::abs(place - p.getCoordinates()[k]) <= tolerance))
            return false;
    }
    return true;
}

Weights getWeightsNearHull(const Vorn_3D& dt, const Point3& p, double tolerance)
{
    int seenFacet = -1;
    Tet3* pTet = dt.locateClosed(p, nullptr, seenFacet);
    // Most points are told to be far away by one facet. Along a normal it is farther than along an axis.
    if (pTet == nullptr || seenFacet == -1 || getDistanceBeyond(*pTet, seenFacet, p) > 2 * tolerance)
        return {};
    Weights weights = interpolateLinear(dt, p, OutsideHull3::CLAMP, pTet);
    return isNear(weights, p, tolerance) ? weights : Weights();
}

} // namespace

void fillRowsNearHull(InterpolationMatrix& matrix, const Vorn_3D& dt, const std::vector<Point3>& vPoints,
                      double tolerance)
{
    InterpolationMatrix filled;
    filled.vRowStart = {0};
    for (std::size_t row = 0; row < vPoints.size(); ++row) {
        const auto begin = static_cast<std::ptrdiff_t>(matrix.vRowStart[row]);
        const auto end = static_cast<std::ptrdiff_t>(matrix.vRowStart[row + 1]);
        filled.vColumn.insert(filled.vColumn.end(), matrix.vColumn.begin() + begin,
                              matrix.vColumn.begin() + end);
        filled.vWeight.insert(filled.vWeight.end(), matrix.vWeight.begin() + begin,
                              matrix.vWeight.begin() + end);
        if (begin == end)
            for (const VertexWeight3& share : getWeightsNearHull(dt, vPoints[row], tolerance)) {
                filled.vColumn.push_back(share.pVtx->getCustomIndex());
                filled.vWeight.push_back(share.weight);
            }
        filled.vRowStart.push_back(filled.vColumn.size());
    }
    matrix = std::move(filled);
}

} // namespace VORN3D::python
