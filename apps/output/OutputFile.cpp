#include "output/OutputFile.h"

#include "Interruption.h"
#include "platform/platform.h"

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <unistd.h>

namespace VORN3D::program
{

namespace
{

namespace fs = std::filesystem;

/// Symbolic links are followed, so that the file they lead to is replaced and not the link.
std::string resolve(const std::string& path)
{
    std::error_code error;
    if (!fs::is_symlink(path, error))
        return path;
    const fs::path resolved = fs::canonical(path, error);
    return error ? path : resolved.string();
}

/// Devices, pipes and directories, of which the last cannot be written at all.
bool isWrittenDirectly(const std::string& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return fs::exists(status) && !fs::is_regular_file(status);
}

} // namespace

void OutputFile::probe(const std::string& path)
{
    if (!isWrittenDirectly(path) || fs::is_directory(path))
        OutputFile file(path);
}

const std::string& OutputFile::getWritablePath() const
{
    if (m_temporaryPath.empty())
        throw std::runtime_error(m_path + ": this format can only be written into a regular file");
    return m_temporaryPath;
}

OutputFile::OutputFile(const std::string& path) : m_path(path)
{
    m_file.reset(openTarget());
    if (!m_file) {
        m_temporaryPath.clear();
        fail();
    }
}

OutputFile::~OutputFile()
{
    discard();
}

void OutputFile::discard()
{
    m_file.reset();
    if (!m_temporaryPath.empty())
        std::remove(m_temporaryPath.c_str());
    m_temporaryPath.clear();
}

std::FILE* OutputFile::openTarget()
{
    if (m_path == "-")
        return stdout;
    m_path = resolve(m_path);
    if (isWrittenDirectly(m_path))
        return std::fopen(m_path.c_str(), "wb");
    m_temporaryPath = m_path + "." + std::to_string(getpid()) + ".part";
    return createFile(m_temporaryPath);
}

void OutputFile::write(std::string_view bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file.get()) < bytes.size())
        fail();
}

void OutputFile::commit()
{
    if (std::fflush(m_file.get()) != 0)
        fail();
    if (m_temporaryPath.empty())
        return;
    if (std::fclose(m_file.release()) != 0)
        fail();
    std::error_code error;
    fs::rename(m_temporaryPath, m_path, error);
    if (error)
        throw std::system_error(error, m_path);
    m_temporaryPath.clear();
}

void OutputFile::fail() const
{
    const int error = errno;
    InterruptionWatch::check();
    throw std::system_error(error, std::generic_category(), m_path);
}

} // namespace VORN3D::program
