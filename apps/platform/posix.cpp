#include "platform/platform.h"

#include <csignal>
#include <cstdlib>

#include <sys/ioctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace VORN3D::program
{

namespace
{

struct sigaction oldInterrupt;
struct sigaction oldTerminate;

} // namespace

void catchStopSignals(SignalHandler handler)
{
    struct sigaction action = {};
    action.sa_handler = handler;
    sigaddset(&action.sa_mask, SIGINT);
    sigaddset(&action.sa_mask, SIGTERM);
    sigaction(SIGINT, &action, &oldInterrupt);
    sigaction(SIGTERM, &action, &oldTerminate);
}

void releaseStopSignals()
{
    sigaction(SIGINT, &oldInterrupt, nullptr);
    sigaction(SIGTERM, &oldTerminate, nullptr);
}

bool canEraseLines()
{
    const char* const pTerminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) != 0 && pTerminal != nullptr && std::string(pTerminal) != "dumb";
}

std::size_t getNumColumns()
{
    winsize size{};
    const bool bKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return bKnown ? size.ws_col : 80;
}

std::FILE* createFile(const std::string& path)
{
    return std::fopen(path.c_str(), "wbx");
}

void setStandardStreamsBinary() {}

std::size_t getPeakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

} // namespace VORN3D::program
