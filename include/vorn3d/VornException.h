#pragma once

#include "Export.h"

#include <exception>

namespace VORN3D
{

/// The one exception of the library: thrown when an assertion of the library fails, because of a bug or of
/// wrong usage. It carries no details; the failed condition, its file and its line are reported on standard
/// output before it is thrown.
class VORN3D_EXPORT VornException : public std::exception
{
public:
    ~VornException() override;

    /// The same text for every failure; valid for the life of the process.
    const char* what() const noexcept override;
};

} // namespace VORN3D
