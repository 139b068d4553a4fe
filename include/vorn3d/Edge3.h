#pragma once

#include "Export.h"

#include <iosfwd>

namespace VORN3D
{

class Point3;
class Tet3;

/// A directed edge of the mesh, named from one of its tetrahedra by the two corners not on it.
///
/// The first of them, opp3, is also the name of a facet that contains the edge; the second, opp2, is the
/// corner of that facet off the edge. In a positively oriented tetrahedron (target, source, opp2, opp3) are
/// positively oriented; swapping opp3 and opp2 reverses the edge. A value; owns nothing and is valid as long
/// as its tetrahedron, that is until the next insertion.
class VORN3D_EXPORT Edge3
{
public:
    /// The edge of pTet (not null) that contains neither of two different corners (0 to 3). Other indices
    /// abort in the diagnostic configuration and are undefined in the release configuration.
    Edge3(Tet3* pTet, int opp3ICI, int opp2ICI);

    /// The tetrahedron from which the edge is named.
    Tet3* getTet() const { return m_pTet; }
    /// The first of the two corner indices given.
    int getOpp3Index() const { return m_opp3ICI; }
    /// The second of the two corner indices given.
    int getOpp2Index() const { return m_opp2ICI; }

    /// Corner index of the source; -99 for an invalid pair of indices.
    int getSourceIndex() const;
    /// Corner index of the target; -99 for an invalid pair of indices.
    int getTargetIndex() const;

    /// The vertex in which the edge begins.
    Point3* getSourceVtx() const;
    /// The vertex in which the edge ends.
    Point3* getTargetVtx() const;

    /// An order by the addresses of the two ends, whatever the direction and the tetrahedron: a set of edges
    /// holds each edge of the mesh once. It may differ from run to run.
    bool operator<(const Edge3& other) const;

    /// True if both have the same ends, in either direction and seen from any tetrahedron.
    bool operator==(const Edge3& other) const;
    /// The opposite of ==.
    bool operator!=(const Edge3& other) const { return !(*this == other); }

private:
    friend VORN3D_EXPORT std::ostream& operator<<(std::ostream& os, const Edge3& edge);

    Tet3* m_pTet;
    int m_opp3ICI;
    int m_opp2ICI;
    Point3* m_pLow;
    Point3* m_pHigh;
};

/// The tetrahedron's address and the four corners with their roles, one line each.
VORN3D_EXPORT std::ostream& operator<<(std::ostream& os, const Edge3& edge);

} // namespace VORN3D
