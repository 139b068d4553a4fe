#include "LibraryOutput.h"

namespace VORN3D::program
{

namespace
{

constexpr const char* batchLine = "numPoints=";

} // namespace

LibraryOutput::~LibraryOutput()
{
    passOnLine();
    std::cout.rdbuf(m_pOriginal);
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
    if (m_bEverything || m_line.rfind(batchLine, 0) != 0)
        std::cerr << m_line;
    m_line.clear();
}

} // namespace VORN3D::program
