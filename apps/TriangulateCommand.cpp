#include "MeshJob.h"
#include "Statistics.h"
#include "commands.h"
#include "input/readPoints.h"
#include "output/meshWriters.h"
#include "output/picture.h"
#include "output/writeFile.h"
#include "platform/platform.h"

#include <iostream>
#include <memory>

namespace VORN3D::program
{

namespace
{

struct TriangulateOptions : MeshOptions
{
    std::vector<std::string> vOutputs;
    std::string picture;
    std::string pictureQuantity = pictureQuantities.front();
    bool bCheck = false;
    bool bStatistics = false;
};

bool checkMesh(MeshJob& job)
{
    bool bSound = false;
    job.showProgress("checking", [&] {
        bSound = job.triangulation.checkValidity(getDisplayName(job.options.input), true);
    });
    job.report.add("valid", bSound);
    return bSound;
}

void addStatistics(MeshJob& job)
{
    job.report.add("duplicates", job.summary.numPoints - job.summary.counts.numVertices);
    if (job.triangulation.is3D())
        makeStatistics(job.triangulation).addTo(job.report);
    job.report.add("peak memory", getPeakMemory(), "bytes");
}

void writeOutputs(const TriangulateOptions& options, Vorn_3D& triangulation)
{
    if (!options.vOutputs.empty()) {
        const Mesh mesh = makeMesh(triangulation);
        for (const std::string& path : options.vOutputs)
            writeFile(path, [&](OutputFile& file) {
                chooseMeshFormat(path).pFunction({triangulation, mesh}, file);
            });
    }
    if (!options.picture.empty())
        writeFile(options.picture,
                  [&](OutputFile& file) { writePicture(triangulation, options.pictureQuantity, file); });
}

/// Refuses outputs that cannot be made, before any work.
void checkOutputs(const TriangulateOptions& options)
{
    for (const std::string& path : options.vOutputs) {
        chooseMeshFormat(path);
        OutputFile::probe(path);
    }
    if (!options.picture.empty()) {
        checkPicturePath(options.picture);
        OutputFile::probe(options.picture);
    }
}

ExitStatus work(const TriangulateOptions& options, MeshJob& job)
{
    job.triangulateFile();
    if (options.bStatistics)
        addStatistics(job);
    job.requireMesh();
    if (options.bCheck && !checkMesh(job))
        return exitFailure;
    writeOutputs(options, job.triangulation);
    return exitSuccess;
}

ExitStatus triangulate(const TriangulateOptions& options)
{
    checkOutputs(options);
    return runMeshJob(
        options, [&](MeshJob& job) { return work(options, job); }, std::cout);
}

const char* const triangulateDescription =
    "Triangulate the points of a file, print the mesh's size and the time it took";

const char* const triangulateNotes = R"(

In text, columns after the third are ignored, as are empty lines, a line of column names before the
first point and everything after a #. Decimal commas are not understood. Every number is read as the
double nearest to it; NaN, infinities and numbers beyond the range of double are errors. From obj and
stl files VTK's readers take the coordinates in single precision, even where the file has more.

Equal points make one vertex. Points that all lie in one plane make no tetrahedron: the exit status
is 3 then. All exit statuses are listed by vorn3d --help.

Statistics are computed in floating-point arithmetic. The edge ratio of a tetrahedron is that of its
longest edge to its shortest; it counts as flat if its volume is below 1e-10 of its longest edge's cube.

In files of meshes, vertices are in the order of the input, without the repetitions of equal points, and
tetrahedra are positively oriented. A file appears under its name when it is complete. A mesh that fails
the check is not written. Ctrl-C ends the work with a message and status 130.

Examples:
  vorn3d triangulate scan.xyz
  zcat scan.csv.gz | vorn3d triangulate -
  vorn3d triangulate --format bin points.dat
  vorn3d triangulate scan.xyz --check --stats --json
  vorn3d triangulate scan.xyz --picture scan.png --color ratio
  vorn3d triangulate scan.xyz -o scan.mesh -o hull.ply
)";

} // namespace

void addTriangulateCommand(CLI::App& app, ExitStatus& status)
{
    const auto pOptions = std::make_shared<TriangulateOptions>();
    CLI::App* pCommand = app.add_subcommand("triangulate", triangulateDescription);
    addMeshOptions(
        *pCommand, *pOptions,
        {"FILE", "The file of points; - is standard input, read as text", getFormatNames(getPointFormats())});
    pCommand
        ->add_option("-o,--output", pOptions->vOutputs,
                     "Write the mesh into this file, in the format of its extension; may be given repeatedly")
        ->allow_extra_args(false);
    pCommand->add_option("--picture", pOptions->picture,
                         "Draw the mesh, cut open in the middle, into this .png file; needs no display");
    pCommand->add_option("--color", pOptions->pictureQuantity, "What the colours of the picture show")
        ->capture_default_str()
        ->check(CLI::IsMember(pictureQuantities));
    pCommand->add_flag(
        "--check", pOptions->bCheck,
        "Check the mesh, exactly: links, orientation, empty spheres; a fault is named on standard "
        "error and drawn in a file 00000_....list, and the exit status is 1");
    pCommand->add_flag("--stats", pOptions->bStatistics,
                       "Report area, volume, angles, edge ratios, duplicates and memory too");
    pCommand->footer("Formats of points, chosen by the file's extension in small letters or capitals:" +
                     describeFormats(getPointFormats()) + "\n\nFormats of meshes, chosen in the same way:" +
                     describeFormats(getMeshFormats()) + triangulateNotes);
    pCommand->callback([pOptions, &status] { status = triangulate(*pOptions); });
}

} // namespace VORN3D::program
