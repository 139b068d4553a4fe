#pragma once
// What is too short for a process of its own, timed inside the process by Google Benchmark.

#include "Inputs.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace bench
{

constexpr std::size_t NUM_QUERIES = 100'000;

/// The mesh of num uniform points; made once, for all the loops that only read.
template <class Mesh>
Mesh& getUniformMesh(std::size_t num)
{
    static std::map<std::size_t, std::unique_ptr<Mesh>> meshes;
    std::unique_ptr<Mesh>& pMesh = meshes[num];
    if (!pMesh) {
        pMesh = std::make_unique<Mesh>();
        typename Mesh::Points points = Mesh::convert(makeInput("uniform", num));
        pMesh->insert(points);
    }
    return *pMesh;
}

inline std::size_t sizeOf(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(0));
}

inline void setItems(benchmark::State& state, std::size_t itemsPerIteration)
{
    state.SetItemsProcessed(static_cast<std::int64_t>(itemsPerIteration) * state.iterations());
}

template <class Mesh, class Locate>
void locateAll(benchmark::State& state, const std::vector<Xyz>& vQueries, const Locate& locate)
{
    Mesh& mesh = getUniformMesh<Mesh>(sizeOf(state));
    const typename Mesh::Points queries = Mesh::convert(vQueries);
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(locate(mesh, queries[next]));
        next = next + 1 < queries.size() ? next + 1 : 0;
    }
    setItems(state, 1);
}

template <class Mesh>
void locateRandom(benchmark::State& state)
{
    constexpr std::uint64_t SEED = 2;
    locateAll<Mesh>(state, makeInput("uniform", NUM_QUERIES, SEED),
                    [](Mesh& mesh, const auto& p) { return mesh.locate(p); });
}

template <class Mesh>
void locateCoherent(benchmark::State& state)
{
    locateAll<Mesh>(state, makeCoherentPoints(NUM_QUERIES),
                    [](Mesh& mesh, const auto& p) { return mesh.locateNear(p); });
}

/// fill(points) for sets of so few points, each different from the last one, so that branches cannot be
/// learnt.
template <class Mesh, class Fill>
void fillSmallSets(benchmark::State& state, const Fill& fill)
{
    std::vector<typename Mesh::Points> vSets;
    for (std::uint64_t seed = 1; seed <= 256; ++seed)
        vSets.push_back(Mesh::convert(makeInput("uniform", sizeOf(state), seed)));
    std::size_t next = 0;
    for (auto _ : state)
        fill(vSets[next++ % vSets.size()]);
    setItems(state, sizeOf(state));
}

/// A triangulation made, filled and destroyed.
template <class Mesh>
void smallSets(benchmark::State& state)
{
    fillSmallSets<Mesh>(state, [](typename Mesh::Points& points) {
        Mesh mesh;
        mesh.insert(points);
        benchmark::DoNotOptimize(mesh);
    });
}

/// One triangulation, cleared and filled again.
template <class Mesh>
void smallSetsReused(benchmark::State& state)
{
    Mesh mesh;
    fillSmallSets<Mesh>(state, [&mesh](typename Mesh::Points& points) {
        mesh.clear();
        mesh.insert(points);
        benchmark::DoNotOptimize(mesh);
    });
}

/// fill(mesh, points) alone is timed, for a mesh that makeMesh() has made.
template <class MakeMesh, class Points, class Fill>
void timeFill(benchmark::State& state, const MakeMesh& makeMesh, Points points, const Fill& fill)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto pMesh = makeMesh();
        state.ResumeTiming();
        fill(*pMesh, points);
        state.PauseTiming();
        pMesh.reset();
        state.ResumeTiming();
    }
    setItems(state, points.size());
}

template <class Mesh>
void insertSingly(benchmark::State& state)
{
    timeFill(state, &std::make_unique<Mesh>, Mesh::convert(makeInput("uniform", sizeOf(state))),
             [](Mesh& mesh, auto& points) { mesh.insertSingly(points); });
}

/// 10,000 along a path through a mesh, each near the one before.
template <class Mesh>
void insertCoherent(benchmark::State& state)
{
    const auto makeMesh = [&state] {
        auto pMesh = std::make_unique<Mesh>();
        typename Mesh::Points points = Mesh::convert(makeInput("uniform", sizeOf(state)));
        pMesh->insert(points);
        return pMesh;
    };
    timeFill(state, makeMesh, Mesh::convert(makeCoherentPoints(10'000)),
             [](Mesh& mesh, auto& points) { mesh.insertNear(points); });
}

/// Batches of 1,000 further points; the mesh grows a little from one batch to the next.
template <class Mesh>
void addThousand(benchmark::State& state)
{
    constexpr std::size_t BATCH = 1000;
    Mesh mesh;
    typename Mesh::Points points = Mesh::convert(makeInput("uniform", sizeOf(state)));
    mesh.insert(points);
    std::uint64_t seed = 2;
    for (auto _ : state) {
        state.PauseTiming();
        typename Mesh::Points batch = Mesh::convert(makeInput("uniform", BATCH, seed++));
        state.ResumeTiming();
        mesh.insert(batch);
    }
    setItems(state, BATCH);
}

template <class Mesh>
void listTetrahedra(benchmark::State& state)
{
    Mesh& mesh = getUniformMesh<Mesh>(sizeOf(state));
    std::size_t numTets = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(numTets = mesh.numTetrahedra());
    setItems(state, numTets);
}

/// Corners and neighbours as numbers, asked for the first time.
template <class Mesh>
void makeArrays(benchmark::State& state)
{
    typename Mesh::Points points = Mesh::convert(makeInput("uniform", sizeOf(state)));
    std::size_t numTets = 0;
    for (auto _ : state) {
        state.PauseTiming();
        Mesh mesh;
        mesh.insertNumbered(points);
        state.ResumeTiming();
        numTets = mesh.makeArrays();
    }
    setItems(state, numTets);
}

template <class Mesh>
void checkMesh(benchmark::State& state)
{
    Mesh& mesh = getUniformMesh<Mesh>(sizeOf(state));
    for (auto _ : state)
        if (!mesh.check())
            state.SkipWithError("the mesh is not valid");
    setItems(state, mesh.numTetrahedra());
}

using Loop = void (*)(benchmark::State&);

inline benchmark::internal::Benchmark* add(const char* name, Loop loop,
                                           const std::vector<std::int64_t>& vSizes)
{
    auto* pBenchmark = benchmark::RegisterBenchmark(name, loop);
    for (const std::int64_t size : vSizes)
        pBenchmark->Arg(size);
    return pBenchmark;
}

template <class Mesh>
int runLoops(int argc, char** argv)
{
    const std::vector<std::int64_t> vSizes = {10'000, 100'000, 1'000'000};
    add("locateRandom", locateRandom<Mesh>, vSizes);
    add("locateCoherent", locateCoherent<Mesh>, vSizes);
    add("listTetrahedra", listTetrahedra<Mesh>, vSizes)->Unit(benchmark::kMillisecond);
    add("makeArrays", makeArrays<Mesh>, vSizes)->Iterations(1)->Unit(benchmark::kMillisecond);
    add("checkMesh", checkMesh<Mesh>, vSizes)->Unit(benchmark::kMillisecond);
    add("smallSets", smallSets<Mesh>, {20, 100, 1000});
    add("smallSetsReused", smallSetsReused<Mesh>, {20, 100, 1000});
    add("insertSingly", insertSingly<Mesh>, {100'000})->Iterations(1)->Unit(benchmark::kMillisecond);
    add("insertCoherent", insertCoherent<Mesh>, vSizes)->Iterations(1)->Unit(benchmark::kMillisecond);
    add("addThousand", addThousand<Mesh>, {1'000'000})->Iterations(20)->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace bench
