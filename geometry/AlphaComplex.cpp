#include "vorn3d/geometry/AlphaComplex.h"

#include "DisjointSets.h"
#include "Groups.h"
#include "alphaRanks.h"
#include "nalo_tools/assertion.h"
#include "signedVolume.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace VORN3D
{

AlphaComplex::AlphaComplex(const Vorn_3D& dt, const std::vector<Point3*>& vUserHandles)
{
    MeshArrays mesh = dt.getArrays(vUserHandles);
    VORN_REQUIRE_TEXT(std::find(mesh.vCorners.begin(), mesh.vCorners.end(), NO_INDEX) == mesh.vCorners.end(),
                      "handles of all vertices");
    m_vPoints.reserve(vUserHandles.size());
    for (const Point3* p : vUserHandles)
        m_vPoints.push_back({p->x(), p->y(), p->z()});
    for (std::uint32_t i = 0; i < mesh.vVertices.size(); ++i)
        if (mesh.vVertices[i] == i)
            m_avCorners[0].push_back(i);
    m_avRanks[0].assign(m_avCorners[0].size(), 0);

    MeshFaces faces(mesh);
    AlphaRanks ranks = rankSimplices(m_vPoints, mesh, faces);
    m_vValues = std::move(ranks.vValues);
    m_avRanks[1] = std::move(ranks.vEdges);
    m_avRanks[2] = std::move(ranks.vTriangles);
    m_avRanks[3] = std::move(ranks.vTets);
    m_avCorners[1] = std::move(faces.vEdgeEnds);
    m_avCorners[2] = std::move(faces.vTriangleCorners);
    m_avCorners[3] = std::move(mesh.vCorners);
    m_vFacetOfTriangle = std::move(faces.vFacetOfTriangle);
    m_vNeighbors = std::move(mesh.vNeighbors);
}

std::size_t AlphaComplex::getNumSimplices(int dimension) const
{
    return getRanks(dimension).size();
}

const std::vector<std::uint32_t>& AlphaComplex::getCorners(int dimension) const
{
    return m_avCorners.at(static_cast<std::size_t>(dimension));
}

const std::vector<std::uint32_t>& AlphaComplex::getRanks(int dimension) const
{
    return m_avRanks.at(static_cast<std::size_t>(dimension));
}

std::vector<AlphaSimplex3> AlphaComplex::filtration() const
{
    // Dimensions and numbers ascend already.
    return Groups<AlphaSimplex3>(m_vValues.size(),
                                 [this](const auto& use) {
                                     for (int dimension = 0; dimension < 4; ++dimension) {
                                         std::uint32_t number = 0;
                                         for (const std::uint32_t rank : getRanks(dimension))
                                             use(rank, AlphaSimplex3{dimension, number++, rank});
                                     }
                                 })
        .takeAll();
}

std::uint32_t AlphaComplex::getNumRanks(double alpha) const
{
    VORN_REQUIRE_TEXT(alpha >= 0.0, "alpha from 0 to infinity");
    return static_cast<std::uint32_t>(std::upper_bound(m_vValues.begin(), m_vValues.end(), alpha) -
                                      m_vValues.begin());
}

std::array<std::uint32_t, 2> AlphaComplex::getSides(std::size_t triangle) const
{
    const std::size_t facet = m_vFacetOfTriangle[triangle];
    const std::uint32_t beyond = m_vNeighbors[facet];
    return {static_cast<std::uint32_t>(facet / 4),
            beyond == NO_INDEX ? static_cast<std::uint32_t>(getNumSimplices(3)) : beyond};
}

std::vector<char> AlphaComplex::getSolid(double alpha, AlphaVoids3 voids) const
{
    const std::uint32_t numRanks = getNumRanks(alpha);
    const std::size_t numTets = getNumSimplices(3);
    std::vector<char> vSolid(numTets + 1, false);
    if (voids == AlphaVoids3::OPEN) {
        for (std::size_t tet = 0; tet < numTets; ++tet)
            vSolid[tet] = static_cast<char>(m_avRanks[3][tet] < numRanks);
        return vSolid;
    }
    DisjointSets sets(numTets + 1);
    for (std::size_t i = 0; i < getNumSimplices(2); ++i)
        if (m_avRanks[2][i] >= numRanks)
            sets.join(getSides(i));
    const std::uint32_t outside = sets.find(static_cast<std::uint32_t>(numTets));
    for (std::uint32_t tet = 0; tet < numTets; ++tet)
        vSolid[tet] = static_cast<char>(sets.find(tet) != outside);
    return vSolid;
}

std::vector<AlphaPlace3> AlphaComplex::classifyTriangles(double alpha, AlphaVoids3 voids) const
{
    return classifyTriangles(getNumRanks(alpha), voids, getSolid(alpha, voids));
}

std::vector<AlphaPlace3> AlphaComplex::classifyTriangles(std::uint32_t numRanks, AlphaVoids3 voids,
                                                         const std::vector<char>& vSolid) const
{
    std::vector<AlphaPlace3> vPlaces(getNumSimplices(2), AlphaPlace3::OUTSIDE);
    for (std::size_t i = 0; i < vPlaces.size(); ++i) {
        const bool bInComplex = m_avRanks[2][i] < numRanks;
        if (!bInComplex && voids == AlphaVoids3::OPEN)
            continue; // as most triangles are, without a look at what is beside them
        const auto [first, second] = getSides(i);
        if (vSolid[first] && vSolid[second])
            vPlaces[i] = AlphaPlace3::INTERIOR;
        else if (vSolid[first] || vSolid[second])
            vPlaces[i] = AlphaPlace3::REGULAR;
        else if (bInComplex)
            vPlaces[i] = AlphaPlace3::SINGULAR;
    }
    return vPlaces;
}

AlphaSurface AlphaComplex::surface(double alpha, AlphaVoids3 voids) const
{
    const std::vector<char> vSolid = getSolid(alpha, voids);
    const std::vector<AlphaPlace3> vPlaces = classifyTriangles(getNumRanks(alpha), voids, vSolid);
    AlphaSurface surface;
    const auto listTriangles = [&](AlphaPlace3 place) {
        for (std::size_t i = 0; i < vPlaces.size(); ++i) {
            if (vPlaces[i] != place)
                continue;
            const std::uint32_t* p = &m_avCorners[2][3 * i];
            const auto [first, second] = getSides(i);
            surface.vTriangles.push_back({p[0], p[1], p[2]});
            if (place == AlphaPlace3::REGULAR)
                surface.vTets.push_back(vSolid[first] ? first : second);
            if (vSolid[second])
                std::swap(surface.vTriangles.back()[1], surface.vTriangles.back()[2]);
        }
    };
    listTriangles(AlphaPlace3::REGULAR);
    surface.numRegular = surface.vTriangles.size();
    listTriangles(AlphaPlace3::SINGULAR);
    return surface;
}

double AlphaComplex::volume(double alpha, AlphaVoids3 voids) const
{
    const std::vector<char> vSolid = getSolid(alpha, voids);
    double volume = 0.0;
    for (std::size_t tet = 0; tet < getNumSimplices(3); ++tet)
        if (vSolid[tet]) {
            const auto getPoint = [&](std::size_t i) {
                const auto& [x, y, z] = m_vPoints[m_avCorners[3][4 * tet + i]];
                return Point3(x, y, z);
            };
            volume += getScaledBy(getSixfoldVolume(getPoint(0), getPoint(1), getPoint(2), getPoint(3)), 0);
        }
    return volume / 6.0;
}

AlphaComponents AlphaComplex::components(double alpha, AlphaVoids3 voids) const
{
    const std::vector<char> vSolid = getSolid(alpha, voids);
    const std::size_t numTets = getNumSimplices(3);
    DisjointSets sets(numTets);
    for (std::size_t i = 0; i < getNumSimplices(2); ++i) {
        const std::array<std::uint32_t, 2> sides = getSides(i);
        if (vSolid[sides[0]] && vSolid[sides[1]])
            sets.join(sides);
    }
    AlphaComponents components;
    components.vComponents.assign(numTets, NO_INDEX);
    for (std::uint32_t tet = 0; tet < numTets; ++tet)
        if (vSolid[tet]) {
            const std::uint32_t first = sets.find(tet);
            components.vComponents[tet] = first == tet ? components.num++ : components.vComponents[first];
        }
    return components;
}

namespace
{

/// The numbers of simplices by rank.
std::vector<std::uint32_t> sortByRank(const std::vector<std::uint32_t>& vRanks, std::size_t numRanks)
{
    return Groups<std::uint32_t>(numRanks,
                                 [&](const auto& use) {
                                     for (std::uint32_t i = 0; i < vRanks.size(); ++i)
                                         use(vRanks[i], i);
                                 })
        .takeAll();
}

} // namespace

double AlphaComplex::criticalAlpha(std::size_t numComponents) const
{
    VORN_REQUIRE_TEXT(numComponents > 0, "one component at least");
    const std::vector<std::uint32_t>& vTetRanks = m_avRanks[3];
    const std::vector<std::uint32_t> vTets = sortByRank(vTetRanks, m_vValues.size());
    DisjointSets sets(vTets.size());
    std::vector<char> vIsAdded(vTets.size(), false);
    std::vector<char> vIsCovered(m_vPoints.size(), false);
    std::size_t numUncovered = m_avCorners[0].size();
    std::size_t num = 0;
    for (std::size_t i = 0; i < vTets.size(); ++i) {
        const std::uint32_t tet = vTets[i];
        vIsAdded[tet] = true;
        ++num;
        for (std::size_t k = 4 * std::size_t{tet}; k < 4 * std::size_t{tet} + 4; ++k) {
            char& bCovered = vIsCovered[m_avCorners[3][k]];
            numUncovered -= !bCovered;
            bCovered = true;
            const std::uint32_t beyond = m_vNeighbors[k];
            if (beyond != NO_INDEX && vIsAdded[beyond])
                num -= sets.join({tet, beyond});
        }
        const double alpha = m_vValues[vTetRanks[tet]];
        const bool bLast = i + 1 == vTets.size() || m_vValues[vTetRanks[vTets[i + 1]]] != alpha;
        if (bLast && numUncovered == 0 && num <= numComponents)
            return alpha;
    }
    return std::numeric_limits<double>::infinity();
}

// With alpha falling, tetrahedra leave the complex and become parts of the space around it, which triangles
// that leave join; the space beyond the hull was there before all. Where two parts are joined, the one that
// is there for the shorter time ends: with alpha rising, that is the birth of a void.
std::vector<AlphaVoid3> AlphaComplex::voids() const
{
    DisjointSets parts(getNumSimplices(3) + 1);
    std::vector<std::uint32_t> vDeaths = m_avRanks[3]; // of each part, by the element that stands for it
    vDeaths.push_back(NO_INDEX);
    const std::vector<std::uint32_t> vTriangles = sortByRank(m_avRanks[2], m_vValues.size());
    std::vector<AlphaVoid3> vVoids;
    for (auto it = vTriangles.rbegin(); it != vTriangles.rend(); ++it) {
        const std::array<std::uint32_t, 2> sides = getSides(*it);
        const std::uint32_t death0 = vDeaths[parts.find(sides[0])];
        const std::uint32_t death1 = vDeaths[parts.find(sides[1])];
        if (!parts.join(sides))
            continue;
        vDeaths[parts.find(sides[0])] = std::max(death0, death1);
        const AlphaVoid3 ending = {m_avRanks[2][*it], std::min(death0, death1)};
        if (ending.birth < ending.death)
            vVoids.push_back(ending);
    }
    std::sort(vVoids.begin(), vVoids.end(), [](const AlphaVoid3& a, const AlphaVoid3& b) {
        return a.death != b.death ? a.death > b.death : a.birth < b.birth;
    });
    return vVoids;
}

double AlphaComplex::enclosingAlpha() const
{
    constexpr double LEAST_RATIO = 4.0;
    const std::vector<AlphaVoid3> vVoids = voids();
    const auto getRatio = [this](const AlphaVoid3& v) { return m_vValues[v.death] / m_vValues[v.birth]; };
    double greatest = LEAST_RATIO * LEAST_RATIO;
    for (const AlphaVoid3& v : vVoids)
        greatest = std::fmax(greatest, getRatio(v));
    std::uint32_t rank = 0;
    for (const AlphaVoid3& v : vVoids)
        if (getRatio(v) >= std::sqrt(greatest))
            rank = std::max(rank, v.birth);
    return rank == 0 ? std::numeric_limits<double>::infinity() : m_vValues[rank];
}

} // namespace VORN3D
