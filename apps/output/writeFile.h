#pragma once

#include "Interruption.h"
#include "output/OutputFile.h"

namespace VORN3D::program
{

/// Makes a file by write(OutputFile&); it stands under its name if that succeeds and nobody interrupts.
template <typename Write>
void writeFile(const std::string& path, const Write& write)
{
    OutputFile file(path);
    write(file);
    InterruptionWatch::check();
    file.commit();
}

} // namespace VORN3D::program
