#include "Interruption.h"

#include "platform/platform.h"

#include <chrono>
#include <csignal>

namespace VORN3D::program
{

namespace
{

volatile std::sig_atomic_t bRequested = 0;

using Clock = std::chrono::steady_clock; // reading it is safe in a signal handler

// A signal soon after the first is an echo of it: timeout(1), for one, signals its child and then its group.
extern "C" void requestInterruption(int signal)
{
    constexpr std::chrono::milliseconds ECHO_TIME(200);
    static Clock::time_point first;
    if (bRequested == 0) {
        bRequested = 1;
        first = Clock::now();
    } else if (Clock::now() - first > ECHO_TIME) {
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
}

} // namespace

InterruptionWatch::InterruptionWatch()
{
    catchStopSignals(requestInterruption);
}

InterruptionWatch::~InterruptionWatch()
{
    releaseStopSignals();
}

bool InterruptionWatch::isRequested()
{
    return bRequested != 0;
}

void InterruptionWatch::check()
{
    if (isRequested())
        throw Interrupted();
}

} // namespace VORN3D::program
