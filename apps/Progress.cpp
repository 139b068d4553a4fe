#include "Progress.h"

#include "Interruption.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include <unistd.h>

namespace VORN3D::program
{

namespace
{

constexpr std::chrono::milliseconds delay(500);
constexpr std::chrono::milliseconds interval(100);

/// Back to the first column and erase to the end of the line.
constexpr const char* eraseLine = "\r\033[K";

} // namespace

Progress::Progress(std::string label, std::size_t total)
    : m_label(std::move(label)), m_total(total), m_bTerminal(isatty(STDERR_FILENO) != 0),
      m_nextDraw(Clock::now() + delay)
{
}

Progress::~Progress()
{
    if (m_bDrawn)
        std::fputs(eraseLine, stderr);
}

void Progress::announce()
{
    if (!m_bTerminal)
        return;
    std::fprintf(stderr, "%s%s", eraseLine, m_label.c_str());
    m_bDrawn = true;
}

void Progress::update(std::size_t done)
{
    InterruptionWatch::check();
    if (!m_bTerminal || Clock::now() < m_nextDraw)
        return;
    draw(done);
    m_bDrawn = true;
    m_nextDraw = Clock::now() + interval;
}

void Progress::draw(std::size_t done)
{
    if (m_total > 0)
        std::fprintf(stderr, "%s%s %3zu %%", eraseLine, m_label.c_str(),
                     std::min<std::size_t>(100, 100 * done / m_total));
    else
        std::fprintf(stderr, "%s%s %zu", eraseLine, m_label.c_str(), done);
}

} // namespace VORN3D::program
