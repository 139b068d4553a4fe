#include "VirtualDisplay.h"

#include "Interruption.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace VORN3D::program
{

namespace
{

/// Becomes the server, which writes the number of the display that it has chosen into the pipe. A process
/// group of its own keeps Ctrl-C from it; it dies with this program.
[[noreturn]] void becomeServer(int pipeEnd)
{
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nowhere, stream);
    const std::string number = std::to_string(pipeEnd);
    execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-screen", "0", "640x480x24", "-nolisten", "tcp",
           static_cast<char*>(nullptr));
    _exit(127);
}

/// Everything up to the first new line, or to the end.
std::string readLine(int pipeEnd)
{
    std::string line;
    char c = 0;
    while (read(pipeEnd, &c, 1) == 1 && c != '\n')
        line += c;
    return line;
}

} // namespace

VirtualDisplay::VirtualDisplay()
{
    const std::string number = startServer();
    InterruptionWatch::check();
    if (!number.empty())
        setenv("DISPLAY", (":" + number).c_str(), 1);
    else if (std::getenv("DISPLAY") == nullptr)
        throw std::runtime_error(
            "a picture needs a display or the virtual one of Xvfb (install Debian's xvfb)");
}

VirtualDisplay::~VirtualDisplay()
{
    if (m_server <= 0)
        return;
    kill(m_server, SIGTERM);
    waitpid(m_server, nullptr, 0);
}

/// The number of the server's display, or nothing if there is no server.
std::string VirtualDisplay::startServer()
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        return "";
    m_server = fork();
    if (m_server == 0) {
        close(ends[0]);
        becomeServer(ends[1]);
    }
    close(ends[1]);
    std::string number = readLine(ends[0]);
    close(ends[0]);
    return number;
}

} // namespace VORN3D::program
