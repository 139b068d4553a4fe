#include "LibraryOutput.h"

#include "Progress.h"
#include "vorn3d/hosting.h"

#include <algorithm>
#include <iostream>
#include <iterator>

namespace VORN3D::program
{

namespace
{

/// How the lines begin that say nothing but what is being done.
constexpr const char* routineLines[] = {"numPoints=",       "** CheckValidity at", "   with",
                                        "   vTets.size()=", "Visualizer, writing", "  Writing",
                                        "  Dt3::show()"};

bool isRoutine(const std::string& line)
{
    return line == "\n" || std::any_of(std::begin(routineLines), std::end(routineLines),
                                       [&](const char* begin) { return line.rfind(begin, 0) == 0; });
}

} // namespace

LibraryOutput::LibraryOutput(bool bEverything)
    : m_bEverything(bEverything), m_stream(this), m_pOriginal(setMessageStream(&m_stream))
{
}

LibraryOutput::~LibraryOutput()
{
    passOnLine();
    setMessageStream(m_pOriginal);
}

LibraryOutput::int_type LibraryOutput::overflow(int_type c)
{
    if (traits_type::eq_int_type(c, traits_type::eof()))
        return traits_type::not_eof(c);
    m_line += traits_type::to_char_type(c);
    if (m_line.back() == '\n')
        passOnLine();
    return c;
}

void LibraryOutput::passOnLine()
{
    if (m_bEverything || !isRoutine(m_line)) {
        Progress::erase();
        std::cerr << m_line;
    }
    m_line.clear();
}

} // namespace VORN3D::program
