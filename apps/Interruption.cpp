#include "Interruption.h"

#include <csignal>

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

InterruptionWatch::InterruptionWatch()
    : m_pOldInterrupt(std::signal(SIGINT, requestInterruption)),
      m_pOldTerminate(std::signal(SIGTERM, requestInterruption))
{
}

InterruptionWatch::~InterruptionWatch()
{
    std::signal(SIGINT, m_pOldInterrupt);
    std::signal(SIGTERM, m_pOldTerminate);
}

void InterruptionWatch::check() const
{
    if (bRequested)
        throw Interrupted();
}

} // namespace VORN3D::program
