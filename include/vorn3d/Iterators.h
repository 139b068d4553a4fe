#pragma once

#include "Edge3.h"
#include "Export.h"

namespace VORN3D
{

class Tet3;

/// Turns around an edge, from tetrahedron to tetrahedron, counter-clockwise as seen from the edge's source.
///
/// Each step leaves the current tetrahedron across the facet opposite its opp2 corner, in constant time.
/// Around an edge inside the hull the iterator comes back to its start; around an edge on the hull
/// nextIsNull() becomes true at the hull. An iterator made of the same edge with opp3 and opp2 exchanged
/// turns the other way.
///
///     TetAroundEdgeIterator it(edge);
///     const TetAroundEdgeIterator start(it);
///     do
///         use(*it);
///     while (!it.nextIsNull() && ++it != start);
///
/// A value; owns nothing and is valid until the next insertion.
class VORN3D_EXPORT TetAroundEdgeIterator
{
public:
    /// Starts at the tetrahedron from which the edge is named.
    TetAroundEdgeIterator(const Edge3& edge);

    /// Copies position and payload, but not the payload's index.
    TetAroundEdgeIterator(const TetAroundEdgeIterator& other);
    /// Copies everything, the payload's index included (unlike the copy constructor).
    TetAroundEdgeIterator& operator=(const TetAroundEdgeIterator& other) = default;

    /// Turns to the next tetrahedron; must not be called when nextIsNull().
    TetAroundEdgeIterator& operator++();

    /// True if the next facet around the edge is on the hull.
    bool nextIsNull() const;

    /// The next tetrahedron, or null.
    Tet3* previewNextTet() const;

    /// The current tetrahedron.
    Tet3* operator*() const;

    /// The edge as named from the current tetrahedron; in a mesh its direction stays the same.
    Edge3 getEdge() const { return m_edge; }
    /// The corner of the current tetrahedron opposite the facet that the last step crossed; at the start,
    /// that of the edge.
    int getOpp3Index() const { return m_edge.getOpp3Index(); }
    /// The corner of the current tetrahedron opposite the facet that the next step crosses.
    int getOpp2Index() const { return m_edge.getOpp2Index(); }

    /// Equal when at the same tetrahedron of the same edge.
    bool operator==(const TetAroundEdgeIterator& other) const;
    /// The opposite of ==.
    bool operator!=(const TetAroundEdgeIterator& other) const { return !(*this == other); }

    /// A slot for the caller, which the iterator never looks at. It can be set once and must be set before it
    /// is read; anything else aborts in the diagnostic configuration and is not noticed in the release
    /// configuration.
    void setPayload(Tet3* pTet);
    /// What setPayload() was given.
    Tet3* getPayload() const;
    /// A second slot, for an index other than -1, under the same rules.
    void setPayloadICI(int ici);
    /// What setPayloadICI() was given.
    int getPayloadICI() const;

    /// Prints the current edge on standard output.
    void debug() const;

private:
    Edge3 m_edge;
    Tet3* storedPayload;
    int storedPayloadICI;
};

} // namespace VORN3D
