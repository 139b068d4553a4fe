// The hull's surface is closed, convex and as large as the mesh; merged, it is a polyhedron whose corners are
// strictly convex.
#include "vorn3d/geometry/HullSurface.h"
#include "MeshChecker.h"
#include "TriangulatedSet.h"
#include "vorn3d/VornException.h"

#include <map>
#include <set>
#include <utility>

namespace VORN3D::tests
{
namespace
{

class HullSurfaceOf : public TriangulatedSet
{
protected:
    HullSurfaceOf() { triangulate(GetParam().bQuadratic ? 60 : 300); }

    const Point3& at(std::uint32_t number) const { return *m_vHandles.at(number); }

    int getSide(const std::array<std::uint32_t, 3>& triangle, std::uint32_t number) const
    {
        return exactOrientation(at(triangle[0]), at(triangle[1]), at(triangle[2]), at(number));
    }
};

using Edge = std::pair<std::uint32_t, std::uint32_t>;

TEST_P(HullSurfaceOf, IsClosedAndConvex)
{
    const HullSurface surface = makeHullSurface(m_dt, m_vHandles);
    std::size_t numFacets = 0;
    for (const Tet3* pTet : m_vTets)
        for (int i = 0; i < 4; ++i)
            numFacets += pTet->getOppTet(i) == nullptr;
    ASSERT_EQ(surface.vTriangles.size(), numFacets);
    ASSERT_EQ(surface.vNeighbors.size(), numFacets);
    if (numFacets == 0)
        return;
    EXPECT_EQ(numFacets, 2 * surface.vVertices.size() - 4) << "Euler's relation of a sphere";

    const MeshArrays mesh = m_dt.getArrays(m_vHandles);
    std::set<std::uint32_t> numbers;
    for (std::uint32_t t = 0; t < numFacets; ++t) {
        const auto& triangle = surface.vTriangles[t];
        numbers.insert(triangle.begin(), triangle.end());
        for (const std::uint32_t number : surface.vVertices)
            ASSERT_LE(getSide(triangle, number), 0);
        const auto firstCorner = mesh.vCorners.begin() + 4 * static_cast<std::ptrdiff_t>(surface.vTets[t]);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(std::count(firstCorner, firstCorner + 4, triangle[i]), 1);
            const std::uint32_t neighbor = surface.vNeighbors[t][i];
            const auto& other = surface.vTriangles[neighbor];
            const auto opp =
                std::find(surface.vNeighbors[neighbor].begin(), surface.vNeighbors[neighbor].end(), t) -
                surface.vNeighbors[neighbor].begin();
            ASSERT_LT(opp, 3);
            EXPECT_EQ(triangle[(i + 1) % 3], other[static_cast<std::size_t>(opp + 2) % 3]);
            EXPECT_EQ(triangle[(i + 2) % 3], other[static_cast<std::size_t>(opp + 1) % 3]);
        }
    }
    EXPECT_EQ(std::vector<std::uint32_t>(numbers.begin(), numbers.end()), surface.vVertices);
}

TEST_P(HullSurfaceOf, MergedIsAPolyhedron)
{
    const HullSurface surface = makeHullSurface(m_dt, m_vHandles);
    const HullPolygons polygons = mergeCoplanarTriangles(surface, m_vHandles);
    const std::size_t numFacets = polygons.vFirst.size() - 1;
    for (std::size_t t = 0; t < surface.vTriangles.size(); ++t)
        for (std::size_t i = 0; i < 3; ++i) {
            const std::uint32_t neighbor = surface.vNeighbors[t][i];
            bool bFlat = true;
            for (const std::uint32_t number : surface.vTriangles[neighbor])
                bFlat &= getSide(surface.vTriangles[t], number) == 0;
            EXPECT_EQ(polygons.vFacetOfTriangle[t] == polygons.vFacetOfTriangle[neighbor], bFlat);
        }

    std::map<Edge, std::size_t> facetOfEdge;
    std::set<std::uint32_t> corners;
    for (std::size_t facet = 0; facet < numFacets; ++facet) {
        const std::size_t first = polygons.vFirst[facet], num = polygons.vFirst[facet + 1] - first;
        ASSERT_GE(num, 3u);
        const auto corner = [&](std::size_t i) { return polygons.vCorners[first + i % num]; };
        for (std::size_t i = 0; i < num; ++i) {
            corners.insert(corner(i));
            EXPECT_TRUE(facetOfEdge.emplace(Edge(corner(i), corner(i + 1)), facet).second);
            // Its next two corners and any vertex off the plane make a tetrahedron inside.
            const auto isStrict = [&](std::uint32_t v) {
                return getSide({corner(i), corner(i + 1), corner(i + 2)}, v) < 0;
            };
            EXPECT_TRUE(std::any_of(surface.vVertices.begin(), surface.vVertices.end(), isStrict));
        }
    }
    for (std::size_t facet = 0; facet < numFacets; ++facet)
        for (std::size_t k = polygons.vFirst[facet]; k < polygons.vFirst[facet + 1]; ++k) {
            const std::size_t next = k + 1 == polygons.vFirst[facet + 1] ? polygons.vFirst[facet] : k + 1;
            EXPECT_EQ(facetOfEdge.at({polygons.vCorners[next], polygons.vCorners[k]}),
                      polygons.vNeighbors[k]);
        }
    if (numFacets > 0) {
        EXPECT_EQ(corners.size() + numFacets, facetOfEdge.size() / 2 + 2) << "Euler's relation";
    }
    for (std::size_t i = 0; i < surface.vVertices.size(); ++i)
        EXPECT_EQ(polygons.vPlaces[i] == HullPlace3::CORNER, corners.count(surface.vVertices[i]) == 1);
}

INSTANTIATE_TEST_SUITE_P(PointSets, HullSurfaceOf, testing::ValuesIn(getPointSets()), getSetName);

TEST(HullSurfaceTest, MeasuresACubeAndMergesItsSides)
{
    std::vector<Point3> vPoints;
    for (int i = 0; i < 125; ++i)
        vPoints.emplace_back(10 + i % 5, i / 5 % 5, -i / 25);
    Vorn_3D dt;
    std::vector<Point3*> vHandles;
    outputOf([&] { dt.insert(vPoints, vHandles); });
    const HullSurface surface = makeHullSurface(dt, vHandles);
    EXPECT_DOUBLE_EQ(surface.area, 96.0);
    EXPECT_DOUBLE_EQ(surface.volume, 64.0);
    EXPECT_EQ(surface.vVertices.size(), 98u);
    const HullPolygons polygons = mergeCoplanarTriangles(surface, vHandles);
    EXPECT_EQ(polygons.vFirst, (std::vector<std::size_t>{0, 4, 8, 12, 16, 20, 24}));
    const auto count = [&](HullPlace3 place) {
        return std::count(polygons.vPlaces.begin(), polygons.vPlaces.end(), place);
    };
    EXPECT_EQ(count(HullPlace3::CORNER), 8);
    EXPECT_EQ(count(HullPlace3::ON_EDGE), 36);
    EXPECT_EQ(count(HullPlace3::IN_FACET), 54);

    vHandles.pop_back();
    outputOf([&] { EXPECT_THROW(makeHullSurface(dt, vHandles), VornException); });
}

} // namespace
} // namespace VORN3D::tests
