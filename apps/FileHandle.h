#pragma once

#include <cstdio>
#include <memory>

namespace VORN3D::program
{

/// Closes a C stream, unless it is one of the process's standard streams.
struct FileCloser
{
    void operator()(std::FILE* pFile) const
    {
        if (pFile != stdin && pFile != stdout)
            std::fclose(pFile);
    }
};

using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

} // namespace VORN3D::program
