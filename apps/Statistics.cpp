#include "Statistics.h"

#include "Progress.h"

#include "vorn3d/Vorn_3D.h"
#include "vorn3d/geometry/MeshQuality.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace VORN3D::program
{

namespace
{

/// Of a volume of 1e-10 of the cube of the longest edge.
constexpr double largestFlatRatio = 8.48528137423857e-10;

/// Adds a facet on the hull; the origin, any vertex of the mesh, is the apex of the volumes.
void addHullFacet(const Tet3& tet, int opp3, const Point3& origin, Statistics& statistics)
{
    int i0 = 0;
    int i1 = 0;
    int i2 = 0;
    tet.getFacetIndices(opp3, i0, i1, i2);
    const Point3& corner = *tet.getCorner(i0);
    const Vector3 doubleArea = crossProduct(*tet.getCorner(i1) - corner, *tet.getCorner(i2) - corner);
    statistics.hullArea += std::sqrt(dotProduct(doubleArea, doubleArea)) / 2.0;
    statistics.hullVolume += dotProduct(doubleArea, corner - origin) / 6.0;
}

void addTet(const Tet3& tet, const Point3& origin, Statistics& statistics)
{
    const TetQuality3 shape = measureTet(tet);
    statistics.sumOfVolumes += shape.volume;
    statistics.leastAngle = std::min(statistics.leastAngle, shape.leastAngle);
    statistics.greatestAngle = std::max(statistics.greatestAngle, shape.greatestAngle);
    const auto& limits = Statistics::edgeRatioLimits;
    const auto interval = std::upper_bound(limits.begin(), limits.end(), shape.edgeRatio) - limits.begin();
    ++statistics.aNumOfEdgeRatio[static_cast<std::size_t>(interval)];
    statistics.numFlat += shape.volumeRatio < largestFlatRatio;
    for (int i = 0; i < 4; ++i)
        if (tet.getOppTet(i) == nullptr)
            addHullFacet(tet, i, origin, statistics);
}

std::string nameInterval(std::size_t i)
{
    const auto& limits = Statistics::edgeRatioLimits;
    std::ostringstream name;
    if (i == limits.size())
        name << "from " << limits.back();
    else
        name << (i == 0 ? 1.0 : limits[i - 1]) << " to " << limits[i];
    return name.str();
}

} // namespace

Statistics makeStatistics(const Vorn_3D& triangulation)
{
    std::vector<Tet3*> vTets;
    triangulation.getTetrahedra(vTets);
    Statistics statistics;
    Progress progress("measuring", vTets.size());
    std::size_t numDone = 0;
    for (const Tet3* pTet : vTets) {
        addTet(*pTet, *vTets.front()->getCorner(0), statistics);
        progress.update(++numDone);
    }
    return statistics;
}

void Statistics::addTo(Report& report) const
{
    report.add("hull area", hullArea);
    report.add("hull volume", hullVolume);
    report.add("sum of volumes", sumOfVolumes);
    report.add("least dihedral angle", leastAngle, "degrees");
    report.add("greatest dihedral angle", greatestAngle, "degrees");
    report.add("flat tetrahedra", numFlat);
    Report::Value histogram = Report::Value::object();
    for (std::size_t i = 0; i < aNumOfEdgeRatio.size(); ++i)
        histogram[nameInterval(i)] = aNumOfEdgeRatio[i];
    report.add("edge ratio", histogram);
}

} // namespace VORN3D::program
