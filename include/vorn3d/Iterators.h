#pragma once

#include "Edge3.h"
#include "Export.h"

namespace VORN3D
{

class Tet3;

/// Turns around an edge, from tetrahedron to tetrahedron, always in the same sense.
///
/// Each step leaves the current tetrahedron across the facet opposite its opp2 corner. Around an edge inside
/// the hull the iterator comes back to its start; around an edge on the hull nextIsNull() becomes true at the
/// hull.
///
///     TetAroundEdgeIterator it(edge);
///     const TetAroundEdgeIterator start(it);
///     do
///         use(*it);
///     while (!it.nextIsNull() && ++it != start);
class VORN3D_EXPORT TetAroundEdgeIterator
{
public:
    explicit TetAroundEdgeIterator(const Edge3& edge);

    /// Copies position and payload, but not the payload's index.
    TetAroundEdgeIterator(const TetAroundEdgeIterator& other);
    TetAroundEdgeIterator& operator=(const TetAroundEdgeIterator& other) = default;

    /// Turns to the next tetrahedron; must not be called when nextIsNull().
    TetAroundEdgeIterator& operator++();

    /// True if the next facet around the edge is on the hull.
    bool nextIsNull() const;

    /// The next tetrahedron, or null.
    Tet3* previewNextTet() const;

    /// The current tetrahedron.
    Tet3* operator*() const;

    /// The edge as named from the current tetrahedron; its direction may change from step to step.
    Edge3 getEdge() const { return m_edge; }
    int getOpp3Index() const { return m_edge.getOpp3Index(); }
    int getOpp2Index() const { return m_edge.getOpp2Index(); }

    /// Equal when at the same tetrahedron of the same edge.
    bool operator==(const TetAroundEdgeIterator& other) const;
    bool operator!=(const TetAroundEdgeIterator& other) const { return !(*this == other); }

    /// Two slots for the caller; each can be set once and must be set before it is read.
    void setPayload(Tet3* pTet);
    Tet3* getPayload() const;
    void setPayloadICI(int ici);
    int getPayloadICI() const;

    /// Prints the current edge on standard output.
    void debug() const;

private:
    Edge3 m_edge;
    Tet3* storedPayload;
    int storedPayloadICI;
};

} // namespace VORN3D
