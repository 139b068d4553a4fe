#include "TriangulateCommand.h"

#include "Interruption.h"
#include "LibraryOutput.h"
#include "Progress.h"
#include "Report.h"
#include "Statistics.h"
#include "Stopwatch.h"
#include "Summary.h"
#include "input/readPoints.h"
#include "output/meshWriters.h"
#include "output/picture.h"
#include "platform/platform.h"

#include "vorn3d/Vorn_3D.h"

#include <iostream>
#include <memory>

namespace VORN3D::program
{

namespace
{

struct TriangulateOptions
{
    std::string input;
    std::string inputFormat;
    std::vector<std::string> vOutputs;
    std::string picture;
    std::string pictureQuantity = pictureQuantities.front();
    bool bCheck = false;
    bool bStatistics = false;
    bool bJson = false;
    bool bVerbose = false;
};

/// Does work of the triangulation that tells how far it has come.
template <typename Work>
void showProgress(const std::string& label, Vorn_3D& triangulation, const Work& work)
{
    Progress progress(label);
    triangulation.setProgressObserver([&](std::size_t numDone, std::size_t numTotal) {
        progress.update(numDone, numTotal);
        return true;
    });
    work();
    triangulation.setProgressObserver({});
    InterruptionWatch::check();
}

/// Inserts the points of the file, takes the times and counts what came out.
Summary fillTriangulation(const TriangulateOptions& options, Vorn_3D& triangulation)
{
    Summary summary;
    const Stopwatch reading;
    std::vector<Point3> vPoints = readPoints(options.input, options.inputFormat);
    summary.secondsReading = reading.getSeconds();
    summary.numPoints = vPoints.size();
    const Stopwatch inserting;
    showProgress("triangulating", triangulation, [&] { triangulation.insert(vPoints); });
    summary.secondsTriangulating = inserting.getSeconds();
    summary.counts = countMesh(triangulation);
    return summary;
}

bool checkMesh(const std::string& name, Vorn_3D& triangulation)
{
    bool bSound = false;
    showProgress("checking", triangulation, [&] { bSound = triangulation.checkValidity(name, true); });
    return bSound;
}

void addStatistics(const Summary& summary, const Vorn_3D& triangulation, Report& report)
{
    report.add("duplicates", summary.numPoints - summary.counts.numVertices);
    if (triangulation.is3D())
        measureMesh(triangulation).addTo(report);
    report.add("peak memory", getPeakMemory(), "bytes");
}

void writeOutputs(const TriangulateOptions& options, Vorn_3D& triangulation)
{
    if (options.vOutputs.empty())
        return;
    const Mesh mesh = makeMesh(triangulation);
    for (const std::string& path : options.vOutputs) {
        OutputFile file(path);
        chooseMeshFormat(path).pFunction({triangulation, mesh}, file);
        InterruptionWatch::check();
        file.commit();
    }
}

void drawPicture(const TriangulateOptions& options, const Vorn_3D& triangulation)
{
    if (options.picture.empty())
        return;
    OutputFile file(options.picture);
    writePicture(triangulation, options.pictureQuantity, file);
    InterruptionWatch::check();
    file.commit();
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

/// Does what the options ask for; the library's messages stay off standard output meanwhile.
ExitStatus work(const TriangulateOptions& options, Report& report)
{
    const LibraryOutput redirection(options.bVerbose);
    const std::string name = getDisplayName(options.input);
    Vorn_3D triangulation;
    triangulation.setVerbosity(options.bVerbose);
    const Summary summary = fillTriangulation(options, triangulation);
    summary.addTo(report);
    if (options.bStatistics)
        addStatistics(summary, triangulation, report);
    if (!triangulation.is3D()) {
        std::cerr << name << ": all points lie in one plane: there is no tetrahedron\n";
        return exitCoplanar;
    }
    if (options.bCheck) {
        const bool bSound = checkMesh(name, triangulation);
        report.add("valid", bSound);
        if (!bSound)
            return exitFailure;
    }
    writeOutputs(options, triangulation);
    drawPicture(options, triangulation);
    return exitSuccess;
}

ExitStatus triangulate(const TriangulateOptions& options)
{
    checkOutputs(options);
    const InterruptionWatch watch;
    Report report;
    const ExitStatus status = work(options, report);
    if (options.bJson)
        report.printJson(std::cout);
    else
        report.printText(std::cout);
    std::cout.flush();
    if (!std::cout)
        throw std::runtime_error("cannot write the summary to standard output");
    return status;
}

const char* const description =
    "Triangulate the points of a file, print the mesh's size and the time it took";

const char* const notes = R"(

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
    CLI::App* pCommand = app.add_subcommand("triangulate", description);
    pCommand->add_option("FILE", pOptions->input, "The file of points; - is standard input, read as text")
        ->required();
    pCommand->add_option("--format", pOptions->inputFormat, "Read this format, whatever the file's extension")
        ->check(CLI::IsMember(getFormatNames(getPointFormats())));
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
    pCommand->add_flag("--json", pOptions->bJson, "Print the report as a JSON object");
    pCommand->add_flag("-v,--verbose", pOptions->bVerbose,
                       "Show the library's own messages on standard error");
    pCommand->footer("Formats of points, chosen by the file's extension in small letters or capitals:" +
                     describeFormats(getPointFormats()) + "\n\nFormats of meshes, chosen in the same way:" +
                     describeFormats(getMeshFormats()) + notes);
    pCommand->callback([pOptions, &status] { status = triangulate(*pOptions); });
}

} // namespace VORN3D::program
