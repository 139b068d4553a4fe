#include "meshTables.h"

#include <vorn3d/geometry/nearestVertex.h>

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace VORN3D::python
{

namespace
{

// So many vertices are asked from one call of the pulse to the next.
constexpr std::size_t PULSE_VERTICES = 1024;

} // namespace

// The lists are made in curve order, in which neighbours are in the cache, and then put into that of the
// numbers.
VertexNeighbors makeVertexNeighbors(const Triangulation& triangulation, const Pulse& pulse)
{
    const auto positionOf = [](const Point3* pVtx) {
        return static_cast<std::size_t>(Triangulation::numberOf(pVtx));
    };
    std::vector<Point3*> vVertices;
    triangulation.getMesh().getVertices(vVertices);
    std::vector<Index> vInCurveOrder;
    VertexNeighbors neighbors{std::vector<Index>(triangulation.getNumPoints() + 1, 0), {}};
    for (std::size_t i = 0; i < vVertices.size(); ++i) {
        if (i % PULSE_VERTICES == 0)
            pulse(i, vVertices.size());
        const std::size_t numBefore = vInCurveOrder.size();
        for (const Point3* pVtx : getVertexNeighbors(vVertices[i]))
            vInCurveOrder.push_back(Triangulation::numberOf(pVtx));
        requireIndices(vInCurveOrder.size());
        neighbors.vStarts[positionOf(vVertices[i]) + 1] =
            static_cast<Index>(vInCurveOrder.size() - numBefore);
    }
    std::partial_sum(neighbors.vStarts.begin(), neighbors.vStarts.end(), neighbors.vStarts.begin());

    neighbors.vVertices.resize(vInCurveOrder.size());
    auto itNeighbor = vInCurveOrder.begin();
    for (const Point3* pVtx : vVertices) {
        const Index start = neighbors.vStarts[positionOf(pVtx)];
        const Index size = neighbors.vStarts[positionOf(pVtx) + 1] - start;
        std::copy_n(itNeighbor, size, neighbors.vVertices.begin() + start);
        itNeighbor += size;
    }
    return neighbors;
}

std::vector<std::array<double, 4>> makeCircumspheres(const Triangulation& triangulation)
{
    std::vector<std::array<double, 4>> vSpheres;
    vSpheres.reserve(triangulation.getTets().size());
    for (const Tet3* pTet : triangulation.getTets()) {
        const Point3 center = pTet->getCircumcenter();
        const Vector3 radius = *pTet->getCorner(0) - center;
        vSpheres.push_back({center.x(), center.y(), center.z(), dotProduct(radius, radius)});
    }
    return vSpheres;
}

} // namespace VORN3D::python
