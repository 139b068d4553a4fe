// Meshes for ParaView and everything else that reads VTK's files: points in double precision, input index and
// hull flag of each vertex, hull flag of each tetrahedron.
#include "VtkObservers.h"
#include "output/meshWriters.h"
#include "output/unstoppableWork.h"
#include "vtkSupport.h"

#include "vorn3d/Point3.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkIntArray.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkUnstructuredGrid.h>
#include <vtkUnstructuredGridWriter.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace VORN3D::program
{

namespace
{

vtkNew<vtkPoints> makePoints(const Mesh& mesh)
{
    vtkNew<vtkPoints> pPoints;
    pPoints->SetDataTypeToDouble();
    pPoints->Allocate(static_cast<vtkIdType>(mesh.vVertices.size()));
    for (const Point3* pVtx : mesh.vVertices)
        pPoints->InsertNextPoint(pVtx->getCoordinates());
    return pPoints;
}

vtkNew<vtkCellArray> makeCells(const Mesh& mesh)
{
    const auto numTets = static_cast<vtkIdType>(mesh.vCorners.size());
    vtkNew<vtkCellArray> pCells;
    // Half as much to compress, where the offsets of all corners fit.
    if (numTets <= std::numeric_limits<std::int32_t>::max() / 4)
        pCells->Use32BitStorage();
    pCells->AllocateExact(numTets, 4 * numTets);
    for (const Mesh::Quadruple& corners : mesh.vCorners) {
        const vtkIdType ids[4]{corners[0], corners[1], corners[2], corners[3]};
        pCells->InsertNextCell(4, ids);
    }
    return pCells;
}

/// A named array with a value for each item. Of type int, which every reader knows.
template <typename Items, typename Function>
vtkNew<vtkIntArray> makeArray(const char* name, const Items& items, const Function& getValue)
{
    vtkNew<vtkIntArray> pArray;
    pArray->SetName(name);
    pArray->Allocate(static_cast<vtkIdType>(items.size()));
    for (const auto& item : items)
        pArray->InsertNextValue(getValue(item));
    return pArray;
}

bool isOnHull(const Mesh::Quadruple& neighbors)
{
    return std::count(neighbors.begin(), neighbors.end(), Mesh::none) > 0;
}

vtkNew<vtkUnstructuredGrid> makeGrid(const Mesh& mesh)
{
    vtkNew<vtkUnstructuredGrid> pGrid;
    pGrid->SetPoints(makePoints(mesh));
    pGrid->SetCells(VTK_TETRA, makeCells(mesh));
    pGrid->GetPointData()->AddArray(
        makeArray("inputIndex", mesh.vVertices, [](const Point3* pVtx) { return pVtx->getCustomIndex(); }));
    pGrid->GetPointData()->AddArray(
        makeArray("onHull", findHullVertices(mesh), [](bool bOnHull) { return static_cast<int>(bOnHull); }));
    pGrid->GetCellData()->AddArray(makeArray("onHull", mesh.vNeighbors, [](const Mesh::Quadruple& neighbors) {
        return static_cast<int>(isOnHull(neighbors));
    }));
    return pGrid;
}

/// The writers look too rarely, or never, at whether they are to stop.
template <typename Writer>
void writeWith(Writer& writer, const Mesh& mesh, OutputFile& file)
{
    doUnstoppableWork("writing " + file.getPath(), file, [&] {
        const VtkMessages messages;
        writer.SetInputData(makeGrid(mesh));
        writer.SetFileName(file.getWritablePath().c_str());
        if (writer.Write() == 0 || writer.GetErrorCode() != 0)
            throw std::runtime_error(file.getPath() + ": " +
                                     messages.getFirstError("VTK could not write the file"));
    });
}

} // namespace

bool hasVtk()
{
    return true;
}

void writeVtu(const MeshSource& source, OutputFile& file)
{
    const vtkNew<vtkXMLUnstructuredGridWriter> pWriter;
    pWriter->SetHeaderTypeToUInt64();
    pWriter->SetDataModeToAppended();
    pWriter->EncodeAppendedDataOff();
    pWriter->SetCompressorTypeToZLib();
    // The usual level takes twice the time for a file that is 4 % smaller.
    pWriter->SetCompressionLevel(1);
    writeWith(*pWriter, source.mesh, file);
}

void writeVtk(const MeshSource& source, OutputFile& file)
{
    const vtkNew<vtkUnstructuredGridWriter> pWriter;
    // Text would keep 11 digits only.
    pWriter->SetFileTypeToBinary();
    // The version that other readers than VTK's know, too.
    pWriter->SetFileVersion(vtkUnstructuredGridWriter::VTK_LEGACY_READER_VERSION_4_2);
    writeWith(*pWriter, source.mesh, file);
}

} // namespace VORN3D::program
