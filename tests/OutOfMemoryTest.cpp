// What is left of a triangulation when memory runs out in the middle of an insertion.
//
// Every allocation of an insertion fails once, each time in a new triangulation, which must then be sound and
// complete itself when the same points are inserted again. The pools of records are not concerned: they end
// the process.
#include "CapturedOutput.h"
#include "MeshChecker.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <new>
#include <utility>

namespace
{

// Negative: no allocation fails.
long numUntilFailure = -1;

void* allocate(std::size_t size)
{
    if (numUntilFailure >= 0 && numUntilFailure-- == 0)
        throw std::bad_alloc();
    if (void* pMemory = std::malloc(size > 0 ? size : 1))
        return pMemory;
    throw std::bad_alloc();
}

} // namespace

// All forms together: a sanitizer has its own of each that is left out.
void* operator new(std::size_t size)
{
    return allocate(size);
}

void* operator new[](std::size_t size)
{
    return allocate(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return std::malloc(size > 0 ? size : 1);
}

void operator delete(void* pMemory) noexcept
{
    std::free(pMemory);
}

void operator delete[](void* pMemory) noexcept
{
    std::free(pMemory);
}

void operator delete(void* pMemory, std::size_t) noexcept
{
    std::free(pMemory);
}

void operator delete[](void* pMemory, std::size_t) noexcept
{
    std::free(pMemory);
}

namespace VORN3D::tests
{

namespace
{

using Points = std::vector<Point3>;

/// True if the allocation after `numBefore` others failed; a stream that it was for keeps that to itself.
template <class Work>
bool failsAfter(long numBefore, const Work& work)
{
    numUntilFailure = numBefore;
    try {
        work();
    } catch (const std::bad_alloc&) {
    }
    return std::exchange(numUntilFailure, -1) < 0;
}

/// Points inside and outside of what is there, so many around the last one that its star is a large one.
Points makeBatch()
{
    Points vPoints;
    for (int i = 0; i < 150; ++i)
        vPoints.emplace_back(3 * std::cos(0.4 * i), 3 * std::sin(0.4 * i), 0.01 * i);
    vPoints.emplace_back(0, 0, 40);
    return vPoints;
}

/// Calls insert(dt, vPoints), with every allocation failing in turn.
template <class Insert>
void expectSoundAfterEachFailure(const Insert& insert)
{
    bool bFailed = true;
    long numBefore = 0;
    for (; bFailed && !testing::Test::HasFailure(); ++numBefore) {
        const CapturedOutput output;
        Points vFirst = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}};
        Points vPoints = makeBatch();
        Vorn_3D dt;
        dt.insert(vFirst);
        bFailed = failsAfter(numBefore, [&] { insert(dt, vPoints); });
        EXPECT_EQ(findMeshFaults(dt), Faults()) << "allocation " << numBefore << " failed";
        EXPECT_NE(dt.locate({0.2, 0.2, 0.2}), nullptr);

        std::vector<Point3*> vHandles;
        dt.insert(vPoints, vHandles);
        Points vAll = vFirst;
        vAll.insert(vAll.end(), vPoints.begin(), vPoints.end());
        std::vector<Point3*> vAllHandles;
        dt.insert(vAll, vAllHandles);
        EXPECT_EQ(findMeshFaults(dt), Faults()) << "allocation " << numBefore << " failed";
        EXPECT_EQ(findVertexFaults(dt, vAll, vAllHandles), Faults())
            << "allocation " << numBefore << " failed";
    }
    EXPECT_GT(numBefore, 10);
}

TEST(OutOfMemory, LeavesABatchSoundAndCompletable)
{
    expectSoundAfterEachFailure([](Vorn_3D& dt, Points& vPoints) {
        std::vector<Point3*> vHandles;
        dt.insert(vPoints, vHandles);
    });
}

TEST(OutOfMemory, LeavesSingleInsertionsSoundAndCompletable)
{
    expectSoundAfterEachFailure([](Vorn_3D& dt, Points& vPoints) {
        for (Point3& p : vPoints)
            dt.insert(p);
    });
}

} // namespace

} // namespace VORN3D::tests
