// The vertex store, against a naive model of it.
#include "vertexStore/HC3.h"

#include "outcomes.h"
#include "vorn3d/Bbox3.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <random>
#include <utility>
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

/// The key of the cell (ix, iy, iz) of a grid of 2^numLevels slabs an axis.
std::uint32_t getKeyOfCell(const std::array<int, 3>& cell, int numLevels)
{
    double aCoordinate[3];
    for (std::size_t axis = 0; axis < 3; ++axis)
        aCoordinate[axis] = -0.5 + std::ldexp(cell[axis] + 0.5, 1 - numLevels);
    const std::uint32_t key =
        pFirstBatch->second.getHilbertIndex({aCoordinate[0], aCoordinate[1], aCoordinate[2]});
    return key >> (27 - 3 * numLevels);
}

TEST(HilbertKey, RunsThroughAllCellsFromNeighborToNeighbor)
{
    for (int numLevels = 1; numLevels <= 5; ++numLevels) {
        SCOPED_TRACE(testing::Message() << numLevels << " levels");
        const int n = 1 << numLevels;
        std::vector<std::array<int, 3>> vCellOfKey(static_cast<std::size_t>(n * n * n), {-1, -1, -1});
        for (int i = 0; i < n * n * n; ++i) {
            const std::array<int, 3> cell = {i / n / n, i / n % n, i % n};
            const std::uint32_t key = getKeyOfCell(cell, numLevels);
            ASSERT_LT(key, vCellOfKey.size());
            EXPECT_EQ(vCellOfKey[key][0], -1) << "key " << key << " comes twice";
            vCellOfKey[key] = cell;
        }
        for (std::size_t key = 1; key < vCellOfKey.size(); ++key) {
            int distance = 0;
            for (std::size_t axis = 0; axis < 3; ++axis)
                distance += std::abs(vCellOfKey[key][axis] - vCellOfKey[key - 1][axis]);
            ASSERT_EQ(distance, 1) << "from key " << key - 1;
        }
        EXPECT_EQ(vCellOfKey.front(), (std::array<int, 3>{0, 0, 0}));
        EXPECT_EQ(vCellOfKey.back(), (std::array<int, 3>{n - 1, 0, 0}));
    }
}

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

/// The store beside a naive model: the vertices in a list that is sorted anew for every question. Coordinates
/// must be integers of moderate size, so that the model computes boxes and slabs without error.
class StoreAndModel
{
public:
    void insertBatch(const std::vector<Point3>& vInput)
    {
        std::vector<Point3*> vHandles, vNew = {nullptr}, vExpectedNew = {nullptr};
        m_store.insert(vInput, vHandles, vNew);
        if (m_box.add(vInput))
            m_box.enlargeBounds(1.0);
        std::vector<std::pair<std::uint32_t, std::size_t>> vOrder;
        for (const Point3& p : vInput)
            vOrder.emplace_back(getKey(p), vOrder.size());
        std::sort(vOrder.begin(), vOrder.end());

        ASSERT_EQ(vHandles.size(), vInput.size());
        for (const auto& [key, i] : vOrder)
            if (matchHandle(vInput[i], vHandles[i]))
                vExpectedNew.push_back(vHandles[i]);
        EXPECT_EQ(vNew, vExpectedNew);
        compareVertices();
    }

    void insertSingle(const Point3& p)
    {
        const auto [pHandle, pStart] = m_store.insert(&p);
        if (m_box.add(p))
            m_box.enlargeBounds(1.0);
        matchHandle(p, pHandle);
        compareVertices();
        const std::size_t place = countBefore(p, true);
        const Tet3* pExpected = pHandle->getOneTet();
        if (pExpected == nullptr && m_vVertices.size() > 1)
            pExpected = m_vVertices[place > 0 ? place - 1 : 1]->getOneTet();
        EXPECT_EQ(pStart, pExpected);
    }

    void findNearby(const Point3& q)
    {
        const std::size_t place = countBefore(q, false);
        const Tet3* pExpected = nullptr;
        for (std::size_t i = place; i < m_vVertices.size() && pExpected == nullptr; ++i)
            pExpected = m_vVertices[i]->getOneTet();
        for (std::size_t i = place; i > 0 && pExpected == nullptr; --i)
            pExpected = m_vVertices[i - 1]->getOneTet();
        EXPECT_EQ(m_store.findNearbyTet(q), pExpected);
    }

    /// Gives one vertex in `every` a tetrahedron of its own (an address only), and the others none.
    void linkVertices(std::size_t every)
    {
        for (std::size_t i = 0; i < m_vVertices.size(); ++i)
            m_vVertices[i]->setOneTet(i % every == 0 ? reinterpret_cast<Tet3*>(m_vVertices[i]) : nullptr);
    }

    void reindex()
    {
        m_store.reindex();
        compareVertices();
    }

private:
    std::uint32_t getKey(const Point3& p) const
    {
        const auto getSlab = [](double x, double min, double max) {
            if (min == max)
                return x < min ? 0 : 511;
            return static_cast<int>(std::clamp(std::floor((x - min) * 512 / (max - min)), 0.0, 511.0));
        };
        return getKeyOfCell({getSlab(p.x(), m_box.getMinX(), m_box.getMaxX()),
                             getSlab(p.y(), m_box.getMinY(), m_box.getMaxY()),
                             getSlab(p.z(), m_box.getMinZ(), m_box.getMaxZ())},
                            9);
    }

    /// By key and, if bExact, by coordinates among equal keys.
    bool isBefore(const Point3& a, const Point3& b, bool bExact) const
    {
        const std::uint32_t keyA = getKey(a), keyB = getKey(b);
        return keyA < keyB || (bExact && keyA == keyB && a < b);
    }

    std::size_t countBefore(const Point3& p, bool bExact) const
    {
        return static_cast<std::size_t>(
            std::count_if(m_vVertices.begin(), m_vVertices.end(),
                          [&](Point3* pVtx) { return isBefore(*pVtx, p, bExact); }));
    }

    /// Checks the handle of an input point and returns whether it must be a new vertex.
    bool matchHandle(const Point3& p, Point3* pHandle)
    {
        EXPECT_EQ(*pHandle, p);
        const auto isEqual = [&](const Point3* pVtx) { return *pVtx == p; };
        const auto known = std::find_if(m_vVertices.begin(), m_vVertices.end(), isEqual);
        if (known != m_vVertices.end()) {
            EXPECT_EQ(pHandle, *known);
            return false;
        }
        EXPECT_EQ(pHandle->getCustomIndex(), p.getCustomIndex());
        EXPECT_EQ(pHandle->getOneTet(), nullptr);
        m_vVertices.push_back(pHandle);
        return true;
    }

    void compareVertices()
    {
        std::sort(m_vVertices.begin(), m_vVertices.end(),
                  [&](Point3* pA, Point3* pB) { return isBefore(*pA, *pB, true); });
        std::vector<Point3*> vVertices;
        m_store.getVertices(vVertices);
        ASSERT_EQ(vVertices, m_vVertices);
        for (const Point3* pVtx : vVertices)
            ASSERT_EQ(m_store.getHilbertIndex(*pVtx), getKey(*pVtx)) << *pVtx;
    }

    HC3 m_store{27};
    Bbox3 m_box;
    std::vector<Point3*> m_vVertices;
};

TEST(VertexStore, AgreesWithTheModelOverRandomOperations)
{
    for (unsigned int seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        StoreAndModel both;
        int radius = 3; // few positions at first, so that many points are equal
        int customIndex = 0;
        const auto drawPoint = [&] {
            const auto draw = [&] { return static_cast<int>(random() % unsigned(2 * radius + 1)) - radius; };
            Point3 p(draw(), draw(), seed % 3 == 0 ? 0 : draw());
            p.setCustomIndex(customIndex++);
            return p;
        };
        for (int step = 0; step < 60 && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE(testing::Message() << "step " << step);
            radius *= step % 12 == 11 ? 3 : 1;
            const auto action = random() % 5;
            if (action == 0) {
                std::vector<Point3> vBatch(random() % 20);
                std::generate(vBatch.begin(), vBatch.end(), drawPoint);
                both.insertBatch(vBatch);
            } else if (action == 1)
                both.linkVertices(1 + random() % 8);
            else if (action == 2)
                both.reindex();
            else
                both.insertSingle(drawPoint());
            both.findNearby(drawPoint());
        }
    }
}

TEST(VertexStore, PointsOfEqualKeyAreToldApartByCoordinates)
{
    StoreAndModel both;
    both.insertBatch({{-1'000'000, -1'000'000, -1'000'000}, {1'000'000, 1'000'000, 1'000'000}});
    both.insertBatch({{3, 1, 2}, {1, 3, 2}, {3, 1, 1}, {1, 3, 2}, {2, 2, 2}});
    for (const Point3& p : {Point3(2, 2, 3), Point3(3, 1, 2), Point3(0.0, -0.0, 0.0), Point3(-0.0, 0.0, 0.0)})
        both.insertSingle(p);
    both.linkVertices(3);
    for (const Point3& p : {Point3(2, 2, 1), Point3(5, 5, 5), Point3(1, 1, 1)}) {
        both.insertSingle(p);
        both.findNearby(p);
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

} // namespace

} // namespace VORN3D
