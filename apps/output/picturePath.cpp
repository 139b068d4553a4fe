#include "FileFormat.h"
#include "output/picture.h"

namespace VORN3D::program
{

void checkPicturePath(const std::string& path)
{
    if (getLowerExtension(path) != ".png")
        throw InputError(path, "the name of a picture ends with .png");
    if (!hasVtk())
        throw InputError(path, vtkMissing);
}

} // namespace VORN3D::program
