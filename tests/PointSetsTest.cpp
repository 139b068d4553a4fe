// Every point set in every order, inserted in every manner, yields a sound mesh.
#include "PointSets.h"
#include "TrackedTriangulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>

namespace VORN3D::tests
{
namespace
{

using Points = std::vector<Point3>;

void insertChunks(TrackedTriangulation& dt, const Points& v, std::size_t last, std::size_t size)
{
    const auto at = [&](std::size_t i) { return v.begin() + static_cast<std::ptrdiff_t>(std::min(i, last)); };
    for (std::size_t first = 0; first < last; first += size)
        dt.insertBatch(Points(at(first), at(first + size)));
}

using Manner = std::pair<const char*, void (*)(TrackedTriangulation&, const Points&)>;

constexpr Manner aManners[] = {
    {"one batch", [](TrackedTriangulation& dt, const Points& v) { dt.insertBatch(v); }},
    {"singly",
     [](TrackedTriangulation& dt, const Points& v) {
         for (const Point3& p : v)
             dt.insertSingle(p);
     }},
    {"batches",
     [](TrackedTriangulation& dt, const Points& v) { insertChunks(dt, v, v.size(), v.size() / 5 + 1); }},
    {"batches and singles",
     [](TrackedTriangulation& dt, const Points& v) {
         insertChunks(dt, v, v.size() / 2, 7);
         for (std::size_t i = v.size() / 2; i < v.size(); ++i)
             i % 3 == 0 ? dt.insertBatch({v[i]}) : void(dt.insertSingle(v[i]));
         dt.insertBatch(v);
     }},
};

std::map<std::string, Points> orderings(const Points& vPoints)
{
    Points vShuffled = vPoints;
    Random(11).shuffle(vShuffled);
    return {
        {"as is", vPoints}, {"reversed", Points(vPoints.rbegin(), vPoints.rend())}, {"shuffled", vShuffled}};
}

using Quadruples = std::set<std::array<int, 4>>;

/// The tetrahedra as sets of custom indices.
Quadruples quadruples(const Vorn_3D& dt)
{
    Quadruples result;
    std::vector<Tet3*> vTets;
    dt.getTetrahedra(vTets);
    for (const Tet3* pTet : vTets) {
        std::array<int, 4> v;
        for (int i = 0; i < 4; ++i)
            v[static_cast<std::size_t>(i)] = pTet->getCorner(i)->getCustomIndex();
        std::sort(v.begin(), v.end());
        result.insert(v);
    }
    return result;
}

class PointSetsTest : public testing::TestWithParam<PointSet>
{
};

TEST_P(PointSetsTest, YieldsASoundMeshInEveryOrderAndManner)
{
    const Points vPoints = makePoints(GetParam(), GetParam().bQuadratic ? 50 : 250);
    Quadruples expected;
    for (const auto& [order, vOrdered] : orderings(vPoints))
        for (const auto& [manner, insert] : aManners) {
            SCOPED_TRACE(order + ", " + manner);
            TrackedTriangulation dt;
            insert(dt, vOrdered);
            const Point3& p = vOrdered[0];
            ASSERT_EQ(dt.findFaults({vOrdered.back(), p + (vOrdered[1] - p) * 0.5, p + (p - vOrdered[2])}),
                      "");
            if (!GetParam().bGeneral)
                continue;
            if (expected.empty())
                expected = quadruples(dt.get());
            ASSERT_EQ(quadruples(dt.get()), expected);
        }
}

TEST_P(PointSetsTest, YieldsASoundMeshOfThousandsOfPoints)
{
    TrackedTriangulation dt;
    dt.insertBatch(makePoints(GetParam(), GetParam().bQuadratic ? 200 : 3000));
    ASSERT_EQ(dt.findFaults(), "");
}

INSTANTIATE_TEST_SUITE_P(Sets, PointSetsTest, testing::ValuesIn(getPointSets()),
                         [](const auto& parameters) { return parameters.param.name; });

} // namespace
} // namespace VORN3D::tests
