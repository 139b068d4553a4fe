// A fresh working directory for as long as the object lives.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <string>

namespace VORN3D::tests
{

class TemporaryDirectory
{
public:
    TemporaryDirectory() : m_previous(std::filesystem::current_path())
    {
        std::string path = (std::filesystem::temp_directory_path() / "vorn3dXXXXXX").string();
        if (mkdtemp(path.data()) == nullptr)
            throw std::runtime_error("cannot make " + path);
        m_path = path;
        std::filesystem::current_path(m_path);
    }

    ~TemporaryDirectory()
    {
        std::error_code ignored;
        std::filesystem::current_path(m_previous, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }

    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::set<std::string> getFilenames() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            names.insert(entry.path().filename().string());
        return names;
    }

private:
    std::filesystem::path m_previous;
    std::filesystem::path m_path;
};

} // namespace VORN3D::tests
