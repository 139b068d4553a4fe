// The Voronoi diagram as the dual of a mesh: which corners its faces have is exact, where they are is a
// double.
#pragma once

#include "vectors.h"
#include "vorn3d/MeshArrays.h"
#include "vorn3d/Vorn_3D.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

/// The face between the cells of two sites. Its corners follow each other counter-clockwise as seen from the
/// second site; seen from the first cell's inside they run clockwise.
struct VoronoiFace
{
    std::uint32_t first;
    std::uint32_t second;
    const std::vector<std::uint32_t>& vCorners;
};

/// Corners are numbered from 0: first the centres of the empty spheres of four vertices or more, then the
/// points at infinity, one for each facet of the hull's polyhedron, in the direction of its normal.
///
/// Tetrahedra with a common sphere fill the convex hull of the vertices on it, so they hang together by
/// facets, and exact tests of neighbours find all of them. A Delaunay edge has a dual face of positive area
/// iff at least three different corners surround it: the facets at the edge turn strictly, each separates two
/// corners or none, and the sides of the face are perpendicular to them. With two corners, of which one may
/// be at infinity, the face is a segment or a ray.
class VoronoiDual
{
public:
    /// The handles must outlive this.
    VoronoiDual(const Vorn_3D& dt, const std::vector<Point3*>& vHandles);

    std::uint32_t getNumFiniteCorners() const { return static_cast<std::uint32_t>(m_vCenters.size()); }
    bool isFinite(std::uint32_t corner) const { return corner < getNumFiniteCorners(); }

    /// From a site to a finite corner.
    Vec getVector(std::uint32_t site, std::uint32_t corner) const
    {
        const Center& center = m_vCenters[corner];
        return getDifference(site, center.anchor) + center.local;
    }

    /// From a site to another one.
    Vec getDifference(std::uint32_t site, std::uint32_t other) const
    {
        return VORN3D::getVector(*m_vHandles[site], *m_vHandles[other]);
    }

    /// A site at a finite corner.
    const Point3& getAnchor(std::uint32_t corner) const { return *m_vHandles[m_vCenters[corner].anchor]; }

    /// Where a finite corner is.
    std::array<double, 3> getPosition(std::uint32_t corner) const;

    /// The unit vectors to the points at infinity.
    const std::vector<std::array<double, 3>>& getDirections() const { return m_vDirections; }

    /// Calls use(VoronoiFace) once for each face of positive area.
    template <class Use>
    void forEachFace(const Use& use) const
    {
        std::vector<std::uint8_t> vDoneEdges(m_mesh.vCorners.size() / 4, 0);
        std::vector<std::uint32_t> vCorners;
        for (std::uint32_t tet = 0; tet < vDoneEdges.size(); ++tet)
            for (std::size_t edge = 0; edge < 6; ++edge) {
                if ((vDoneEdges[tet] >> edge & 1) != 0)
                    continue;
                const RingTet start = getRingTet(tet, edge);
                collectCorners(start, vDoneEdges, vCorners);
                if (vCorners.size() >= 3)
                    use(VoronoiFace{getVertex(start, 0), getVertex(start, 1), vCorners});
            }
    }

private:
    /// The centre of a sphere, from a vertex on it.
    struct Center
    {
        Vec local;
        std::uint32_t anchor;
    };

    /// A tetrahedron of the ring around an edge: its corners in a positive order that begins with the ends of
    /// the edge. Around the edge it reaches from the third to the fourth, and there follows its neighbour
    /// opposite the third.
    struct RingTet
    {
        std::uint32_t tet;
        std::array<std::uint8_t, 4> order;
    };

    static RingTet getRingTet(std::uint32_t tet, std::size_t edge);
    static RingTet getReversed(const RingTet& place);
    std::uint32_t getVertex(const RingTet& place, std::size_t i) const
    {
        return m_mesh.vCorners[4 * std::size_t{place.tet} + place.order[i]];
    }
    bool step(RingTet& place) const;

    void joinCospherical();
    void findCenters();
    void findDirections();
    std::uint32_t getCornerAtInfinity(const RingTet& place) const;
    void collectCorners(const RingTet& start, std::vector<std::uint8_t>& vDoneEdges,
                        std::vector<std::uint32_t>& vCorners) const;
    bool followRing(RingTet& place, std::vector<std::uint8_t>& vDoneEdges,
                    std::vector<std::uint32_t>& vCorners) const;

    const std::vector<Point3*>& m_vHandles;
    MeshArrays m_mesh;
    std::vector<std::uint32_t> m_vCornerOfTet;
    std::vector<Center> m_vCenters;
    std::vector<std::size_t> m_vHullSlots; // ascending: where m_mesh.vNeighbors has no neighbour
    std::vector<std::uint32_t> m_vFacetOfHullSlot;
    std::vector<std::array<double, 3>> m_vDirections;
};

} // namespace VORN3D
