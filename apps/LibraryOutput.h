#pragma once

#include <ostream>
#include <streambuf>
#include <string>

namespace VORN3D::program
{

/// While it lives, what the library prints goes to standard error, line by line, so that the
/// program's standard output holds nothing but its result. What the library prints for every batch and for
/// every check is left out unless all lines are wanted; warnings and errors always come through.
class LibraryOutput : private std::streambuf
{
public:
    explicit LibraryOutput(bool bEverything);
    ~LibraryOutput() override;
    LibraryOutput(const LibraryOutput&) = delete;
    LibraryOutput& operator=(const LibraryOutput&) = delete;

private:
    int_type overflow(int_type c) override;

    void passOnLine();

    bool m_bEverything;
    std::string m_line;
    std::ostream m_stream;
    std::ostream* m_pOriginal;
};

} // namespace VORN3D::program
