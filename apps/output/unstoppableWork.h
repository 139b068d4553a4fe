#pragma once

#include "output/OutputFile.h"

#include <functional>
#include <string>

namespace VORN3D::program
{

/// Does work that writes the file and cannot be asked to stop. Meanwhile the label and the size of the file
/// are shown. When the user interrupts the program, the file is removed and the process ends with the message
/// and the exit status of an interruption, whatever the work is at.
void doUnstoppableWork(const std::string& label, OutputFile& file, const std::function<void()>& work);

/// The same without a file.
void doUnstoppableWork(const std::string& label, const std::function<void()>& work);

} // namespace VORN3D::program
