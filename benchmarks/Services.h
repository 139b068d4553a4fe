#pragma once
// Questions about a finished mesh, or about what a library has in its place, asked 100,000 times at once and
// timed inside the process by Google Benchmark. A library's class adds those that it can answer, under common
// names.

#include "Loops.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

namespace bench
{

/// Anywhere in the cube of the points.
inline std::vector<Xyz> makeRandomQueries()
{
    constexpr std::uint64_t SEED = 2;
    return makeInput("uniform", NUM_QUERIES, SEED);
}

/// Each close to the one before.
inline std::vector<Xyz> makePathQueries()
{
    return makeCoherentPoints(NUM_QUERIES);
}

/// answerAll(library, queries) answers all of them, with a library that holds uniform points.
template <class Library, class AnswerAll>
void addService(const char* name, std::vector<Xyz> (*makeQueries)(), const AnswerAll& answerAll)
{
    benchmark::RegisterBenchmark(name,
                                 [=](benchmark::State& state) {
                                     Library& library = getUniformMesh<Library>(sizeOf(state));
                                     const typename Library::Points queries = Library::convert(makeQueries());
                                     for (auto _ : state)
                                         answerAll(library, queries);
                                     setItems(state, queries.size());
                                 })
        ->Arg(100'000)
        ->Arg(1'000'000)
        ->Unit(benchmark::kMillisecond);
}

/// What it takes before any question can be asked, for each point.
template <class Library>
void build(benchmark::State& state)
{
    timeFill(state, &std::make_unique<Library>, Library::convert(makeInput("uniform", sizeOf(state))),
             [](Library& library, auto& points) { library.insert(points); });
}

template <class Library>
int runServices(int argc, char** argv)
{
    add("build", build<Library>, {100'000, 1'000'000})->Iterations(1)->Unit(benchmark::kMillisecond);
    Library::addServices();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace bench
