// The predicates' contract: sign conventions, special answers, texts, wrong use.
#include "outcomes.h"
#include "predicates/ExactKernels.h"
#include "predicates/NaloTest3.h"
#include "vorn3d/VornException.h"

#include <array>
#include <cmath>

namespace VORN3D
{

namespace
{

using testing::HasSubstr;

/// A tetrahedron with corners of its own.
struct OwnedTet
{
    std::array<Point3, 4> aCorner;
    Tet3 tet;

    explicit OwnedTet(const std::array<Point3, 4>& corners) : aCorner(corners)
    {
        tet.setProperties(&aCorner[0], &aCorner[1], &aCorner[2], &aCorner[3]);
    }
};

std::array<Point3, 4> getUnitCorners(double scale)
{
    return {Point3(0, 0, 0), Point3(scale, 0, 0), Point3(0, scale, 0), Point3(0, 0, scale)};
}

class PredicatesTest : public testing::Test
{
protected:
    Orientation3 getOrientation(const std::array<Point3, 4>& p) const
    {
        return m_predicates.getOrientation3(&p[0], &p[1], &p[2], &p[3]);
    }

    SphereInclusion3 getInclusion(const OwnedTet& owned, const Point3& q) const
    {
        return m_predicates.sphereInclusionTest(&owned.tet, &q);
    }

    NaloTest3 m_predicates;
};

TEST_F(PredicatesTest, OrientationOfTheUnitTetrahedron)
{
    for (double scale : {1.0, 1e-300, 1e-107, 1e300}) {
        const std::array<Point3, 4> corners = getUnitCorners(scale);
        EXPECT_EQ(getOrientation(corners), ORIENTATION3_POSITIVE) << scale;
        for (std::size_t i = 0; i < 4; ++i)
            for (std::size_t j = i + 1; j < 4; ++j) {
                std::array<Point3, 4> swapped = corners;
                std::swap(swapped[i], swapped[j]);
                EXPECT_EQ(getOrientation(swapped), ORIENTATION3_NEGATIVE) << scale;
            }
    }
}

TEST_F(PredicatesTest, CoplanarPointsFarFromAndCloseToEachOther)
{
    const double big = 0x1p50;
    const auto getOrientationAt = [&](double z) {
        return getOrientation(
            {Point3(big, 1, big), Point3(1, big, big), Point3(1 - big, 1 + big, z), Point3(1, 1, 1)});
    };
    EXPECT_EQ(getOrientationAt(1.0), ORIENTATION3_COPLANAR);
    EXPECT_EQ(getOrientationAt(std::nextafter(1.0, 2.0)), ORIENTATION3_NEGATIVE);
    EXPECT_EQ(getOrientationAt(std::nextafter(1.0, 0.0)), ORIENTATION3_POSITIVE);
    const double tiny = 0x1p-997; // about 1e-300
    EXPECT_EQ(getOrientation({Point3(tiny, 0, -tiny), Point3(0, tiny, -tiny),
                              Point3(3 * tiny, 2 * tiny, -5 * tiny), Point3(0, 0, 0)}),
              ORIENTATION3_COPLANAR);
}

// The sum 2xy overflows, not the products: a term that is small after all comes out infinite in floating
// point.
TEST_F(PredicatesTest, OverflowDecidesNothing)
{
    const double x = 0x1p512;
    const double y = 0x1.8p511;
    EXPECT_EQ(getOrientation({Point3(0, -y, 0x1p-200), Point3(x, -y, 1), Point3(x, y, 0), Point3(0, 0, 0)}),
              ORIENTATION3_POSITIVE);
    EXPECT_EQ(getOrientation({Point3(0, y, -0x1p-200), Point3(x, y, 1), Point3(x, -y, 0), Point3(0, 0, 0)}),
              ORIENTATION3_NEGATIVE);
}

TEST_F(PredicatesTest, FacetsSeeTheirOppositeCornerOnThePositiveSide)
{
    for (double scale : {1.0, 1e-200, 1e200}) {
        const OwnedTet owned(getUnitCorners(scale));
        for (int ith = 0; ith < 4; ++ith)
            for (int corner = 0; corner < 4; ++corner)
                EXPECT_EQ(m_predicates.getOrientation3(&owned.tet, ith, owned.tet.getCorner(corner)),
                          corner == ith ? ORIENTATION3_POSITIVE : ORIENTATION3_COPLANAR);
        const Point3 beyondZ(0, 0, -scale);
        EXPECT_EQ(m_predicates.getOrientation3(&owned.tet, 3, &beyondZ), ORIENTATION3_NEGATIVE);
    }
}

TEST_F(PredicatesTest, CubeCornersAndCentreAgainstTheSphereOfFourCorners)
{
    // Down to where lifts are subnormal, and up to where they overflow.
    for (double scale : {1.0, 3.0, 0.1, 1e-80, 1e80, 1e-200, 1e300}) {
        SCOPED_TRACE(scale);
        const OwnedTet owned(getUnitCorners(scale));
        for (const Point3& cubeCorner : {Point3(scale, scale, 0), Point3(scale, scale, scale)})
            EXPECT_EQ(getInclusion(owned, cubeCorner), SIC_OUTSIDE);
        EXPECT_EQ(getInclusion(owned, Point3(scale / 2, scale / 2, scale / 2)), SIC_INSIDE);
        EXPECT_EQ(getInclusion(owned, Point3(scale, scale, scale - scale / 0x1p50)), SIC_INSIDE);
        EXPECT_EQ(getInclusion(owned, Point3(scale, scale, scale + scale / 0x1p50)), SIC_OUTSIDE);
        for (const Point3& corner : owned.aCorner)
            EXPECT_EQ(getInclusion(owned, corner), SIC_CORNER);
        EXPECT_EQ(getInclusion(owned, Point3(owned.aCorner[1])), SIC_INSIDE) << "all products vanish";
    }
}

TEST_F(PredicatesTest, CoincidentPointsAreInside)
{
    const Point3 p(1.5, -2.0, 1e300);
    const OwnedTet owned({p, p, p, p});
    EXPECT_EQ(getInclusion(owned, p), SIC_INSIDE);
    EXPECT_EQ(getInclusion(owned, owned.aCorner[2]), SIC_INSIDE);
}

TEST_F(PredicatesTest, KernelsOnCosphericalAndCoincidentPoints)
{
    const Point3 a(0, 5, 13), b(-3, 4, 13), c(8, -3, 11), d(5, 12, -5), e(-9, -8, 7);
    EXPECT_EQ(m_predicates.insphereadapt(a, b, c, d, e, 1e9), 2);
    EXPECT_EQ(m_predicates.insphereexact(a, b, c, d, e), 2);
    const SpherePoints points = {a.getCoordinates(), b.getCoordinates(), c.getCoordinates(),
                                 d.getCoordinates(), e.getCoordinates()};
    AdaptiveSphere stages(m_predicates, points, 1e9);
    EXPECT_TRUE(stages.decideB()) << "exact differences: decided before stage C";
    EXPECT_EQ(stages.getDeterminant(), 0.0);
    EXPECT_EQ(m_predicates.insphereadapt(a, a, a, a, a, 0.0), 2);
    EXPECT_EQ(m_predicates.orient3dadapt(a, a, a, a, 0.0), 0.0);
}

TEST_F(PredicatesTest, TextForm)
{
    EXPECT_EQ(getOrientationText(ORIENTATION3_POSITIVE), "ORI3_ORIENTATION3_POSITIVE");
    EXPECT_EQ(getOrientationText(ORIENTATION3_NEGATIVE), "ORI3_ORIENTATION3_NEGATIVE");
    EXPECT_EQ(getOrientationText(ORIENTATION3_COPLANAR), "ORI3_ZERO");
    const std::string output =
        outputOf([] { EXPECT_THROW(getOrientationText(static_cast<Orientation3>(3)), VornException); });
    EXPECT_THAT(output, HasSubstr("\n      Vorn, , ERROR: Condition [ false failed ]\n"));
    EXPECT_THAT(output, HasSubstr("NaloTest3.cpp:"));
}

TEST_F(PredicatesTest, WrongUseEndsTheProcess)
{
    const OwnedTet owned(getUnitCorners(1.0));
    const Point3 q(1, 1, 1);
    for (int ith : {-1, 4})
        expectAbortOrExit([&] { m_predicates.getOrientation3(&owned.tet, ith, &q); },
                          isRelease() ? "" : "Assertion `range03(ith)' failed");
    const Tet3* pNone = nullptr;
    expectEnd([&] { m_predicates.getOrientation3(pNone, 0, &q); }, isCrash,
              "      goToHell, ERROR:  reason: getOrientation3, pC==NULL\n");
}

} // namespace

} // namespace VORN3D
