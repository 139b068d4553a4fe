#include "input/LineReader.h"

#include "InputError.h"
#include "input/FieldCursor.h"

#include <algorithm>
#include <cstring>

namespace VORN3D::program
{

namespace
{

constexpr std::size_t bufferSize = std::size_t(1) << 20;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view withoutCarriageReturn(std::string_view line)
{
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return line;
}

} // namespace

LineReader::LineReader(ByteSource& source) : m_source(source), m_buffer(bufferSize)
{
    refill();
    skipByteOrderMark();
}

void LineReader::skipByteOrderMark()
{
    const std::string_view text(m_buffer.data(), m_end);
    if (text.substr(0, byteOrderMark.size()) == byteOrderMark)
        m_begin = byteOrderMark.size();
}

bool LineReader::next(std::string_view& line)
{
    const std::size_t lineEnd = findLineEnd();
    if (m_begin == m_end)
        return false;
    line = withoutCarriageReturn({m_buffer.data() + m_begin, lineEnd - m_begin});
    m_begin = std::min(lineEnd + 1, m_end);
    ++m_numLines;
    return true;
}

bool LineReader::nextWithFields(std::string_view& line)
{
    while (next(line)) {
        if (!FieldCursor(line).atEnd())
            return true;
    }
    return false;
}

/// The position of the current line's newline, or the end of the text if the last line has none.
std::size_t LineReader::findLineEnd()
{
    std::size_t searched = 0;
    do {
        const char* pFrom = m_buffer.data() + m_begin + searched;
        const std::size_t numBytes = m_end - m_begin - searched;
        if (const void* pNewline = std::memchr(pFrom, '\n', numBytes))
            return static_cast<std::size_t>(static_cast<const char*>(pNewline) - m_buffer.data());
        searched += numBytes;
    } while (refill());
    return m_end;
}

/// Moves the unread bytes to the front and reads more behind them; false at the end of the text.
bool LineReader::refill()
{
    if (m_bSourceEmpty)
        return false;
    std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
    m_end -= m_begin;
    m_begin = 0;
    if (m_end == m_buffer.size()) {
        ++m_numLines;
        fail("the line is longer than " + std::to_string(m_buffer.size()) + " bytes");
    }
    const std::size_t numWanted = m_buffer.size() - m_end;
    const std::size_t numRead = m_source.read(m_buffer.data() + m_end, numWanted);
    m_end += numRead;
    m_bSourceEmpty = numRead < numWanted;
    return true;
}

void LineReader::fail(const std::string& reason) const
{
    throw InputError(m_source.getName(), m_numLines, reason);
}

} // namespace VORN3D::program
