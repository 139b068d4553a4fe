#include "output/tableWriters.h"

#include "littleEndian.h"
#include "output/numberText.h"

#include <cmath>

namespace VORN3D::program
{

namespace
{

constexpr std::size_t blockSize = std::size_t(1) << 16;

/// Whole numbers as such, not as 1e+05.
void appendValue(std::string& bytes, double value)
{
    constexpr double largestWhole = 1e15;
    const bool bWhole = std::fabs(value) < largestWhole && value == std::floor(value);
    if (bWhole && !(value == 0.0 && std::signbit(value)))
        appendNumber(bytes, static_cast<long long>(value));
    else
        appendNumber(bytes, value);
}

template <char separator>
void appendRow(std::string& bytes, const std::vector<double>& vRow)
{
    for (std::size_t i = 0; i < vRow.size(); ++i) {
        if (i > 0)
            bytes += separator;
        appendValue(bytes, vRow[i]);
    }
    bytes += '\n';
}

void appendNothing(std::string&, const std::vector<std::string>&) {}

void appendHeader(std::string& bytes, const std::vector<std::string>& vNames)
{
    for (std::size_t i = 0; i < vNames.size(); ++i)
        bytes += (i > 0 ? "," : "") + vNames[i];
    bytes += '\n';
}

void appendBinary(std::string& bytes, const std::vector<double>& vRow)
{
    for (const double value : vRow) {
        const DoubleBytes encoded = encodeLittleEndian(value);
        bytes.append(encoded.data(), encoded.size());
    }
}

} // namespace

const FileFormats<const TableStyle>& getTableStyles()
{
    static const TableStyle text{appendNothing, appendRow<' '>};
    static const TableStyle csv{appendHeader, appendRow<','>};
    static const TableStyle binary{appendNothing, appendBinary};
    static const FileFormats<const TableStyle> vFormats{
        {"text", {".xyz", ".txt"}, "blanks between the columns", &text},
        {"csv", {".csv"}, "commas between the columns, their names on the first line", &csv},
        {"bin", {".bin"}, "little-endian doubles, row by row", &binary},
    };
    return vFormats;
}

TableOutput::TableOutput(OutputFile& file, const TableStyle& style, const std::vector<std::string>& vNames)
    : m_file(file), m_style(style)
{
    m_style.pAppendNames(m_block, vNames);
}

void TableOutput::addRow(const std::vector<double>& vRow)
{
    m_style.pAppendRow(m_block, vRow);
    if (m_block.size() >= blockSize)
        finish();
}

void TableOutput::finish()
{
    m_file.write(m_block);
    m_block.clear();
}

} // namespace VORN3D::program
