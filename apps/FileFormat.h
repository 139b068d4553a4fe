#pragma once

#include "InputError.h"
#include "vtkSupport.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>
#include <vector>

namespace VORN3D::program
{

/// A file format that the program knows: what people call it, and the function that reads or writes it.
template <typename Function>
struct FileFormat
{
    std::string name;
    std::vector<std::string> vExtensions; ///< in lower case, with the dot
    std::string description;
    Function* pFunction;
    bool bNeedsVtk = false;
};

/// The formats of one purpose. The first one is taken for standard input or output and for paths without an
/// extension.
template <typename Function>
using FileFormats = std::vector<FileFormat<Function>>;

template <typename Function>
std::vector<std::string> getFormatNames(const FileFormats<Function>& vFormats)
{
    std::vector<std::string> vNames;
    for (const auto& format : vFormats)
        vNames.push_back(format.name);
    return vNames;
}

/// One indented line for each format, on a new line each.
template <typename Function>
std::string describeFormats(const FileFormats<Function>& vFormats)
{
    constexpr std::size_t columnWidth = 8;
    std::string text;
    for (const auto& format : vFormats) {
        text += "\n  " + format.name + std::string(columnWidth - format.name.size(), ' ') +
                format.description + ":";
        for (const std::string& extension : format.vExtensions)
            text += " " + extension;
    }
    return text;
}

inline std::string getLowerExtension(const std::string& path)
{
    std::string extension = std::filesystem::path(path).extension().string();
    for (char& c : extension)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return extension;
}

/// The first format that is wanted. Throws InputError if there is none, or if this build lacks what it needs.
template <typename Function, typename Condition>
const FileFormat<Function>& findFormat(const FileFormats<Function>& vFormats, const std::string& path,
                                       const Condition& isWanted)
{
    const auto found = std::find_if(vFormats.begin(), vFormats.end(), isWanted);
    if (found == vFormats.end())
        throw InputError(path.empty() ? "''" : path,
                         "unknown file format; known are" + describeFormats(vFormats));
    if (found->bNeedsVtk && !hasVtk())
        throw InputError(path, vtkMissing);
    return *found;
}

/// The format of the path's extension. Throws InputError if there is none.
template <typename Function>
const FileFormat<Function>& chooseFormatOfExtension(const FileFormats<Function>& vFormats,
                                                    const std::string& path)
{
    return findFormat(vFormats, path, [extension = getLowerExtension(path)](const auto& format) {
        return std::count(format.vExtensions.begin(), format.vExtensions.end(), extension) > 0;
    });
}

/// The format of that name or, if the name is empty, the one of the path's extension, if it has one. Throws
/// InputError if there is none.
template <typename Function>
const FileFormat<Function>& chooseFormat(const FileFormats<Function>& vFormats, const std::string& path,
                                         const std::string& name)
{
    if (!name.empty())
        return findFormat(vFormats, path, [&](const auto& format) { return format.name == name; });
    return getLowerExtension(path).empty() ? vFormats.front() : chooseFormatOfExtension(vFormats, path);
}

} // namespace VORN3D::program
