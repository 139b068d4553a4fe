#include "Interruption.h"
#include "MeshJob.h"
#include "Progress.h"
#include "commands.h"
#include "input/readPoints.h"
#include "output/tableWriters.h"
#include "output/writeFile.h"

#include "vorn3d/geometry/VoronoiCells.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <memory>

namespace VORN3D::program
{

namespace
{

const std::vector<std::string> clips{"box", "hull", "none"};

struct VoronoiOptions : MeshOptions
{
    std::string clip = clips.front();
    std::vector<double> vBox; // minima, maxima; empty: that of the points
    std::string output;
    std::string graph;
    std::string outputFormat;
};

/// The vertices in the order of the input.
std::vector<Point3*> listVertices(const Vorn_3D& triangulation)
{
    std::vector<Point3*> vVertices;
    triangulation.getVertices(vVertices);
    std::sort(vVertices.begin(), vVertices.end(),
              [](const Point3* a, const Point3* b) { return a->getCustomIndex() < b->getCustomIndex(); });
    return vVertices;
}

Bbox3 getBox(const VoronoiOptions& options, const std::vector<Point3*>& vVertices)
{
    Bbox3 box;
    if (options.vBox.empty())
        for (const Point3* pVtx : vVertices)
            box.add(*pVtx);
    for (std::size_t i = 0; i < options.vBox.size(); i += 3)
        box.add(Point3(options.vBox[i], options.vBox[i + 1], options.vBox[i + 2]));
    return box;
}

VoronoiCells makeCells(const VoronoiOptions& options, const Vorn_3D& triangulation,
                       const std::vector<Point3*>& vVertices)
{
    const bool bGraph = !options.graph.empty();
    const auto make = [&](const auto& region) {
        if (bGraph)
            return makeVoronoiCells(triangulation, vVertices, region);
        VoronoiCells cells;
        cells.measures = measureVoronoiCells(triangulation, vVertices, region);
        return cells;
    };
    if (options.clip == "box")
        return make(getBox(options, vVertices));
    return make(options.clip == "hull" ? VoronoiClip3::HULL : VoronoiClip3::NONE);
}

void addTo(Report& report, const VoronoiMeasures& measures)
{
    double least = HUGE_VAL, greatest = 0.0, sum = 0.0;
    std::size_t numBounded = 0;
    for (const double volume : measures.vVolumes)
        if (std::isfinite(volume)) {
            least = std::min(least, volume);
            greatest = std::max(greatest, volume);
            sum += volume;
            ++numBounded;
        }
    report.add("unbounded cells", measures.vVolumes.size() - numBounded);
    report.add("volume of bounded cells", sum);
    if (numBounded > 0)
        report.add("cell volume", Report::Value{{"least", least},
                                                {"mean", sum / static_cast<double>(numBounded)},
                                                {"greatest", greatest}});
}

/// Calls addRows(i, table) for every cell.
template <class AddRows>
void writeTable(const VoronoiOptions& options, const std::string& path, std::size_t numCells,
                const std::vector<std::string>& vNames, const AddRows& addRows)
{
    writeFile(path, [&](OutputFile& file) {
        Progress progress("writing", numCells);
        TableOutput table(file, *chooseFormat(getTableStyles(), path, options.outputFormat).pFunction,
                          vNames);
        for (std::size_t i = 0; i < numCells; ++i) {
            addRows(i, table);
            progress.update(i + 1);
        }
        table.finish();
    });
}

void writeOutputs(const VoronoiOptions& options, const VoronoiCells& cells,
                  const std::vector<Point3*>& vVertices)
{
    const auto getPlace = [&](std::size_t i) { return static_cast<double>(vVertices[i]->getCustomIndex()); };
    const VoronoiMeasures& measures = cells.measures;
    if (!options.output.empty())
        writeTable(options, options.output, vVertices.size(), {"point", "volume", "area", "x", "y", "z"},
                   [&](std::size_t i, TableOutput& table) {
                       const auto& [x, y, z] = measures.vCentroids[i];
                       table.addRow({getPlace(i), measures.vVolumes[i], measures.vAreas[i], x, y, z});
                   });
    if (!options.graph.empty())
        writeTable(
            options, options.graph, vVertices.size(), {"point", "neighbor", "area"},
            [&](std::size_t i, TableOutput& table) {
                for (std::size_t face = cells.vFirstFace[i]; face < cells.vFirstFace[i + 1]; ++face)
                    if (cells.vNeighbors[face] != NO_INDEX)
                        table.addRow({getPlace(i), getPlace(cells.vNeighbors[face]), cells.vFaceAreas[face]});
            });
}

ExitStatus work(const VoronoiOptions& options, MeshJob& job)
{
    job.triangulateFile();
    job.requireMesh();
    const Stopwatch making;
    const std::vector<Point3*> vVertices = listVertices(job.triangulation);
    const VoronoiCells cells = makeCells(options, job.triangulation, vVertices);
    InterruptionWatch::check();
    job.report.add("making cells", making.getSeconds(), "s");
    addTo(job.report, cells.measures);
    writeOutputs(options, cells, vVertices);
    return exitSuccess;
}

ExitStatus makeVoronoi(const VoronoiOptions& options)
{
    if (!options.vBox.empty())
        for (std::size_t i = 0; i < 3; ++i)
            if (options.clip != "box" || !(options.vBox[i] < options.vBox[i + 3]))
                throw InputError("--box",
                                 "three minima, three greater maxima, and no other --clip are wanted");
    bool bStandardOutput = false;
    for (const std::string& path : {options.output, options.graph}) {
        if (path.empty())
            continue;
        chooseFormat(getTableStyles(), path, options.outputFormat);
        if (path != "-")
            OutputFile::probe(path);
        else
            bStandardOutput = true;
    }
    return runMeshJob(
        options, [&](MeshJob& job) { return work(options, job); }, bStandardOutput ? std::cerr : std::cout);
}

const char* const description = "Measure the Voronoi cells of the points of a file";

const char* const notes = R"(

The cell of a point is the set of places that are not farther from it than from any other point. In the
box of the points, in another box or in the hull, cells fill the region; whole cells may be unbounded,
with infinite volume and area. Their lines have the place of the point in its file, counted from 0; the
volume; the area of the surface; x, y, z of the centroid. The graph has a line for each cell and
neighbour: the places of both points and the area of the face between. Equal points count once, at the
first of their places. Without clipping it is decided exactly who is a neighbour.

A file appears under its name when it is complete. If one is standard output, the report goes to
standard error. Exit statuses are listed by vorn3d --help.

Examples:
  vorn3d voronoi scan.xyz -o cells.csv
  vorn3d voronoi atoms.xyz --box 0 0 0 10 10 10 -o - | sort -k 2 -g
  vorn3d voronoi stations.xyz --clip none --graph neighbors.csv --json
)";

} // namespace

void addVoronoiCommand(CLI::App& app, ExitStatus& status)
{
    const auto pOptions = std::make_shared<VoronoiOptions>();
    CLI::App* pCommand = app.add_subcommand("voronoi", description);
    addMeshOptions(
        *pCommand, *pOptions,
        {"FILE", "The file of points; - is standard input, read as text", getFormatNames(getPointFormats())});
    pCommand->add_option("--clip", pOptions->clip, "To what the cells are clipped")
        ->capture_default_str()
        ->check(CLI::IsMember(clips));
    pCommand
        ->add_option("--box", pOptions->vBox,
                     "Clip to this box: x y z of its least corner, then of the greatest")
        ->expected(6);
    pCommand->add_option("-o,--output", pOptions->output,
                         "Write the cells into this file; - is standard output, as text");
    pCommand->add_option("--graph", pOptions->graph, "Write who is a neighbour of whom into this file");
    pCommand->add_option("--output-format", pOptions->outputFormat, "Write both files in this format")
        ->check(CLI::IsMember(getFormatNames(getTableStyles())));
    pCommand->footer("Formats of points, chosen by the file's extension in small letters or capitals:" +
                     describeFormats(getPointFormats()) + "\n\nFormats of cells, chosen in the same way:" +
                     describeFormats(getTableStyles()) + notes);
    pCommand->callback([pOptions, &status] { status = makeVoronoi(*pOptions); });
}

} // namespace VORN3D::program
