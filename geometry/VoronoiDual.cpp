#include "VoronoiDual.h"

#include "DisjointSets.h"
#include "circumcenter.h"
#include "cornerTables.h"
#include "hullSurfaceOfMesh.h"
#include "nalo_tools/assertion.h"
#include "predicates.h"
#include "unitNormal.h"

#include <algorithm>

namespace VORN3D
{

namespace
{

/// For each edge of a tetrahedron an even permutation of the corners that begins with its ends.
constexpr std::array<std::array<std::uint8_t, 4>, 6> EDGE_ORDERS = {
    {{0, 1, 2, 3}, {0, 2, 3, 1}, {0, 3, 1, 2}, {1, 2, 0, 3}, {1, 3, 2, 0}, {2, 3, 0, 1}}};

/// The number of the edge between two corners, of either order.
constexpr std::uint8_t EDGE_OF_ENDS[4][4] = {{6, 0, 1, 2}, {0, 6, 3, 4}, {1, 3, 6, 5}, {2, 4, 5, 6}};

void appendIfOther(std::vector<std::uint32_t>& vCorners, std::uint32_t corner)
{
    if (vCorners.empty() || vCorners.back() != corner)
        vCorners.push_back(corner);
}

std::array<double, 3> toArray(const Vec& v)
{
    return {v.x, v.y, v.z};
}

} // namespace

VoronoiDual::VoronoiDual(const Vorn_3D& dt, const std::vector<Point3*>& vHandles)
    : m_vHandles(vHandles), m_mesh(dt.getArrays(vHandles))
{
    for (const std::uint32_t corner : m_mesh.vCorners)
        VORN_REQUIRE_TEXT(corner != NO_INDEX, "handles of all vertices");
    joinCospherical();
    findCenters();
    findDirections();
}

/// Gives tetrahedra with a common sphere a common corner, named by the first of them.
void VoronoiDual::joinCospherical()
{
    const auto numTets = static_cast<std::uint32_t>(m_mesh.vCorners.size() / 4);
    DisjointSets sets(numTets); // each is named by its least tetrahedron
    std::array<const Point3*, 4> corners;
    for (std::uint32_t tet = 0; tet < numTets; ++tet) {
        for (std::size_t i = 0; i < 4; ++i)
            corners[i] = m_vHandles[m_mesh.vCorners[4 * std::size_t{tet} + i]];
        for (std::size_t i = 0; i < 4; ++i) {
            const std::uint32_t neighbor = m_mesh.vNeighbors[4 * std::size_t{tet} + i];
            if (neighbor == NO_INDEX || neighbor < tet)
                continue;
            const std::uint32_t opposite = m_mesh.vCorners[getFacetOfNeighbor(m_mesh, neighbor, tet)];
            if (isOnSphere(*corners[0], *corners[1], *corners[2], *corners[3], *m_vHandles[opposite]))
                sets.join({tet, neighbor});
        }
    }
    m_vCornerOfTet.resize(numTets);
    for (std::uint32_t tet = 0; tet < numTets; ++tet)
        m_vCornerOfTet[tet] = sets.find(tet);
}

/// Numbers the corners, and computes where they are.
void VoronoiDual::findCenters()
{
    for (std::uint32_t tet = 0; tet < m_vCornerOfTet.size(); ++tet) {
        const std::uint32_t name = m_vCornerOfTet[tet];
        if (name != tet) {
            m_vCornerOfTet[tet] = m_vCornerOfTet[name];
            continue;
        }
        m_vCornerOfTet[tet] = getNumFiniteCorners();
        std::array<Point3*, 4> corners;
        for (std::size_t i = 0; i < 4; ++i)
            corners[i] = m_vHandles[m_mesh.vCorners[4 * std::size_t{tet} + i]];
        const LocalFrame frame = makeFrame(corners);
        const Vec local =
            getCenterFromLast(frame, {corners[0]->getCoordinates(), corners[1]->getCoordinates(),
                                      corners[2]->getCoordinates(), corners[3]->getCoordinates()})
                .value();
        m_vCenters.push_back({frame.getUnscaled(local), m_mesh.vCorners[4 * std::size_t{tet} + 3]});
    }
}

/// Finds the facets of the hull's polyhedron, each with its normal from its first triangle.
void VoronoiDual::findDirections()
{
    const HullSurface surface = makeHullSurfaceOfMesh(m_mesh, m_vHandles);
    m_vFacetOfHullSlot = mergeCoplanarTriangles(surface, m_vHandles).vFacetOfTriangle;
    for (std::size_t i = 0; i < m_mesh.vNeighbors.size(); ++i)
        if (m_mesh.vNeighbors[i] == NO_INDEX)
            m_vHullSlots.push_back(i);

    for (std::size_t i = 0; i < surface.vTriangles.size(); ++i)
        if (m_vFacetOfHullSlot[i] == m_vDirections.size()) {
            const auto& [a, b, c] = surface.vTriangles[i];
            m_vDirections.push_back(toArray(getUnitNormal(*m_vHandles[a], *m_vHandles[b], *m_vHandles[c])));
        }
}

std::array<double, 3> VoronoiDual::getPosition(std::uint32_t corner) const
{
    const Center& center = m_vCenters[corner];
    const double* anchor = m_vHandles[center.anchor]->getCoordinates();
    return {anchor[0] + center.local.x, anchor[1] + center.local.y, anchor[2] + center.local.z};
}

VoronoiDual::RingTet VoronoiDual::getRingTet(std::uint32_t tet, std::size_t edge)
{
    return {tet, EDGE_ORDERS[edge]};
}

VoronoiDual::RingTet VoronoiDual::getReversed(const RingTet& place)
{
    return {place.tet, {place.order[1], place.order[0], place.order[3], place.order[2]}};
}

/// Goes on to the next tetrahedron around the edge. False, and no step, at the hull.
bool VoronoiDual::step(RingTet& place) const
{
    const std::uint32_t next = m_mesh.vNeighbors[4 * std::size_t{place.tet} + place.order[2]];
    if (next == NO_INDEX)
        return false;
    const std::uint32_t* pCorners = &m_mesh.vCorners[4 * std::size_t{next}];
    const auto find = [pCorners](std::uint32_t vertex) {
        return (pCorners[1] == vertex ? 1 : 0) + (pCorners[2] == vertex ? 2 : 0) +
               (pCorners[3] == vertex ? 3 : 0);
    };
    const int first = find(getVertex(place, 0));
    const int second = find(getVertex(place, 1));
    const int third = find(getVertex(place, 3));
    place = {next,
             {static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(second),
              static_cast<std::uint8_t>(third), static_cast<std::uint8_t>(6 - first - second - third)}};
    return true;
}

/// For a place where the next step would leave the hull.
std::uint32_t VoronoiDual::getCornerAtInfinity(const RingTet& place) const
{
    const std::size_t slot = 4 * std::size_t{place.tet} + place.order[2];
    const auto i = std::lower_bound(m_vHullSlots.begin(), m_vHullSlots.end(), slot) - m_vHullSlots.begin();
    return getNumFiniteCorners() + m_vFacetOfHullSlot[static_cast<std::size_t>(i)];
}

/// Appends the different corners from a place on, all around the edge or as far as the hull: false there, and
/// the last place is left.
bool VoronoiDual::followRing(RingTet& place, std::vector<std::uint8_t>& vDoneEdges,
                             std::vector<std::uint32_t>& vCorners) const
{
    const std::uint32_t first = place.tet;
    do {
        vDoneEdges[place.tet] |=
            static_cast<std::uint8_t>(1U << EDGE_OF_ENDS[place.order[0]][place.order[1]]);
        appendIfOther(vCorners, m_vCornerOfTet[place.tet]);
        if (!step(place))
            return false;
    } while (place.tet != first);
    return true;
}

/// Lists the different corners around an edge, counter-clockwise as its second end sees them.
void VoronoiDual::collectCorners(const RingTet& start, std::vector<std::uint8_t>& vDoneEdges,
                                 std::vector<std::uint32_t>& vCorners) const
{
    vCorners.clear();
    RingTet place = start;
    if (!followRing(place, vDoneEdges, vCorners)) {
        // The other way round are all of them, from this end of the ring to the other.
        vCorners.assign(1, getCornerAtInfinity(place));
        place = getReversed(place);
        followRing(place, vDoneEdges, vCorners);
        appendIfOther(vCorners, getCornerAtInfinity(place));
        std::reverse(vCorners.begin(), vCorners.end());
    }
    while (vCorners.size() > 1 && vCorners.front() == vCorners.back())
        vCorners.pop_back();
}

} // namespace VORN3D
