#pragma once

#include <iostream>
#include <streambuf>
#include <string>

namespace VORN3D::program
{

/// While it lives, what the library prints on std::cout goes to standard error, line by line, so that the
/// program's standard output holds nothing but its result. What the library prints for every batch and for
/// every check is left out unless all lines are wanted; warnings and errors always come through.
class LibraryOutput : private std::streambuf
{
public:
    explicit LibraryOutput(bool bEverything) : m_bEverything(bEverything), m_pOriginal(std::cout.rdbuf(this))
    {
    }
    ~LibraryOutput() override;
    LibraryOutput(const LibraryOutput&) = delete;
    LibraryOutput& operator=(const LibraryOutput&) = delete;

private:
    int_type overflow(int_type c) override;

    void passOnLine();

    bool m_bEverything;
    std::streambuf* m_pOriginal;
    std::string m_line;
};

} // namespace VORN3D::program
