// Independent triangulations in several threads, and several readers of a finished one. The thread sanitizer
// judges what the threads share.
#include "PointSets.h"
#include "TrackedTriangulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <thread>

namespace VORN3D::tests
{
namespace
{

constexpr std::size_t numThreads = 4;

void inThreads(const std::function<void(std::size_t)>& work)
{
    std::vector<std::thread> vThreads;
    for (std::size_t i = 0; i < numThreads; ++i)
        vThreads.emplace_back(work, i);
    for (std::thread& thread : vThreads)
        thread.join();
}

TEST(Threads, BuildIndependentTriangulations)
{
    std::string aFaults[numThreads];
    inThreads([&](std::size_t thread) {
        for (std::size_t set = thread; set < getPointSets().size(); set += numThreads) {
            std::vector<Point3> vPoints = makePoints(getPointSets()[set], 60), vLast = {{0.3, 0.4, 7}};
            std::vector<Point3*> vHandles, vLastHandle;
            Vorn_3D dt;
            dt.insert(vPoints, vHandles);
            dt.insert(vLast, vLastHandle);
            vPoints.push_back(vLast[0]);
            vHandles.push_back(vLastHandle[0]);
            vPoints.push_back(vPoints[5]);
            vHandles.push_back(dt.insert(vPoints.back()));
            dt.locate({0.5, 0.5, 0.5});
            aFaults[thread] +=
                joinFaults(findMeshFaults(dt)) + joinFaults(findVertexFaults(dt, vPoints, vHandles));
        }
    });
    for (const std::string& faults : aFaults)
        EXPECT_EQ(faults, "");
}

TEST(Threads, ReadAFinishedTriangulationTogether)
{
    Vorn_3D dt;
    std::vector<Point3> vPoints = makePoints(getPointSets()[0], 2000), vQueries;
    std::vector<Point3*> vHandles;
    dt.insert(vPoints, vHandles);
    Random random(1);
    for (int i = 0; i < 2000; ++i)
        vQueries.push_back(i % 3 == 0 ? vPoints[random.below(2000)] : random.inCube(-0.1, 1.1));
    const auto answer = [&] {
        std::vector<Tet3*> vAnswers, vTets;
        std::vector<Point3*> vVertices;
        for (const Point3& q : vQueries)
            vAnswers.push_back(dt.locate(q));
        dt.getTetrahedra(vTets);
        dt.getVertices(vVertices);
        for (Point3* pVtx : vVertices)
            dt.getTetsAroundVertex(pVtx, vAnswers);
        vAnswers.insert(vAnswers.end(), vTets.begin(), vTets.end());
        return vAnswers;
    };
    const std::vector<Tet3*> vExpected = answer();
    EXPECT_GT(std::count(vExpected.begin(), vExpected.end(), nullptr), 100);
    std::vector<Tet3*> aAnswers[numThreads];
    inThreads([&](std::size_t thread) { aAnswers[thread] = answer(); });
    for (const std::vector<Tet3*>& vAnswers : aAnswers)
        EXPECT_EQ(vAnswers, vExpected);
}

} // namespace
} // namespace VORN3D::tests
