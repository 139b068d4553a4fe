#include "output/meshWriters.h"

#include "output/surfaceWriters.h"
#include "output/unstoppableWork.h"

#include "vorn3d/Vorn_3D.h"

#include <fstream>
#include <stdexcept>

namespace VORN3D::program
{

namespace
{

/// The library does not tell whether it could write the whole file: a complete one ends with a brace.
void checkSceneIsComplete(const OutputFile& file)
{
    std::ifstream scene(file.getWritablePath(), std::ios::ate);
    scene.seekg(-2, std::ios::end);
    std::string end;
    if (!(scene >> end) || end != "}")
        throw std::runtime_error(file.getPath() + ": the scene could not be written");
}

Surface makeHull(const Mesh& mesh)
{
    std::vector<std::array<std::uint32_t, 3>> vTriangles;
    for (const auto& [a, b, c] : mesh.vHullFacets)
        vTriangles.push_back(
            {static_cast<std::uint32_t>(a), static_cast<std::uint32_t>(b), static_cast<std::uint32_t>(c)});
    return makeSurface(mesh.vVertices, vTriangles);
}

void writePly(const MeshSource& source, OutputFile& file)
{
    writePlySurface(makeHull(source.mesh), file);
}

void writeOff(const MeshSource& source, OutputFile& file)
{
    writeOffSurface(makeHull(source.mesh), file);
}

void writeScene(const MeshSource& source, OutputFile& file)
{
    doUnstoppableWork("writing " + file.getPath(), file,
                      [&] { source.triangulation.show(file.getWritablePath(), nullptr); });
    checkSceneIsComplete(file);
}

} // namespace

const FileFormats<WriteMeshFunction>& getMeshFormats()
{
    static const FileFormats<WriteMeshFunction> vFormats{
        {"vtu",
         {".vtu"},
         "VTK's unstructured grid, compressed, with input index and hull flag",
         writeVtu,
         true},
        {"vtk", {".vtk"}, "the same in VTK's older format, as binary", writeVtk, true},
        {"medit", {".mesh"}, "Medit's mesh: vertices, tetrahedra, hull triangles", writeMedit},
        {"nodes",
         {".node"},
         "TetGen's nodes, numbered from 0, with input index and hull flag",
         writeTetgenNodes},
        {"tets", {".ele"}, "TetGen's tetrahedra", writeTetgenElements},
        {"neighs", {".neigh"}, "TetGen's neighbours, -1 on the hull", writeTetgenNeighbors},
        {"ply", {".ply"}, "the hull's surface as text, in double precision", writePly},
        {"off", {".off"}, "the hull's surface", writeOff},
        {"scene", {".list"}, "a scene for the viewer Geomview", writeScene},
    };
    return vFormats;
}

const FileFormat<WriteMeshFunction>& chooseMeshFormat(const std::string& path)
{
    return chooseFormatOfExtension(getMeshFormats(), path);
}

} // namespace VORN3D::program
