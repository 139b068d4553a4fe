#include "platform/platform.h"

#include <csignal>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <psapi.h>

namespace VORN3D::program
{

namespace
{

SignalHandler stopHandler = SIG_DFL;

// The system forgets a handler when it calls it.
void catchAgain(int signal)
{
    std::signal(signal, catchAgain);
    stopHandler(signal);
}

} // namespace

void catchStopSignals(SignalHandler handler)
{
    stopHandler = handler;
    std::signal(SIGINT, catchAgain);
    std::signal(SIGTERM, catchAgain);
}

void releaseStopSignals()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
}

bool canEraseLines()
{
    const HANDLE terminal = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(terminal, &mode) != 0 &&
           SetConsoleMode(terminal, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::size_t getNumColumns()
{
    CONSOLE_SCREEN_BUFFER_INFO info{};
    const bool bKnown = GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) != 0;
    return bKnown ? static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1) : 80;
}

std::FILE* createFile(const std::string& path)
{
    return std::fopen(path.c_str(), "wb");
}

void setStandardStreamsBinary()
{
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
}

std::size_t getPeakMemory()
{
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PeakWorkingSetSize;
}

} // namespace VORN3D::program
