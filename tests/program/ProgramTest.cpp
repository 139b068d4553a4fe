// The program as the shell sees it: exit status, standard output, standard error, and the files it leaves.
#include "ExitStatus.h"
#include "PointGenerator.h"
#include "TemporaryDirectory.h"
#include "input/readPoints.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <map>
#include <set>

#include <sys/wait.h>

namespace VORN3D::program
{

namespace
{

struct Outcome
{
    int status;
    std::string output;
    std::string errors;
};

class Program : public testing::Test
{
protected:
    /// Runs a command line in the temporary directory; "vorn3d" in it is the program. No terminal, no input.
    Outcome run(const std::string& command) const
    {
        const TemporaryDirectory captured;
        const std::string script = "cd " + m_directory.getPath("") + " && exec >" + captured.getPath("out") +
                                   " 2>" + captured.getPath("err") + " </dev/null\n" +
                                   "vorn3d() { " VORN3D_PROGRAM " \"$@\"; }\n" + command;
        const int result = std::system(script.c_str());
        return {WEXITSTATUS(result), captured.read("out"), captured.read("err")};
    }

    TemporaryDirectory m_directory;
};

/// The numbers of the summary by name; fails on a line that is not "name: number" or "name: number s".
std::map<std::string, double> parseSummary(const std::string& summary)
{
    std::map<std::string, double> values;
    std::istringstream lines(summary);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t colon = line.find(':');
        std::istringstream rest(colon == std::string::npos ? "" : line.substr(colon + 1));
        double value = -1.0;
        std::string unit;
        EXPECT_TRUE(rest >> value && (!(rest >> unit) || unit == "s")) << line;
        values[line.substr(0, colon)] = value;
    }
    return values;
}

TEST_F(Program, PrintsTheSummaryAndNothingElse)
{
    const Outcome outcome = run("vorn3d triangulate " VORN3D_DATA_DIR "/spot/spot.xyz");
    EXPECT_EQ(outcome.status, exitSuccess);
    EXPECT_EQ(outcome.errors, "");
    auto summary = parseSummary(outcome.output);
    EXPECT_EQ(summary.size(), 7u) << outcome.output;
    EXPECT_EQ(summary["points"], 11533);
    EXPECT_EQ(summary["vertices"], 11533);
}

/// Triangulates a grid of 3 x 3 x 3, each point twice; options may follow.
const std::string triangulateGrid =
    "{ vorn3d generate --shape grid -n 27 -o -; vorn3d generate --shape grid -n 27 -o -; } |"
    " vorn3d triangulate -";

TEST_F(Program, CountsTheMesh)
{
    // All points but the middle one are on the hull, and a closed surface of
    // 26 vertices has 2 * 26 - 4 triangles. Each of the 8 cells holds 5 or 6 tetrahedra.
    const Outcome outcome = run(triangulateGrid);
    EXPECT_EQ(outcome.status, exitSuccess) << outcome.errors;
    auto summary = parseSummary(outcome.output);
    EXPECT_EQ(summary["points"], 54);
    EXPECT_EQ(summary["vertices"], 27);
    EXPECT_EQ(summary["hull facets"], 48);
    EXPECT_GE(summary["tetrahedra"], 40);
    EXPECT_LE(summary["tetrahedra"], 48);
}

TEST_F(Program, MeasuresAndChecksTheMesh)
{
    // Its tetrahedra have edges of 1, sqrt(2) and sqrt(3), or are regular.
    const Outcome outcome = run(triangulateGrid + " --stats --check --json");
    EXPECT_EQ(outcome.status, exitSuccess);
    EXPECT_EQ(outcome.errors, "");
    const auto report = nlohmann::json::parse(outcome.output);
    EXPECT_EQ(report.at("valid"), true);
    EXPECT_EQ(report.at("duplicates"), 27);
    EXPECT_DOUBLE_EQ(report.at("hull_area"), 24.0);
    EXPECT_DOUBLE_EQ(report.at("hull_volume"), 8.0);
    EXPECT_DOUBLE_EQ(report.at("sum_of_volumes"), 8.0);
    EXPECT_EQ(report.at("flat_tetrahedra"), 0);
    const auto& histogram = report.at("edge_ratio");
    const int numLow = histogram.at("1 to 1.5");
    const int numMiddle = histogram.at("1.5 to 2");
    EXPECT_EQ(report.at("tetrahedra"), numLow + numMiddle);
    EXPECT_GT(report.at("peak_memory_bytes"), 100000);
}

TEST_F(Program, NamesTheFaultOfADamagedMesh)
{
    // The last point is moved up by 2.5 after the insertion: into the sphere around the other four, or across
    // the facet beyond which it was.
    const std::string corners = "0 0 0\n4 0 0\n0 4 0\n0 0 4\n";
    m_directory.write("inside.xyz", corners + "1 1 -3\n");
    m_directory.write("beyond.xyz", corners + "1 1 -2\n");
    const auto check = [this](const std::string& file, const std::string& message) {
        const Outcome outcome = run(VORN3D_DAMAGING_PROGRAM " triangulate --check --json -o a.mesh " + file);
        EXPECT_EQ(outcome.status, exitFailure);
        EXPECT_NE(outcome.errors.find(message), std::string::npos) << outcome.errors;
        EXPECT_EQ(nlohmann::json::parse(outcome.output).at("valid"), false);
    };
    check("inside.xyz", "sphereIncTest failed");
    check("beyond.xyz", "should be on the negative side");
    EXPECT_EQ(m_directory.list(), "00000_negSideBug.list 00000_sphereIncBug.list beyond.xyz inside.xyz ");
}

TEST_F(Program, MeasuresAngles)
{
    m_directory.write("corner.xyz", "0 0 0\n1 0 0\n0 1 0\n0 0 1\n");
    const auto corner = nlohmann::json::parse(run("vorn3d triangulate corner.xyz --stats --json").output);
    EXPECT_NEAR(corner.at("least_dihedral_angle_degrees"), std::acos(1 / std::sqrt(3.0)) * 180.0 / M_PI,
                1e-12);
    EXPECT_NEAR(corner.at("greatest_dihedral_angle_degrees"), 90.0, 1e-12);

    // A square of side 1 whose fourth corner is lifted by 2e-11: two facets meet at almost 180 degrees.
    m_directory.write("sliver.xyz", "0 0 0\n1 0 0\n1 1 0\n0 1 2e-11\n");
    const Outcome outcome = run("vorn3d triangulate sliver.xyz --stats --json");
    const auto report = nlohmann::json::parse(outcome.output);
    EXPECT_EQ(report.at("flat_tetrahedra"), 1);
    EXPECT_NEAR(report.at("sum_of_volumes"), 1e-11 / 3.0, 1e-24);
    EXPECT_NEAR(report.at("least_dihedral_angle_degrees"), 2e-11 * 180.0 / M_PI, 1e-12);
    EXPECT_NEAR(report.at("hull_area"), 2.0, 1e-9);
}

/// The numbers of a table, row by row; text that is no number becomes NaN.
std::vector<std::vector<double>> parseTable(std::string table)
{
    std::replace(table.begin(), table.end(), ',', ' ');
    std::vector<std::vector<double>> vRows;
    std::istringstream lines(table);
    for (std::string line, field; std::getline(lines, line);) {
        vRows.emplace_back();
        for (std::istringstream fields(line); fields >> field;)
            vRows.back().push_back(std::isdigit(static_cast<unsigned char>(field[field[0] == '-'])) != 0
                                       ? std::stod(field)
                                       : NAN);
    }
    return vRows;
}

TEST_F(Program, InterpolatesEachColumnOfValues)
{
    // Two linear functions on a cube, and queries in it and beyond.
    m_directory.write("values.csv", "x,y,z,sum,height\n0,0,0,0,0\n1,0,0,1,0\n0,1,0,1,0\n1,1,0,2,0\n"
                                    "0,0,1,1,2\n1,0,1,2,2\n0,1,1,2,2\n1,1,1,3,2\n0.3,0.4,0.5,1.2,1\n");
    m_directory.write("queries.xyz", "0.25 0.5 0.125\n1 1 1\n1 1 2\n0.3 0.4 0.5\n");
    for (const std::string method : {"linear", "natural", "nearest"}) {
        SCOPED_TRACE(method);
        const auto outcome =
            run("vorn3d interpolate values.csv queries.xyz -o answers.csv --json --method " + method);
        ASSERT_EQ(outcome.status, exitSuccess) << outcome.errors;
        const std::string answers = m_directory.read("answers.csv");
        EXPECT_EQ(answers.substr(0, answers.find('\n')), "x,y,z,sum,height");
        const auto vRows = parseTable(answers);
        ASSERT_EQ(vRows.size(), 5u);
        const auto report = nlohmann::json::parse(outcome.output);
        EXPECT_EQ(report.at("queries"), 4);
        EXPECT_EQ(report.at("greatest").at("sum"), 3);
        EXPECT_EQ(vRows[2], (std::vector<double>{1, 1, 1, 3, 2}));
        EXPECT_EQ(vRows[4], (std::vector<double>{0.3, 0.4, 0.5, 1.2, 1}));
        EXPECT_EQ(report.at("queries_without_values"), method == "nearest" ? 0 : 1);
        EXPECT_EQ(std::isnan(vRows[3][4]), method != "nearest");
        if (method == "nearest")
            EXPECT_EQ(vRows[1][3], 1.2);
        else
            EXPECT_NEAR(vRows[1][3], 0.875, 1e-12);
    }
    const Outcome clamped =
        run("vorn3d interpolate values.csv queries.xyz -o - --outside clamp --method linear");
    EXPECT_EQ(parseTable(clamped.output)[2], (std::vector<double>{1, 1, 2, 3, 2}));
    EXPECT_NE(clamped.errors.find("queries without values:   0\n"), std::string::npos) << clamped.errors;
}

TEST_F(Program, FindsNearestPoints)
{
    const Outcome outcome =
        run("vorn3d generate -n 150000 -o queries.bin; vorn3d generate -n 300 --seed 2 -o points.bin;"
            " vorn3d nearest points.bin queries.bin -k 2 -o nearest.txt --json");
    ASSERT_EQ(outcome.status, exitSuccess) << outcome.errors;
    const std::vector<Point3> vPoints = readPoints(m_directory.getPath("points.bin"), "");
    const std::vector<Point3> vQueries = readPoints(m_directory.getPath("queries.bin"), "");
    const auto vRows = parseTable(m_directory.read("nearest.txt"));
    ASSERT_EQ(vRows.size(), 2 * vQueries.size());
    const auto getDistance = [](const Point3& p, const Point3& q) {
        return std::hypot(p.x() - q.x(), p.y() - q.y(), p.z() - q.z());
    };
    for (std::size_t i = 0; i < vQueries.size(); i += 97) {
        std::vector<double> vDistances;
        for (const Point3& p : vPoints)
            vDistances.push_back(getDistance(p, vQueries[i]));
        std::sort(vDistances.begin(), vDistances.end());
        for (std::size_t k = 0; k < 2; ++k) {
            const std::vector<double>& row = vRows[2 * i + k];
            ASSERT_EQ(row[0], static_cast<double>(i));
            ASSERT_EQ(row[2], vDistances[k]);
            ASSERT_EQ(getDistance(vPoints[static_cast<std::size_t>(row[1])], vQueries[i]), row[2]);
        }
    }
}

/// The triangles of a surface as OFF, without blanks before the first number of a line.
std::vector<std::array<std::size_t, 3>> parseTriangles(const std::string& text, std::size_t& numVertices)
{
    std::istringstream stream(text);
    std::string magic;
    std::size_t numFaces = 0, numEdges = 0;
    stream >> magic >> numVertices >> numFaces >> numEdges;
    EXPECT_EQ(magic, "OFF");
    double x = 0, y = 0, z = 0;
    for (std::size_t i = 0; i < numVertices; ++i)
        stream >> x >> y >> z;
    std::vector<std::array<std::size_t, 3>> vTriangles(numFaces);
    for (auto& [a, b, c] : vTriangles) {
        std::size_t num = 0;
        stream >> num >> a >> b >> c;
        EXPECT_EQ(num, 3u);
    }
    EXPECT_TRUE(stream);
    return vTriangles;
}

TEST_F(Program, FindsTheSurfaceOfAScan)
{
    const std::string scan = "vorn3d alpha " VORN3D_DATA_DIR "/spot/spot.xyz --json ";
    const Outcome outcome = run(scan + "-o cow.off");
    ASSERT_EQ(outcome.status, exitSuccess) << outcome.errors;
    const auto report = nlohmann::json::parse(outcome.output);
    EXPECT_EQ(report.at("filled"), true);
    EXPECT_EQ(report.at("solids"), 1);
    EXPECT_GT(report.at("points_on_the_surface"), 11500);
    std::size_t numVertices = 0;
    const auto vTriangles = parseTriangles(m_directory.read("cow.off"), numVertices);
    EXPECT_EQ(report.at("points_on_the_surface"), numVertices);
    EXPECT_EQ(vTriangles.size(), 2 * numVertices - 4) << "Euler's relation of a sphere";
    std::set<std::pair<std::size_t, std::size_t>> edges;
    for (const auto& [a, b, c] : vTriangles)
        for (const auto& edge : {std::pair(a, b), std::pair(b, c), std::pair(c, a)})
            EXPECT_TRUE(edges.insert(edge).second);
    for (const auto& [a, b] : edges)
        EXPECT_EQ(edges.count({b, a}), 1u);

    const auto all = nlohmann::json::parse(run(scan + "--alpha inf").output);
    const auto hull =
        nlohmann::json::parse(run("vorn3d hull --json " VORN3D_DATA_DIR "/spot/spot.xyz").output);
    EXPECT_NEAR(all.at("volume"), hull.at("volume"), 1e-12);
    EXPECT_NEAR(all.at("area"), hull.at("area"), 1e-12);
    const auto solid = nlohmann::json::parse(run(scan + "--alpha solid").output);
    EXPECT_EQ(solid.at("solids"), 1);
    EXPECT_GT(solid.at("alpha"), report.at("alpha"));
    // From that alpha on, with what is enclosed or without, and the triangles that enclose it.
    std::ostringstream alpha;
    alpha << std::setprecision(17) << "--alpha " << report.at("alpha").get<double>();
    EXPECT_EQ(nlohmann::json::parse(run(scan + alpha.str() + " --fill").output).at("volume"),
              report.at("volume"));
    const auto open = nlohmann::json::parse(run(scan + alpha.str() + " --singular -o open.off").output);
    EXPECT_LT(open.at("volume"), 0.1 * report.at("volume").get<double>());
    EXPECT_EQ(parseTriangles(m_directory.read("open.off"), numVertices).size(),
              open.at("triangles").get<std::size_t>() + open.at("singular_triangles").get<std::size_t>());
}

TEST_F(Program, MakesTheHullOfAGrid)
{
    const Outcome outcome = run("vorn3d generate --shape grid -n 27 -o - |"
                                " vorn3d hull - --polygons -o a.off -o a.stl -o a.obj --json;"
                                " vorn3d generate --shape grid -n 27 -o - | vorn3d hull - -o b.off >b.txt");
    ASSERT_EQ(outcome.status, exitSuccess) << outcome.errors;
    const auto report = nlohmann::json::parse(outcome.output);
    EXPECT_EQ(report.at("points_on_the_hull"), 26);
    EXPECT_EQ(report.at("corners"), 8);
    EXPECT_EQ(report.at("flat_sides"), 6);
    EXPECT_EQ(report.at("area"), 24);
    EXPECT_EQ(report.at("volume"), 8);
    EXPECT_EQ(m_directory.read("a.off").substr(0, 10), "OFF\n8 6 0\n");
    EXPECT_EQ(m_directory.read("a.stl").size(), 84u + 12 * 50);
    std::size_t numVertices = 0;
    EXPECT_EQ(parseTriangles(m_directory.read("b.off"), numVertices).size(), 48u);
    EXPECT_EQ(numVertices, 26u);
}

TEST_F(Program, MeasuresVoronoiCells)
{
    // A cube's corners, its middle and, twice, its first corner again.
    m_directory.write("cube.xyz", "0 0 0\n0 0 0\n2 0 0\n0 2 0\n2 2 0\n0 0 2\n2 0 2\n0 2 2\n2 2 2\n0 0 0\n"
                                  "1 1 1\n");
    // Halfway to the corners the planes cut an octahedron of half the volume from the cube.
    for (const std::string clip : {"", "--clip hull", "--box 0 0 0 2 2 2"}) {
        SCOPED_TRACE(clip);
        const Outcome outcome = run("vorn3d voronoi cube.xyz -o cells.txt --graph graph.txt --json " + clip);
        ASSERT_EQ(outcome.status, exitSuccess) << outcome.errors;
        const auto report = nlohmann::json::parse(outcome.output);
        EXPECT_EQ(report.at("unbounded_cells"), 0);
        EXPECT_NEAR(report.at("volume_of_bounded_cells").get<double>(), 8.0, 1e-12);
        EXPECT_NEAR(report.at("cell_volume").at("least").get<double>(), 0.5, 1e-12);
        const auto vCells = parseTable(m_directory.read("cells.txt"));
        ASSERT_EQ(vCells.size(), 9u);
        EXPECT_EQ(vCells[1][0], 2.0);
        EXPECT_EQ(vCells[8][0], 10.0);
        EXPECT_NEAR(vCells[8][1], 4.0, 1e-12);
        EXPECT_NEAR(vCells[8][5], 1.0, 1e-12);
        double sum = 0.0;
        std::size_t numOfMiddle = 0;
        for (const auto& row : parseTable(m_directory.read("graph.txt")))
            if (row[0] == 10.0) {
                ++numOfMiddle;
                sum += row[2];
            }
        EXPECT_EQ(numOfMiddle, 8u);
        EXPECT_LT(sum, vCells[8][2]) << "there are six faces on the cube's surface";
    }
    const Outcome whole = run("vorn3d voronoi cube.xyz -o - --clip none");
    EXPECT_EQ(whole.status, exitSuccess);
    EXPECT_NE(whole.errors.find("unbounded cells:"), std::string::npos) << whole.errors;
    const auto vCells = parseTable(whole.output);
    EXPECT_EQ(whole.output.substr(0, whole.output.find('\n')), "0 inf inf nan nan nan");
    EXPECT_NEAR(vCells[8][1], 4.5, 1e-12);
    EXPECT_NEAR(vCells[8][2], 18 * std::sqrt(0.75), 1e-12) << "a regular octahedron";
}

// In the foreground, timeout signals its child alone; else also the group, and a second signal ends the
// program without a word.
TEST_F(Program, StopsWhenInterrupted)
{
    run("vorn3d generate -n 3000000 -o large.bin");
    for (const std::string arguments : {"large.bin", "- < <(sleep 4)"}) {
        const Outcome outcome = run(
            "bash -c 'timeout --foreground --preserve-status --signal INT 1 " VORN3D_PROGRAM " triangulate " +
            arguments + "'");
        EXPECT_EQ(outcome.status, exitInterrupted) << arguments;
        EXPECT_EQ(outcome.errors, "vorn3d: interrupted\n");
        EXPECT_EQ(outcome.output, "");
    }
}

TEST_F(Program, StopsAtControlCInTheStageThatTheTerminalShows)
{
    run("vorn3d generate --shape sphere -n 200000 -o sphere.bin");
    const Outcome outcome = run(
        "touch shown; { until grep -q ranking shown; do sleep 0.01; done; printf '\\003'; } |"
        " TERM=xterm script --quiet --flush --return --command '" VORN3D_PROGRAM " alpha sphere.bin' shown");
    EXPECT_EQ(outcome.status, exitInterrupted);
    const std::string end = "\r\033[Kranking^C\r\033[Kvorn3d: interrupted\r\n";
    EXPECT_EQ(outcome.output.substr(outcome.output.size() - std::min(end.size(), outcome.output.size())),
              end);
}

TEST_F(Program, StopsWhileItWritesAScene)
{
    run("vorn3d generate -n 100000 -o points.bin");
    const Outcome outcome = run(VORN3D_PROGRAM " triangulate points.bin -o a.list & program=$!\n"
                                               "until test -e a.list.$program.part; do sleep 0.01; done\n"
                                               "kill -INT $program; wait $program");
    EXPECT_EQ(outcome.status, exitInterrupted);
    EXPECT_EQ(outcome.errors, "vorn3d: interrupted\n");
    EXPECT_EQ(m_directory.list(), "points.bin ");
}

TEST_F(Program, ShowsProgressThatFitsTheTerminal)
{
    const std::string name = "a-name-that-is-wider-than-the-terminal.xyz";
    run("mkfifo " + name);
    const auto runOnTerminal = [&](const std::string& type) {
        return run("{ sleep 1; echo 1 2 3; } >" + name + " & TERM=" + type +
                   " script --quiet --command 'stty cols 20; " VORN3D_PROGRAM " triangulate " + name +
                   "' /dev/null")
            .output;
    };
    const std::string message = name + ": all points lie in one plane: there is no tetrahedron\r\n";
    const std::string output = runOnTerminal("xterm");
    EXPECT_EQ(output.substr(0, output.find(message)), "\r\033[Kreading a-n... 0 MB\r\033[K");
    EXPECT_EQ(runOnTerminal("dumb").find(message), 0u);
}

TEST_F(Program, ReportsBadInputWithStatus2)
{
    m_directory.write("bad.xyz", "1 2 3\n1 2 x\n");
    m_directory.write("ragged.csv", "1 2 3 4\n1 2 3 4 5\n");
    m_directory.write("bare.csv", "x,y,z\n1,2,3\n");
    const std::vector<std::pair<std::string, std::string>> vCases{
        {"triangulate bad.xyz", "bad.xyz:2: the z coordinate 'x' is not a number\n"},
        {"triangulate - <bad.xyz", "<stdin>:2: the z coordinate 'x' is not a number\n"},
        {"triangulate missing.xyz", "missing.xyz: No such file or directory\n"},
        {"triangulate ''", "'': No such file or directory\n"},
        {"triangulate .", ".: Is a directory\n"},
        {"triangulate --format bin bad.xyz",
         "bad.xyz: the last point is incomplete: the size is not a multiple of 24 bytes\n"},
        {"nearest ragged.csv bad.xyz", "bad.xyz:2: the z coordinate 'x' is not a number\n"},
        {"interpolate ragged.csv bare.csv",
         "ragged.csv:2: there are 2 values after the coordinates, not 1 as on the first line\n"},
        {"interpolate bare.csv bare.csv",
         "bare.csv: holds no values: they stand in the columns after x, y and z\n"},
    };
    for (const auto& [arguments, message] : vCases) {
        const Outcome outcome = run("vorn3d " + arguments);
        EXPECT_EQ(outcome.status, exitBadInput) << arguments;
        EXPECT_EQ(outcome.errors, message);
        EXPECT_EQ(outcome.output, "");
    }
}

TEST_F(Program, RefusesUnusableArgumentsWithStatus2)
{
    for (const std::string arguments : {"",
                                        "triangulate",
                                        "triangulate a.las",
                                        "triangulate --format las a.xyz",
                                        "refine",
                                        "generate -n 5",
                                        "generate -n 5 -o a.ply",
                                        "generate -n 0 -o a.xyz",
                                        "generate -n -5 -o a.xyz",
                                        "triangulate - -o mesh",
                                        "triangulate - -o -",
                                        "triangulate a.xyz -o a.mesh -o a.docx",
                                        "triangulate a.xyz --picture a.jpg",
                                        "triangulate a.xyz --picture a.png --color mood",
                                        "generate -n 5 --shape torus -o a.xyz",
                                        "generate -n 5 --seed -1 -o a.xyz",
                                        "interpolate a.xyz",
                                        "nearest -k 0 a.xyz b.xyz",
                                        "nearest a.xyz b.xyz -o a.vtu",
                                        "hull a.xyz -o a.vtu",
                                        "alpha a.xyz --alpha -1",
                                        "alpha a.xyz --alpha nan",
                                        "alpha a.xyz --alpha 1cm",
                                        "interpolate a.bin b.xyz",
                                        "voronoi a.xyz --clip sphere",
                                        "voronoi a.xyz --box 0 0 0 1 1",
                                        "voronoi a.xyz --box 0 0 0 1 1 0",
                                        "voronoi a.xyz --clip hull --box 0 0 0 1 1 1",
                                        "voronoi a.xyz --graph a.vtu",
                                        "interpolate --method cubic a.csv b.xyz"}) {
        const Outcome outcome = run("vorn3d " + arguments);
        EXPECT_EQ(outcome.status, exitBadInput) << arguments;
        EXPECT_NE(outcome.errors, "") << arguments;
        EXPECT_EQ(outcome.output, "") << arguments;
    }
    EXPECT_EQ(m_directory.list(), "");
}

TEST_F(Program, RefusesPlacesForOutputBeforeAnyWork)
{
    for (const std::string output : {"-o missing/a.mesh", "--picture missing/a.png", "-o directory.mesh"}) {
        if (output[2] == 'p' && !hasVtk())
            continue;
        const Outcome outcome = run("mkdir -p directory.mesh; vorn3d triangulate missing.xyz " + output);
        EXPECT_EQ(outcome.status, exitFailure);
        EXPECT_EQ(outcome.errors.rfind(output.substr(output.find(' ') + 1), 0), 0u) << outcome.errors;
    }
    // What a library writes cannot go into a pipe, which it would remove when it fails.
    const Outcome outcome = run("vorn3d generate -n 10 -o a.xyz; mkfifo a.list; { sleep 1; : <a.list; } &"
                                "vorn3d triangulate a.xyz -o a.list; status=$?; wait; exit $status");
    EXPECT_EQ(outcome.status, exitFailure);
    EXPECT_EQ(outcome.errors, "a.list: this format can only be written into a regular file\n");
    EXPECT_EQ(m_directory.list(), "a.list a.xyz directory.mesh ");
}

TEST_F(Program, TellsCoplanarPointsByStatus3)
{
    const Outcome outcome =
        run("vorn3d generate --shape grid -n 8 -o - | head -n 4 | vorn3d triangulate - --check -o a.mesh");
    EXPECT_EQ(outcome.status, exitCoplanar);
    EXPECT_EQ(m_directory.list(), "");
    EXPECT_EQ(parseSummary(outcome.output)["tetrahedra"], 0);
    EXPECT_EQ(outcome.errors, "<stdin>: all points lie in one plane: there is no tetrahedron\n");
}

TEST_F(Program, ShowsTheLibrarysMessagesWhenAsked)
{
    const std::string pipeline = "vorn3d generate -n 100 -o - | vorn3d triangulate - ";
    const std::string batchLine = "numPoints=100\n";
    EXPECT_EQ(run(pipeline).errors, "");
    EXPECT_NE(run(pipeline + "--verbose").errors.find(batchLine), std::string::npos);
}

TEST_F(Program, ExplainsItself)
{
    for (const std::string arguments :
         {"--help", "--version", "triangulate --help", "generate --help", "interpolate --help",
          "nearest --help", "hull --help", "alpha --help", "voronoi --help"}) {
        const Outcome outcome = run("vorn3d " + arguments);
        EXPECT_EQ(outcome.status, exitSuccess);
        EXPECT_EQ(outcome.errors, "");
        EXPECT_NE(outcome.output, "");
    }
}

TEST_F(Program, GeneratedFilesReadBackExactly)
{
    constexpr std::size_t num = 5000;
    for (const std::string& shape : PointGenerator::getShapeNames()) {
        for (const std::string& name : {shape + ".xyz", shape + ".bin"}) {
            SCOPED_TRACE(name);
            const Outcome outcome = run("vorn3d generate --shape " + shape + " -n 5000 --seed 9 -o " + name);
            ASSERT_EQ(outcome.status, exitSuccess) << outcome.errors;
            PointGenerator generator(shape, num, 9);
            const std::vector<Point3> vPoints = readPoints(m_directory.getPath(name), "");
            ASSERT_EQ(vPoints.size(), num);
            for (const Point3& point : vPoints) {
                const Coordinates expected = generator.next();
                ASSERT_EQ(point, Point3(expected[0], expected[1], expected[2]));
            }
        }
    }
}

TEST_F(Program, LeavesNoHalfFile)
{
    m_directory.write("points.xyz", "1 2 3\n");
    // A limit on the size of files, as a full disk.
    const Outcome full = run("trap '' XFSZ; ulimit -f 8; vorn3d generate -n 100000 -o points.xyz");
    EXPECT_EQ(full.status, exitFailure);
    EXPECT_NE(full.errors.find("points.xyz: File too large"), std::string::npos) << full.errors;
    const Outcome interrupted = run("timeout --preserve-status --signal INT 0.2 " VORN3D_PROGRAM
                                    " generate -n 1000000000 -o points.xyz");
    EXPECT_EQ(interrupted.status, exitInterrupted) << interrupted.errors;
    EXPECT_EQ(run("vorn3d generate -n 10 -o missing/points.xyz").status, exitFailure);
    EXPECT_EQ(run("vorn3d generate -n 100000 -o - >/dev/full").status, exitFailure);
    EXPECT_EQ(m_directory.list(), "points.xyz ");
    EXPECT_EQ(m_directory.read("points.xyz"), "1 2 3\n");
}

TEST_F(Program, WritesMeshesAsTheirNamesSay)
{
    const Outcome outcome = run("vorn3d generate -n 200 -o - | vorn3d triangulate -"
                                " -o a.MESH -o a.node -o a.ele -o a.neigh -o a.ply -o a.off -o a.list");
    EXPECT_EQ(outcome.status, exitSuccess);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(m_directory.list(), "a.MESH a.ele a.list a.neigh a.node a.off a.ply ");
    EXPECT_EQ(m_directory.read("a.list").rfind("LIST", 0), 0u);
}

TEST_F(Program, ReadsItsOwnMeshesBackExactly)
{
    if (!hasVtk())
        GTEST_SKIP() << "built without VTK";
    const Outcome outcome =
        run("vorn3d generate -n 1000 -o a.bin && vorn3d triangulate a.bin -o a.vtu -o a.vtk -o a.node");
    ASSERT_EQ(outcome.status, exitSuccess) << outcome.errors;
    const std::vector<Point3> vPoints = readPoints(m_directory.getPath("a.bin"), "");
    for (const std::string name : {"a.vtu", "a.vtk", "a.node"})
        EXPECT_EQ(readPoints(m_directory.getPath(name), ""), vPoints) << name;
}

TEST_F(Program, DrawsPicturesWithoutADisplay)
{
    if (!hasVtk())
        GTEST_SKIP() << "built without VTK";
    if (std::system("command -v Xvfb >/dev/null") != 0)
        GTEST_SKIP() << "there is no Xvfb";
    std::set<std::string> images;
    for (const std::string quantity : {"size", "ratio", "index"}) {
        // The display's drivers keep a little memory and are gone when a leak sanitizer looks.
        const Outcome outcome = run("unset DISPLAY; export ASAN_OPTIONS=detect_leaks=0;"
                                    " vorn3d generate -n 100 -o - |"
                                    " vorn3d triangulate - --picture a.png --color " +
                                    quantity);
        EXPECT_EQ(outcome.status, exitSuccess);
        EXPECT_EQ(outcome.errors, "");
        const std::string image = m_directory.read("a.png");
        EXPECT_EQ(image.substr(1, 3), "PNG");
        // An image in one colour takes a few hundred bytes.
        EXPECT_GT(image.size(), 20000u);
        images.insert(image);
    }
    EXPECT_EQ(images.size(), 3u) << "the colours tell the quantity";
    const Outcome surface = run("unset DISPLAY; export ASAN_OPTIONS=detect_leaks=0;"
                                " vorn3d alpha --picture a.png " VORN3D_DATA_DIR "/spot/spot.xyz");
    EXPECT_EQ(surface.errors, "");
    EXPECT_GT(m_directory.read("a.png").size(), 100000u) << "points and a surface";
    EXPECT_EQ(m_directory.list(), "a.png ");
}

TEST_F(Program, NamesVtkWhereItIsMissing)
{
    if (hasVtk())
        GTEST_SKIP() << "built with VTK";
    for (const std::string arguments :
         {"missing.xyz -o a.vtu", "missing.xyz --picture a.png", "missing.obj"}) {
        const Outcome outcome = run("vorn3d triangulate " + arguments);
        EXPECT_EQ(outcome.status, exitBadInput);
        EXPECT_NE(outcome.errors.find("libvtk9-dev"), std::string::npos) << outcome.errors;
    }
}

TEST_F(Program, LeavesNoHalfMesh)
{
    run("vorn3d generate -n 10000 -o points.bin");
    std::vector<std::string> vNames{"a.mesh", "a.list"};
    if (hasVtk())
        vNames.insert(vNames.end(), {"a.vtu", "a.vtk"});
    for (const std::string& name : vNames) {
        const Outcome outcome = run("trap '' XFSZ; ulimit -f 100; vorn3d triangulate points.bin -o " + name);
        EXPECT_EQ(outcome.status, exitFailure);
        EXPECT_NE(outcome.errors.find(name), std::string::npos) << outcome.errors;
    }
    EXPECT_EQ(m_directory.list(), "points.bin ");
}

TEST_F(Program, WritesThroughLinksAndIntoDevices)
{
    const Outcome outcome =
        run("ln -s target.xyz link.xyz && : >target.xyz && vorn3d generate -n 10 -o link.xyz &&"
            " test -L link.xyz && test -s target.xyz &&"
            " vorn3d generate -n 10 -o /dev/null && test -c /dev/null");
    EXPECT_EQ(outcome.status, exitSuccess) << outcome.errors;
    EXPECT_EQ(m_directory.list(), "link.xyz target.xyz ");
}

} // namespace

} // namespace VORN3D::program
