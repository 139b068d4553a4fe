// The complex against its definition in rational arithmetic, and what it tells at any alpha against the
// simplices' ranks.
#include "vorn3d/geometry/AlphaComplex.h"
#include "MeshChecker.h"
#include "TriangulatedSet.h"
#include "rationalSphere.h"
#include "vorn3d/VornException.h"

#include <map>
#include <set>

namespace VORN3D::tests
{
namespace
{

using Corners = std::vector<std::uint32_t>; // of a simplex, ascending

/// Of simplex i of a dimension.
Corners getSortedCorners(const AlphaComplex& complex, int dimension, std::size_t i)
{
    const std::uint32_t* p = &complex.getCorners(dimension)[static_cast<std::size_t>(dimension + 1) * i];
    Corners corners(p, p + dimension + 1);
    std::sort(corners.begin(), corners.end());
    return corners;
}

Corners without(Corners corners, std::size_t i)
{
    corners.erase(corners.begin() + static_cast<std::ptrdiff_t>(i));
    return corners;
}

using Labels = std::vector<std::uint32_t>; // of tetrahedra, numbered by their first; NO_INDEX for none

/// The solid at some alpha, from the values of tetrahedra and triangles alone.
struct Solid
{
    Solid(const AlphaComplex& complex, const MeshArrays& mesh_, double alpha, AlphaVoids3 voids) : mesh(mesh_)
    {
        const auto isInComplex = [&](int dimension, std::size_t i) {
            return complex.getValues()[complex.getRanks(dimension)[i]] <= alpha;
        };
        std::map<Corners, std::size_t> triangles;
        for (std::size_t i = 0; i < complex.getNumSimplices(2); ++i)
            triangles[getSortedCorners(complex, 2, i)] = i;
        for (std::size_t facet = 0; facet < mesh.vNeighbors.size(); ++facet) {
            const Corners corners = without({getTet(facet / 4), getTet(facet / 4) + 4}, facet % 4);
            vTriangles.push_back(triangles.at(sorted(corners)));
            vIsClosed.push_back(isInComplex(2, vTriangles.back()));
        }

        const std::size_t numTets = complex.getNumSimplices(3);
        std::vector<char> vIsIn(numTets, true);
        const Labels parts = label(vIsIn, [&](std::size_t facet) { return !vIsClosed[facet]; });
        std::set<std::uint32_t> outside, enclosed;
        for (std::size_t facet = 0; facet < mesh.vNeighbors.size(); ++facet)
            if (mesh.vNeighbors[facet] == NO_INDEX && !vIsClosed[facet])
                outside.insert(parts[facet / 4]);
        for (std::size_t tet = 0; tet < numTets; ++tet) {
            const bool bEnclosed = outside.count(parts[tet]) == 0;
            if (bEnclosed && !isInComplex(3, tet))
                enclosed.insert(parts[tet]);
            vIsIn[tet] = voids == AlphaVoids3::OPEN ? isInComplex(3, tet) : bEnclosed;
            if (vIsIn[tet])
                covered.insert(getTet(tet), getTet(tet) + 4);
        }
        numVoids = static_cast<std::ptrdiff_t>(enclosed.size());
        components = label(vIsIn, [](std::size_t) { return true; });
        for (const std::uint32_t component : components)
            numComponents = std::max(numComponents, component + 1); // NO_INDEX + 1 is 0
    }

    static Corners sorted(Corners corners)
    {
        std::sort(corners.begin(), corners.end());
        return corners;
    }

    /// Floods a set of tetrahedra through open facets.
    template <class IsOpen>
    Labels label(const std::vector<char>& vIsIn, const IsOpen& isOpen) const
    {
        Labels labels(vIsIn.size(), NO_INDEX);
        std::uint32_t num = 0;
        for (std::uint32_t first = 0; first < vIsIn.size(); ++first) {
            if (!vIsIn[first] || labels[first] != NO_INDEX)
                continue;
            std::vector<std::size_t> vReached = {first};
            labels[first] = num;
            for (std::size_t i = 0; i < vReached.size(); ++i)
                for (std::size_t facet = 4 * vReached[i]; facet < 4 * vReached[i] + 4; ++facet) {
                    const std::uint32_t next = mesh.vNeighbors[facet];
                    if (next != NO_INDEX && isOpen(facet) && vIsIn[next] && labels[next] == NO_INDEX) {
                        labels[next] = num;
                        vReached.push_back(next);
                    }
                }
            ++num;
        }
        return labels;
    }

    const std::uint32_t* getTet(std::size_t tet) const { return &mesh.vCorners[4 * tet]; }
    bool hasTet(std::size_t tet) const { return components[tet] != NO_INDEX; }

    /// For each triangle how many tetrahedra of the solid have it, and whether it is in the complex.
    std::vector<AlphaPlace3> getPlaces(std::size_t numTriangles) const
    {
        std::vector<int> vNumTets(numTriangles, 0);
        std::vector<char> vIsIn(numTriangles, false);
        for (std::size_t facet = 0; facet < vTriangles.size(); ++facet) {
            vNumTets[vTriangles[facet]] += hasTet(facet / 4);
            vIsIn[vTriangles[facet]] = vIsClosed[facet];
        }
        std::vector<AlphaPlace3> vPlaces;
        for (std::size_t i = 0; i < numTriangles; ++i)
            vPlaces.push_back(vNumTets[i] == 2   ? AlphaPlace3::INTERIOR
                              : vNumTets[i] == 1 ? AlphaPlace3::REGULAR
                              : vIsIn[i]         ? AlphaPlace3::SINGULAR
                                                 : AlphaPlace3::OUTSIDE);
        return vPlaces;
    }

    const MeshArrays& mesh;
    std::vector<std::size_t> vTriangles; ///< for each facet of each tetrahedron
    std::vector<char> vIsClosed;         ///< for each of them
    Labels components;
    std::uint32_t numComponents = 0;
    std::ptrdiff_t numVoids = 0;
    std::set<std::uint32_t> covered; ///< the corners
};

class AlphaComplexOf : public TriangulatedSet
{
protected:
    AlphaComplexOf()
    {
        triangulate(GetParam().bQuadratic ? 25 : 50);
        for (const Point3* pVtx : m_vHandles)
            m_vPoints.push_back(toRational(coordinatesOf(*pVtx)));
    }

    RationalSphere getSphere(const Corners& corners) const
    {
        std::vector<RationalPoint> vCorners;
        for (const std::uint32_t corner : corners)
            vCorners.push_back(m_vPoints[corner]);
        return *getSmallestSphere(vCorners);
    }

    bool isEmpty(const RationalSphere& sphere, const Corners& corners) const
    {
        RationalPoint centre = {0, 0, 0};
        for (std::size_t i = 0; i < corners.size(); ++i)
            for (std::size_t k = 0; k < 3; ++k)
                centre[k] += sphere.vCoordinates[i] * m_vPoints[corners[i]][k];
        return std::none_of(m_vPoints.begin(), m_vPoints.end(), [&](const RationalPoint& p) {
            const RationalPoint offset = getDifference(p, centre);
            return dot(offset, offset) < sphere.sqRadius;
        });
    }

    /// The value of each simplex by its definition: from tetrahedra down to edges, the radius if the smallest
    /// sphere is empty, else the least value of those that it is a face of.
    std::map<Corners, mpq_class> getValuesByDefinition() const
    {
        const MeshArrays mesh = m_dt.getArrays(m_vHandles);
        std::map<Corners, mpq_class> level, all;
        for (std::size_t i = 0; i < mesh.vCorners.size(); i += 4) {
            const auto first = mesh.vCorners.begin() + static_cast<std::ptrdiff_t>(i);
            Corners corners(first, first + 4);
            std::sort(corners.begin(), corners.end());
            level[corners] = getSphere(corners).sqRadius;
        }
        while (!level.empty()) {
            std::map<Corners, mpq_class> faces;
            for (const auto& [corners, value] : level)
                for (std::size_t i = 0; i < corners.size() && corners.size() > 2; ++i) {
                    const auto [it, bNew] = faces.emplace(without(corners, i), value);
                    if (!bNew && value < it->second)
                        it->second = value;
                }
            for (auto& [corners, value] : faces) {
                const RationalSphere sphere = getSphere(corners);
                if (isEmpty(sphere, corners))
                    value = sphere.sqRadius;
            }
            all.merge(level);
            level = faces;
        }
        for (std::uint32_t i = 0; i < mesh.vVertices.size(); ++i)
            if (mesh.vVertices[i] == i)
                all[{i}] = 0;
        return all;
    }

    mpq_class getVolume(const std::array<std::uint32_t, 4>& corners) const
    {
        std::array<RationalPoint, 3> e;
        for (std::size_t i = 0; i < 3; ++i)
            e[i] = getDifference(m_vPoints[corners[i + 1]], m_vPoints[corners[0]]);
        return ((e[0][1] * e[1][2] - e[0][2] * e[1][1]) * e[2][0] +
                (e[0][2] * e[1][0] - e[0][0] * e[1][2]) * e[2][1] +
                (e[0][0] * e[1][1] - e[0][1] * e[1][0]) * e[2][2]) /
               6;
    }

    void expectVolume(double volume, const Solid& solid) const
    {
        mpq_class sum = 0;
        for (std::size_t tet = 0; tet < solid.components.size(); ++tet)
            if (solid.hasTet(tet)) {
                const std::uint32_t* p = solid.getTet(tet);
                sum += getVolume({p[0], p[1], p[2], p[3]});
            }
        if (sum < DBL_MAX) {
            EXPECT_NEAR(volume, sum.get_d(), 1e-12 * sum.get_d());
        }
    }

    /// The triangles are those at the given places; regular ones show their back to their tetrahedra and
    /// close up.
    void expectSurface(const AlphaSurface& surface, const std::map<Corners, AlphaPlace3>& places,
                       const Solid& solid) const
    {
        ASSERT_EQ(surface.vTets.size(), surface.numRegular);
        std::map<std::pair<std::uint32_t, std::uint32_t>, int> balance;
        std::map<Corners, AlphaPlace3> found;
        for (std::size_t t = 0; t < surface.vTriangles.size(); ++t) {
            const auto& triangle = surface.vTriangles[t];
            const bool bRegular = t < surface.numRegular;
            const Corners corners = Solid::sorted({triangle.begin(), triangle.end()});
            found[corners] = bRegular ? AlphaPlace3::REGULAR : AlphaPlace3::SINGULAR;
            if (!bRegular)
                continue;
            ASSERT_TRUE(solid.hasTet(surface.vTets[t]));
            const std::uint32_t* p = solid.getTet(surface.vTets[t]);
            const std::uint32_t* pOpp = std::find_if(p, p + 4, [&](std::uint32_t corner) {
                return !std::binary_search(corners.begin(), corners.end(), corner);
            });
            EXPECT_LT(getVolume({triangle[0], triangle[1], triangle[2], *pOpp}), 0);
            for (std::size_t i = 0; i < 3; ++i) {
                ++balance[{triangle[i], triangle[(i + 1) % 3]}];
                --balance[{triangle[(i + 1) % 3], triangle[i]}];
            }
        }
        EXPECT_EQ(found, places);
        EXPECT_EQ(found.size(), surface.vTriangles.size());
        for (const auto& [edge, excess] : balance)
            EXPECT_EQ(excess, 0);
    }

    std::vector<RationalPoint> m_vPoints;
};

TEST_P(AlphaComplexOf, HasTheValuesOfItsDefinition)
{
    const AlphaComplex complex(m_dt, m_vHandles);
    const std::map<Corners, mpq_class> expected = getValuesByDefinition();
    std::set<mpq_class> distinct;
    for (const auto& [corners, value] : expected)
        distinct.insert(value);
    const std::vector<double>& vValues = complex.getValues();
    ASSERT_EQ(vValues.size(), std::max<std::size_t>(distinct.size(), 1));
    std::uint32_t rank = 0;
    std::map<mpq_class, std::uint32_t> ranks;
    for (const mpq_class& value : distinct) {
        const double rounded = vValues[rank];
        EXPECT_TRUE(std::isinf(rounded) || mpq_class(rounded) >= value);
        EXPECT_TRUE(rank == 0 || mpq_class(std::nextafter(rounded, 0.0)) < value);
        ranks[value] = rank++;
    }
    std::size_t numSimplices = 0;
    for (int dimension = 0; dimension < 4; ++dimension)
        for (std::size_t i = 0; i < complex.getNumSimplices(dimension); ++i, ++numSimplices) {
            const Corners corners = getSortedCorners(complex, dimension, i);
            ASSERT_EQ(complex.getRanks(dimension)[i], ranks.at(expected.at(corners)));
        }
    EXPECT_EQ(numSimplices, expected.size());
}

TEST_P(AlphaComplexOf, FiltersFacesBeforeWhatTheyAreFacesOf)
{
    const AlphaComplex complex(m_dt, m_vHandles);
    std::set<Corners> seen;
    std::uint32_t lastRank = 0;
    int characteristic = 0;
    for (const AlphaSimplex3& simplex : complex.filtration()) {
        EXPECT_EQ(simplex.rank, complex.getRanks(simplex.dimension)[simplex.number]);
        EXPECT_GE(simplex.rank, lastRank);
        lastRank = simplex.rank;
        const Corners corners = getSortedCorners(complex, simplex.dimension, simplex.number);
        for (std::size_t i = 0; i < corners.size() && corners.size() > 1; ++i)
            EXPECT_EQ(seen.count(without(corners, i)), 1u);
        EXPECT_TRUE(seen.insert(corners).second);
        characteristic += simplex.dimension % 2 == 0 ? 1 : -1;
    }
    EXPECT_EQ(lastRank + 1, std::max<std::size_t>(complex.getValues().size(), 1));
    if (!m_vTets.empty()) {
        EXPECT_EQ(characteristic, 1) << "Euler's of a ball";
    }
}

TEST_P(AlphaComplexOf, TellsSurfaceVolumeComponentsAndVoids)
{
    const AlphaComplex complex(m_dt, m_vHandles);
    const MeshArrays mesh = m_dt.getArrays(m_vHandles);
    const std::vector<double>& vValues = complex.getValues();
    std::vector<double> vAlphas = {0.0, HUGE_VAL};
    for (std::size_t i = 0; i < 12; ++i) {
        const double alpha = vValues[i * (vValues.size() - 1) / 11];
        vAlphas.insert(vAlphas.end(), {alpha, std::nextafter(alpha, 0.0)});
    }
    const std::vector<AlphaVoid3> vVoids = complex.voids();
    for (const double alpha : vAlphas)
        for (const AlphaVoids3 mode : {AlphaVoids3::OPEN, AlphaVoids3::FILLED}) {
            const Solid solid(complex, mesh, alpha, mode);
            EXPECT_EQ(complex.components(alpha, mode).num, solid.numComponents);
            EXPECT_EQ(complex.components(alpha, mode).vComponents, solid.components);
            EXPECT_EQ(std::count_if(vVoids.begin(), vVoids.end(),
                                    [&](const AlphaVoid3& v) {
                                        return vValues[v.birth] <= alpha && alpha < vValues[v.death];
                                    }),
                      solid.numVoids);
            expectVolume(complex.volume(alpha, mode), solid);
            const std::vector<AlphaPlace3> vPlaces = complex.classifyTriangles(alpha, mode);
            EXPECT_EQ(vPlaces, solid.getPlaces(complex.getNumSimplices(2)));
            std::map<Corners, AlphaPlace3> places;
            for (std::size_t i = 0; i < vPlaces.size(); ++i)
                if (vPlaces[i] == AlphaPlace3::REGULAR || vPlaces[i] == AlphaPlace3::SINGULAR)
                    places[getSortedCorners(complex, 2, i)] = vPlaces[i];
            expectSurface(complex.surface(alpha, mode), places, solid);
        }
}

TEST_P(AlphaComplexOf, HasTheLeastCriticalAlpha)
{
    const AlphaComplex complex(m_dt, m_vHandles);
    const MeshArrays mesh = m_dt.getArrays(m_vHandles);
    std::vector<double> vExpected(4, HUGE_VAL); // for so many components and one
    for (auto it = complex.getValues().rbegin(); it != complex.getValues().rend(); ++it) {
        const Solid solid(complex, mesh, *it, AlphaVoids3::OPEN);
        for (std::size_t i = 0; i < vExpected.size(); ++i)
            if (solid.numComponents > 0 && solid.numComponents <= i + 1 &&
                solid.covered.size() == complex.getNumSimplices(0))
                vExpected[i] = *it;
    }
    for (std::size_t i = 0; i < vExpected.size(); ++i)
        EXPECT_EQ(complex.criticalAlpha(i + 1), vExpected[i]);
}

INSTANTIATE_TEST_SUITE_P(PointSets, AlphaComplexOf, testing::ValuesIn(getPointSets()), getSetName);

TEST(AlphaComplexTest, EnclosesWhatPointsOnSurfacesShow)
{
    // Two spheres, one of them sampled less densely, and three points in between.
    Random random(1);
    std::vector<Point3> vPoints;
    const auto addSphere = [&](int num, double x, double radius) {
        for (int i = 0; i < num; ++i) {
            const Point3 p = random.onSphere();
            vPoints.emplace_back(x + radius * p.x(), radius * p.y(), radius * p.z());
        }
    };
    addSphere(2000, 0, 1);
    addSphere(1000, 5, 1.5);
    addSphere(3, 2.25, 0.3);
    Vorn_3D dt;
    std::vector<Point3*> vHandles;
    outputOf([&] { dt.insert(vPoints, vHandles); });
    const AlphaComplex complex(dt, vHandles);
    const double alpha = complex.enclosingAlpha();
    EXPECT_LT(alpha, 0.2);
    EXPECT_EQ(complex.components(alpha, AlphaVoids3::FILLED).num, 2u);
    EXPECT_EQ(complex.surface(alpha, AlphaVoids3::FILLED).numRegular, 2u * 2000 - 4 + 2 * 1000 - 4);
    const double volume = 4 * std::acos(-1) / 3 * (1 + 1.5 * 1.5 * 1.5);
    EXPECT_NEAR(complex.volume(alpha, AlphaVoids3::FILLED) / volume, 1, 0.02);
    EXPECT_LT(complex.volume(alpha) / volume, 0.1);
}

TEST(AlphaComplexTest, RefusesWhatItCannotAnswer)
{
    Vorn_3D dt;
    std::vector<Point3> vPoints = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    std::vector<Point3*> vHandles;
    outputOf([&] {
        dt.insert(vPoints, vHandles);
        const AlphaComplex complex(dt, vHandles);
        EXPECT_THROW(complex.surface(-1.0), VornException);
        EXPECT_THROW(complex.volume(std::nan("")), VornException);
        EXPECT_THROW(complex.criticalAlpha(0), VornException);
        EXPECT_EQ(complex.enclosingAlpha(), HUGE_VAL);
        vHandles.pop_back();
        EXPECT_THROW(AlphaComplex(dt, vHandles), VornException);
    });
}

} // namespace
} // namespace VORN3D::tests
