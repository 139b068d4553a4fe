#include "output/TextOutput.h"

#include "vorn3d/Point3.h"

namespace VORN3D::program
{

namespace
{

constexpr std::size_t blockSize = std::size_t(1) << 16;

} // namespace

TextOutput::TextOutput(OutputFile& file, std::size_t numLines)
    : m_file(file), m_progress("writing " + file.getPath(), numLines)
{
}

void TextOutput::writeCoordinates(const Point3& point)
{
    writeNumber(point.x());
    writeNumber(point.y());
    writeNumber(point.z());
}

void TextOutput::endLine()
{
    if (m_block.back() == ' ')
        m_block.pop_back();
    m_block += '\n';
    ++m_numLines;
    if (m_block.size() >= blockSize)
        finish();
}

void TextOutput::finish()
{
    m_file.write(m_block);
    m_block.clear();
    m_progress.update(m_numLines);
}

} // namespace VORN3D::program
