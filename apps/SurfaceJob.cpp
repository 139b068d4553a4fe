#include "SurfaceJob.h"

#include "input/readPoints.h"
#include "output/picture.h"
#include "output/writeFile.h"

#include <iostream>

namespace VORN3D::program
{

void addSurfaceOptions(CLI::App& command, SurfaceOptions& options)
{
    addMeshOptions(
        command, options,
        {"FILE", "The file of points; - is standard input, read as text", getFormatNames(getPointFormats())});
    command
        .add_option(
            "-o,--output", options.vOutputs,
            "Write the surface into this file, in the format of its extension; may be given repeatedly")
        ->allow_extra_args(false);
    command.add_option("--picture", options.picture,
                       "Draw the points and the surface into this .png file; needs no display");
}

std::string describeSurfaceFormats()
{
    return "Formats of points, chosen by the file's extension in small letters or capitals:" +
           describeFormats(getPointFormats()) +
           "\n\nFormats of surfaces, chosen in the same way:" + describeFormats(getSurfaceFormats());
}

std::vector<const Point3*> getConstHandles(const MeshJob& job)
{
    return {job.vHandles.begin(), job.vHandles.end()};
}

void writeSurface(const SurfaceOptions& options, const MeshJob& job, const Surface& surface)
{
    for (const std::string& path : options.vOutputs)
        writeFile(path, [&](OutputFile& file) {
            chooseFormatOfExtension(getSurfaceFormats(), path).pFunction(surface, file);
        });
    if (!options.picture.empty())
        writeFile(options.picture,
                  [&](OutputFile& file) { writeSurfacePicture(getConstHandles(job), surface, file); });
}

ExitStatus runSurfaceJob(const SurfaceOptions& options, const std::function<ExitStatus(MeshJob&)>& work)
{
    for (const std::string& path : options.vOutputs) {
        chooseFormatOfExtension(getSurfaceFormats(), path);
        OutputFile::probe(path);
    }
    if (!options.picture.empty()) {
        checkPicturePath(options.picture);
        OutputFile::probe(options.picture);
    }
    return runMeshJob(
        options,
        [&](MeshJob& job) {
            job.triangulateFile();
            job.requireMesh();
            return work(job);
        },
        std::cout);
}

} // namespace VORN3D::program
