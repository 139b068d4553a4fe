#pragma once

#include <string>

#include <sys/types.h>

namespace VORN3D::program
{

/// A display for off-screen rendering: a virtual X server of its own (Debian: xvfb), which ends with this
/// object, or the user's display where there is no such server. Throws std::runtime_error if there is
/// neither.
class VirtualDisplay
{
public:
    VirtualDisplay();
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

private:
    std::string startServer();

    pid_t m_server = -1;
};

} // namespace VORN3D::program
