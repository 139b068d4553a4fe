#include "Measurement.h"

#include <algorithm>
#include <ctime>
#include <fstream>
#include <malloc.h>
#include <string>

namespace bench
{

namespace
{

double readClock(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

// A line of /proc/self/status, such as "VmHWM:    1234 kB".
std::size_t readStatusKb(const std::string& key)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        std::size_t kb = 0;
        if (word == key + ":" && status >> kb)
            return kb;
    }
    return 0;
}

// What making the input took must not count: its memory goes back, and the peak starts anew.
void forgetPeak()
{
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
}

} // namespace

Stopwatch::Stopwatch() : m_kbBefore(0), m_wallBefore(0.0), m_cpuBefore(0.0)
{
    forgetPeak();
    m_kbBefore = readStatusKb("VmRSS");
    m_cpuBefore = readClock(CLOCK_PROCESS_CPUTIME_ID);
    m_wallBefore = readClock(CLOCK_MONOTONIC);
}

Measurement Stopwatch::stop() const
{
    const double wall = readClock(CLOCK_MONOTONIC) - m_wallBefore;
    const double cpu = readClock(CLOCK_PROCESS_CPUTIME_ID) - m_cpuBefore;
    const std::size_t peakKb = readStatusKb("VmHWM");
    return {wall, cpu, peakKb, peakKb - std::min(peakKb, m_kbBefore)};
}

} // namespace bench
