#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>

namespace VORN3D
{

/// An empty working directory, for as long as the object lives. Then it is removed with everything in it.
class TemporaryDirectory
{
public:
    TemporaryDirectory()
    {
        std::string path = (std::filesystem::temp_directory_path() / "vorn3dXXXXXX").string();
        if (mkdtemp(path.data()) == nullptr)
            throw std::runtime_error("cannot make " + path);
        m_path = path;
        std::filesystem::current_path(m_path);
    }

    ~TemporaryDirectory() { remove(); }

    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    /// For a process that ends without calling destructors.
    void remove() const
    {
        std::error_code ignored;
        std::filesystem::current_path(m_previous, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }

    std::string getPath(const std::string& name) const { return (m_path / name).string(); }

    /// Writes a file and returns its path.
    std::string write(const std::string& name, const std::string& content) const
    {
        std::ofstream(getPath(name), std::ios::binary) << content;
        return getPath(name);
    }

    std::string read(const std::string& name) const
    {
        std::ifstream is(getPath(name), std::ios::binary);
        if (!is)
            throw std::runtime_error("cannot read " + name);
        return {std::istreambuf_iterator<char>(is), {}};
    }

    /// The names of all files, in alphabetical order, each followed by a blank.
    std::string list() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            names.insert(entry.path().filename().string());
        std::string text;
        for (const std::string& name : names)
            text += name + " ";
        return text;
    }

private:
    const std::filesystem::path m_previous = std::filesystem::current_path();
    std::filesystem::path m_path;
};

} // namespace VORN3D
