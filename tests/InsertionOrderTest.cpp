// Insertion in a given order: the mesh is the placing triangulation of that order, whatever else there is
// about the insertion; so parts of a point set agree with the whole. And the order that is good for it.
#include "CapturedOutput.h"
#include "MeshChecker.h"
#include "PointSets.h"
#include "outcomes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace VORN3D::tests
{
namespace
{

using Points = std::vector<Point3>;
using Handles = std::vector<Point3*>;
using Corners = std::array<int, 4>;

/// In random order; the custom index tells the place in it.
Points shuffled(Points vPoints, std::uint64_t seed)
{
    Random(seed).shuffle(vPoints);
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        vPoints[i].setCustomIndex(static_cast<int>(i));
    return vPoints;
}

Points getSet(const std::string& name, std::size_t num)
{
    const auto& vSets = getPointSets();
    return std::find_if(vSets.begin(), vSets.end(), [&](const PointSet& set) { return set.name == name; })
        ->make(num);
}

std::vector<Tet3*> getTets(const Vorn_3D& dt)
{
    std::vector<Tet3*> vTets;
    if (dt.is3D())
        dt.getTetrahedra(vTets);
    return vTets;
}

Corners getCorners(const Tet3* pTet)
{
    Corners corners;
    for (int i = 0; i < 4; ++i)
        corners[static_cast<std::size_t>(i)] = pTet->getCorner(i)->getCustomIndex();
    std::sort(corners.begin(), corners.end());
    return corners;
}

double getDistance(const Point3& p, const Point3& q)
{
    return std::hypot(p.x() - q.x(), p.y() - q.y(), p.z() - q.z());
}

/// All tetrahedra, or those whose circumscribed spheres lie in the box, by the custom indices of their
/// corners.
std::vector<Corners> listTets(const Vorn_3D& dt, const Bbox3* pBox = nullptr)
{
    std::vector<Corners> vTets;
    for (const Tet3* pTet : getTets(dt)) {
        Bbox3 grown = pBox == nullptr ? Bbox3() : *pBox;
        const Point3 centre = pTet->getCircumcenter(), corner = *pTet->getCorner(0);
        const double r = getDistance(corner, centre);
        if (pBox == nullptr || !grown.add({centre + Vector3(-r, -r, -r), centre + Vector3(r, r, r)}))
            vTets.push_back(getCorners(pTet));
    }
    std::sort(vTets.begin(), vTets.end());
    return vTets;
}

/// The side of point i of five in the affine dependence between them (their Radon partition): 1, -1, or 0 if
/// it is on neither.
int getSide(const std::array<const Point3*, 5>& apPoints, std::size_t i)
{
    std::array<const Point3*, 4> apOthers;
    std::copy_if(apPoints.begin(), apPoints.end(), apOthers.begin(),
                 [&](const Point3* p) { return p != apPoints[i]; });
    const int sign = exactOrientation(*apOthers[0], *apOthers[1], *apOthers[2], *apOthers[3]);
    return i % 2 == 0 ? sign : -sign;
}

/// True if all vertices of pTet and its neighbour lie on a sphere.
bool isTied(const Tet3* pTet, int facet)
{
    const Point3* pAcross = pTet->getOppVtxInOppTet(facet, true);
    return pAcross != nullptr && exactInSphere(*pTet->getCorner(0), *pTet->getCorner(1), *pTet->getCorner(2),
                                               *pTet->getCorner(3), *pAcross) == 0;
}

/// Whether two neighbours on a common sphere are a piece of the placing triangulation: of the five vertices,
/// the last one that the dependence holds has been raised most, and must be on the side of the two that are
/// not shared, so that the tetrahedron of the other four is there.
bool isPlaced(const Tet3* pTet, int facet)
{
    const Point3* pApex = pTet->getCorner(facet);
    std::array<const Point3*, 5> apPoints = {pTet->getCorner(0), pTet->getCorner(1), pTet->getCorner(2),
                                             pTet->getCorner(3), pTet->getOppVtxInOppTet(facet, false)};
    std::sort(apPoints.begin(), apPoints.end(),
              [](const Point3* pA, const Point3* pB) { return pA->getCustomIndex() > pB->getCustomIndex(); });
    const auto apex =
        static_cast<std::size_t>(std::find(apPoints.begin(), apPoints.end(), pApex) - apPoints.begin());
    for (std::size_t i = 0; i < 5; ++i)
        if (const int side = getSide(apPoints, i))
            return side == getSide(apPoints, apex);
    return false;
}

/// The number of pairs of neighbours on a common sphere that another order would have yielded.
std::size_t countMisplaced(const Vorn_3D& dt)
{
    std::size_t numMisplaced = 0;
    for (const Tet3* pTet : getTets(dt))
        for (int i = 0; i < 4; ++i)
            if (isTied(pTet, i) && !isPlaced(pTet, i))
                ++numMisplaced;
    return numMisplaced;
}

Handles insertOrdered(Vorn_3D& dt, Points vPoints)
{
    const CapturedOutput output;
    Handles vHandles;
    dt.insertOrdered(vPoints, vHandles);
    return vHandles;
}

std::vector<Corners> triangulateOrdered(const Points& vPoints, const Bbox3* pBox = nullptr)
{
    Vorn_3D dt;
    insertOrdered(dt, vPoints);
    return listTets(dt, pBox);
}

class InsertionOrderTest : public testing::TestWithParam<PointSet>
{
protected:
    Points makeShuffled() const { return shuffled(GetParam().make(GetParam().bQuadratic ? 60 : 250), 5); }
};

INSTANTIATE_TEST_SUITE_P(PointSets, InsertionOrderTest, testing::ValuesIn(getPointSets()),
                         [](const auto& test) { return test.param.name; });

// The first triangulation of the process has another box than the later ones.
TEST_P(InsertionOrderTest, DecidesAloneWhatTheMeshIs)
{
    const Points vPoints = makeShuffled();
    Vorn_3D whole;
    const Handles vHandles = insertOrdered(whole, vPoints);
    EXPECT_EQ(findMeshFaults(whole), Faults());
    EXPECT_EQ(findVertexFaults(whole, vPoints, vHandles), Faults());
    EXPECT_EQ(countMisplaced(whole), 0u);
    const std::vector<Corners> vExpected = listTets(whole);

    for (const std::size_t maxBatch : {1u, 7u, 100u}) {
        Random random(maxBatch);
        Vorn_3D inParts, singlyAtTheEnd;
        for (auto rest = vPoints.begin(); rest != vPoints.end();) {
            const auto numLeft = static_cast<std::size_t>(vPoints.end() - rest);
            const std::size_t num = std::min(1 + random.below(maxBatch), numLeft);
            const Points vPart(rest, rest + static_cast<std::ptrdiff_t>(num));
            insertOrdered(inParts, vPart);
            if (!singlyAtTheEnd.is3D())
                insertOrdered(singlyAtTheEnd, vPart);
            else
                for (Point3 p : vPart)
                    singlyAtTheEnd.insert(p);
            rest += static_cast<std::ptrdiff_t>(num);
        }
        EXPECT_EQ(listTets(inParts), vExpected) << "at most " << maxBatch << " a call";
        EXPECT_EQ(listTets(singlyAtTheEnd), vExpected) << "at most " << maxBatch << " a call";
    }
}

// Points on lines and planes first, given in every manner.
TEST_P(InsertionOrderTest, HoldsForWhatWasStoredBeforeThereWasAMesh)
{
    Points vPoints;
    for (const Point3& p : makeShuffled())
        vPoints.emplace_back(p.x(), p.y(), 1);
    vPoints.emplace_back(vPoints[0].x(), vPoints[0].y(), 2);
    vPoints = shuffled(vPoints, 0);
    const auto apex =
        std::find_if(vPoints.begin(), vPoints.end(), [](const Point3& p) { return p.z() == 2; });
    std::rotate(vPoints.begin(), apex, vPoints.end());
    std::rotate(vPoints.begin(), vPoints.begin() + 1, vPoints.end());
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        vPoints[i].setCustomIndex(static_cast<int>(i));
    const std::vector<Corners> vExpected = triangulateOrdered(vPoints);

    const CapturedOutput output;
    Vorn_3D dt;
    Handles vHandles;
    const std::size_t numSingly = vPoints.size() / 3, numInBatch = 2 * numSingly;
    for (std::size_t i = 0; i < numSingly; ++i)
        dt.insert(vPoints[i]);
    const auto first = vPoints.begin() + static_cast<std::ptrdiff_t>(numSingly);
    const auto second = vPoints.begin() + static_cast<std::ptrdiff_t>(numInBatch);
    Points vBatch(first, second);
    dt.insert(vBatch, vHandles);
    insertOrdered(dt, Points(second, vPoints.end()));
    EXPECT_EQ(listTets(dt), vExpected);
    EXPECT_EQ(countMisplaced(dt), 0u);
    EXPECT_EQ(findMeshFaults(dt), Faults());
}

/// A part of a point set, the box around it, and whether ties make the order matter.
struct Part
{
    const char* name;
    Points vPoints;
    Bbox3 box;
    bool bTies;
};

/// Lattice points on spheres that have nothing inside, 64 in a cube.
Points makeSpheres()
{
    const Points vSphere = getSet("LatticeSphere", 40);
    Points vPoints;
    for (int i = 0; i < 64; ++i)
        for (const Point3& p : vSphere)
            vPoints.emplace_back(p.x() + 37 * (i % 4), p.y() + 37 * (i / 4 % 4), p.z() + 37 * (i / 16));
    return vPoints;
}

Points makeSnapped()
{
    Points vPoints;
    Random random(3);
    for (int i = 0; i < 3000; ++i)
        vPoints.emplace_back(random.whole(0, 15), random.whole(0, 15), random.whole(0, 15));
    return vPoints;
}

std::vector<Part> listParts()
{
    const auto boxOf = [](double min, double max) { return Bbox3(Points{{min, min, min}, {max, max, max}}); };
    return {{"uniform", getSet("UniformCube", 3000), boxOf(0.1, 0.8), false},
            {"grid", getSet("Grid", 2744), boxOf(2.5, 10.5), true},
            {"gridTenths", getSet("GridTenths", 2744), boxOf(0.25, 1.05), true},
            {"snapped", makeSnapped(), boxOf(2.5, 12.5), true},
            {"boxes", getSet("Boxes", 1000), Bbox3(Points{{9.5, -1, -1}, {50.5, 9, 9}}), true},
            {"spheres", makeSpheres(), boxOf(-18.5, 92.5), true}};
}

TEST(InsertionOrder, MakesAPartAgreeWithTheWhole)
{
    for (const Part& part : listParts())
        for (const bool bCanonical : {false, true}) {
            SCOPED_TRACE(testing::Message() << part.name << (bCanonical ? ", canonical" : ", random"));
            const Points vNumbered = shuffled(part.vPoints, 1);
            std::vector<std::uint64_t> vIndices(vNumbered.size());
            std::iota(vIndices.begin(), vIndices.end(), std::uint64_t{0});
            const Bbox3 boxOfWhole(vNumbered);
            Points vWhole = vNumbered, vPart;
            for (const Point3& p : vNumbered)
                if (Bbox3 grown = part.box; !grown.add(p))
                    vPart.push_back(p);
            Points vPartOrdered = vPart;
            if (bCanonical) {
                const auto order = getCanonicalOrder(vNumbered, vIndices, boxOfWhole);
                std::transform(order.begin(), order.end(), vWhole.begin(),
                               [&](std::size_t i) { return vNumbered[i]; });
                std::vector<std::uint64_t> vIndicesOfPart;
                for (const Point3& p : vPart)
                    vIndicesOfPart.push_back(static_cast<std::uint64_t>(p.getCustomIndex()));
                const auto orderOfPart = getCanonicalOrder(vPart, vIndicesOfPart, boxOfWhole);
                std::transform(orderOfPart.begin(), orderOfPart.end(), vPartOrdered.begin(),
                               [&](std::size_t i) { return vPart[i]; });
            }
            const std::vector<Corners> vExpected = triangulateOrdered(vWhole, &part.box);
            EXPECT_GT(vExpected.size(), vPart.size() / 2);
            EXPECT_EQ(triangulateOrdered(vPartOrdered, &part.box), vExpected);

            Random(2).shuffle(vPartOrdered);
            EXPECT_EQ(triangulateOrdered(vPartOrdered, &part.box) != vExpected, part.bTies);
        }
}

// Walks in this order are long, so that starts of their own are found for them.
TEST(InsertionOrder, IsTakenUpWhereAnObserverBrokeOff)
{
    const Points vPoints = shuffled(getSet("Needles", 9000), 1);
    const std::vector<Corners> vExpected = triangulateOrdered(vPoints);
    Vorn_3D dt;
    dt.setProgressObserver([](std::size_t numDone, std::size_t) { return numDone < 4096; });
    const Handles vHandles = insertOrdered(dt, vPoints);
    for (std::size_t i = 0; i < vHandles.size(); ++i)
        ASSERT_EQ(vHandles[i]->getOneTet() != nullptr, i < 4096) << i;
    EXPECT_EQ(listTets(dt), triangulateOrdered({vPoints.begin(), vPoints.begin() + 4096}));
    dt.setProgressObserver({});
    EXPECT_EQ(insertOrdered(dt, vPoints), vHandles);
    EXPECT_EQ(listTets(dt), vExpected);
    EXPECT_EQ(findMeshFaults(dt), Faults());
}

std::vector<std::uint64_t> drawIndices(std::size_t num)
{
    std::vector<std::uint64_t> vIndices(num);
    std::mt19937_64 random(1);
    std::generate(vIndices.begin(), vIndices.end(), std::ref(random));
    return vIndices;
}

TEST(CanonicalOrder, IsOneOrderForAllPartsOfASet)
{
    for (const PointSet& set : getPointSets()) {
        SCOPED_TRACE(set.name);
        Points vPoints = set.make(500);
        const std::size_t num = vPoints.size();
        const std::vector<std::uint64_t> vIndices = drawIndices(num);
        const Bbox3 box(Points(vPoints.begin(), vPoints.begin() + static_cast<std::ptrdiff_t>(num / 2)));
        const std::vector<std::size_t> vOrder = getCanonicalOrder(vPoints, vIndices, box);
        std::vector<std::size_t> vRank(num, num);
        for (std::size_t k = 0; k < num; ++k)
            vRank[vOrder[k]] = k;
        ASSERT_EQ(std::count(vRank.begin(), vRank.end(), num), 0) << "not a permutation";

        Points vPart;
        std::vector<std::uint64_t> vIndicesOfPart;
        std::vector<std::size_t> vRankOfPart;
        for (std::size_t i = num; i-- > 0;)
            if (i % 3 != 0) {
                vPart.push_back(vPoints[i]);
                vIndicesOfPart.push_back(vIndices[i]);
                vRankOfPart.push_back(vRank[i]);
            }
        std::vector<std::size_t> vRanks;
        for (const std::size_t k : getCanonicalOrder(vPart, vIndicesOfPart, box))
            vRanks.push_back(vRankOfPart[k]);
        EXPECT_TRUE(std::is_sorted(vRanks.begin(), vRanks.end()));
    }
}

TEST(CanonicalOrder, FollowsACurveFromCoarseToFine)
{
    constexpr std::size_t NUM = 40000;
    const Points vPoints = getSet("UniformCube", NUM);
    const std::vector<std::uint64_t> vIndices = drawIndices(NUM);
    const auto order = getCanonicalOrder(vPoints, vIndices, Bbox3(vPoints));
    // A level of n points in the unit cube, passed through along the curve, is about n^(2/3) long. Most of
    // the points are in the last three levels.
    double length = 0;
    for (std::size_t k = 1; k < NUM; ++k)
        length += getDistance(vPoints[order[k]], vPoints[order[k - 1]]);
    const double expected = std::pow(NUM * 7.0 / 8, 2.0 / 3) + std::pow(NUM * 7.0 / 64, 2.0 / 3) +
                            std::pow(NUM * 7.0 / 512, 2.0 / 3);
    EXPECT_LT(length, 1.3 * expected);
    // A level holds seven eighths of what is up to its end: the first points of the last level are spread
    // over a corner only, those before over all of the cube.
    for (const double share : {1.0 / 8, 1.0 / 64}) {
        const auto end = order.begin() + std::lround(NUM * share);
        const auto some = std::lround(NUM * share / 5);
        const auto getExtent = [&](auto first, auto last) {
            Bbox3 box;
            for (auto it = first; it != last; ++it)
                box.add(vPoints[*it]);
            return box.getMaxRange();
        };
        EXPECT_GT(getExtent(order.begin(), end), 0.9);
        EXPECT_LT(getExtent(end + some, end + 2 * some), 0.6);
    }
}

TEST(CanonicalOrder, BreaksTiesByIndexAndTakesAnyBox)
{
    const double huge = 1.7e308;
    const Points vPoints(1000, {0.5, 0.5, 0.5});
    for (const Bbox3& box : {Bbox3(Points{{0, 0, 0}, {1, 1, 1}}), Bbox3(vPoints),
                             Bbox3(Points{{-huge, -huge, -huge}, {huge, huge, huge}})}) {
        std::vector<std::uint64_t> vIndices = drawIndices(vPoints.size());
        const auto order = getCanonicalOrder(vPoints, vIndices, box);
        int numDescents = 0;
        for (std::size_t k = 1; k < order.size(); ++k)
            numDescents += vIndices[order[k]] < vIndices[order[k - 1]] ? 1 : 0;
        EXPECT_LE(numDescents, 6) << "more than levels";
        EXPECT_GE(numDescents, 2);
    }
    EXPECT_TRUE(getCanonicalOrder({}, {}, Bbox3()).empty());
    expectThrow([&] { getCanonicalOrder(vPoints, {}, Bbox3(vPoints)); }, "vIndices.size() == vPoints.size()");
    expectThrow([&] { getCanonicalOrder({{0, 0, 0}}, {1}, Bbox3()); }, "box.isValid() || vPoints.empty()");
}

} // namespace
} // namespace VORN3D::tests
