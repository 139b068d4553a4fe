// The walk to a point: what its result says, and that it always ends.
#include "kernel/Dt3.h"
#include "outcomes.h"
#include "vorn3d/Vorn_3D.h"

namespace VORN3D
{

namespace
{

class LocationTest : public testing::Test
{
protected:
    LocationTest() { m_tet.setProperties(&m_aCorner[0], &m_aCorner[1], &m_aCorner[2], &m_aCorner[3]); }

    int locate(const Point3& p)
    {
        m_pWhere = &m_tet;
        return m_dt.locateConflictTet(&p, m_pWhere);
    }

    Point3 m_aCorner[4] = {Point3(0, 0, 0), Point3(1, 0, 0), Point3(0, 1, 0), Point3(0, 0, 1)};
    Tet3 m_tet;
    Tet3* m_pWhere = nullptr;

    const Dt3 m_dt;
};

TEST_F(LocationTest, TellsInsideCornerAndHullFacet)
{
    EXPECT_EQ(locate({0.1, 0.2, 0.3}), Dt3::LOCATED_INSIDE);
    EXPECT_EQ(locate({0, 1, 0}), Dt3::LOCATED_VERTEX);
    EXPECT_EQ(locate({1, 1, 1}), 0) << "beyond the facet opposite the origin";
    EXPECT_EQ(locate({0.2, 0.3, 0}), 3) << "in a hull facet";
    const int atEdge = locate({0, 0, 0.5});
    EXPECT_TRUE(atEdge == 1 || atEdge == 2) << atEdge;
    EXPECT_EQ(m_pWhere, &m_tet);

    // Another tetrahedron beyond the facet opposite the origin makes that an inner one.
    Point3 apex(1, 1, 1);
    Tet3 across;
    across.setProperties(&apex, &m_aCorner[1], &m_aCorner[3], &m_aCorner[2]);
    m_tet.setOppTet(0, &across);
    across.setOppTet(0, &m_tet);
    EXPECT_EQ(locate({0.25, 0.25, 0.5}), Dt3::LOCATED_INSIDE) << "in an inner facet";
    EXPECT_EQ(locate({0.5, 0.5, 0.5}), Dt3::LOCATED_INSIDE);
    EXPECT_EQ(m_pWhere, &across);
    EXPECT_EQ(locate({1, 1, 1}), Dt3::LOCATED_VERTEX);
    EXPECT_EQ(m_pWhere, &across);
}

// Two tetrahedra with the same corners lie across the same two facets of each other: the way to a point
// beyond one of these facets leads round for ever.
TEST_F(LocationTest, GivesUpWhereLinksLeadRound)
{
    Tet3 twin;
    twin.setProperties(&m_aCorner[0], &m_aCorner[1], &m_aCorner[2], &m_aCorner[3]);
    for (const int facet : {0, 1}) {
        m_tet.setOppTet(facet, &twin);
        twin.setOppTet(facet, &m_tet);
    }
    int result = 0;
    EXPECT_EQ(outputOf([&] { result = locate({1, 1, 1}); }), "watchDog: bad point\n");
    EXPECT_EQ(result, Dt3::LOCATE_GAVE_UP);
}

TEST_F(LocationTest, NeedsAStart)
{
    Tet3* pNone = nullptr;
    expectEnd([&] { m_dt.locateConflictTet(&m_aCorner[0], pNone); }, isCrash,
              "goToHell, ERROR:  reason: locateConflictTet\n");
}

} // namespace

} // namespace VORN3D
