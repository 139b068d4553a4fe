#include "input/ByteSource.h"

#include "InputError.h"
#include "Interruption.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace VORN3D::program
{

namespace
{

/// 0 if unknown, as for a pipe.
std::size_t sizeOfFile(const std::string& path)
{
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return error ? 0 : static_cast<std::size_t>(size);
}

FileHandle open(const std::string& path)
{
    FileHandle file(path == "-" ? stdin : std::fopen(path.c_str(), "rb"));
    if (!file)
        throw InputError(getDisplayName(path), std::strerror(errno));
    return file;
}

} // namespace

std::string getDisplayName(const std::string& path)
{
    if (path == "-")
        return "<stdin>";
    return path.empty() ? "''" : path;
}

ByteSource::ByteSource(const std::string& path)
    : m_name(getDisplayName(path)), m_file(open(path)), m_progress("reading " + m_name, sizeOfFile(path))
{
}

std::size_t ByteSource::read(char* buffer, std::size_t size)
{
    const std::size_t numBytes = std::fread(buffer, 1, size, m_file.get());
    if (numBytes < size && std::ferror(m_file.get())) {
        const int error = errno;
        InterruptionWatch::check();
        throw InputError(m_name, std::strerror(error));
    }
    m_numRead += numBytes;
    m_progress.update(m_numRead);
    return numBytes;
}

} // namespace VORN3D::program
