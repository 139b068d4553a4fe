// The text format of the Medit viewer (P. Frey, Medit: an interactive mesh visualization software, 2001):
// items numbered from 1, each with a reference number.
#include "output/TextOutput.h"
#include "output/meshWriters.h"

#include "vorn3d/Point3.h"

namespace VORN3D::program
{

namespace
{

constexpr int reference = 0;

void beginSection(TextOutput& text, const char* keyword, std::size_t num)
{
    text.write(keyword);
    text.endLine();
    text.writeNumber(num);
    text.endLine();
}

template <typename Cells>
void writeCells(TextOutput& text, const char* keyword, const Cells& vCells)
{
    beginSection(text, keyword, vCells.size());
    for (const auto& corners : vCells) {
        text.writeNumbers(corners, 1);
        text.writeNumber(reference);
        text.endLine();
    }
}

} // namespace

void writeMedit(const MeshSource& source, OutputFile& file)
{
    const Mesh& mesh = source.mesh;
    TextOutput text(file, mesh.vVertices.size() + mesh.vCorners.size() + mesh.vHullFacets.size());
    text.write("MeshVersionFormatted 2\nDimension 3\n");
    beginSection(text, "Vertices", mesh.vVertices.size());
    for (const Point3* pVtx : mesh.vVertices) {
        text.writeCoordinates(*pVtx);
        text.writeNumber(reference);
        text.endLine();
    }
    writeCells(text, "Tetrahedra", mesh.vCorners);
    writeCells(text, "Triangles", mesh.vHullFacets);
    text.write("End\n");
    text.finish();
}

} // namespace VORN3D::program
