#include "TriangulateCommand.h"

#include "LibraryOutput.h"
#include "Stopwatch.h"
#include "Summary.h"
#include "input/readPoints.h"

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
    bool bVerbose = false;
};

/// Inserts the points, takes the time and counts what came out.
void insertPoints(std::vector<Point3>& vPoints, bool bVerbose, Summary& summary)
{
    const LibraryOutput redirection(bVerbose);
    Vorn_3D triangulation;
    triangulation.setVerbosity(bVerbose);
    const Stopwatch stopwatch;
    triangulation.insert(vPoints);
    summary.secondsTriangulating = stopwatch.getSeconds();
    summary.counts = countMesh(triangulation);
}

ExitStatus triangulate(const TriangulateOptions& options)
{
    Summary summary;
    const Stopwatch stopwatch;
    std::vector<Point3> vPoints = readPoints(options.input, options.inputFormat);
    summary.secondsReading = stopwatch.getSeconds();
    summary.numPoints = vPoints.size();

    insertPoints(vPoints, options.bVerbose, summary);
    std::cout << summary << std::flush;
    if (!std::cout)
        throw std::runtime_error("cannot write the summary to standard output");
    if (summary.counts.numTetrahedra > 0)
        return exitSuccess;
    std::cerr << getDisplayName(options.input) << ": all points lie in one plane: there is no tetrahedron\n";
    return exitCoplanar;
}

const char* const description =
    "Triangulate the points of a file, print the mesh's size and the time it took";

const char* const notes = R"(

In text, columns after the third are ignored, as are empty lines, a line of column names before the
first point and everything after a #. Decimal commas are not understood. Every number is read as the
double nearest to it; NaN, infinities and numbers beyond the range of double are errors.

Equal points make one vertex. Points that all lie in one plane make no tetrahedron: the exit status
is 3 then. All exit statuses are listed by vorn3d --help.

Examples:
  vorn3d triangulate scan.xyz
  zcat scan.csv.gz | vorn3d triangulate -
  vorn3d triangulate --format bin points.dat
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
    pCommand->add_flag("-v,--verbose", pOptions->bVerbose,
                       "Show the library's own messages on standard error");
    pCommand->footer("Formats of points, chosen by the file's extension in small letters or capitals:" +
                     describeFormats(getPointFormats()) + notes);
    pCommand->callback([pOptions, &status] { status = triangulate(*pOptions); });
}

} // namespace VORN3D::program
