#include "Summary.h"

#include "vorn3d/Vorn_3D.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

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

/// Writes the name in a column of its own.
std::ostream& beginLine(std::ostream& os, const char* name)
{
    return os << std::left << std::setw(19) << name << std::right;
}

double getPointsPerSecond(const Summary& summary)
{
    // The clock's resolution bounds the speed that can be told.
    constexpr double shortestTime = 1e-6;
    return static_cast<double>(summary.numPoints) / std::max(summary.secondsTriangulating, shortestTime);
}

} // namespace

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

std::ostream& operator<<(std::ostream& os, const Summary& summary)
{
    beginLine(os, "points:") << summary.numPoints << '\n';
    beginLine(os, "vertices:") << summary.counts.numVertices << '\n';
    beginLine(os, "tetrahedra:") << summary.counts.numTetrahedra << '\n';
    beginLine(os, "hull facets:") << summary.counts.numHullFacets << '\n';
    os << std::fixed << std::setprecision(3);
    beginLine(os, "reading:") << summary.secondsReading << " s\n";
    beginLine(os, "triangulating:") << summary.secondsTriangulating << " s\n";
    beginLine(os, "points per second:") << std::setprecision(0) << getPointsPerSecond(summary) << '\n';
    return os;
}

} // namespace VORN3D::program
