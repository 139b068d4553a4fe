#pragma once

#include <stdexcept>

namespace VORN3D::program
{

/// The user asked the program to stop.
class Interrupted : public std::runtime_error
{
public:
    Interrupted() : std::runtime_error("vorn3d: interrupted") {}
};

/// While it lives, Ctrl-C and the termination signal do not end the process at once but make the next check()
/// throw Interrupted, so that the work in hand is cleaned up. A system call that waits fails then. A later
/// signal of the kind ends the process at once. One at a time.
class InterruptionWatch
{
public:
    InterruptionWatch();
    ~InterruptionWatch();
    InterruptionWatch(const InterruptionWatch&) = delete;
    InterruptionWatch& operator=(const InterruptionWatch&) = delete;

    static bool isRequested();
    static void check();
};

} // namespace VORN3D::program
