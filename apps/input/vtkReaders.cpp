// Points of the formats that VTK reads.
#include "InputError.h"
#include "Interruption.h"
#include "VtkObservers.h"
#include "input/coordinates.h"
#include "input/pointFormats.h"

#include <vtkGenericDataObjectReader.h>
#include <vtkOBJReader.h>
#include <vtkPointSet.h>
#include <vtkSTLReader.h>
#include <vtkXMLPolyDataReader.h>
#include <vtkXMLUnstructuredGridReader.h>

#include <filesystem>

namespace VORN3D::program
{

namespace
{

Point3 getPoint(vtkPointSet& data, vtkIdType i, const std::string& fileName)
{
    const double* pCoordinates = data.GetPoint(i);
    const Point3 point(pCoordinates[0], pCoordinates[1], pCoordinates[2]);
    if (!isFinite(point))
        throw InputError(fileName, "point " + std::to_string(i) +
                                       " (counted from 0) has a coordinate that is not finite");
    return point;
}

std::vector<Point3> getPoints(vtkPointSet& data, const std::string& fileName)
{
    std::vector<Point3> vPoints;
    vPoints.reserve(static_cast<std::size_t>(data.GetNumberOfPoints()));
    for (vtkIdType i = 0; i < data.GetNumberOfPoints(); ++i)
        vPoints.push_back(getPoint(data, i, fileName));
    return vPoints;
}

template <typename Reader>
std::vector<Point3> readWith(const ByteSource& source)
{
    // VTK opens files by their names.
    if (!std::filesystem::is_regular_file(source.getName()))
        throw InputError(source.getName(), "this format can only be read from a file");
    const VtkMessages messages;
    const vtkNew<Reader> pReader;
    const VtkProgress progress("reading " + source.getName(), *pReader);
    pReader->SetFileName(source.getName().c_str());
    pReader->Update();
    InterruptionWatch::check();
    auto* pData = vtkPointSet::SafeDownCast(pReader->GetOutputDataObject(0));
    if (pData == nullptr || pData->GetNumberOfPoints() == 0 || messages.hasError())
        throw InputError(source.getName(), messages.getFirstError("holds no points"));
    return getPoints(*pData, source.getName());
}

} // namespace

std::vector<Point3> readObj(ByteSource& source)
{
    return readWith<vtkOBJReader>(source);
}

std::vector<Point3> readStl(ByteSource& source)
{
    return readWith<vtkSTLReader>(source);
}

std::vector<Point3> readVtp(ByteSource& source)
{
    return readWith<vtkXMLPolyDataReader>(source);
}

std::vector<Point3> readVtu(ByteSource& source)
{
    return readWith<vtkXMLUnstructuredGridReader>(source);
}

std::vector<Point3> readVtk(ByteSource& source)
{
    return readWith<vtkGenericDataObjectReader>(source);
}

} // namespace VORN3D::program
