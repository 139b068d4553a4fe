// Points, vectors, boxes, balls, segments, triangles.
#include "outcomes.h"
#include "vorn3d/Ball3.h"
#include "vorn3d/Bbox3.h"
#include "vorn3d/Segment3.h"
#include "vorn3d/Tet3.h"
#include "vorn3d/Triangle3.h"
#include "vorn3d/testDataGenerators.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace VORN3D
{

namespace
{

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

void expectPoint(const Point3& p, const Point3& expected, const Tet3* pTet, int customIndex)
{
    EXPECT_EQ(p, expected) << textOf(p) << " instead of " << textOf(expected);
    EXPECT_EQ(p.getOneTet(), pTet);
    EXPECT_EQ(p.getCustomIndex(), customIndex);
}

TEST(Point3, ConstructionCopyAndAssignmentDifferInTheMeshLink)
{
    Tet3 tet;
    Point3 p(1, 2, 3), q;
    expectPoint(p, {1, 2, 3}, nullptr, -1);
    expectPoint(q, {-DBL_MAX, -DBL_MAX, -DBL_MAX}, nullptr, -1);
    p.setOneTet(&tet);
    p.setCustomIndex(7);
    expectPoint(Point3(p), p, nullptr, 7);
    q = p;
    expectPoint(q, p, &tet, 7);
    q.exchange(4, 5, 6);
    expectPoint(q, {4, 5, 6}, &tet, 7);
    q.setCustomIndex(8);
    q.init(p);
    expectPoint(q, p, nullptr, 8);
    expectPoint(p + Vector3(1, 1, -1), {2, 3, 2}, nullptr, -1);
}

TEST(Point3, OrderIsLexicographicAndExact)
{
    const double tiny = std::numeric_limits<double>::denorm_min();
    const std::vector<Point3> vAscending = {{-1, 0, 0},   {0, -1, 9}, {0, 0, -tiny}, {0, 0, 0},
                                            {0, 0, tiny}, {0, 1, -9}, {tiny, 0, 0},  {DBL_MAX, 0, 0}};
    for (std::size_t i = 0; i < vAscending.size(); ++i)
        for (std::size_t j = 0; j < vAscending.size(); ++j) {
            SCOPED_TRACE(testing::Message() << i << " against " << j);
            EXPECT_EQ(vAscending[i] < vAscending[j], i < j);
            EXPECT_EQ(vAscending[i] == vAscending[j], i == j);
        }
    const Point3 a(0.0, 1, 2), b(-0.0, 1, 2);
    EXPECT_TRUE(a == b && !(a < b) && !(b < a));
    EXPECT_TRUE(Point3(nan, 0, 0) < Point3(0, 1, 0)) << "an unordered coordinate passes on to the next";
}

TEST(Point3, Printing)
{
    const Point3 p(1, -2.5, 1e20);
    EXPECT_EQ(textOf(p), addressOf(&p) + "\t       1,     -2.5,    1e+20");
    EXPECT_EQ(outputOf([&] { p.debug(); }), "Point3: 1,-2.5,1e+20\n");
}

TEST(Point3, CircumcenterIsEquidistantAlsoFarFromTheOrigin)
{
    for (const double offset : {0.0, 1e6, 4503599627370496.0}) {
        SCOPED_TRACE(offset);
        const Point3 o(offset, -offset, offset);
        EXPECT_EQ(getCircumcenter(o + Vector3(3, 4, 0), o + Vector3(-4, 3, 0), o + Vector3(0, -5, 0),
                                  o + Vector3(0, 4, 3)),
                  o);
    }
    EXPECT_FALSE(std::isfinite(getCircumcenter({0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}).z()));
}

TEST(Vector3, NormalVectorFollowsTheOrderOfTheCorners)
{
    const Point3 p0(1, 1, 1), p1(3, 1, 1), p2(1, 6, 1);
    EXPECT_EQ(getNormalVector(p0, p1, p2), Vector3(0, 0, 1));
    EXPECT_EQ(getNormalVector(p1, p0, p2), Vector3(0, 0, -1));
    const Vector3 n = getNormalVector({0.1, 0.7, -3}, {12, 5, 4}, {-8, 0.3, 100});
    EXPECT_NEAR(dotProduct(n, n), 1.0, 1e-15);
    EXPECT_NEAR(dotProduct(n, Vector3(11.9, 4.3, 7)), 0.0, 1e-14);
    EXPECT_EQ(2.0 * Vector3(1, 2, 3) - Vector3(4, 4, 4) / 2.0 + -Vector3(0, 0, 1), Vector3(0, 2, 3));
}

TEST(Vector3, EveryNullVectorWarnsOnce)
{
    const std::string warning = "warning: normalize(const Vector3& other), Null length vector!\n";
    const Point3 o(1, 2, 3), a(4, 4, 4), b(7, 6, 5); // on a line
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(getNormalVector(o, a, b), Vector3(0, 0, 0)); }), warning);
    EXPECT_EQ(outputOf([&] { getNormalVector(o, o, a); }), warning + warning);
    EXPECT_EQ(outputOf([&] { getNormalVector(o, o, o); }), warning + warning + warning);
}

void expectBox(const Bbox3& box, const Point3& min, const Point3& max)
{
    EXPECT_EQ(box.getMinPoint(), min) << textOf(box.getMinPoint()) << " instead of " << textOf(min);
    EXPECT_EQ(box.getMaxPoint(), max) << textOf(box.getMaxPoint()) << " instead of " << textOf(max);
}

TEST(Bbox3, GrowsAsTheMinimaAndMaximaOfThePoints)
{
    std::vector<Point3> vPoints;
    generateRandomPoints(300, -10, 10, vPoints, 11);
    Bbox3 single, batch;
    EXPECT_TRUE(!single.isValid() && !single.add(std::vector<Point3>()) &&
                !Bbox3(std::vector<Point3>()).isValid());
    Point3 min(DBL_MAX, DBL_MAX, DBL_MAX), max;
    for (const Point3& p : vPoints) {
        const Point3 oldMin = min, oldMax = max;
        min = {std::min(min.x(), p.x()), std::min(min.y(), p.y()), std::min(min.z(), p.z())};
        max = {std::max(max.x(), p.x()), std::max(max.y(), p.y()), std::max(max.z(), p.z())};
        EXPECT_EQ(single.add(p), min != oldMin || max != oldMax);
        EXPECT_EQ(batch.add(std::vector<Point3>{vPoints[0], p, vPoints[0]}), min != oldMin || max != oldMax);
        expectBox(single, min, max);
        expectBox(batch, min, max);
    }
    EXPECT_TRUE(single.isValid() && !single.add(vPoints));
}

TEST(Bbox3, UnionWidensTheLeftOperand)
{
    Bbox3 a({{0, 0, 0}, {1, 1, 1}}), none;
    expectBox(a + none, {0, 0, 0}, {1, 1, 1});
    expectBox(a + Bbox3({{-1, 0.5, 0.5}, {0.5, 2, 0.5}}), {-1, 0, 0}, {1, 2, 1});
    expectBox(a, {-1, 0, 0}, {1, 2, 1});
    expectBox(none + a, {-1, 0, 0}, {1, 2, 1});
}

TEST(Bbox3, EnlargementMeasuresAndPrinting)
{
    Bbox3 enlarged({{0, 0, 5}, {10, 20, 5}, {3, 3, 5}});
    enlarged.enlargeBounds(0.1);
    expectBox(enlarged, {-0.5, -1, 5}, {10.5, 21, 5});
    const Bbox3 box({{-3, 0.5, 2}, {-1, 4.5, 3}});
    EXPECT_EQ(Point3(box.getMinCoord(), box.getMaxCoord(), box.getMaxRange()), Point3(-3, 4.5, 4));
    EXPECT_EQ(outputOf([&] { box.debug(); }), "Bbox3: (-3,0.5,2) -> (-1,4.5,3)\n");
}

TEST(BallAndSegment, HoldUnlinkedCopiesOfTheirPoints)
{
    const Ball3 ball(1, 2, 3, 25);
    EXPECT_EQ(ball.getCenter(), Point3(1, 2, 3));
    EXPECT_EQ(ball.getSqRadius(), 25);
    EXPECT_EQ(ball.getRadius(), 5);
    Tet3 tet;
    Point3 source(1, 2, 3);
    source.setOneTet(&tet);
    source.setCustomIndex(4);
    const Segment3 segment(source, {5, 6, 7});
    expectPoint(segment.getSrc(), {1, 2, 3}, nullptr, 4);
    expectPoint(segment.getTrg(), {5, 6, 7}, nullptr, -1);

    const std::string p = "0x[0-9a-f]+\t       1,        2,        3";
    const std::string q = "0x[0-9a-f]+\t       5,        6,        7";
    EXPECT_THAT(outputOf([&] { ball.debug(); }), testing::MatchesRegex("Ball3: " + p + ", r=5\n"));
    EXPECT_THAT(outputOf([&] { segment.debug(); }), testing::MatchesRegex("Segment3: " + p + "," + q + "\n"));
}

TEST(Triangle3, CornersEdgesAndNeighbors)
{
    Point3 aCorner[3] = {{0, 0, 0}, {3, 0, 1}, {0, 6, 1.5}};
    Triangle3 triangle(&aCorner[0], &aCorner[1], &aCorner[2]), other(triangle);
    for (int i = 0; i < 3; ++i) {
        const Point3 *pSource = &aCorner[(i + 1) % 3], *pTarget = &aCorner[(i + 2) % 3];
        EXPECT_EQ(triangle.getIntraTriangleIndex(triangle.getCorner(i)), i);
        EXPECT_EQ(triangle.getIntraTriangleIndex(pSource, pTarget), i);
        EXPECT_EQ(triangle.getIntraTriangleIndex(pTarget, pSource), i);
        EXPECT_EQ(triangle.getNeig(i), nullptr);
        triangle.setNeig(i, &other);
        EXPECT_EQ(triangle.getNeig(i), &other);
    }
    expectPoint(triangle.getBarycenter(), {1, 2, 2.5 / 3}, nullptr, -1);
    for (const int i : {-1, 3}) {
        expectThrow([&] { triangle.getCorner(i); }, "i>-1 && i<3");
        expectThrow([&] { triangle.getNeig(i); }, "i>-1 && i<3");
        expectThrow([&] { triangle.setNeig(i, nullptr); }, "i>-1 && i<3");
    }

    const Point3 copy(aCorner[0]);
    testing::internal::CaptureStderr();
    EXPECT_EQ(triangle.getIntraTriangleIndex(&copy), -999);
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(triangle.getIntraTriangleIndex(&copy, &aCorner[1]), -999); }),
              "Have searched for " + addressOf(&copy) + " and " + addressOf(&aCorner[1]) + " in " +
                  textOf(triangle) + "\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Triangle3::getIntraTriangleIndex(): invalid (p)\n"
              "Triangle3::getIntraTriangleIndex(): invalid (p1,p2)\n");
}

} // namespace

} // namespace VORN3D
