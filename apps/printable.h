#pragma once

#include <algorithm>
#include <string>

namespace VORN3D::program
{

/// Makes what was found in a file fit for a message: not too long, and without what a terminal would obey.
inline std::string makePrintable(std::string text, std::size_t maxSize)
{
    const bool bTooLong = text.size() > maxSize;
    text.resize(std::min(text.size(), maxSize));
    const auto isPrintable = [](char c) { return c >= ' ' && c <= '~'; };
    std::replace_if(
        text.begin(), text.end(), [&](char c) { return !isPrintable(c); }, '?');
    return bTooLong ? text + "..." : text;
}

} // namespace VORN3D::program
