#pragma once

#include <cstddef>

namespace bench
{

struct Measurement
{
    double wallSeconds;
    double cpuSeconds;
    std::size_t peakKb;
    /// What the peak exceeds the memory in use before the start by.
    std::size_t addedKb;
};

/// Measures what its process does between construction and stop().
class Stopwatch
{
public:
    Stopwatch();
    Measurement stop() const;

private:
    std::size_t m_kbBefore;
    double m_wallBefore;
    double m_cpuBefore;
};

} // namespace bench
