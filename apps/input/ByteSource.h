#pragma once

#include "FileHandle.h"
#include "Progress.h"

#include <cstddef>
#include <string>

namespace VORN3D::program
{

/// What messages call a file; "-" is standard input.
std::string getDisplayName(const std::string& path);

/// The bytes of a file or of standard input, from first to last. Throws InputError if they cannot be read.
class ByteSource
{
public:
    /// Opens the file; "-" is standard input.
    explicit ByteSource(const std::string& path);

    /// Fills the buffer and returns its size, or less at the end of the input.
    std::size_t read(char* buffer, std::size_t size);

    const std::string& getName() const { return m_name; }

private:
    std::string m_name;
    FileHandle m_file;
    Progress m_progress;
    std::size_t m_numRead = 0;
};

} // namespace VORN3D::program
