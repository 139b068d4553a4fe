#pragma once

#include "FileFormat.h"
#include "output/OutputFile.h"

#include <string>
#include <vector>

namespace VORN3D::program
{

/// How the rows of a table are written.
struct TableStyle
{
    void (*pAppendNames)(std::string& bytes, const std::vector<std::string>& vNames);
    void (*pAppendRow)(std::string& bytes, const std::vector<double>& vRow);
};

/// The formats in which tables of numbers are written. Reading them gives the same doubles again.
const FileFormats<const TableStyle>& getTableStyles();

/// Writes rows of numbers into a file, block by block.
class TableOutput
{
public:
    TableOutput(OutputFile& file, const TableStyle& style, const std::vector<std::string>& vNames);

    void addRow(const std::vector<double>& vRow);

    /// Writes what is left; without it the last rows are missing.
    void finish();

private:
    OutputFile& m_file;
    const TableStyle& m_style;
    std::string m_block;
};

} // namespace VORN3D::program
