#pragma once

#include <chrono>

namespace VORN3D::program
{

/// The wall-clock time since its construction.
class Stopwatch
{
public:
    double getSeconds() const { return std::chrono::duration<double>(Clock::now() - m_start).count(); }

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point m_start = Clock::now();
};

} // namespace VORN3D::program
