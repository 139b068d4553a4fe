#include "Summary.h"

#include "vorn3d/Vorn_3D.h"

#include <algorithm>
#include <cmath>

namespace VORN3D::program
{

namespace
{

std::size_t countHullFacets(const Tet3& tet)
{
    std::size_t num = 0;
    for (int i = 0; i < 4; ++i)
        num += tet.getOppTet(i) == nullptr;
    return num;
}

} // namespace

long long getRate(std::size_t num, double seconds)
{
    // The clock's resolution bounds the speed that can be told.
    constexpr double shortestTime = 1e-6;
    return std::llround(static_cast<double>(num) / std::max(seconds, shortestTime));
}

MeshCounts countMesh(const Vorn_3D& triangulation)
{
    MeshCounts counts;
    std::vector<Point3*> vVertices;
    triangulation.getVertices(vVertices);
    counts.numVertices = vVertices.size();
    if (!triangulation.is3D())
        return counts;

    std::vector<Tet3*> vTets;
    triangulation.getTetrahedra(vTets);
    counts.numTetrahedra = vTets.size();
    for (const Tet3* pTet : vTets)
        counts.numHullFacets += countHullFacets(*pTet);
    return counts;
}

void Summary::addTo(Report& report) const
{
    report.add("points", numPoints);
    report.add("vertices", counts.numVertices);
    report.add("tetrahedra", counts.numTetrahedra);
    report.add("hull facets", counts.numHullFacets);
    report.add("reading", secondsReading, "s");
    report.add("triangulating", secondsTriangulating, "s");
    report.add("points per second", getRate(numPoints, secondsTriangulating));
}

} // namespace VORN3D::program
