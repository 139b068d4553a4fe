#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

/// An empty directory that is removed in the end, with everything in it.
class TemporaryDirectory
{
public:
    TemporaryDirectory()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "vorn3d-test-XXXXXX").string();
        m_path = mkdtemp(pattern.data());
    }
    ~TemporaryDirectory() { std::filesystem::remove_all(m_path); }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::string getPath(const std::string& name) const { return (m_path / name).string(); }

    /// Writes a file and returns its path.
    std::string write(const std::string& name, const std::string& content) const
    {
        std::ofstream(getPath(name), std::ios::binary) << content;
        return getPath(name);
    }

    std::string read(const std::string& name) const
    {
        std::ostringstream content;
        content << std::ifstream(getPath(name), std::ios::binary).rdbuf();
        return content.str();
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
    std::filesystem::path m_path;
};
