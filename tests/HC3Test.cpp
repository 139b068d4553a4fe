// The vertex store: its boxes, keys of other lengths, wrong use. What it holds, and in which order, the
// literal model of the triangulation tells (LiteralModel.h).
#include "vertexStore/HC3.h"

#include "PointSets.h"
#include "outcomes.h"
#include "values/squaredDistance.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace VORN3D
{

namespace
{

/// The first batch of the process enlarges its box by less than all others, so it is inserted here.
class FirstBatch : public testing::Environment
{
public:
    void SetUp() override
    {
        for (HC3* pStore : {&first, &second}) {
            std::vector<Point3*> vHandles, vNew;
            pStore->insert({{0, 0, 0}, {1, 1, 1}}, vHandles, vNew);
        }
    }

    HC3 first{27};
    /// Its box is (-0.5, -0.5, -0.5) to (1.5, 1.5, 1.5), exactly.
    HC3 second{27};
};

FirstBatch* const pFirstBatch = new FirstBatch;
[[maybe_unused]] const testing::Environment* const pEnvironment =
    testing::AddGlobalTestEnvironment(pFirstBatch);

/// Checks the slabs of one axis, given the box of the store: half open, those at the boundary unbounded.
void expectSlabs(const HC3& store, double min, double max)
{
    SCOPED_TRACE(min);
    const auto key = [&](double x) { return store.getHilbertIndex({x, min, max}); };
    const double width = (max - min) / 512;
    for (int slab = 1; slab < 512; ++slab) {
        const double boundary = min + width * slab;
        ASSERT_NE(key(boundary - 1e-12), key(boundary + 1e-12)) << "slab " << slab;
        ASSERT_EQ(key(boundary + 1e-12), key(boundary + width - 1e-12)) << "slab " << slab;
    }
    EXPECT_EQ(key(min + width / 2), key(-1e9));
    EXPECT_EQ(key(max - width / 2), key(1e9));
}

TEST(HilbertKey, SlabsShowByHowMuchABatchEnlargesItsBox)
{
    expectSlabs(pFirstBatch->first, -0.05, 1.05); // first batch of the process: by a tenth
    const HC3& store = pFirstBatch->second;       // any later batch: doubled
    expectSlabs(store, -0.5, 1.5);
    EXPECT_NE(store.getHilbertIndex({0.5, 0, 0}), store.getHilbertIndex({0.5 - 1e-12, 0, 0}));
    EXPECT_EQ(store.getHilbertIndex({0.5, 0, 0}), store.getHilbertIndex({0.5 + 1e-12, 0, 0}));
}

TEST(HilbertKey, FewerBitsGiveTheLeadingDigits)
{
    for (int numBits = 3; numBits <= 30; numBits += 3) {
        HC3 store(numBits);
        std::vector<Point3*> vHandles, vNew;
        store.insert({{0, 0, 0}, {1, 1, 1}}, vHandles, vNew);
        for (const Point3& p : {Point3(0.1, 0.7, 0.3), Point3(0.9, 0.2, 0.6), Point3(-0.4, 1.4, 0.5)}) {
            const std::uint32_t key = pFirstBatch->second.getHilbertIndex(p);
            EXPECT_EQ(store.getHilbertIndex(p) >> std::max(0, numBits - 27), key >> std::max(0, 27 - numBits))
                << numBits << " bits";
        }
    }
}

TEST(VertexStore, AnEmptyStoreHasNoTetrahedronAndNoKeys)
{
    HC3 store(27);
    std::vector<Point3*> vHandles, vNew;
    store.insert({}, vHandles, vNew);
    EXPECT_TRUE(vHandles.empty() && vNew.empty());
    EXPECT_EQ(store.findNearbyTet({1, 2, 3}), nullptr);
    expectThrow([&] { store.getHilbertIndex({1, 2, 3}); }, "bValid");
    vHandles = {nullptr};
    expectThrow([&] { store.insert({{1, 2, 3}}, vHandles, vNew); }, "vUserHandles.empty()");
    const Point3 p(1, 2, 3);
    EXPECT_EQ(store.insert(&p).second, nullptr);
    EXPECT_EQ(store.findNearbyTet(p), nullptr);
    for (const int numBits : {-3, 1, 26, 33, 36})
        expectAbortOrExit([&] { HC3 invalid(numBits); }, "HC3::HC3(..): invalid bitlength\n");
}

/// In one cell of the curve's grid, whose box is made large by one point more.
std::vector<Point3> makeCluster(std::size_t num)
{
    std::vector<Point3> vPoints{{1e6, 1e6, 1e6}};
    tests::Random random(1);
    while (vPoints.size() <= num)
        vPoints.push_back(random.inCube(0.0, 1.0));
    return vPoints;
}

// The order decides which of several meshes of cospherical points comes out.
TEST(VertexStore, ManyOfOneKeyComeAlongAFinerCurveAndFewInInputOrder)
{
    std::vector<Point3> vFew = makeCluster(64), vMany = makeCluster(4000);
    vFew.insert(vFew.end(), vFew.rbegin(), vFew.rend() - 1); // equal points do not count
    HC3 storeOfFew(27), storeOfMany(27);
    std::vector<Point3*> vHandles, vNew, vHandlesOfMany, vNewOfMany;
    storeOfFew.insert(vFew, vHandles, vNew);
    ASSERT_EQ(vNew.size(), 65u);
    vNew.erase(std::find(vNew.begin(), vNew.end(), vHandles[0]));
    for (std::size_t i = 0; i < vNew.size(); ++i)
        EXPECT_EQ(vNew[i], vHandles[i + 1]);

    storeOfMany.insert(vMany, vHandlesOfMany, vNewOfMany);
    vNewOfMany.erase(std::find(vNewOfMany.begin(), vNewOfMany.end(), vHandlesOfMany[0]));
    double length = 0;
    for (std::size_t i = 1; i < vNewOfMany.size(); ++i)
        length += std::sqrt(getSquaredDistance(*vNewOfMany[i - 1], *vNewOfMany[i]));
    EXPECT_LT(length, 2 * std::pow(4000, 2.0 / 3)); // in input order it would be ten times as long
}

} // namespace

} // namespace VORN3D
