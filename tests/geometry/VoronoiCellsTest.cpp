// The cells have the corners and faces that rational centres of spheres give them, are closed, and fill
// space, a box or the hull.
#include "vorn3d/geometry/VoronoiCells.h"
#include "TriangulatedSet.h"
#include "vorn3d/VornException.h"
#include "vorn3d/geometry/HullSurface.h"

#include <gmpxx.h>
#ifdef VORN3D_HAVE_VOROPP
#include <voro++/voro++.hh>
#endif

#include <limits>
#include <map>
#include <numeric>
#include <set>
#include <utility>

namespace VORN3D::tests
{
namespace
{

using Position = std::array<double, 3>;
using Edge = std::pair<std::uint32_t, std::uint32_t>;

/// A face as the arrays have it.
struct Face
{
    std::size_t number;
    std::uint32_t neighbor;
    std::vector<std::uint32_t> vCorners;
};

std::vector<Face> getFaces(const VoronoiCells& cells, std::size_t cell)
{
    std::vector<Face> vFaces;
    for (std::size_t i = cells.vFirstFace[cell]; i < cells.vFirstFace[cell + 1]; ++i) {
        const auto at = [&](std::size_t k) {
            return cells.vFaceCorners.begin() + static_cast<std::ptrdiff_t>(k);
        };
        vFaces.push_back(
            {i, cells.vNeighbors[i], {at(cells.vFirstCorner[i]), at(cells.vFirstCorner[i + 1])}});
    }
    return vFaces;
}

double sum(const std::vector<double>& v)
{
    return std::accumulate(v.begin(), v.end(), 0.0);
}

/// Corners + faces - edges of a cell, and its edges with a face on one side only. No edge may go the same way
/// twice.
std::pair<std::size_t, std::vector<Edge>> getTopology(const std::vector<Face>& vFaces)
{
    std::set<Edge> edges;
    std::set<std::uint32_t> corners;
    for (const Face& face : vFaces)
        for (std::size_t i = 0; i < face.vCorners.size(); ++i) {
            corners.insert(face.vCorners[i]);
            const Edge edge(face.vCorners[i], face.vCorners[(i + 1) % face.vCorners.size()]);
            EXPECT_TRUE(edge.first != edge.second && edges.insert(edge).second);
        }
    std::vector<Edge> vOpen;
    for (const auto& [from, to] : edges)
        if (edges.count({to, from}) == 0)
            vOpen.emplace_back(from, to);
    return {corners.size() + vFaces.size() - (edges.size() + vOpen.size()) / 2, vOpen};
}

/// The centre of the sphere through four points.
std::array<mpq_class, 3> getExactCenter(const std::array<const Point3*, 4>& points)
{
    using Vector = std::array<mpq_class, 3>;
    const auto fromFirst = [&](const Point3* p) {
        return Vector{mpq_class(p->x()) - points[0]->x(), mpq_class(p->y()) - points[0]->y(),
                      mpq_class(p->z()) - points[0]->z()};
    };
    const auto dot = [](const Vector& a, const Vector& b) {
        return mpq_class(a[0] * b[0] + a[1] * b[1] + a[2] * b[2]);
    };
    const auto cross = [](const Vector& a, const Vector& b) {
        return Vector{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    };
    const Vector a = fromFirst(points[1]), b = fromFirst(points[2]), c = fromFirst(points[3]);
    const Vector bc = cross(b, c), ca = cross(c, a), ab = cross(a, b);
    const Coordinates origin = coordinatesOf(*points[0]);
    Vector center;
    for (std::size_t i = 0; i < 3; ++i)
        center[i] = origin[i] +
                    mpq_class((dot(a, a) * bc[i] + dot(b, b) * ca[i] + dot(c, c) * ab[i]) / (2 * dot(a, bc)));
    return center;
}

class VoronoiCellsOf : public TriangulatedSet
{
protected:
    VoronoiCellsOf() { triangulate(GetParam().bQuadratic ? 60 : 300); }

    /// Coordinates of ordinary size, or values are not what is promised.
    bool isOrdinary() const
    {
        return m_dt.is3D() && getBox(0).getMaxRange() > 1e-60 && getBox(0).getMaxRange() < 1e60;
    }

    Bbox3 getBox(double enlarged) const
    {
        Bbox3 box;
        for (const Point3* pVtx : m_vVertices)
            box.add(*pVtx);
        box.enlargeBounds(enlarged);
        return box;
    }

    /// For each two neighbours of the mesh the centres of the spheres around their edge, and the facets of
    /// the hull there.
    std::map<Edge, std::set<std::string>> findCornersAroundEdges() const
    {
        std::map<Edge, std::set<std::string>> corners;
        const auto add = [&](const std::uint32_t* pFirst, std::size_t num, const std::string& corner) {
            for (std::size_t i = 0; i < num; ++i)
                for (std::size_t k = 0; k < num; ++k)
                    if (i != k)
                        corners[{pFirst[i], pFirst[k]}].insert(corner);
        };
        const MeshArrays mesh = m_dt.getArrays(m_vHandles);
        for (std::size_t i = 0; i < mesh.vCorners.size(); i += 4) {
            const auto at = [&](std::size_t k) { return m_vHandles[mesh.vCorners[i + k]]; };
            const auto center = getExactCenter({at(0), at(1), at(2), at(3)});
            add(&mesh.vCorners[i], 4,
                center[0].get_str() + " " + center[1].get_str() + " " + center[2].get_str());
        }
        const HullSurface surface = makeHullSurface(m_dt, m_vHandles);
        const HullPolygons polygons = mergeCoplanarTriangles(surface, m_vHandles);
        for (std::size_t i = 0; i < surface.vTriangles.size(); ++i)
            add(surface.vTriangles[i].data(), 3, std::to_string(polygons.vFacetOfTriangle[i]));
        return corners;
    }

    /// No two vertices so close that doubles cannot tell their cells apart.
    bool isWellSpaced() const
    {
        double least = HUGE_VAL;
        for (const Point3* p : m_vVertices)
            for (const Point3* q : m_vVertices)
                if (p != q)
                    least = std::min(least, std::hypot(p->x() - q->x(), p->y() - q->y(), p->z() - q->z()));
        return least > 1e-9 * getBox(0).getMaxRange();
    }

    void expectFilled(const VoronoiCells& cells, double volume, double error) const
    {
        EXPECT_NEAR(sum(cells.measures.vVolumes), volume, error);
        EXPECT_EQ(cells.numFiniteCorners, cells.vCorners.size());
        for (std::uint32_t cell = 0; cell < m_vHandles.size(); ++cell) {
            const std::vector<Face> vFaces = getFaces(cells, cell);
            const auto [characteristic, vOpen] = getTopology(vFaces);
            EXPECT_EQ(characteristic, vFaces.empty() ? 0u : 2u) << "cell " << cell;
            EXPECT_TRUE(vOpen.empty()) << "cell " << cell;
            double area = 0.0;
            for (const Face& face : vFaces)
                area += cells.vFaceAreas[face.number];
            EXPECT_NEAR(area, cells.measures.vAreas[cell], 1e-12 * area);
        }
    }

    /// From both sides a face that is not tiny is equally large.
    static void expectSymmetric(const VoronoiCells& cells, double size)
    {
        std::map<Edge, double> areas;
        for (std::uint32_t cell = 0; cell + 1 < cells.vFirstFace.size(); ++cell)
            for (const Face& face : getFaces(cells, cell))
                if (face.neighbor != NO_INDEX) {
                    areas[{cell, face.neighbor}] += cells.vFaceAreas[face.number];
                    areas[{face.neighbor, cell}] -= cells.vFaceAreas[face.number];
                }
        for (const auto& [sites, difference] : areas)
            EXPECT_NEAR(difference, 0.0, 1e-9 * size * size) << sites.first << " " << sites.second;
    }

    static void expectSame(const VoronoiMeasures& a, const VoronoiMeasures& b)
    {
        const auto isSame = [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); };
        ASSERT_EQ(a.vVolumes.size(), b.vVolumes.size());
        for (std::size_t i = 0; i < a.vVolumes.size(); ++i)
            EXPECT_TRUE(isSame(a.vVolumes[i], b.vVolumes[i]) && isSame(a.vAreas[i], b.vAreas[i]) &&
                        isSame(a.vCentroids[i][2], b.vCentroids[i][2]))
                << i;
    }
};

TEST_P(VoronoiCellsOf, HaveTheCornersOfExactCentres)
{
    const VoronoiCells cells = makeVoronoiCells(m_dt, m_vHandles);
    const auto cornersAroundEdges = findCornersAroundEdges();
    std::map<Edge, std::vector<std::uint32_t>> faces;
    for (std::uint32_t cell = 0; cell < m_vHandles.size(); ++cell)
        for (const Face& face : getFaces(cells, cell))
            EXPECT_TRUE(faces.emplace(Edge(cell, face.neighbor), face.vCorners).second);
    std::size_t numFaces = 0;
    std::set<std::string> corners;
    for (const auto& [sites, expected] : cornersAroundEdges) {
        corners.insert(expected.begin(), expected.end());
        if (expected.size() < 3) {
            EXPECT_EQ(faces.count(sites), 0u) << sites.first << " " << sites.second;
            continue;
        }
        ++numFaces;
        ASSERT_EQ(faces.count(sites), 1u) << sites.first << " " << sites.second;
        std::vector<std::uint32_t> vCorners = faces[sites];
        EXPECT_EQ(vCorners.size(), expected.size());
        // The other side has the same, the other way round.
        std::vector<std::uint32_t> vOthers = faces.at({sites.second, sites.first});
        std::reverse(vOthers.begin(), vOthers.end());
        for (std::vector<std::uint32_t>* pList : {&vCorners, &vOthers})
            std::rotate(pList->begin(), std::min_element(pList->begin(), pList->end()), pList->end());
        EXPECT_EQ(vCorners, vOthers);
    }
    EXPECT_EQ(numFaces, faces.size());
    EXPECT_EQ(corners.size(), cells.vCorners.size());
    expectSame(cells.measures, measureVoronoiCells(m_dt, m_vHandles));
}

TEST_P(VoronoiCellsOf, AreConvexPolyhedraUnboundedOnTheHull)
{
    const VoronoiCells cells = makeVoronoiCells(m_dt, m_vHandles);
    const std::vector<std::uint32_t> vOnHull = makeHullSurface(m_dt, m_vHandles).vVertices;
    const std::vector<std::uint32_t> vVertices = m_dt.getArrays(m_vHandles).vVertices;
    for (std::uint32_t cell = 0; cell < m_vHandles.size(); ++cell) {
        const std::vector<Face> vFaces = getFaces(cells, cell);
        EXPECT_EQ(vFaces.empty(), !m_dt.is3D() || vVertices[cell] != cell);
        if (vFaces.empty())
            continue;
        const auto [characteristic, vOpen] = getTopology(vFaces);
        EXPECT_EQ(characteristic, vOpen.empty() ? 2u : 1u) << "Euler's relation";
        bool bUnbounded = false;
        for (const auto& [from, to] : vOpen)
            EXPECT_TRUE(from >= cells.numFiniteCorners && to >= cells.numFiniteCorners);
        for (const Face& face : vFaces)
            for (const std::uint32_t corner : face.vCorners) {
                bUnbounded |= corner >= cells.numFiniteCorners;
                if (!isOrdinary())
                    continue;
                // Corners are as far from the site as from the neighbour; the direction of those at infinity
                // is across the line between them.
                const Coordinates a = coordinatesOf(*m_vHandles[cell]);
                const Coordinates b = coordinatesOf(*m_vHandles[face.neighbor]);
                const Position& c = cells.vCorners[corner];
                double difference = 0.0, scale = 0.0;
                for (std::size_t i = 0; i < 3; ++i) {
                    const double share = corner < cells.numFiniteCorners ? 0.5 : 0.0;
                    difference += (b[i] - a[i]) * (c[i] - share * a[i] - share * b[i]);
                    scale += std::fabs(b[i] - a[i]) *
                             (std::fabs(c[i]) + share * std::fabs(a[i]) + share * std::fabs(b[i]));
                }
                EXPECT_NEAR(difference, 0.0, 1e-8 * scale + 1e-300);
            }
        EXPECT_EQ(bUnbounded, std::binary_search(vOnHull.begin(), vOnHull.end(), cell));
        if (bUnbounded || isOrdinary()) {
            EXPECT_EQ(bUnbounded, std::isinf(cells.measures.vVolumes[cell]));
            EXPECT_EQ(bUnbounded, std::isinf(cells.measures.vAreas[cell]));
            // Cells between points that differ in the last place may have no volume in doubles.
            EXPECT_EQ(bUnbounded || cells.measures.vVolumes[cell] <= 0.0,
                      std::isnan(cells.measures.vCentroids[cell][0]));
        }
    }
}

TEST_P(VoronoiCellsOf, FillBoxes)
{
    if (!isOrdinary())
        return;
    // Around the points, through them, and to one side.
    const Bbox3 wide = getBox(1.0);
    Bbox3 beside = getBox(0.0);
    beside.add(middle(wide.getMaxPoint(), beside.getMaxPoint()));
    for (const Bbox3& box : {wide, getBox(-0.4), beside}) {
        if (!(std::min({box.getRangeX(), box.getRangeY(), box.getRangeZ()}) > 0.0))
            continue;
        const VoronoiCells cells = makeVoronoiCells(m_dt, m_vHandles, box);
        const double volume = box.getRangeX() * box.getRangeY() * box.getRangeZ();
        expectFilled(cells, volume, 1e-9 * volume);
        if (isWellSpaced())
            expectSymmetric(cells, box.getMaxRange());
        expectSame(cells.measures, measureVoronoiCells(m_dt, m_vHandles, box));
        double boundary = 0.0, moment = 0.0;
        for (std::size_t i = 0; i < cells.vNeighbors.size(); ++i)
            boundary += cells.vNeighbors[i] == NO_INDEX ? cells.vFaceAreas[i] : 0.0;
        for (std::size_t i = 0; i < m_vHandles.size(); ++i)
            if (cells.measures.vVolumes[i] > 0.0)
                moment += cells.measures.vVolumes[i] * (cells.measures.vCentroids[i][0] - box.getMinX());
        const double expected = 2 * (box.getRangeX() * box.getRangeY() + box.getRangeY() * box.getRangeZ() +
                                     box.getRangeZ() * box.getRangeX());
        EXPECT_NEAR(boundary, expected, isWellSpaced() ? 1e-9 * expected : 0.1 * expected);
        EXPECT_NEAR(moment / volume, box.getRangeX() / 2, 1e-9 * box.getRangeX());
    }
}

TEST_P(VoronoiCellsOf, FillTheHull)
{
    if (!isOrdinary())
        return;
    const HullSurface surface = makeHullSurface(m_dt, m_vHandles);
    const VoronoiCells cells = makeVoronoiCells(m_dt, m_vHandles, VoronoiClip3::HULL);
    const double offBy = 1e-11 * getBox(0).getMaxRange();
    expectFilled(cells, surface.volume, offBy * surface.area);
    double boundary = 0.0;
    for (std::size_t i = 0; i < cells.vNeighbors.size(); ++i)
        boundary += cells.vNeighbors[i] == NO_INDEX ? cells.vFaceAreas[i] : 0.0;
    EXPECT_NEAR(boundary, surface.area, 1e-6 * surface.area + offBy * getBox(0).getMaxRange());
    if (isWellSpaced())
        expectSymmetric(cells, getBox(0).getMaxRange());
    expectSame(cells.measures, measureVoronoiCells(m_dt, m_vHandles, VoronoiClip3::HULL));
}

#ifdef VORN3D_HAVE_VOROPP
TEST_P(VoronoiCellsOf, AreAsLargeAsThoseOfAnotherLibrary)
{
    if (!isOrdinary() || !isWellSpaced())
        return;
    const Bbox3 box = getBox(0.5);
    const VoronoiMeasures measures = measureVoronoiCells(m_dt, m_vHandles, box);
    voro::container container(box.getMinX(), box.getMaxX(), box.getMinY(), box.getMaxY(), box.getMinZ(),
                              box.getMaxZ(), 6, 6, 6, false, false, false, 8);
    const std::vector<std::uint32_t> vVertices = m_dt.getArrays(m_vHandles).vVertices;
    for (std::size_t i = 0; i < m_vHandles.size(); ++i)
        if (vVertices[i] == i)
            container.put(static_cast<int>(i), m_vHandles[i]->x(), m_vHandles[i]->y(), m_vHandles[i]->z());
    const double volume = box.getRangeX() * box.getRangeY() * box.getRangeZ();
    voro::c_loop_all loop(container);
    voro::voronoicell cell;
    std::size_t numCells = 0;
    if (loop.start())
        do {
            if (!container.compute_cell(cell, loop))
                continue;
            ++numCells;
            const auto i = static_cast<std::size_t>(loop.pid());
            EXPECT_NEAR(cell.volume(), measures.vVolumes[i], 1e-9 * volume);
        } while (loop.inc());
    EXPECT_EQ(numCells, m_vVertices.size());
}
#endif

INSTANTIATE_TEST_SUITE_P(PointSets, VoronoiCellsOf, testing::ValuesIn(getPointSets()), getSetName);

TEST(VoronoiCellsTest, CellsOfALatticeAreCubes)
{
    std::vector<Point3> vPoints;
    for (int i = 0; i < 125; ++i)
        vPoints.emplace_back(0.5 + i % 5, 0.5 + i / 5 % 5, 0.5 + i / 25);
    vPoints.push_back(vPoints[62]);
    Vorn_3D dt;
    std::vector<Point3*> vHandles;
    outputOf([&] { dt.insert(vPoints, vHandles); });
    const Bbox3 box({Point3(0, 0, 0), Point3(5, 5, 5)});
    const VoronoiCells cells = makeVoronoiCells(dt, vHandles, box);
    for (std::size_t i = 0; i < 125; ++i) {
        EXPECT_NEAR(cells.measures.vVolumes[i], 1.0, 1e-14);
        EXPECT_NEAR(cells.measures.vAreas[i], 6.0, 1e-14);
        EXPECT_NEAR(cells.measures.vCentroids[i][1], vPoints[i].y(), 1e-14);
        const std::vector<Face> vFaces = getFaces(cells, i);
        EXPECT_EQ(vFaces.size(), 6u);
        std::set<std::uint32_t> corners;
        for (const Face& face : vFaces) {
            EXPECT_EQ(face.vCorners.size(), 4u);
            corners.insert(face.vCorners.begin(), face.vCorners.end());
        }
        EXPECT_EQ(corners.size(), 8u);
    }
    EXPECT_TRUE(getFaces(cells, 125).empty()) << "equal to another point";
    EXPECT_EQ(cells.measures.vVolumes[125], 0.0);

    const VoronoiCells whole = makeVoronoiCells(dt, vHandles);
    EXPECT_EQ(whole.numFiniteCorners, 64u);
    EXPECT_EQ(whole.vCorners.size(), 70u) << "and the six directions of the cube's normals";
    const Bbox3 away({Point3(10, 0, 0), Point3(12, 1, 1)});
    const VoronoiCells above = makeVoronoiCells(dt, vHandles, away);
    EXPECT_NEAR(above.measures.vVolumes[4], 2.0, 1e-13);
    EXPECT_EQ(sum(above.measures.vVolumes), above.measures.vVolumes[4]);
    EXPECT_EQ(above.vNeighbors, std::vector<std::uint32_t>(6, NO_INDEX));

    outputOf([&] {
        EXPECT_THROW(makeVoronoiCells(dt, vHandles, Bbox3()), VornException);
        EXPECT_THROW(measureVoronoiCells(dt, vHandles, Bbox3({Point3(0, 0, 0), Point3(1, 1, 0)})),
                     VornException);
        vHandles.resize(124);
        EXPECT_THROW(makeVoronoiCells(dt, vHandles), VornException);
    });
}

} // namespace
} // namespace VORN3D::tests
