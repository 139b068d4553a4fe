#pragma once
// One insertion of one input by one library, in a process of its own, reported as a line of JSON.

#include "Inputs.h"
#include "Measurement.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

namespace bench
{

/// What is timed: the copy into the library's own records, its sorting and its insertion. A function of its
/// own, so that a profiler can be told to collect here only.
template <class Mesh>
[[gnu::noinline]] void insertTimed(Mesh& mesh, typename Mesh::Points& points)
{
    mesh.insert(points);
}

template <class Mesh>
void reportRun(const std::string& familyName, std::size_t num)
{
    const Family& family = getFamily(familyName);
    typename Mesh::Points points = Mesh::convert(family.make(num, 1));
    Mesh mesh;
    const Stopwatch stopwatch;
    insertTimed(mesh, points);
    const Measurement measured = stopwatch.stop();
    std::printf("{\"library\": \"%s\", \"version\": \"%s\", \"exact\": %s, \"input\": \"%s\", "
                "\"unique\": %s, \"points\": %zu, \"tetrahedra\": %zu, \"seconds\": %.6f, "
                "\"cpuSeconds\": %.6f, \"peakKb\": %zu, \"addedKb\": %zu}\n",
                Mesh::NAME, Mesh::version().c_str(), Mesh::EXACT ? "true" : "false", family.name,
                family.bUnique ? "true" : "false", Mesh::count(points), mesh.numTetrahedra(),
                measured.wallSeconds, measured.cpuSeconds, measured.peakKb, measured.addedKb);
}

inline int explainUse(const char* program)
{
    std::cerr << "usage: " << program << " INPUT NUMBER\ninputs:\n";
    for (const Family& family : getFamilies())
        std::cerr << "  " << family.name << ": " << family.description << "\n";
    return 2;
}

template <class Mesh>
int runWhole(int argc, char** argv)
{
    if (argc != 3)
        return explainUse(argv[0]);
    try {
        reportRun<Mesh>(argv[1], std::strtoull(argv[2], nullptr, 10));
    } catch (const std::exception& error) {
        std::cerr << argv[0] << ": " << error.what() << "\n";
        return 1;
    } catch (...) { // TetGen throws numbers
        std::cerr << argv[0] << ": failed\n";
        return 1;
    }
    return 0;
}

} // namespace bench
