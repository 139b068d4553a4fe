#pragma once
// The filtration of the alpha complexes of one input and a surface, by one library, in a process of its own,
// reported as a line of JSON: seconds, and how many simplices there are up to some alphas, by which libraries
// are compared.

#include "Inputs.h"
#include "Measurement.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace bench
{

/// The alpha, a squared radius, of the surface that is made.
constexpr double SURFACE_ALPHA = 0x1p-8;

/// Adds up how many simplices of each dimension there are at 2^-24, 2^-20, ... 1, and in all.
class SimplexCounts
{
public:
    static constexpr std::size_t NUM_ALPHAS = 8;

    void add(int dimension, double value)
    {
        for (std::size_t k = 0; k < NUM_ALPHAS; ++k)
            m_counts[k][static_cast<std::size_t>(dimension)] += value <= getAlpha(k);
    }

    /// As a list of lists.
    std::string getJson() const
    {
        std::ostringstream text;
        for (const auto& counts : m_counts) {
            text << (text.tellp() == 0 ? "[" : ", ");
            for (std::size_t d = 0; d < 4; ++d)
                text << (d == 0 ? "[" : ", ") << counts[d];
            text << "]";
        }
        return text.str() + "]";
    }

private:
    static double getAlpha(std::size_t k)
    {
        return k + 1 == NUM_ALPHAS ? HUGE_VAL : std::ldexp(1.0, 4 * static_cast<int>(k) - 24);
    }

    std::array<std::array<std::size_t, 4>, NUM_ALPHAS> m_counts{};
};

/// A library makes its filtration of the points, mesh included; says what is in it; and makes a surface, if
/// it can: then it tells the number of triangles.
template <class Library>
void reportAlpha(const std::string& familyName, std::size_t num)
{
    const typename Library::Points points = Library::convert(makeInput(familyName, num));
    Library library;
    const Stopwatch stopwatch;
    library.makeFiltration(points);
    const Measurement filtration = stopwatch.stop();
    SimplexCounts counts;
    library.count(counts);
    const Stopwatch surfaceStopwatch;
    const long numTriangles = library.makeSurface(SURFACE_ALPHA);
    const Measurement surface = surfaceStopwatch.stop();
    std::cout << "{\"exact\": " << (Library::EXACT ? "true" : "false") << ", \"points\": " << points.size()
              << ", \"seconds\": " << filtration.wallSeconds << ", \"cpuSeconds\": " << filtration.cpuSeconds
              << ", \"addedKb\": " << filtration.addedKb << ", \"counts\": " << counts.getJson()
              << ", \"triangles\": " << numTriangles << ", \"surfaceSeconds\": " << surface.wallSeconds
              << ", \"surfaceCpuSeconds\": " << surface.cpuSeconds << "}" << std::endl;
}

template <class Library>
int runAlpha(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: " << argv[0] << " INPUT NUMBER\n";
        return 2;
    }
    try {
        reportAlpha<Library>(argv[1], std::strtoull(argv[2], nullptr, 10));
    } catch (const std::exception& error) {
        std::cerr << argv[0] << ": " << error.what() << "\n";
        return 1;
    }
    return 0;
}

} // namespace bench
