#pragma once

#include "FileFormat.h"
#include "Mesh.h"
#include "output/OutputFile.h"

#include <string>

namespace VORN3D::program
{

/// A triangulation, and the same as numbers.
struct MeshSource
{
    Vorn_3D& triangulation;
    const Mesh& mesh;
};

using WriteMeshFunction = void(const MeshSource& source, OutputFile& file);

/// The formats in which meshes are written.
const FileFormats<WriteMeshFunction>& getMeshFormats();

/// The format of the file's extension. Throws InputError if there is none, or if this build lacks what it
/// needs.
const FileFormat<WriteMeshFunction>& chooseMeshFormat(const std::string& path);

WriteMeshFunction writeVtu;
WriteMeshFunction writeVtk;
WriteMeshFunction writeMedit;
WriteMeshFunction writeTetgenNodes;
WriteMeshFunction writeTetgenElements;
WriteMeshFunction writeTetgenNeighbors;

} // namespace VORN3D::program
