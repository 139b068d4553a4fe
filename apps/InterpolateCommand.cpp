#include "InputError.h"
#include "QueryJob.h"
#include "commands.h"
#include "input/readPoints.h"

#include "vorn3d/geometry/interpolate.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>

namespace VORN3D::program
{

namespace
{

const std::map<std::string, InterpolationMethod3> methods{{"linear", InterpolationMethod3::LINEAR},
                                                          {"natural", InterpolationMethod3::NATURAL},
                                                          {"nearest", InterpolationMethod3::NEAREST}};
const std::map<std::string, OutsideHull3> placesOutside{
    {"nothing", OutsideHull3::NOTHING}, {"nearest", OutsideHull3::NEAREST}, {"clamp", OutsideHull3::CLAMP}};

struct InterpolateOptions : QueryOptions
{
    std::string method = "natural";
    std::string outside = "nothing";
};

/// The interpolated values of all columns, and their ranges.
class Columns
{
public:
    explicit Columns(const PointTable& table)
        : m_table(table), m_vLeast(table.numColumns, HUGE_VAL), m_vGreatest(table.numColumns, -HUGE_VAL)
    {
    }

    /// The names of the answers' columns.
    std::vector<std::string> getNames() const
    {
        std::vector<std::string> vNames{"x", "y", "z"};
        vNames.insert(vNames.end(), m_table.vColumnNames.begin(), m_table.vColumnNames.end());
        return vNames;
    }

    void addRows(const std::vector<Point3>& vQueries, const InterpolationMatrix& matrix, const AddRow& addRow)
    {
        const std::vector<double> vResults = matrix.apply(m_table.vValues, m_table.numColumns);
        std::vector<double> vRow;
        for (std::size_t i = 0; i < vQueries.size(); ++i) {
            const auto values = vResults.begin() + static_cast<std::ptrdiff_t>(i * m_table.numColumns);
            vRow.assign({vQueries[i].x(), vQueries[i].y(), vQueries[i].z()});
            vRow.insert(vRow.end(), values, values + static_cast<std::ptrdiff_t>(m_table.numColumns));
            addRow(vRow);
            m_numWithout += matrix.vRowStart[i] == matrix.vRowStart[i + 1];
            for (std::size_t k = 0; k < m_table.numColumns; ++k) {
                m_vLeast[k] = std::fmin(m_vLeast[k], vRow[3 + k]);
                m_vGreatest[k] = std::fmax(m_vGreatest[k], vRow[3 + k]);
            }
        }
    }

    void addTo(Report& report) const
    {
        report.add("queries without values", m_numWithout);
        report.add("least", makeObject(m_vLeast));
        report.add("greatest", makeObject(m_vGreatest));
    }

private:
    Report::Value makeObject(const std::vector<double>& vValues) const
    {
        Report::Value object = Report::Value::object();
        for (std::size_t k = 0; k < vValues.size(); ++k)
            object[m_table.vColumnNames[k]] = vValues[k];
        return object;
    }

    const PointTable& m_table;
    std::vector<double> m_vLeast;
    std::vector<double> m_vGreatest;
    std::size_t m_numWithout = 0;
};

ExitStatus work(const InterpolateOptions& options, MeshJob& job)
{
    const Stopwatch reading;
    const PointTable table = readPointTable(options.input, options.inputFormat);
    const std::vector<Point3> vQueries = readPoints(options.queries, options.queryFormat);
    job.triangulate(table.vPoints, reading);
    job.requireMesh();
    Columns columns(table);
    answerQueries(job, options, vQueries, columns.getNames(),
                  [&](const std::vector<Point3>& vBlock, std::size_t, const AddRow& addRow) {
                      columns.addRows(vBlock,
                                      makeInterpolationMatrix(job.triangulation, vBlock,
                                                              methods.at(options.method),
                                                              placesOutside.at(options.outside)),
                                      addRow);
                  });
    columns.addTo(job.report);
    return exitSuccess;
}

const char* const interpolateDescription =
    "Interpolate values that are known at points, at the points of another file";

const char* const interpolateNotes = R"(

VALUES is a table: on each line x, y, z and as many values as you like. A first line without numbers
names the columns. Of equal points the first one's values count. QUERIES is a file of points, of which
columns after the third are ignored. The answers are lines of x, y, z of a query and its values, in the
order of the queries.

Methods:
  natural   Sibson's: weights are the volumes that the query's Voronoi cell would take from the
            cells of its neighbours; smooth but at the points themselves
  linear    within the tetrahedron that contains the query; continuous
  nearest   the values of the nearest point; constant on each Voronoi cell
At the points all of them give the values of the points. The first two reproduce linear functions.

Beyond the convex hull of the points, --outside decides: nothing gives nan, nearest the values of the
nearest point, clamp those of the nearest place of the hull. The method nearest is good everywhere.

The file of answers appears under its name when it is complete. If it is standard output, the report
goes to standard error. Exit statuses are listed by vorn3d --help.

Examples:
  vorn3d interpolate stations.csv grid.xyz -o grid.csv
  vorn3d interpolate --method linear --outside clamp stations.csv grid.xyz -o - | head
)";

} // namespace

void addInterpolateCommand(CLI::App& app, ExitStatus& status)
{
    const auto pOptions = std::make_shared<InterpolateOptions>();
    CLI::App* pCommand = app.add_subcommand("interpolate", interpolateDescription);
    addQueryOptions(
        *pCommand, *pOptions,
        {"VALUES", "The table of points and values; - is standard input", getFormatNames(getTableFormats())});
    pCommand->add_option("--method", pOptions->method, "How values are made of those around")
        ->capture_default_str()
        ->check(CLI::IsMember(methods));
    pCommand->add_option("--outside", pOptions->outside, "What queries beyond the hull get")
        ->capture_default_str()
        ->check(CLI::IsMember(placesOutside));
    pCommand->footer("Formats of values:" + describeFormats(getTableFormats()) + "\n\n" +
                     describeQueryFormats() + interpolateNotes);
    pCommand->callback([pOptions, &status] {
        status = runQueryJob(*pOptions, [&](MeshJob& job) { return work(*pOptions, job); });
    });
}

} // namespace VORN3D::program
