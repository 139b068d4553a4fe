// Measures of tetrahedra against known ones, in all sizes, and densities by what they must sum to.
#include "vorn3d/geometry/MeshQuality.h"
#include "TriangulatedSet.h"
#include "vorn3d/VornException.h"
#include "vorn3d/geometry/pointDensity.h"

namespace VORN3D::tests
{
namespace
{

mpq_class getExactVolume(const Tet3& tet)
{
    std::array<std::array<mpq_class, 3>, 4> c;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            c[i][k] =
                coordinatesOf(*tet.getCorner(static_cast<int>(i)))[k] - (i == 0 ? mpq_class(0) : c[0][k]);
    const auto& [o, u, v, w] = c;
    return (u[0] * (v[1] * w[2] - v[2] * w[1]) + u[1] * (v[2] * w[0] - v[0] * w[2]) +
            u[2] * (v[0] * w[1] - v[1] * w[0])) /
           6;
}

TetQuality3 measureOnly(std::vector<Point3> vPoints, double scale)
{
    for (Point3& p : vPoints)
        p.exchange(p.x() * scale, p.y() * scale, p.z() * scale);
    Vorn_3D dt;
    outputOf([&] { dt.insert(vPoints); });
    std::vector<Tet3*> vTets;
    dt.getTetrahedra(vTets);
    EXPECT_EQ(vTets.size(), 1u);
    return measureTet(*vTets.front());
}

TEST(MeshQuality, OfKnownTetrahedraInAllSizes)
{
    const double degrees = 180 / std::acos(-1);
    for (const double scale : {1.0, 0x1p-1020, 0x1p-400, 0x1p400, 0x1p1022}) {
        const TetQuality3 regular = measureOnly({{1, 1, 1}, {1, -1, -1}, {-1, 1, -1}, {-1, -1, 1}}, scale);
        EXPECT_NEAR(regular.edgeRatio, 1, 1e-14);
        EXPECT_NEAR(regular.radiusRatio, 1, 1e-14);
        EXPECT_NEAR(regular.volumeRatio, 1, 1e-14);
        EXPECT_NEAR(regular.radiusEdgeRatio, std::sqrt(6) / 4, 1e-14);
        EXPECT_NEAR(regular.leastAngle, std::acos(1.0 / 3) * degrees, 1e-12);
        EXPECT_NEAR(regular.greatestAngle, regular.leastAngle, 1e-12);
        EXPECT_NEAR(regular.longestEdge / scale, std::sqrt(8), 1e-14);
        const TetQuality3 corner = measureOnly({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, scale);
        EXPECT_NEAR(corner.radiusRatio, 3 / (3 + std::sqrt(3)) * 2 / std::sqrt(3), 1e-14);
        EXPECT_NEAR(corner.radiusEdgeRatio, std::sqrt(3) / 2, 1e-14);
        EXPECT_NEAR(corner.leastAngle, std::acos(1 / std::sqrt(3)) * degrees, 1e-12);
        EXPECT_NEAR(corner.greatestAngle, 90, 1e-12);
        EXPECT_EQ(corner.shortestEdge, scale);
        EXPECT_EQ(corner.volume, scale * scale * scale / 6);
        // A square with one corner lifted by 2h: two facets meet at almost 180 degrees.
        const double h = 0x1p-40;
        const TetQuality3 sliver = measureOnly({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 2 * h}}, scale);
        EXPECT_NEAR(sliver.leastAngle / (2 * h * degrees), 1, 1e-9);
        EXPECT_NEAR((180 - sliver.greatestAngle) / (std::sqrt(8) * h * degrees), 1, 0.01);
        EXPECT_NEAR(sliver.volumeRatio / h, 1, 1e-9);
        EXPECT_NEAR(sliver.radiusRatio / (1.5 * h / std::sqrt(0.5)), 1, 1e-9);
    }
}

class MeshMeasures : public TriangulatedSet
{
};

TEST_P(MeshMeasures, AgreeWithTheirSums)
{
    triangulate(60);
    const MeshQuality quality = measureMesh(m_dt);
    ASSERT_EQ(quality.numTets, m_vTets.size());
    mpq_class volume = 0;
    double sumOfRatios = 0, least = HUGE_VAL;
    for (const Tet3* pTet : m_vTets) {
        volume += getExactVolume(*pTet);
        const TetQuality3 tet = measureTet(*pTet);
        sumOfRatios += tet.radiusRatio;
        least = std::min(least, tet.radiusRatio);
        ASSERT_TRUE(tet.radiusRatio >= 0 && tet.radiusRatio <= 1 + 1e-9) << tet.radiusRatio;
        ASSERT_TRUE(tet.edgeRatio >= 1 && tet.radiusEdgeRatio >= 0.6);
        ASSERT_TRUE(tet.leastAngle >= 0 && tet.leastAngle <= tet.greatestAngle && tet.greatestAngle <= 180);
    }
    if (m_vTets.empty())
        return;
    EXPECT_EQ(quality.radiusRatio.least, least);
    EXPECT_NEAR(quality.radiusRatio.mean, sumOfRatios / static_cast<double>(m_vTets.size()), 1e-12);
    if (volume > DBL_MIN && volume < DBL_MAX) {
        EXPECT_NEAR(mpq_class(quality.volume / volume).get_d(), 1, 1e-12);
    }
}

TEST_P(MeshMeasures, MakeDensitiesWhoseIntegralIsTheMass)
{
    triangulate(60);
    std::vector<double> vMasses;
    double massOfMesh = 0;
    for (std::size_t i = 0; i < m_vHandles.size(); ++i)
        vMasses.push_back(1 + static_cast<double>(i % 3));
    for (const Point3* pVtx : m_vVertices)
        massOfMesh +=
            pVtx->getOneTet() == nullptr ? 0 : vMasses[static_cast<std::size_t>(pVtx->getCustomIndex())];
    const std::vector<double> vDensities = pointDensity(m_dt, vMasses);
    mpq_class mass = 0;
    for (const Tet3* pTet : m_vTets)
        for (int i = 0; i < 4; ++i) {
            const double density = vDensities[static_cast<std::size_t>(pTet->getCorner(i)->getCustomIndex())];
            ASSERT_GE(density, 0);
            if (std::isinf(density) || density < DBL_MIN)
                return;
            mass += density * getExactVolume(*pTet) / 4;
        }
    EXPECT_NEAR(mass.get_d(), massOfMesh, 1e-12 * massOfMesh);
}

INSTANTIATE_TEST_SUITE_P(PointSets, MeshMeasures, testing::ValuesIn(getPointSets()), getSetName);

TEST(PointDensity, IsThatOfIndices)
{
    std::vector<Point3> vPoints = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (int i = 0; i < 4; ++i)
        vPoints[static_cast<std::size_t>(i)].setCustomIndex(2 * i);
    Vorn_3D dt;
    outputOf([&] { dt.insert(vPoints); });
    const std::vector<double> vDensities = pointDensity(dt);
    ASSERT_EQ(vDensities.size(), 7u);
    for (std::size_t i = 0; i < 7; ++i)
        EXPECT_TRUE(i % 2 == 0 ? vDensities[i] == 24 : std::isnan(vDensities[i]));
    outputOf([&] {
        EXPECT_THROW(pointDensity(dt, {1, 1, 1}), VornException);
        Point3 nameless(2, 2, 2);
        dt.insert(nameless);
        EXPECT_THROW(pointDensity(dt), VornException);
    });
}

} // namespace
} // namespace VORN3D::tests
