// In which order vertices enter the mesh, and where the walk to each of them starts.
//
// A sequence is asked for vertex after vertex. It is told when walks turn out long, and may then change what
// comes.
#pragma once

#include "vorn3d/Point3.h"
#include "vorn3d/Tet3.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

/// The vertices of a curve from coarse to fine: medians of halves, then runs of about 16. Each walk starts
/// where the last insertion ended.
class CoarseToFine
{
public:
    /// The vertices are given along the curve. The argument must stay.
    explicit CoarseToFine(const std::vector<Point3*>& vVertices);

    std::size_t size() const { return m_vOrder.size(); }
    Point3* getVertex(std::size_t k) const { return m_vVertices[m_vOrder[k]]; }
    Tet3* getStart(std::size_t /*k*/, Tet3* pLastTet) const { return pLastTet; }

    /// What is near on the curve is far in space, as in a long thin box: the vertices from number `k` on are
    /// taken from coarse to fine along another curve, made of cubes. O(n), once.
    void shortenWalks(std::size_t k);

private:
    const std::vector<Point3*>& m_vVertices;
    std::vector<std::uint32_t> m_vOrder; // positions in m_vVertices
    bool m_bOnFineCurve = false;
};

/// The vertices as they are given; some may be in the mesh already, and some may come several times.
class InGivenOrder
{
public:
    /// The argument must stay.
    explicit InGivenOrder(const std::vector<Point3*>& vVertices) : m_vVertices(vVertices) {}

    std::size_t size() const { return m_vVertices.size(); }
    Point3* getVertex(std::size_t k) const { return m_vVertices[k]; }

    /// For a vertex that is in the mesh one of its own; otherwise where the last insertion ended. Where walks
    /// turned out long, at the nearest of the vertices before that are next to this one on a fine curve.
    Tet3* getStart(std::size_t k, Tet3* pLastTet) const
    {
        if (Tet3* pTet = m_vVertices[k]->getOneTet())
            return pTet;
        return m_vNearEarlier.empty() ? pLastTet : getStartNearEarlier(k, pLastTet);
    }

    /// The order is not one of neighbours: from now on each walk has a start of its own. O(n), once.
    void shortenWalks(std::size_t k);

private:
    Tet3* getStartNearEarlier(std::size_t k, Tet3* pLastTet) const;

    const std::vector<Point3*>& m_vVertices;
    // For each vertex the number of the one to start from. Empty while walks are short.
    std::vector<std::uint32_t> m_vNearEarlier;
};

} // namespace VORN3D
