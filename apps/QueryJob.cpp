#include "QueryJob.h"

#include "Progress.h"
#include "input/readPoints.h"
#include "output/tableWriters.h"
#include "output/writeFile.h"

#include <algorithm>
#include <cmath>
#include <iostream>

namespace VORN3D::program
{

namespace
{

/// So many that looking them up in an order of their own is nearly as quick as for all at once.
constexpr std::size_t queriesInBlock = std::size_t(1) << 17;

const TableStyle& chooseStyle(const QueryOptions& options)
{
    return *chooseFormat(getTableStyles(), options.output, options.outputFormat).pFunction;
}

void answerBlocks(const std::vector<Point3>& vQueries, const Answer& answer, const AddRow& addRow)
{
    Progress progress("answering", vQueries.size());
    for (std::size_t first = 0; first < vQueries.size(); first += queriesInBlock) {
        const std::size_t end = std::min(first + queriesInBlock, vQueries.size());
        answer({vQueries.begin() + static_cast<std::ptrdiff_t>(first),
                vQueries.begin() + static_cast<std::ptrdiff_t>(end)},
               first, addRow);
        progress.update(end);
    }
}

} // namespace

void addQueryOptions(CLI::App& command, QueryOptions& options, const FileArgument& file)
{
    addMeshOptions(command, options, file);
    command.add_option("QUERIES", options.queries, "The file of the points to answer for")->required();
    command.add_option("--query-format", options.queryFormat, "Read the queries in this format")
        ->check(CLI::IsMember(getFormatNames(getPointFormats())));
    command.add_option("-o,--output", options.output,
                       "Write the answers into this file; - is standard output, as text");
    command.add_option("--output-format", options.outputFormat, "Write the answers in this format")
        ->check(CLI::IsMember(getFormatNames(getTableStyles())));
}

std::string describeQueryFormats()
{
    return "Formats of queries, chosen by the file's extension in small letters or capitals:" +
           describeFormats(getPointFormats()) +
           "\n\nFormats of answers, chosen in the same way:" + describeFormats(getTableStyles());
}

void answerQueries(MeshJob& job, const QueryOptions& options, const std::vector<Point3>& vQueries,
                   const std::vector<std::string>& vColumnNames, const Answer& answer)
{
    const Stopwatch answering;
    if (options.output.empty())
        answerBlocks(vQueries, answer, [](const std::vector<double>&) {});
    else
        writeFile(options.output, [&](OutputFile& file) {
            TableOutput table(file, chooseStyle(options), vColumnNames);
            answerBlocks(vQueries, answer, [&](const std::vector<double>& vRow) { table.addRow(vRow); });
            table.finish();
        });
    const double seconds = answering.getSeconds();
    job.report.add("queries", vQueries.size());
    job.report.add("answering", seconds, "s");
    job.report.add("queries per second", getRate(vQueries.size(), seconds));
}

ExitStatus runQueryJob(const QueryOptions& options, const std::function<ExitStatus(MeshJob&)>& work)
{
    if (!options.output.empty() && options.output != "-") {
        chooseStyle(options);
        OutputFile::probe(options.output);
    }
    return runMeshJob(options, work, options.output == "-" ? std::cerr : std::cout);
}

} // namespace VORN3D::program
