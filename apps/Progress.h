#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace VORN3D::program
{

/// One line on standard error that shows how far a long step has come, and goes away when the step ends.
///
/// It appears only on a terminal and only if the step takes longer than half a second. update() may be called
/// often: it looks at the clock and redraws ten times a second at most. It throws Interrupted if the user has
/// asked the program to stop while an InterruptionWatch lives.
class Progress
{
public:
    /// A total of 0 means unknown: the amount done is shown instead of a percentage.
    Progress(std::string label, std::size_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void update(std::size_t done);

    /// Shows the name of a step that cannot tell how far it has come.
    void announce();

private:
    using Clock = std::chrono::steady_clock;

    void draw(std::size_t done);

    std::string m_label;
    std::size_t m_total;
    bool m_bTerminal;
    bool m_bDrawn = false;
    Clock::time_point m_nextDraw;
};

} // namespace VORN3D::program
