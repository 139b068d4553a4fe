// Interpolation: the properties that define the weights, on all point sets, and the volumes of Voronoi cells
// cut out of half-spaces by a method that knows no mesh.
#include "vorn3d/geometry/interpolate.h"
#include "TriangulatedSet.h"
#include "vorn3d/VornException.h"
#include "vorn3d/geometry/locateClosed.h"
#include "vorn3d/geometry/nearestVertex.h"

#include <limits>
#include <numeric>
#include <set>

namespace VORN3D::tests
{
namespace
{

using Weights = std::vector<VertexWeight3>;
using Method = InterpolationMethod3;

std::set<Point3*> getVertices(const Weights& weights)
{
    std::set<Point3*> vertices;
    for (const VertexWeight3& entry : weights)
        vertices.insert(entry.pVtx);
    return vertices;
}

/// The mean of the vertices relative to p, by the largest difference of coordinates.
Coordinates getResidual(const Weights& weights, const Point3& p)
{
    Coordinates sum = {}, q = coordinatesOf(p);
    double largest = std::numeric_limits<double>::denorm_min();
    for (const VertexWeight3& entry : weights)
        for (std::size_t k = 0; k < 3; ++k) {
            const double d = coordinatesOf(*entry.pVtx)[k] / 2 - q[k] / 2;
            sum[k] += entry.weight * d;
            largest = std::max(largest, std::fabs(d));
        }
    for (double& x : sum)
        x /= largest;
    return sum;
}

void expectConvexCombination(const Weights& weights)
{
    double sum = 0;
    for (const VertexWeight3& entry : weights) {
        ASSERT_GE(entry.weight, 0);
        sum += entry.weight;
    }
    ASSERT_NEAR(sum, 1, 1e-13);
    ASSERT_EQ(getVertices(weights).size(), weights.size());
}

void expectReproduced(const Weights& weights, const Point3& p)
{
    ASSERT_NO_FATAL_FAILURE(expectConvexCombination(weights));
    for (const double residual : getResidual(weights, p))
        ASSERT_NEAR(residual, 0, 1e-12);
}

class Interpolate : public TriangulatedSet
{
protected:
    /// The corners of the tetrahedra that p is inside of the spheres of, in rational arithmetic.
    std::set<Point3*> findNaturalNeighbors(const Point3& p) const
    {
        std::set<Point3*> neighbors;
        for (const Tet3* pTet : m_vTets) {
            std::array<Coordinates, 5> points;
            for (int i = 0; i < 4; ++i)
                points[static_cast<std::size_t>(i)] = coordinatesOf(*pTet->getCorner(i));
            points[4] = coordinatesOf(p);
            for (int i = 0; i < 4 && getSphereSign(points) < 0; ++i)
                neighbors.insert(pTet->getCorner(i));
        }
        return neighbors;
    }

    bool isOnHull(const Point3& p) const
    {
        for (Tet3* pTet : m_vTets)
            for (int i = 0; i < 4; ++i)
                if (pTet->getOppTet(i) == nullptr) {
                    std::array<Coordinates, 4> points;
                    for (int k = 0; k < 4; ++k)
                        points[static_cast<std::size_t>(k)] = coordinatesOf(k == i ? p : *pTet->getCorner(k));
                    if (getVolumeSign(points) == 0)
                        return true;
                }
        return false;
    }

    /// No vertex is on the far side of the plane through the clamped point that is seen head-on from p.
    void expectClosest(const Weights& weights, const Point3& p) const
    {
        Point3 c(0, 0, 0);
        for (const VertexWeight3& entry : weights)
            c = c + entry.weight * (*entry.pVtx - Point3(0, 0, 0));
        const Vector3 towards = p - c;
        const auto getRounding = [](const Point3& q) {
            return 1e-14 * (std::fabs(q.x()) + std::fabs(q.y()) + std::fabs(q.z()));
        };
        const double length =
            1e-7 * std::sqrt(dotProduct(towards, towards)) + getRounding(p) + getRounding(c);
        for (const Point3* pVtx : m_vVertices) {
            const Vector3 d = *pVtx - c;
            ASSERT_LE(dotProduct(d, towards), length * (std::sqrt(dotProduct(d, d)) + 1e7 * getRounding(c)));
        }
    }
};

TEST_P(Interpolate, WeightsReproduceTheirPoint)
{
    triangulate(80);
    // Of such sizes that neither products of coordinates nor the volumes of cells lose all digits.
    const bool bModest = std::set<std::string>{"WholeRange", "Huge", "Tiny", "Small", "OutlierAt1e12"}.count(
                             GetParam().name) == 0;
    for (const Point3& p : makeQueries(80)) {
        SCOPED_TRACE(p);
        const Location3 location = locateClosed(m_dt, p);
        const Weights linear = interpolateLinear(m_dt, p), natural = interpolateNatural(m_dt, p);
        if (location.kind == LocationKind3::OUTSIDE) {
            ASSERT_TRUE(linear.empty() && natural.empty());
            if (!m_dt.is3D())
                continue;
            const Weights nearest = interpolateNatural(m_dt, p, OutsideHull3::NEAREST);
            ASSERT_EQ(nearest.size(), 1u);
            ASSERT_EQ(nearest[0].pVtx, nearestVertex(m_dt, p));
            const Weights clamped = interpolateLinear(m_dt, p, OutsideHull3::CLAMP);
            ASSERT_NO_FATAL_FAILURE(expectConvexCombination(clamped));
            if (bModest && std::fabs(p.x()) < 1e100) {
                ASSERT_NO_FATAL_FAILURE(expectClosest(clamped, p));
            }
            continue;
        }
        ASSERT_NO_FATAL_FAILURE(expectReproduced(linear, p));
        ASSERT_NO_FATAL_FAILURE(expectReproduced(natural, p));
        std::set<Point3*> corners;
        for (std::size_t i = 0; i <= static_cast<std::size_t>(location.kind); ++i)
            corners.insert(location.pTet->getCorner(location.aIndex[i]));
        if (bModest) {
            ASSERT_EQ(getVertices(linear), corners);
        }
        const bool bLinear = location.kind == LocationKind3::VERTEX || isOnHull(p);
        if (bModest) {
            ASSERT_EQ(getVertices(natural), bLinear ? corners : findNaturalNeighbors(p));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(PointSets, Interpolate, testing::ValuesIn(getPointSets()), getSetName);

/// Half-spaces a . x <= b.
template <std::size_t N>
struct HalfSpace
{
    std::array<double, N> a;
    double b;
};

double getExtent(const std::vector<HalfSpace<1>>& vHalves)
{
    double low = -HUGE_VAL, high = HUGE_VAL;
    for (const auto& half : vHalves)
        (half.a[0] > 0 ? high : low) =
            half.a[0] > 0 ? std::min(high, half.b / half.a[0]) : std::max(low, half.b / half.a[0]);
    return std::max(0.0, high - low);
}

/// The volume of their intersection, by that of its faces (J. Lasserre, An analytical expression and an
/// algorithm for the volume of a convex polyhedron in R^n, 1983).
template <std::size_t N>
double getExtent(const std::vector<HalfSpace<N>>& vHalves)
{
    double sum = 0;
    for (const auto& plane : vHalves) {
        std::size_t pivot = 0;
        for (std::size_t k = 1; k < N; ++k)
            pivot = std::fabs(plane.a[k]) > std::fabs(plane.a[pivot]) ? k : pivot;
        std::vector<HalfSpace<N - 1>> vReduced;
        for (const auto& half : vHalves) {
            if (&half == &plane)
                continue;
            const double factor = half.a[pivot] / plane.a[pivot];
            HalfSpace<N - 1> reduced;
            reduced.b = half.b - factor * plane.b;
            for (std::size_t k = 0, next = 0; k < N; ++k)
                if (k != pivot)
                    reduced.a[next++] = half.a[k] - factor * plane.a[k];
            vReduced.push_back(reduced);
        }
        sum += plane.b / std::fabs(plane.a[pivot]) * getExtent(vReduced);
    }
    return sum / N;
}

/// What is nearer to a than to b, relative to the origin.
HalfSpace<3> getNearerTo(const Point3& a, const Point3& b, const Point3& origin)
{
    const Vector3 d = b - a, middle = 0.5 * ((a - origin) + (b - origin));
    return {{d.x(), d.y(), d.z()}, dotProduct(d, middle)};
}

TEST_P(Interpolate, SibsonsWeightsAreVolumes)
{
    // Volumes of cells as thin as those of needles are lost to rounding by the other method.
    if (!GetParam().bGeneral || GetParam().bQuadratic || GetParam().name == "Needles")
        return;
    triangulate(60);
    Random random(3);
    int numCompared = 0;
    for (int round = 0; round < 200 && numCompared < 6; ++round) {
        const Tet3& tet = *m_vTets[random.below(m_vTets.size())];
        const Point3 p = middle(middle(*tet.getCorner(0), *tet.getCorner(1)),
                                middle(*tet.getCorner(2), *tet.getCorner(3)));
        const Weights weights = interpolateNatural(m_dt, p);
        std::vector<double> vVolumes;
        for (const VertexWeight3& entry : weights) {
            std::vector<HalfSpace<3>> vHalves = {getNearerTo(p, *entry.pVtx, p)};
            for (const VertexWeight3& other : weights)
                if (other.pVtx != entry.pVtx)
                    vHalves.push_back(getNearerTo(*entry.pVtx, *other.pVtx, p));
            vVolumes.push_back(getExtent(vHalves));
        }
        const double sum = std::accumulate(vVolumes.begin(), vVolumes.end(), 0.0);
        if (!(sum > 0 && std::isfinite(sum)))
            continue;
        for (std::size_t i = 0; i < weights.size(); ++i)
            ASSERT_NEAR(weights[i].weight, vVolumes[i] / sum, 1e-7);
        ++numCompared;
    }
    EXPECT_TRUE(numCompared == 6 || GetParam().name == "Huge" || GetParam().name == "Small") << numCompared;
}

class InterpolationOfGrid : public testing::Test
{
protected:
    InterpolationOfGrid()
    {
        for (int i = 0; i < 125; ++i) {
            m_vPoints.emplace_back(i % 5, i / 5 % 5, i / 25);
            m_vPoints.back().setCustomIndex(i);
            m_vValues.insert(m_vValues.end(), {1.0 + i % 5 - 2.0 * (i / 25), 3.0 * (i % 5) * (i % 5)});
        }
        outputOf([&] { m_dt.insert(m_vPoints); });
    }

    Vorn_3D m_dt;
    std::vector<Point3> m_vPoints;
    std::vector<double> m_vValues;
};

TEST_F(InterpolationOfGrid, IsAsSymmetricAsTheGrid)
{
    const Weights inCube = interpolateNatural(m_dt, {1.5, 2.5, 1.5});
    ASSERT_EQ(inCube.size(), 8u);
    for (const VertexWeight3& entry : inCube)
        EXPECT_NEAR(entry.weight, 0.125, 1e-14);
    // On an edge: its ends, and sixteen others at two distances, alike at each.
    const Weights onEdge = interpolateNatural(m_dt, {1.5, 2, 2});
    ASSERT_EQ(onEdge.size(), 18u);
    std::map<double, std::set<float>> weights;
    for (const VertexWeight3& entry : onEdge)
        weights[dotProduct(*entry.pVtx - Point3(1.5, 2, 2), *entry.pVtx - Point3(1.5, 2, 2))].insert(
            static_cast<float>(entry.weight));
    EXPECT_EQ(weights.size(), 3u);
    for (const auto& entry : weights)
        EXPECT_EQ(entry.second.size(), 1u);
}

TEST_F(InterpolationOfGrid, MatrixHoldsTheWeightsOfAllPoints)
{
    Random random(5);
    std::vector<Point3> vQueries = {{std::numeric_limits<double>::infinity(), 0, 0}};
    for (int i = 0; i < 200; ++i)
        vQueries.push_back(i % 4 == 0 ? m_vPoints[random.below(125)] : random.inCube(-1, 5));
    for (const Method method : {Method::LINEAR, Method::NATURAL, Method::NEAREST})
        for (const OutsideHull3 outside :
             {OutsideHull3::NOTHING, OutsideHull3::NEAREST, OutsideHull3::CLAMP}) {
            const InterpolationMatrix matrix = makeInterpolationMatrix(m_dt, vQueries, method, outside);
            const std::vector<double> vResults = matrix.apply(m_vValues, 2);
            ASSERT_EQ(vResults.size(), 2 * vQueries.size());
            for (std::size_t i = 0; i < vQueries.size(); ++i) {
                Weights weights = method == Method::LINEAR    ? interpolateLinear(m_dt, vQueries[i], outside)
                                  : method == Method::NATURAL ? interpolateNatural(m_dt, vQueries[i], outside)
                                                              : Weights();
                if (Point3* pNearest = nearestVertex(m_dt, vQueries[i]);
                    method == Method::NEAREST && pNearest != nullptr)
                    weights.push_back({pNearest, 1});
                std::array<double, 2> expected = {};
                for (const VertexWeight3& entry : weights)
                    for (std::size_t k = 0; k < 2; ++k)
                        expected[k] +=
                            entry.weight *
                            m_vValues[2 * static_cast<std::size_t>(entry.pVtx->getCustomIndex()) + k];
                for (std::size_t k = 0; k < 2; ++k) {
                    const double result = vResults[2 * i + k];
                    ASSERT_EQ(std::isnan(result), weights.empty());
                    ASSERT_FALSE(std::fabs(result - expected[k]) > 1e-10) << vQueries[i];
                }
            }
            m_vValues.pop_back();
            outputOf([&] { EXPECT_THROW(matrix.apply(m_vValues, 2), VornException); });
            m_vValues.push_back(3.0 * 16);
        }
    Point3 nameless(9, 9, 9);
    m_dt.insert(nameless);
    vQueries = {nameless};
    outputOf([&] { EXPECT_THROW(makeInterpolationMatrix(m_dt, vQueries), VornException); });
}

} // namespace
} // namespace VORN3D::tests
