// Takes the place of all files that use VTK in a build without it. Their formats are refused before any work,
// so these functions are not reached.
#include "InputError.h"
#include "input/pointFormats.h"
#include "output/meshWriters.h"
#include "output/picture.h"
#include "vtkSupport.h"

namespace VORN3D::program
{

namespace
{

[[noreturn]] void fail(const std::string& file)
{
    throw InputError(file, vtkMissing);
}

} // namespace

bool hasVtk()
{
    return false;
}

std::vector<Point3> readObj(ByteSource& source)
{
    fail(source.getName());
}

std::vector<Point3> readStl(ByteSource& source)
{
    fail(source.getName());
}

std::vector<Point3> readVtp(ByteSource& source)
{
    fail(source.getName());
}

std::vector<Point3> readVtu(ByteSource& source)
{
    fail(source.getName());
}

std::vector<Point3> readVtk(ByteSource& source)
{
    fail(source.getName());
}

void writeVtu(const MeshSource& /*source*/, OutputFile& file)
{
    fail(file.getPath());
}

void writeVtk(const MeshSource& /*source*/, OutputFile& file)
{
    fail(file.getPath());
}

void writePicture(const Vorn_3D& /*triangulation*/, const std::string& /*quantity*/, OutputFile& file)
{
    fail(file.getPath());
}

void writeSurfacePicture(const std::vector<const Point3*>& /*vPoints*/, const Surface& /*surface*/,
                         OutputFile& file)
{
    fail(file.getPath());
}

} // namespace VORN3D::program
