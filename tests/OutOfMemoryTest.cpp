// What is left of a triangulation when memory runs out in the middle of an insertion.
//
// Every allocation of an insertion fails once, each time in a new triangulation, which must then be sound and
// complete itself when the same points are inserted again. For the pools of records, whose end would be that
// of the process, the fatal handler throws.
#include "CapturedOutput.h"
#include "MeshChecker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>
#include <string>
#include <utility>

namespace
{

// Negative: no allocation fails.
long numUntilFailure = -1;

bool isToFail()
{
    return numUntilFailure >= 0 && numUntilFailure-- == 0;
}

void* allocate(std::size_t size)
{
    void* pMemory = isToFail() ? nullptr : std::malloc(size > 0 ? size : 1);
    if (pMemory == nullptr)
        throw std::bad_alloc();
    return pMemory;
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

// The pools' form.
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept
{
    const auto unit = static_cast<std::size_t>(alignment);
    return isToFail() ? nullptr : std::aligned_alloc(unit, (size + unit - 1) / unit * unit);
}

void operator delete(void* pMemory, std::align_val_t) noexcept
{
    std::free(pMemory);
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
    const FatalHandler earlier = setFatalHandler([](const char*) { throw std::bad_alloc(); });
    numUntilFailure = numBefore;
    try {
        work();
    } catch (const std::bad_alloc&) {
    }
    setFatalHandler(earlier);
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

void insertBatch(Vorn_3D& dt, Points& vPoints)
{
    std::vector<Point3*> vHandles;
    dt.insert(vPoints, vHandles);
}

void insertOrdered(Vorn_3D& dt, Points& vPoints)
{
    std::vector<Point3*> vHandles;
    dt.insertOrdered(vPoints, vHandles);
}

void insertSingly(Vorn_3D& dt, Points& vPoints)
{
    for (Point3& p : vPoints)
        dt.insert(p);
}

bool isAllInMesh(const Vorn_3D& dt)
{
    std::vector<Point3*> vVertices;
    dt.getVertices(vVertices);
    return std::all_of(vVertices.begin(), vVertices.end(),
                       [](const Point3* pVtx) { return pVtx->getOneTet() != nullptr; });
}

/// What is stored before the insertion whose allocations fail, and how this inserts.
struct Case
{
    const char* name;
    Points vStored;
    void (*insert)(Vorn_3D&, Points&);
    bool bCatchesUp; // brings in the points stored before
};

void PrintTo(const Case& c, std::ostream* pOut)
{
    *pOut << c.name;
}

const Points COPLANAR = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {5, 5, 0}};
const Points SPANNED = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
const Points SOLID = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}};

class OutOfMemoryTest : public testing::TestWithParam<Case>
{
};

// Every allocation fails in turn.
TEST_P(OutOfMemoryTest, LeavesAnInsertionSoundAndCompletable)
{
    const Case& c = GetParam();
    bool bFailed = true;
    long numBefore = 0;
    for (; bFailed && !HasFailure(); ++numBefore) {
        SCOPED_TRACE("allocation " + std::to_string(numBefore) + " failed");
        const CapturedOutput output;
        Points vStored = c.vStored;
        Points vPoints = makeBatch();
        Vorn_3D dt;
        dt.insert(vStored);
        bFailed = failsAfter(numBefore, [&] { c.insert(dt, vPoints); });
        EXPECT_EQ(findMeshFaults(dt), Faults());

        c.insert(dt, vPoints);
        EXPECT_TRUE(dt.is3D());
        EXPECT_EQ(findMeshFaults(dt), Faults());
        EXPECT_TRUE(isAllInMesh(dt) || !c.bCatchesUp);

        Points vAll = vStored;
        vAll.insert(vAll.end(), vPoints.begin(), vPoints.end());
        std::vector<Point3*> vAllHandles;
        dt.insert(vAll, vAllHandles);
        EXPECT_EQ(findMeshFaults(dt), Faults());
        EXPECT_EQ(findVertexFaults(dt, vAll, vAllHandles), Faults());
    }
    EXPECT_GT(numBefore, 10);
}

INSTANTIATE_TEST_SUITE_P(Cases, OutOfMemoryTest,
                         testing::Values(Case{"EmptyBatch", {}, insertBatch, true},
                                         Case{"EmptyOrdered", {}, insertOrdered, true},
                                         Case{"EmptySingly", {}, insertSingly, false},
                                         Case{"CoplanarBatch", COPLANAR, insertBatch, true},
                                         Case{"CoplanarOrdered", COPLANAR, insertOrdered, true},
                                         Case{"CoplanarSingly", COPLANAR, insertSingly, false},
                                         Case{"SpannedBatch", SPANNED, insertBatch, true},
                                         Case{"SolidBatch", SOLID, insertBatch, true},
                                         Case{"SolidOrdered", SOLID, insertOrdered, true},
                                         Case{"SolidSingly", SOLID, insertSingly, true}),
                         [](const auto& test) { return test.param.name; });

TEST(OutOfMemory, KeepsTheClientsNumbersOfDoomedTetrahedra)
{
    for (const Point3& last : {Point3(0, 0, 40), Point3(0.1, 0.1, 0.5)}) {
        bool bFailed = true;
        for (long numBefore = 0; bFailed; ++numBefore) {
            const CapturedOutput output;
            Points vPoints = makeBatch();
            vPoints.pop_back();
            Vorn_3D dt;
            dt.insert(vPoints);
            std::vector<Tet3*> vTets;
            dt.getTetrahedra(vTets);
            for (Tet3* pTet : vTets)
                pTet->setCustomIndex(7);
            Point3 p(last);
            bFailed = failsAfter(numBefore, [&] { dt.insert(p); });
            std::vector<Tet3*> vTetsAfter;
            dt.getTetrahedra(vTetsAfter);
            if (vTetsAfter == vTets) {
                EXPECT_TRUE(std::all_of(vTets.begin(), vTets.end(),
                                        [](const Tet3* pTet) { return pTet->getCustomIndex() == 7; }))
                    << "allocation " << numBefore << " failed";
            }
        }
    }
}

} // namespace

} // namespace VORN3D::tests
