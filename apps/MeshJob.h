#pragma once

#include "ExitStatus.h"
#include "Report.h"
#include "Stopwatch.h"
#include "Summary.h"

#include "vorn3d/Vorn_3D.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

namespace VORN3D::program
{

/// The options of every command that makes a mesh of the points of a file.
struct MeshOptions
{
    std::string input;
    std::string inputFormat;
    bool bJson = false;
    bool bVerbose = false;
};

/// The file on the command line as help shows it, and the names of the formats that it may have.
struct FileArgument
{
    std::string name;
    std::string description;
    std::vector<std::string> vFormatNames;
};

/// Adds the file, and --format, --json and --verbose.
void addMeshOptions(CLI::App& command, MeshOptions& options, const FileArgument& file);

/// What a command works on: the mesh of the points, and the report that is printed in the end.
class MeshJob
{
public:
    MeshJob(const MeshOptions& options, Report& report);
    MeshJob(const MeshJob&) = delete;
    MeshJob& operator=(const MeshJob&) = delete;

    /// Reads the file as points, triangulates them and reports the summary.
    void triangulateFile();

    /// The same for points that the command has read itself, since the stopwatch was started.
    void triangulate(std::vector<Point3> vPoints, const Stopwatch& reading);

    /// Ends the work with a message, and the program with the status for coplanar points, if there is no
    /// mesh.
    void requireMesh() const;

    /// Does work of the triangulation that tells how far it has come.
    void showProgress(const std::string& label, const std::function<void()>& work);

    const MeshOptions& options;
    Report& report;
    Vorn_3D triangulation;
    std::vector<Point3*> vHandles; ///< of the points, in the order of the file
    Summary summary;
};

/// Runs a command and prints its report, also after a failure of its own. Meanwhile Ctrl-C ends the work
/// tidily, and the library's messages stay off standard output.
ExitStatus runMeshJob(const MeshOptions& options, const std::function<ExitStatus(MeshJob&)>& work,
                      std::ostream& reportStream);

} // namespace VORN3D::program
