#pragma once

#include "input/ByteSource.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace VORN3D::program
{

/// Cuts a text into lines and counts them. Unix and Windows line ends are known; a byte order mark (UTF-8) at
/// the beginning is skipped.
///
/// The text passes through one buffer of fixed size, which also bounds the length of a line, so that binary
/// data taken for text end in a message and not in a full memory.
class LineReader
{
public:
    explicit LineReader(ByteSource& source);

    /// The next line, without its end; false at the end of the text. The line is valid until the next call.
    bool next(std::string_view& line);

    /// The next line that holds more than blanks and a comment.
    bool nextWithFields(std::string_view& line);

    /// Throws InputError with the number of the current line.
    [[noreturn]] void fail(const std::string& reason) const;

private:
    std::size_t findLineEnd();
    bool refill();
    void skipByteOrderMark();

    ByteSource& m_source;
    std::vector<char> m_buffer;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    std::size_t m_numLines = 0;
    bool m_bSourceEmpty = false;
};

} // namespace VORN3D::program
