#pragma once

#include "FileHandle.h"

#include <string>
#include <string_view>

namespace VORN3D::program
{

/// A file that appears under its name only when it is complete.
///
/// It is written beside its place under a temporary name; commit() renames it, and a file that is destroyed
/// without commit() is removed. Standard output ("-") and targets that are no regular files (devices, pipes)
/// are written directly. Throws std::system_error, naming the file, when the system refuses.
class OutputFile
{
public:
    explicit OutputFile(const std::string& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Throws like the constructor if a regular file cannot be written under this name; nothing changes.
    static void probe(const std::string& path);

    /// Where the file will stand in the end.
    const std::string& getPath() const { return m_path; }

    /// Where others may write the bytes instead of write(). They move about in the file or remove it when
    /// they fail, so a target that is no regular file is refused.
    const std::string& getWritablePath() const;

    void write(std::string_view bytes);
    void commit();

    /// Removes what was written.
    void discard();

private:
    std::FILE* openTarget();
    [[noreturn]] void fail() const;

    std::string m_path;
    /// Empty while nothing needs to be renamed or removed.
    std::string m_temporaryPath;
    FileHandle m_file;
};

} // namespace VORN3D::program
