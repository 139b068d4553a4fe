#pragma once

#include <cstddef>
#include <iosfwd>

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

/// What `vorn3d triangulate` reports.
struct Summary
{
    std::size_t numPoints = 0;
    MeshCounts counts;
    double secondsReading = 0.0;
    double secondsTriangulating = 0.0;
};

/// One "name: value" line for each number.
std::ostream& operator<<(std::ostream& os, const Summary& summary);

} // namespace VORN3D::program
