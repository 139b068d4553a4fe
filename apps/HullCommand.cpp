#include "SurfaceJob.h"
#include "commands.h"

#include "vorn3d/geometry/HullSurface.h"

#include <algorithm>
#include <memory>

namespace VORN3D::program
{

namespace
{

struct HullOptions : SurfaceOptions
{
    bool bPolygons = false;
};

ExitStatus work(const HullOptions& options, MeshJob& job)
{
    const HullSurface hull = makeHullSurface(job.triangulation, job.vHandles);
    const HullPolygons polygons = mergeCoplanarTriangles(hull, job.vHandles);
    job.report.add("points on the hull", hull.vVertices.size());
    job.report.add("corners",
                   std::count(polygons.vPlaces.begin(), polygons.vPlaces.end(), HullPlace3::CORNER));
    job.report.add("flat sides", polygons.vFirst.size() - 1);
    job.report.add("area", hull.area);
    job.report.add("volume", hull.volume);
    const std::vector<const Point3*> vPoints = getConstHandles(job);
    writeSurface(options, job,
                 options.bPolygons ? makeSurface(vPoints, polygons.vCorners,
                                                 {polygons.vFirst.begin() + 1, polygons.vFirst.end()})
                                   : makeSurface(vPoints, hull.vTriangles));
    return exitSuccess;
}

const char* const hullDescription = "Make the convex hull of the points of a file";

const char* const hullNotes = R"(

The hull is written as the triangles that the mesh has on it, counter-clockwise from outside; all points
on it are vertices, also those in the middle of flat sides and straight edges. With --polygons it is
written as a polyhedron: triangles in one plane are one side, and only the corners are left. Which
points and triangles these are is decided exactly.

A file appears under its name when it is complete. Points that all lie in one plane have no such
surface: the exit status is 3 then. All exit statuses are listed by vorn3d --help.

Examples:
  vorn3d hull scan.xyz
  vorn3d hull scan.xyz -o hull.stl
  vorn3d hull building.csv --polygons -o hull.ply --json
)";

} // namespace

void addHullCommand(CLI::App& app, ExitStatus& status)
{
    const auto pOptions = std::make_shared<HullOptions>();
    CLI::App* pCommand = app.add_subcommand("hull", hullDescription);
    addSurfaceOptions(*pCommand, *pOptions);
    pCommand->add_flag("--polygons", pOptions->bPolygons, "Write flat sides as polygons");
    pCommand->footer(describeSurfaceFormats() + hullNotes);
    pCommand->callback([pOptions, &status] {
        status = runSurfaceJob(*pOptions, [&](MeshJob& job) { return work(*pOptions, job); });
    });
}

} // namespace VORN3D::program
