#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace VORN3D
{

/// Collects what is printed on standard output by way of std::cout while it lives. Several threads may print
/// only one after the other.
class CapturedOutput
{
public:
    CapturedOutput() : m_pPrevious(std::cout.rdbuf(m_text.rdbuf())) {}
    ~CapturedOutput() { std::cout.rdbuf(m_pPrevious); }
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;

    std::string text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
    std::streambuf* m_pPrevious;
};

/// What f prints.
template <typename F>
std::string outputOf(F f)
{
    const CapturedOutput output;
    f();
    return output.text();
}

} // namespace VORN3D
