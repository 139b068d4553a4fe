#pragma once

#include "MeshJob.h"

#include <functional>
#include <string>
#include <vector>

namespace VORN3D::program
{

/// The options of every command that answers a question for each point of a second file.
struct QueryOptions : MeshOptions
{
    std::string queries;
    std::string queryFormat;
    std::string output;
    std::string outputFormat;
};

/// Adds those of addMeshOptions() with what is said of the file; the file QUERIES, and options for it and for
/// the answers.
void addQueryOptions(CLI::App& command, QueryOptions& options, const FileArgument& file);

/// The formats of queries and of answers, for the end of a help text.
std::string describeQueryFormats();

/// Takes the numbers of a row of the answers.
using AddRow = std::function<void(const std::vector<double>& vRow)>;

/// Answers queries that follow each other in the file, numbered from numBefore on, by a row or several for
/// each.
using Answer =
    std::function<void(const std::vector<Point3>& vQueries, std::size_t numBefore, const AddRow& addRow)>;

/// Answers all queries, block by block, writes the rows if a file is wanted, and reports the time. The
/// columns have names.
void answerQueries(MeshJob& job, const QueryOptions& options, const std::vector<Point3>& vQueries,
                   const std::vector<std::string>& vColumnNames, const Answer& answer);

/// Runs a command as runMeshJob() does. If standard output takes the answers, the report goes to standard
/// error.
ExitStatus runQueryJob(const QueryOptions& options, const std::function<ExitStatus(MeshJob&)>& work);

} // namespace VORN3D::program
