#include "vorn3d/geometry/MeshQuality.h"

#include "circumcenter.h"
#include "signedVolume.h"
#include "vertexStar.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace VORN3D
{

namespace
{

constexpr double DEGREES_PER_RADIAN = 57.29577951308232;

double getLength(const Vec& v)
{
    return std::sqrt(dot(v, v));
}

/// The same direction with coordinates of at most 1, so that products do not underflow.
Vec scaleUp(const Vec& v)
{
    const double extent = getExtent(v);
    return extent > 0.0 ? Vec{v.x / extent, v.y / extent, v.z / extent} : v;
}

/// Calls use(i, j) for the six pairs of corners, or of the facets opposite them.
template <class Use>
void forEachPair(const Use& use)
{
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = i + 1; j < 4; ++j)
            use(i, j);
}

/// Measures a tetrahedron in its frame.
class TetGauge
{
public:
    explicit TetGauge(const Tet3& tet) : m_tet(tet), m_corners(getCorners(tet)), m_frame(makeFrame(m_corners))
    {
    }

    TetQuality3 measure() const
    {
        TetQuality3 quality;
        const ScaledDouble sixfoldVolume =
            getSixfoldVolume(*m_corners[0], *m_corners[1], *m_corners[2], *m_corners[3]);
        quality.volume = getScaledBy(sixfoldVolume, 0) / 6.0;
        const auto [shortest, longest] = findEdges();
        quality.shortestEdge = std::ldexp(shortest, m_frame.getUnitExponent());
        quality.longestEdge = std::ldexp(longest, m_frame.getUnitExponent());
        quality.edgeRatio = longest / shortest;
        const double radius = getCircumradius();
        quality.radiusEdgeRatio = radius / shortest;
        const double volume = getScaledBy(sixfoldVolume, 3 * m_frame.getUnitExponent()) / 6.0;
        quality.volumeRatio = std::sqrt(72.0) * volume / (longest * longest * longest);
        quality.radiusRatio = 9.0 * volume / getSurface() / radius;
        measureAngles(quality);
        return quality;
    }

private:
    Vec getEdge(std::size_t from, std::size_t to) const
    {
        return m_frame.getVector(m_corners[from]->getCoordinates(), m_corners[to]->getCoordinates());
    }

    /// The shortest length and the longest.
    std::pair<double, double> findEdges() const
    {
        double shortest = HUGE_VAL;
        double longest = 0.0;
        forEachPair([&](std::size_t i, std::size_t j) {
            const double length = getLength(getEdge(i, j));
            shortest = std::min(shortest, length);
            longest = std::max(longest, length);
        });
        return {shortest, longest};
    }

    double getCircumradius() const
    {
        const std::optional<Vec> center =
            getCenterFromLast(m_frame, {m_corners[0]->getCoordinates(), m_corners[1]->getCoordinates(),
                                        m_corners[2]->getCoordinates(), m_corners[3]->getCoordinates()});
        return center ? getLength(*center) : HUGE_VAL;
    }

    /// Two sides of the facet opposite corner opp3; their cross product points outwards.
    std::pair<Vec, Vec> getSides(int opp3) const
    {
        int i0, i1, i2;
        m_tet.getFacetIndices(opp3, i0, i1, i2);
        const auto origin = static_cast<std::size_t>(i0);
        return {getEdge(origin, static_cast<std::size_t>(i1)), getEdge(origin, static_cast<std::size_t>(i2))};
    }

    double getSurface() const
    {
        double surface = 0.0;
        for (int i = 0; i < 4; ++i) {
            const auto [a, b] = getSides(i);
            surface += getLength(cross(a, b)) / 2.0;
        }
        return surface;
    }

    void measureAngles(TetQuality3& quality) const
    {
        std::array<Vec, 4> normals;
        for (int i = 0; i < 4; ++i) {
            const auto [a, b] = getSides(i);
            normals[static_cast<std::size_t>(i)] = scaleUp(cross(scaleUp(a), scaleUp(b)));
        }
        quality.leastAngle = 180.0;
        quality.greatestAngle = 0.0;
        forEachPair([&](std::size_t i, std::size_t j) {
            // Accurate for flat angles and for sharp ones too.
            const double angle =
                std::atan2(getLength(cross(normals[i], normals[j])), -dot(normals[i], normals[j])) *
                DEGREES_PER_RADIAN;
            quality.leastAngle = std::min(quality.leastAngle, angle);
            quality.greatestAngle = std::max(quality.greatestAngle, angle);
        });
    }

    const Tet3& m_tet;
    Corners m_corners;
    LocalFrame m_frame;
};

void include(MeshQuality::Range& range, double value, std::size_t numBefore)
{
    range.least = numBefore == 0 ? value : std::min(range.least, value);
    range.greatest = numBefore == 0 ? value : std::max(range.greatest, value);
    range.mean += (value - range.mean) / static_cast<double>(numBefore + 1);
}

} // namespace

TetQuality3 measureTet(const Tet3& tet)
{
    return TetGauge(tet).measure();
}

MeshQuality measureMesh(const Vorn_3D& dt)
{
    MeshQuality quality;
    if (!dt.is3D())
        return quality;
    std::vector<Tet3*> vTets;
    dt.getTetrahedra(vTets);
    for (const Tet3* pTet : vTets) {
        const TetQuality3 tet = measureTet(*pTet);
        quality.volume += tet.volume;
        include(quality.edgeRatio, tet.edgeRatio, quality.numTets);
        include(quality.radiusRatio, tet.radiusRatio, quality.numTets);
        include(quality.radiusEdgeRatio, tet.radiusEdgeRatio, quality.numTets);
        include(quality.leastAngle, tet.leastAngle, quality.numTets);
        include(quality.greatestAngle, tet.greatestAngle, quality.numTets);
        ++quality.numTets;
    }
    return quality;
}

} // namespace VORN3D
