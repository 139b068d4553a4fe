#pragma once

#include "MeshJob.h"
#include "output/surfaceWriters.h"

#include <functional>
#include <string>
#include <vector>

namespace VORN3D::program
{

/// The options of every command that makes a surface of the points of a file.
struct SurfaceOptions : MeshOptions
{
    std::vector<std::string> vOutputs;
    std::string picture;
};

/// Adds those of addMeshOptions(), --output and --picture.
void addSurfaceOptions(CLI::App& command, SurfaceOptions& options);

/// The formats of points and of surfaces, for the end of a help text.
std::string describeSurfaceFormats();

/// Writes the files and the picture that are wanted.
void writeSurface(const SurfaceOptions& options, const MeshJob& job, const Surface& surface);

/// Of the mesh, in the order of the file.
std::vector<const Point3*> getConstHandles(const MeshJob& job);

/// Runs a command as runMeshJob() does, with the points' file triangulated, if files can stand where they are
/// wanted.
ExitStatus runSurfaceJob(const SurfaceOptions& options, const std::function<ExitStatus(MeshJob&)>& work);

} // namespace VORN3D::program
