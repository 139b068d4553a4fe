#include "QueryJob.h"
#include "commands.h"
#include "input/readPoints.h"

#include "vorn3d/geometry/nearestVertex.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace VORN3D::program
{

namespace
{

constexpr std::uint64_t maxNeighbors = 1'000'000;

struct NearestOptions : QueryOptions
{
    std::uint64_t numNeighbors = 1;
};

double getDistance(const Point3& p, const Point3& q)
{
    return std::hypot(p.x() - q.x(), p.y() - q.y(), p.z() - q.z());
}

/// The distances from queries to their nearest points.
class Distances
{
public:
    void add(double distance)
    {
        m_least = std::min(m_least, distance);
        m_greatest = std::max(m_greatest, distance);
        m_mean += (distance - m_mean) / static_cast<double>(++m_num);
    }

    void addTo(Report& report) const
    {
        report.add("distance to nearest",
                   Report::Value{{"least", m_least}, {"mean", m_mean}, {"greatest", m_greatest}});
    }

private:
    double m_least = HUGE_VAL;
    double m_greatest = 0.0;
    double m_mean = 0.0;
    std::size_t m_num = 0;
};

ExitStatus work(const NearestOptions& options, MeshJob& job)
{
    const std::vector<Point3> vQueries = readPoints(options.queries, options.queryFormat);
    job.triangulateFile();
    job.requireMesh();
    const std::size_t k = std::min<std::size_t>(options.numNeighbors, job.summary.counts.numVertices);
    Distances distances;
    const auto answer = [&](const std::vector<Point3>& vBlock, std::size_t numBefore, const AddRow& addRow) {
        const std::vector<Point3*> vNearest = nearestVertices(job.triangulation, vBlock, k);
        for (std::size_t i = 0; i < vNearest.size(); ++i) {
            const std::size_t query = i / k;
            const double distance = getDistance(*vNearest[i], vBlock[query]);
            addRow({static_cast<double>(numBefore + query),
                    static_cast<double>(vNearest[i]->getCustomIndex()), distance});
            if (i % k == 0)
                distances.add(distance);
        }
    };
    answerQueries(job, options, vQueries, {"query", "point", "distance"}, answer);
    distances.addTo(job.report);
    return exitSuccess;
}

const char* const nearestDescription = "Find the points of a file that are nearest to those of another";

const char* const nearestNotes = R"(

The answers are lines of three numbers: the place of a query in its file, the place of a point in the
other one, both counted from 0, and their distance. The lines of a query follow each other, nearest
points first; of points at the same distance the first by x, y, z comes first. Equal points count once,
at the first of their places. Which points are nearest is decided exactly.

The file of answers appears under its name when it is complete. If it is standard output, the report
goes to standard error. Exit statuses are listed by vorn3d --help.

Examples:
  vorn3d nearest scan.ply probes.xyz -o nearest.csv
  vorn3d nearest -k 10 scan.ply probes.xyz -o - | head
)";

} // namespace

void addNearestCommand(CLI::App& app, ExitStatus& status)
{
    const auto pOptions = std::make_shared<NearestOptions>();
    CLI::App* pCommand = app.add_subcommand("nearest", nearestDescription);
    addQueryOptions(
        *pCommand, *pOptions,
        {"FILE", "The file of points; - is standard input, read as text", getFormatNames(getPointFormats())});
    pCommand->add_option("-k,--neighbors", pOptions->numNeighbors, "How many points for each query")
        ->capture_default_str()
        ->check(CLI::Range(std::uint64_t(1), maxNeighbors));
    pCommand->footer(describeQueryFormats() + nearestNotes);
    pCommand->callback([pOptions, &status] {
        status = runQueryJob(*pOptions, [&](MeshJob& job) { return work(*pOptions, job); });
    });
}

} // namespace VORN3D::program
