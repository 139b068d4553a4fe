// Nearest vertices, against all vertices sorted by their distances in integers of any length.
#include "vorn3d/geometry/nearestVertex.h"
#include "TriangulatedSet.h"

#include <set>

namespace VORN3D::tests
{
namespace
{

/// The squared distance in units that are the same for all points with common coordinates.
mpq_class getExactDistance(const Point3& p, const Point3& q)
{
    const mpq_class x = mpq_class(p.x()) - mpq_class(q.x());
    const mpq_class y = mpq_class(p.y()) - mpq_class(q.y());
    const mpq_class z = mpq_class(p.z()) - mpq_class(q.z());
    return x * x + y * y + z * z;
}

class NearestVertex : public TriangulatedSet
{
protected:
    /// The vertices of the mesh in the order of their distances, then of their coordinates.
    std::vector<Point3*> sortByDistance(const Point3& q) const
    {
        std::vector<std::pair<mpq_class, Point3*>> vOrder;
        for (Point3* pVtx : m_vVertices)
            vOrder.emplace_back(getExactDistance(*pVtx, q), pVtx);
        std::sort(vOrder.begin(), vOrder.end(), [](const auto& a, const auto& b) {
            return a.first == b.first ? *a.second < *b.second : a.first < b.first;
        });
        std::vector<Point3*> vSorted;
        for (const auto& entry : vOrder)
            vSorted.push_back(entry.second);
        return vSorted;
    }
};

TEST_P(NearestVertex, ComesBeforeAllOthers)
{
    triangulate(200);
    Tet3* pLast = nullptr;
    for (const Point3& q : makeQueries(60)) {
        SCOPED_TRACE(q);
        std::vector<Point3*> vExpected = m_dt.is3D() ? sortByDistance(q) : std::vector<Point3*>{};
        ASSERT_EQ(nearestVertex(m_dt, q, pLast), vExpected.empty() ? nullptr : vExpected[0]);
        pLast = vExpected.empty() ? nullptr : vExpected[0]->getOneTet();
        EXPECT_EQ(kNearestVertices(m_dt, q, m_vVertices.size() + 1), vExpected);
        vExpected.resize(std::min<std::size_t>(vExpected.size(), 7));
        ASSERT_EQ(kNearestVertices(m_dt, q, 7, pLast), vExpected);
    }
}

TEST_P(NearestVertex, OfManyPointsAreThoseOfEach)
{
    triangulate(100);
    std::vector<Point3> vQueries = makeQueries(60);
    vQueries.emplace_back(HUGE_VAL, 0, 0);
    for (const std::size_t k : {std::size_t{1}, std::size_t{3}, m_vVertices.size() + 2}) {
        const std::vector<Point3*> vFound = nearestVertices(m_dt, vQueries, k);
        ASSERT_EQ(vFound.size(), k * vQueries.size());
        for (std::size_t i = 0; i < vQueries.size(); ++i) {
            std::vector<Point3*> vExpected = kNearestVertices(m_dt, vQueries[i], k);
            vExpected.resize(k, nullptr);
            ASSERT_TRUE(std::equal(vExpected.begin(), vExpected.end(),
                                   vFound.begin() + static_cast<std::ptrdiff_t>(k * i)));
        }
    }
}

TEST_P(NearestVertex, NeighborsShareATetrahedron)
{
    triangulate(200);
    std::map<const Point3*, std::set<Point3*>> neighbors;
    for (const Tet3* pTet : m_vTets)
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j)
                if (i != j)
                    neighbors[pTet->getCorner(i)].insert(pTet->getCorner(j));
    for (const Point3* pVtx : m_vVertices) {
        const std::vector<Point3*> vFound = getVertexNeighbors(pVtx);
        ASSERT_EQ(std::set<Point3*>(vFound.begin(), vFound.end()), neighbors[pVtx]);
        ASSERT_EQ(vFound.size(), neighbors[pVtx].size());
    }
    EXPECT_TRUE(getVertexNeighbors(nullptr).empty());
}

INSTANTIATE_TEST_SUITE_P(PointSets, NearestVertex, testing::ValuesIn(getPointSets()), getSetName);

} // namespace
} // namespace VORN3D::tests
