// The three files of a mesh in the formats of TetGen; items are numbered from 0.
#include "output/TextOutput.h"
#include "output/meshWriters.h"

#include "vorn3d/Point3.h"

namespace VORN3D::program
{

namespace
{

void writeQuadruples(const std::vector<Mesh::Quadruple>& vQuadruples, const char* header, OutputFile& file)
{
    TextOutput text(file, vQuadruples.size());
    text.writeNumber(vQuadruples.size());
    text.write(header);
    std::size_t number = 0;
    for (const Mesh::Quadruple& quadruple : vQuadruples) {
        text.writeNumber(number++);
        text.writeNumbers(quadruple);
        text.endLine();
    }
    text.finish();
}

} // namespace

void writeTetgenNodes(const MeshSource& source, OutputFile& file)
{
    const auto& vVertices = source.mesh.vVertices;
    const std::vector<bool> vbOnHull = findHullVertices(source.mesh);
    TextOutput text(file, vVertices.size());
    text.writeNumber(vVertices.size());
    text.write("3 1 1\n");
    for (std::size_t i = 0; i < vVertices.size(); ++i) {
        text.writeNumber(i);
        text.writeCoordinates(*vVertices[i]);
        text.writeNumber(vVertices[i]->getCustomIndex());
        text.writeNumber(static_cast<int>(vbOnHull[i]));
        text.endLine();
    }
    text.finish();
}

void writeTetgenElements(const MeshSource& source, OutputFile& file)
{
    writeQuadruples(source.mesh.vCorners, "4 0\n", file);
}

void writeTetgenNeighbors(const MeshSource& source, OutputFile& file)
{
    writeQuadruples(source.mesh.vNeighbors, "4\n", file);
}

} // namespace VORN3D::program
