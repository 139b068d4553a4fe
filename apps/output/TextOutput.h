#pragma once

#include "Progress.h"
#include "output/OutputFile.h"
#include "output/numberText.h"

#include <string>
#include <string_view>

namespace VORN3D
{
class Point3;
}

namespace VORN3D::program
{

/// Writes lines of numbers into a file, block by block, and shows how many there are so far.
class TextOutput
{
public:
    TextOutput(OutputFile& file, std::size_t numLines);

    /// Text with an end of line where one is wanted.
    void write(std::string_view text) { m_block += text; }

    template <typename Number>
    void writeNumber(Number value)
    {
        appendNumber(m_block, value);
        m_block += ' ';
    }

    template <typename Numbers>
    void writeNumbers(const Numbers& numbers, int offset = 0)
    {
        for (const int number : numbers)
            writeNumber(number + offset);
    }

    void writeCoordinates(const Point3& point);

    void endLine();

    /// Writes what is left; without it the last lines are missing.
    void finish();

private:
    OutputFile& m_file;
    Progress m_progress;
    std::string m_block;
    std::size_t m_numLines = 0;
};

} // namespace VORN3D::program
