#pragma once

#include "Report.h"

#include <cstddef>

namespace VORN3D
{
class Vorn_3D;
}

namespace VORN3D::program
{

/// The numbers of a triangulation.
struct MeshCounts
{
    std::size_t numVertices = 0;
    std::size_t numTetrahedra = 0;
    std::size_t numHullFacets = 0;
};

MeshCounts countMesh(const Vorn_3D& triangulation);

/// So many things in the time, rounded to whole ones a second.
long long getRate(std::size_t num, double seconds);

/// What is reported of every mesh.
struct Summary
{
    std::size_t numPoints = 0;
    MeshCounts counts;
    double secondsReading = 0.0;
    double secondsTriangulating = 0.0;

    void addTo(Report& report) const;
};

} // namespace VORN3D::program
