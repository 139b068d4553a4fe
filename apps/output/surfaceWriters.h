#pragma once

#include "FileFormat.h"
#include "Mesh.h"
#include "output/OutputFile.h"

#include <cstdint>
#include <string>
#include <vector>

namespace VORN3D::program
{

/// Flat faces, convex polygons counter-clockwise from outside, and the vertices that they have.
struct Surface
{
    std::vector<const Point3*> vVertices;
    std::vector<int> vCorners;      ///< of all faces
    std::vector<std::size_t> vEnds; ///< for each face the end of its corners
};

/// The surface of some faces, whose corners are numbers of points; its vertices are in the order of these.
Surface makeSurface(const std::vector<const Point3*>& vPoints, const std::vector<std::uint32_t>& vCorners,
                    std::vector<std::size_t> vEnds);

/// The same for triangles.
Surface makeSurface(const std::vector<const Point3*>& vPoints,
                    const std::vector<std::array<std::uint32_t, 3>>& vTriangles);

using WriteSurfaceFunction = void(const Surface& surface, OutputFile& file);

/// The formats in which surfaces are written.
const FileFormats<WriteSurfaceFunction>& getSurfaceFormats();

WriteSurfaceFunction writePlySurface;
WriteSurfaceFunction writeOffSurface;

} // namespace VORN3D::program
