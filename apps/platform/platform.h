// What the program asks of the operating system beyond the standard library; posix.cpp and windows.cpp
// answer.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

namespace VORN3D::program
{

using SignalHandler = void (*)(int);

/// From now on Ctrl-C and the termination signal call the handler; a system call that waits fails then, where
/// the system can do that.
void catchStopSignals(SignalHandler handler);

/// These signals do again what they did before.
void releaseStopSignals();

/// Whether standard error is a terminal on which a line can be erased by an escape sequence.
bool canEraseLines();

/// The width of the terminal of standard error, or of a usual one.
std::size_t getNumColumns();

/// Creates a file and opens it for bytes; null, with errno set, if it cannot be created. Where the system can
/// tell, a file that is there already is left alone.
std::FILE* createFile(const std::string& path);

/// Standard input and output take bytes as they are.
void setStandardStreamsBinary();

/// The most memory that the process has had, in bytes.
std::size_t getPeakMemory();

} // namespace VORN3D::program
