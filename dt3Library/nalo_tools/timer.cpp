#include "vorn3d/timer.h"

#include "vorn3d/hosting.h"

#include <chrono>
#include <iomanip>
#include <map>
#include <mutex>

namespace VORN3D
{

namespace
{

using Clock = std::chrono::steady_clock;

// The locks are held while printing too, so that the lines of different threads do not mix.
struct TimerTable
{
    std::mutex mutex;
    std::map<std::string, Clock::time_point> startOfName;
};

struct CounterTable
{
    std::mutex mutex;
    std::map<std::string, int> countOfName;
};

void printStop(const std::string& name, double seconds)
{
    messages() << "*** Timer [" << name << "] stop, elapsed time: " << std::fixed << std::setprecision(3)
               << seconds << " s\n\n"
               << std::setprecision(6) << std::flush;
}

void printCounters(const std::map<std::string, int>& countOfName)
{
    messages() << "\nCounters: \n";
    for (const auto& [name, count] : countOfName)
        messages() << name << "\t" << count << "\n";
    messages() << std::endl;
}

} // namespace

double timer(const std::string& name)
{
    static TimerTable table;
    const std::lock_guard<std::mutex> lock(table.mutex);
    const auto [entry, bStarts] = table.startOfName.try_emplace(name, Clock::now());
    if (bStarts) {
        messages() << "\n*** Timer [" << name << "] start" << std::endl;
        return -1.0;
    }
    const std::chrono::duration<double> elapsed = Clock::now() - entry->second;
    printStop(name, elapsed.count());
    table.startOfName.erase(entry);
    return elapsed.count();
}

} // namespace VORN3D

void benchCounter(std::string& name)
{
    static VORN3D::CounterTable table;
    const std::lock_guard<std::mutex> lock(table.mutex);
    if (name == "GETCOUNTERS")
        VORN3D::printCounters(table.countOfName);
    else
        ++table.countOfName[name];
}
