#include "Interruption.h"

#include <ctime>

namespace VORN3D::program
{

namespace
{

volatile std::sig_atomic_t bRequested = 0;

double getSeconds()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// A signal soon after the first is an echo of it: timeout(1), for one, signals its child and then its group.
extern "C" void requestInterruption(int signal)
{
    constexpr double ECHO_SECONDS = 0.2;
    static double firstSeconds = 0.0;
    if (bRequested == 0) {
        bRequested = 1;
        firstSeconds = getSeconds();
    } else if (getSeconds() - firstSeconds > ECHO_SECONDS) {
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
}

} // namespace

InterruptionWatch::InterruptionWatch() : m_oldInterrupt(), m_oldTerminate()
{
    struct sigaction action = {};
    action.sa_handler = requestInterruption;
    sigaddset(&action.sa_mask, SIGINT);
    sigaddset(&action.sa_mask, SIGTERM);
    sigaction(SIGINT, &action, &m_oldInterrupt);
    sigaction(SIGTERM, &action, &m_oldTerminate);
}

InterruptionWatch::~InterruptionWatch()
{
    sigaction(SIGINT, &m_oldInterrupt, nullptr);
    sigaction(SIGTERM, &m_oldTerminate, nullptr);
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
