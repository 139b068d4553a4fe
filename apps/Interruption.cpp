#include "Interruption.h"

namespace VORN3D::program
{

namespace
{

volatile std::sig_atomic_t bRequested = 0;

extern "C" void requestInterruption(int)
{
    bRequested = 1;
}

} // namespace

InterruptionWatch::InterruptionWatch() : m_oldInterrupt(), m_oldTerminate()
{
    struct sigaction action = {};
    action.sa_handler = requestInterruption;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
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
