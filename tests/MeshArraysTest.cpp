// The mesh as arrays is the mesh that the handles tell, after any insertions.
#include "MeshChecker.h"
#include "PointSets.h"
#include "TrackedTriangulation.h"
#include "outcomes.h"

#include <algorithm>
#include <array>
#include <map>

namespace VORN3D::tests
{
namespace
{

using Handles = std::vector<Point3*>;
using Corners = std::array<const Point3*, 4>;

const Point3* getHandle(const Handles& vHandles, std::uint32_t number)
{
    return number == NO_INDEX ? nullptr : vHandles.at(number);
}

Corners getCorners(const Tet3* pTet)
{
    return {pTet->getCorner(0), pTet->getCorner(1), pTet->getCorner(2), pTet->getCorner(3)};
}

/// The handle of each tetrahedron in the arrays, known by its corners; null if there is no such.
std::vector<Tet3*> findTets(const Vorn_3D& dt, const MeshArrays& mesh, const Handles& vHandles)
{
    std::vector<Tet3*> vTets;
    if (dt.is3D())
        dt.getTetrahedra(vTets);
    std::map<Corners, Tet3*> tetOf;
    for (Tet3* pTet : vTets)
        tetOf[getCorners(pTet)] = pTet;
    std::vector<Tet3*> vFound;
    for (std::size_t i = 0; i < mesh.vCorners.size(); i += 4) {
        Corners corners;
        for (std::size_t k = 0; k < 4; ++k)
            corners[k] = getHandle(vHandles, mesh.vCorners[i + k]);
        vFound.push_back(tetOf[corners]);
        tetOf.erase(corners);
    }
    EXPECT_EQ(vFound.size(), vTets.size());
    return vFound;
}

/// The handles tell the same, all of the vertices given.
void expectSameMesh(const Vorn_3D& dt, const Handles& vHandles)
{
    const MeshArrays mesh = dt.getArrays(vHandles);
    const std::vector<Tet3*> vTets = findTets(dt, mesh, vHandles);
    ASSERT_EQ(dt.getNumberedTetrahedra(), vTets);
    const auto getTet = [&](std::uint32_t number) { return number == NO_INDEX ? nullptr : vTets.at(number); };
    ASSERT_EQ(std::count(vTets.begin(), vTets.end(), nullptr), 0);
    ASSERT_EQ(mesh.vNeighbors.size(), 4 * vTets.size());
    for (std::size_t i = 0; i < mesh.vNeighbors.size(); ++i)
        ASSERT_EQ(getTet(mesh.vNeighbors[i]), vTets[i / 4]->getOppTet(static_cast<int>(i % 4))) << i;

    ASSERT_EQ(mesh.vVertices.size(), vHandles.size());
    ASSERT_EQ(mesh.vTets.size(), vHandles.size());
    std::map<const Point3*, std::size_t> first;
    for (std::size_t i = 0; i < vHandles.size(); ++i) {
        ASSERT_EQ(mesh.vVertices[i], first.emplace(vHandles[i], i).first->second);
        ASSERT_EQ(getTet(mesh.vTets[i]), vHandles[i]->getOneTet());
    }
}

class MeshArraysOf : public testing::TestWithParam<PointSet>
{
};

// Single insertions leave dead records between the live ones.
TEST_P(MeshArraysOf, AreWhatTheHandlesTell)
{
    TrackedTriangulation mesh;
    expectSameMesh(mesh.get(), {});
    std::vector<Point3> vPoints = makePoints(GetParam(), 400);
    Random(3).shuffle(vPoints);
    const auto third = static_cast<std::ptrdiff_t>(vPoints.size() / 3);
    mesh.insertBatch({vPoints.begin(), vPoints.begin() + third});
    expectSameMesh(mesh.get(), mesh.getHandles());
    mesh.insertBatch({vPoints.begin() + third / 2, vPoints.begin() + 2 * third}); // some for the second time
    expectSameMesh(mesh.get(), mesh.getHandles());
    for (std::ptrdiff_t i = third; i < std::min(third + 150, 3 * third); ++i) {
        mesh.insertSingle(vPoints[static_cast<std::size_t>(i)]);
        if (i % 10 == 0)
            expectSameMesh(mesh.get(), mesh.getHandles());
    }
}

INSTANTIATE_TEST_SUITE_P(PointSets, MeshArraysOf, testing::ValuesIn(getPointSets()),
                         testing::PrintToStringParamName());

TEST(MeshArraysTest, NumberTheHandlesGivenAndNoOthers)
{
    Vorn_3D dt, other;
    std::vector<Point3> vPoints = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {2, 1, 0}, {0, 0, 1}};
    Handles vHandles;
    for (Point3& p : vPoints)
        vHandles.push_back(dt.insert(p));
    std::size_t numNone = 0;
    for (std::size_t i = 0; i < vHandles.size(); ++i) {
        const MeshArrays mesh = dt.getArrays({vHandles[i], vHandles[i]});
        const bool bInMesh = vHandles[i]->getOneTet() != nullptr;
        EXPECT_EQ(std::count(mesh.vCorners.begin(), mesh.vCorners.end(), 0u), bInMesh ? 1 : 0);
        EXPECT_EQ(std::count(mesh.vCorners.begin(), mesh.vCorners.end(), NO_INDEX), bInMesh ? 3 : 4);
        EXPECT_EQ(mesh.vVertices, (std::vector<std::uint32_t>{0, 0}));
        EXPECT_EQ(mesh.vTets, std::vector<std::uint32_t>(2, bInMesh ? 0 : NO_INDEX));
        numNone += !bInMesh;
    }
    EXPECT_EQ(numNone, 1u); // left out by the insertion that made the first tetrahedron

    EXPECT_THROW(dt.getArrays({vHandles[0], nullptr}), VornException);
    EXPECT_THROW(dt.getArrays({other.insert(vPoints[0])}), VornException);
    EXPECT_THROW(dt.getArrays({&vPoints[0]}), VornException);
}

} // namespace
} // namespace VORN3D::tests
