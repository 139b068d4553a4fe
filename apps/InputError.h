#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace VORN3D::program
{

/// Input or arguments that cannot be used. what() is "FILE:LINE: reason", or "FILE: reason" where no line is
/// to blame.
class InputError : public std::runtime_error
{
public:
    InputError(const std::string& file, const std::string& reason) : std::runtime_error(file + ": " + reason)
    {
    }

    InputError(const std::string& file, std::size_t line, const std::string& reason)
        : InputError(file + ":" + std::to_string(line), reason)
    {
    }
};

} // namespace VORN3D::program
