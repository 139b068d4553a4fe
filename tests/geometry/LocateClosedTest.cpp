// locateClosed: the face that it names contains the point, in rational arithmetic.
#include "vorn3d/geometry/locateClosed.h"
#include "TriangulatedSet.h"

#include <limits>
#include <map>

namespace VORN3D::tests
{
namespace
{

using Kind = LocationKind3;

/// The sign of corner ith's barycentric coordinate of p.
int getSideOf(const Tet3& tet, int ith, const Point3& p)
{
    std::array<Coordinates, 4> corners;
    for (int i = 0; i < 4; ++i)
        corners[static_cast<std::size_t>(i)] = coordinatesOf(i == ith ? p : *tet.getCorner(i));
    return getVolumeSign(corners);
}

/// The names of facets in the library's order tell the orientation.
void expectFacetNamed(const Location3& location)
{
    std::array<int, 3> expected;
    location.pTet->getFacetIndices(location.aIndex[3], expected[0], expected[1], expected[2]);
    ASSERT_TRUE(std::equal(expected.begin(), expected.end(), location.aIndex.begin()));
}

void expectRight(const Location3& location, const Point3& p)
{
    ASSERT_NE(location.pTet, nullptr);
    if (location.kind == Kind::OUTSIDE) {
        const int facet = location.aIndex[3];
        ASSERT_EQ(location.pTet->getOppTet(facet), nullptr);
        ASSERT_EQ(getSideOf(*location.pTet, facet, p), -1);
        ASSERT_NO_FATAL_FAILURE(expectFacetNamed(location));
        return;
    }
    int numInPlane = 0;
    for (int i = 0; i < 4; ++i) {
        const int side = getSideOf(*location.pTet, location.aIndex[static_cast<std::size_t>(i)], p);
        ASSERT_EQ(side, i <= static_cast<int>(location.kind) ? 1 : 0);
        numInPlane += side == 0;
    }
    if (numInPlane == 1)
        expectFacetNamed(location);
}

class LocateClosed : public TriangulatedSet
{
};

TEST_P(LocateClosed, NamesTheFaceThatContainsThePoint)
{
    triangulate(300);
    std::map<Kind, int> numFound;
    Tet3* pLast = nullptr;
    for (const Point3& q : makeQueries(400)) {
        SCOPED_TRACE(q);
        const Location3 location = locateClosed(m_dt, q);
        ASSERT_EQ(location.pTet != nullptr, m_dt.is3D());
        if (!m_dt.is3D())
            continue;
        ASSERT_NO_FATAL_FAILURE(expectRight(location, q));
        const Location3 nearby = locateClosed(m_dt, q, pLast);
        ASSERT_NO_FATAL_FAILURE(expectRight(nearby, q));
        ASSERT_EQ(nearby.kind, location.kind);
        ++numFound[location.kind];
        pLast = nearby.pTet;
    }
    if (GetParam().name != "Grid")
        return;
    for (const Kind kind : {Kind::VERTEX, Kind::EDGE, Kind::FACET, Kind::CELL, Kind::OUTSIDE})
        EXPECT_GT(numFound[kind], 20);
    EXPECT_EQ(locateClosed(m_dt, {0, 0, std::numeric_limits<double>::quiet_NaN()}).pTet, nullptr);
}

INSTANTIATE_TEST_SUITE_P(PointSets, LocateClosed, testing::ValuesIn(getPointSets()), getSetName);

} // namespace
} // namespace VORN3D::tests
