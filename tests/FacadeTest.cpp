// What Vorn_3D promises beyond a sound mesh: the phase before it is three-dimensional, catching up, location,
// queries, wrong use, printed texts.
#include "PointSets.h"
#include "TrackedTriangulation.h"
#include "outcomes.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <limits>

namespace VORN3D::tests
{
namespace
{

using Points = std::vector<Point3>;
using testing::AllOf;
using testing::HasSubstr;

std::vector<Tet3*> getTets(const Vorn_3D& dt)
{
    std::vector<Tet3*> vTets;
    if (dt.is3D())
        dt.getTetrahedra(vTets);
    return vTets;
}

/// Minutes if a search is repeated for every point, or looks at triples.
TEST(Facade, TakesManyCoplanarPointsInSeconds)
{
    const auto plane = std::find_if(getPointSets().begin(), getPointSets().end(),
                                    [](const PointSet& set) { return set.name == "TiltedPlane"; });
    Points vPoints = makePoints(*plane, 1000000);
    const std::clock_t start = std::clock();
    Vorn_3D batch, single;
    outputOf([&] { batch.insert(vPoints); });
    EXPECT_FALSE(batch.is3D());
    for (std::size_t i = 0; i < 100000; ++i)
        single.insert(vPoints[i]);
    EXPECT_FALSE(single.is3D());
    EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 60);
}

TEST(Facade, KnowsTheDimensionOfThePoints)
{
    Points vPoints = {{1, 1, 1}, {1, 1, 1}, {4, 4, 4}, {2, 2, 2}, {0, 1, 0}, {3, 4, 3}, {0, 0, 1e-300}};
    Vorn_3D single;
    std::vector<int> vDimensions = {single.getDimension()};
    for (Point3& p : vPoints) {
        single.insert(p);
        vDimensions.push_back(single.getDimension());
    }
    EXPECT_EQ(vDimensions, (std::vector<int>{-1, 0, 0, 1, 1, 2, 2, 3}));
    Vorn_3D batch;
    outputOf([&] { batch.insert(vPoints); });
    EXPECT_EQ(batch.getDimension(), 3);
    batch.clear();
    EXPECT_EQ(batch.getDimension(), -1);
}

Point3 middle(const Point3& a, const Point3& b)
{
    return {(a.x() + b.x()) / 2, (a.y() + b.y()) / 2, (a.z() + b.z()) / 2};
}

/// a + b - c
Point3 parallelogram(const Point3& a, const Point3& b, const Point3& c)
{
    return {a.x() + b.x() - c.x(), a.y() + b.y() - c.y(), a.z() + b.z() - c.z()};
}

/// Every new point lies exactly on a facet or an edge of the mesh, on the line of an edge, in the plane of a
/// facet or, while the mesh is made of lattice points, often on circumspheres. The coordinates stay exact
/// throughout.
TEST(Facade, TakesPointsOnWhateverTheMeshOffers)
{
    for (std::uint64_t seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        TrackedTriangulation dt;
        dt.insertBatch({{0, 0, 0}, {16, 0, 0}, {0, 16, 0}, {0, 0, 16}, {16, 16, 16}, {4, 8, 4}});
        for (int step = 0; step < 25; ++step) {
            const std::vector<Tet3*> vTets = getTets(dt.get());
            const Tet3* pTet = vTets[random.below(vTets.size())];
            std::array<int, 4> v = {0, 1, 2, 3};
            std::rotate(v.begin(), v.begin() + static_cast<int>(random.below(4)), v.end());
            const Point3 &a = *pTet->getCorner(v[0]), &b = *pTet->getCorner(v[1]),
                         &c = *pTet->getCorner(v[2]);
            const std::array<Point3, 4> vOffers = {middle(a, b), middle(middle(a, b), c),
                                                   parallelogram(a, a, b), parallelogram(a, b, c)};
            const Point3 p = vOffers[random.below(random.below(4) == 0 ? 4 : 2)];
            ASSERT_EQ(dt.findFaults({p}), "") << "before step " << step;
            random.below(2) == 0 ? dt.insertBatch({p}) : void(dt.insertSingle(p));
        }
        ASSERT_EQ(dt.findFaults(), "");
    }
}

/// A bundle so thin beside its outlier that the curve's cells tell nothing: walks take tens of thousands of
/// tests.
TEST(Facade, FindsItsWayThroughAThinBundle)
{
    Random random(1);
    Points vPoints;
    for (int i = 0; i < 20000; ++i)
        vPoints.emplace_back(random.real(0, 1e-9), random.real(0, 1e-9), random.real(0, 1));
    vPoints.emplace_back(1e6, 0, 1e6);
    TrackedTriangulation dt;
    dt.insertBatch(Points(vPoints.begin() + 200, vPoints.end()));
    for (int i = 0; i < 200; ++i)
        dt.insertSingle(vPoints[static_cast<std::size_t>(i)]);
    EXPECT_EQ(dt.findFaults({{1e-10, 5e-10, 0.01}, {5e-10, 5e-10, 0.99}, vPoints[77]}), "");
}

TEST(Facade, RefusesCoordinatesThatAreNotFinite)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    TrackedTriangulation dt;
    for (const Points& vGood :
         {Points{}, Points{{0, 0, 0}, {1, 0, 0}}, Points{{0, 1, 0}, {0, 0, 1}, {2, 2, 2}}}) {
        dt.insertBatch(vGood);
        const std::vector<Tet3*> vTets = getTets(dt.get());
        for (const Point3& bad : {Point3(nan, 0, 0), Point3(0, infinity, 0), Point3(0, 0, -infinity)}) {
            Points vBad = {{5, 5, 5}, {6, 5, 5}, bad, bad, {7, 5, 5}};
            std::vector<Point3*> vHandles;
            Point3 single = bad;
            CapturedOutput batchOutput;
            EXPECT_THROW(dt.get().insert(vBad, vHandles), VornException);
            EXPECT_THAT(batchOutput.text(),
                        AllOf(HasSubstr("Dt3::insert()"), testing::ContainsRegex("[^0-9]2[^0-9]")));
            CapturedOutput singleOutput;
            EXPECT_THROW(dt.get().insert(single), VornException);
            EXPECT_THAT(singleOutput.text(), HasSubstr("Dt3::insert()"));
            EXPECT_EQ(dt.get().locate(bad), nullptr);
            EXPECT_EQ(getTets(dt.get()), vTets);
            EXPECT_EQ(dt.findFaults(), "");
        }
    }
    EXPECT_TRUE(dt.get().is3D());
}

TEST(Facade, AnswersBeforeThereIsAnything)
{
    Vorn_3D dt;
    std::vector<Point3*> vVertices;
    std::vector<Tet3*> vTets;
    dt.getVertices(vVertices);
    EXPECT_EQ(outputOf([&] { dt.getTetrahedra(vTets); }), "Dt3::getAllTetrahedra(), oneTet==NULL\n");
    EXPECT_TRUE(vVertices.empty() && vTets.empty() && !dt.is3D());
    EXPECT_EQ(dt.locate({0, 0, 0}), nullptr);
}

TEST(Facade, PrintsItsTexts)
{
    Vorn_3D dt;
    Points vPoints = {{0, 0, 0}, {1, 0, 0}}, vNone;
    std::vector<Point3*> vHandles;
    EXPECT_EQ(outputOf([&] { dt.insert(vNone); }), "numPoints=0\n");
    EXPECT_EQ(outputOf([&] { dt.insert(vPoints, vHandles); }), "numPoints=2\n");
    EXPECT_THAT(outputOf([&] { dt.insert(vPoints, vHandles); }),
                AllOf(HasSubstr("Dt3::insert()"), HasSubstr("vUserHandles is not empty as it should be")));
    EXPECT_EQ(vHandles.size(), 2u);
    dt.setVerbosity(true);
    EXPECT_THAT(outputOf([&] { dt.insert(vPoints); }),
                HasSubstr("Dt3::insert(vector,vector) has been called\n"));
    dt.setVerbosity(false);
    EXPECT_EQ(outputOf([&] { dt.insert(vNone); }), "numPoints=0\n");
}

TEST(Facade, ListsTheTetrahedraAroundAVertex)
{
    TrackedTriangulation dt;
    dt.insertSingle({0, 0, 0});
    std::vector<Tet3*> vFound;
    EXPECT_THAT(outputOf([&] { dt.get().getTetsAroundVertex(dt.getHandles()[0], vFound); }),
                AllOf(HasSubstr("Dt3::getTetsAroundVertex()"),
                      HasSubstr("pVtx does not belong to the triangulation")));
    EXPECT_TRUE(vFound.empty());
    for (int i = 0; i < 64; ++i)
        dt.insertBatch({Point3(i % 4, i / 4 % 4, i / 16)});
    std::vector<Tet3*> vTets = getTets(dt.get());
    for (Point3* pVtx : dt.getHandles()) {
        std::vector<Tet3*> vExpected = {nullptr};
        std::copy_if(vTets.begin(), vTets.end(), std::back_inserter(vExpected),
                     [&](const Tet3* pTet) { return pTet->hasVertex(pVtx); });
        vFound = {nullptr}; // what is there stays
        dt.get().getTetsAroundVertex(pVtx, vFound);
        ASSERT_EQ(vFound, vExpected);
    }
    outputOf([&] { EXPECT_THROW(dt.get().getTetrahedra(vTets), VornException); });
}

/// A copy of a vertex carries its tetrahedron, and a vertex of another mesh has one, too.
TEST(Facade, ReportsVerticesThatAreNotItsOwn)
{
    const CapturedOutput output;
    TrackedTriangulation other;
    other.insertBatch({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    TrackedTriangulation dt;
    dt.insertBatch({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    for (int numTets = 1; numTets <= 2; ++numTets) {
        Point3 copy(*dt.getHandles()[0]);
        copy.setOneTet(dt.getHandles()[0]->getOneTet());
        for (Point3* pForeign : {&copy, other.getHandles()[0], static_cast<Point3*>(nullptr)}) {
            std::vector<Tet3*> vTets;
            EXPECT_THAT(outputOf([&] { dt.get().getTetsAroundVertex(pForeign, vTets); }),
                        HasSubstr("pVtx does not belong to the triangulation"));
            EXPECT_TRUE(vTets.empty());
        }
        dt.insertSingle({2, 2, 2});
    }
}

/// Of points in a plane, all must be in the mesh when the batch that leaves the plane is repeated.
TEST(Facade, CompletesACancelledStartUp)
{
    TrackedTriangulation dt;
    Points vPlane;
    for (int i = 0; i < 100; ++i)
        vPlane.emplace_back(i % 10, i / 10, 0);
    dt.insertBatch(vPlane);
    Points vSpace = {{5, 5, 5}, {6, 5, 5}, {5, 6, 7}};
    dt.get().setProgressObserver([](std::size_t, std::size_t) { return false; });
    std::vector<Point3*> vHandles;
    outputOf([&] { dt.get().insert(vSpace, vHandles); });
    ASSERT_TRUE(dt.get().is3D());
    EXPECT_EQ(getTets(dt.get()).size(), 1u) << "the first tetrahedron";
    dt.get().setProgressObserver({});
    dt.insertBatch(vSpace);
    EXPECT_EQ(dt.findFaults(), "");
}

} // namespace
} // namespace VORN3D::tests
