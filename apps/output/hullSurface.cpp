// The hull's surface: its own vertices, and triangles counter-clockwise from outside.
#include "output/TextOutput.h"
#include "output/meshWriters.h"

#include "vorn3d/Point3.h"

namespace VORN3D::program
{

namespace
{

struct Surface
{
    std::vector<const Point3*> vVertices;
    std::vector<Mesh::Triple> vTriangles;
};

Surface makeSurface(const Mesh& mesh)
{
    Surface surface;
    surface.vTriangles = mesh.vHullFacets;
    const std::vector<bool> vbOnHull = findHullVertices(mesh);
    std::vector<int> vNumbers(mesh.vVertices.size(), Mesh::none);
    for (std::size_t i = 0; i < vNumbers.size(); ++i) {
        if (!vbOnHull[i])
            continue;
        vNumbers[i] = static_cast<int>(surface.vVertices.size());
        surface.vVertices.push_back(mesh.vVertices[i]);
    }
    for (Mesh::Triple& triangle : surface.vTriangles)
        for (int& corner : triangle)
            corner = vNumbers[static_cast<std::size_t>(corner)];
    return surface;
}

/// Vertices and triangles are written in the same way in both formats.
void writeSurface(const Surface& surface, const std::string& header, OutputFile& file)
{
    TextOutput text(file, surface.vVertices.size() + surface.vTriangles.size());
    text.write(header);
    for (const Point3* pVtx : surface.vVertices) {
        text.writeCoordinates(*pVtx);
        text.endLine();
    }
    for (const Mesh::Triple& triangle : surface.vTriangles) {
        text.writeNumber(triangle.size());
        text.writeNumbers(triangle);
        text.endLine();
    }
    text.finish();
}

} // namespace

void writePly(const MeshSource& source, OutputFile& file)
{
    const Surface surface = makeSurface(source.mesh);
    writeSurface(surface,
                 "ply\nformat ascii 1.0\nelement vertex " + std::to_string(surface.vVertices.size()) +
                     "\nproperty double x\nproperty double y\nproperty double z\nelement face " +
                     std::to_string(surface.vTriangles.size()) +
                     "\nproperty list uchar int vertex_indices\nend_header\n",
                 file);
}

void writeOff(const MeshSource& source, OutputFile& file)
{
    const Surface surface = makeSurface(source.mesh);
    writeSurface(surface,
                 "OFF\n" + std::to_string(surface.vVertices.size()) + " " +
                     std::to_string(surface.vTriangles.size()) + " 0\n",
                 file);
}

} // namespace VORN3D::program
