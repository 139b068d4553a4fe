#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace VORN3D::program
{

/// One line on standard error that shows how far a long step has come, and goes away when the step ends.
///
/// It appears only on a terminal that can erase, and only if the step takes longer than half a second.
/// update() may be called often: it looks at the clock and redraws ten times a second at most. It throws
/// Interrupted if the user has asked the program to stop while an InterruptionWatch lives. One at a time.
class Progress
{
public:
    /// A total of 0 means unknown: what is done are bytes then, shown instead of a percentage.
    explicit Progress(std::string label, std::size_t total = 0);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void update(std::size_t done);
    void update(std::size_t done, std::size_t total);

    /// Makes room for other text on the terminal; the next update draws the line again.
    static void erase();

private:
    using Clock = std::chrono::steady_clock;

    std::string getAmount(std::size_t done) const;

    std::string m_label;
    std::size_t m_total;
    bool m_bTerminal;
    Clock::time_point m_nextDraw;
};

} // namespace VORN3D::program
