#include "MeshJob.h"

#include "Interruption.h"
#include "LibraryOutput.h"
#include "Progress.h"
#include "input/readPoints.h"

#include <iostream>
#include <stdexcept>

namespace VORN3D::program
{

namespace
{

/// There is no mesh, and so nothing more to do.
struct CoplanarPoints
{
};

ExitStatus runQuietly(const MeshOptions& options, const std::function<ExitStatus(MeshJob&)>& work,
                      Report& report)
{
    const LibraryOutput redirection(options.bVerbose);
    MeshJob job(options, report);
    try {
        return work(job);
    } catch (const CoplanarPoints&) {
        std::cerr << getDisplayName(options.input)
                  << ": all points lie in one plane: there is no tetrahedron\n";
        return exitCoplanar;
    }
}

} // namespace

void addMeshOptions(CLI::App& command, MeshOptions& options, const FileArgument& file)
{
    command.add_option(file.name, options.input, file.description)->required();
    command.add_option("--format", options.inputFormat, "Read this format, whatever the file's extension")
        ->check(CLI::IsMember(file.vFormatNames));
    command.add_flag("--json", options.bJson, "Print the report as a JSON object");
    command.add_flag("-v,--verbose", options.bVerbose, "Show the library's own messages on standard error");
}

MeshJob::MeshJob(const MeshOptions& options_, Report& report_) : options(options_), report(report_)
{
    triangulation.setVerbosity(options.bVerbose);
}

void MeshJob::triangulateFile()
{
    const Stopwatch reading;
    triangulate(readPoints(options.input, options.inputFormat), reading);
}

void MeshJob::triangulate(std::vector<Point3> vPoints, const Stopwatch& reading)
{
    summary.secondsReading = reading.getSeconds();
    summary.numPoints = vPoints.size();
    const Stopwatch inserting;
    showProgress("triangulating", [&] { triangulation.insert(vPoints, vHandles); });
    summary.secondsTriangulating = inserting.getSeconds();
    summary.counts = countMesh(triangulation);
    summary.addTo(report);
}

void MeshJob::requireMesh() const
{
    if (!triangulation.is3D())
        throw CoplanarPoints();
}

void MeshJob::showProgress(const std::string& label, const std::function<void()>& work)
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

ExitStatus runMeshJob(const MeshOptions& options, const std::function<ExitStatus(MeshJob&)>& work,
                      std::ostream& reportStream)
{
    const InterruptionWatch watch;
    Report report;
    const ExitStatus status = runQuietly(options, work, report);
    if (options.bJson)
        report.printJson(reportStream);
    else
        report.printText(reportStream);
    reportStream.flush();
    if (!reportStream)
        throw std::runtime_error("cannot write the summary to standard output");
    return status;
}

} // namespace VORN3D::program
