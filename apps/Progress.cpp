#include "Progress.h"

#include "Interruption.h"
#include "platform/platform.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <utility>

namespace VORN3D::program
{

namespace
{

constexpr std::chrono::milliseconds delay(500);
constexpr std::chrono::milliseconds interval(100);

/// Back to the first column and erase to the end of the line.
constexpr const char* eraseLine = "\r\033[K";

/// Whether the line is on the terminal.
std::atomic<bool> bDrawn{false};

/// Cuts the end off a text in UTF-8 that is too long; a byte is at most one column.
std::string shorten(const std::string& text, std::size_t maxSize)
{
    if (text.size() <= maxSize)
        return text;
    const std::string ellipsis = "...";
    std::size_t size = maxSize - std::min(maxSize, ellipsis.size());
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80)
        --size;
    return text.substr(0, size) + ellipsis;
}

} // namespace

Progress::Progress(std::string label, std::size_t total)
    : m_label(std::move(label)), m_total(total), m_bTerminal(canEraseLines()),
      m_nextDraw(Clock::now() + delay)
{
}

Progress::~Progress()
{
    erase();
}

void Progress::erase()
{
    if (bDrawn.exchange(false))
        std::fputs(eraseLine, stderr);
}

void Progress::update(std::size_t done)
{
    InterruptionWatch::check();
    if (!m_bTerminal || Clock::now() < m_nextDraw)
        return;
    const std::string amount = getAmount(done);
    // The last column stays free: a full line would go on in the next one, and be erased only in part.
    const std::size_t numColumns = std::max(getNumColumns(), amount.size() + 1) - amount.size() - 1;
    std::fprintf(stderr, "%s%s%s", eraseLine, shorten(m_label, numColumns).c_str(), amount.c_str());
    bDrawn = true;
    m_nextDraw = Clock::now() + interval;
}

void Progress::update(std::size_t done, std::size_t total)
{
    m_total = total;
    update(done);
}

std::string Progress::getAmount(std::size_t done) const
{
    constexpr std::size_t megabyte = 1000000;
    if (m_total > 0)
        return " " + std::to_string(std::min<std::size_t>(100, 100 * done / m_total)) + " %";
    return done > 0 ? " " + std::to_string(done / megabyte) + " MB" : "";
}

} // namespace VORN3D::program
