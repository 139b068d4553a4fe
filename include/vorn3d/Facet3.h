#pragma once

#include "Export.h"

namespace VORN3D
{

class Edge3;
class Tet3;

/// A facet of the mesh, named from one of its tetrahedra by the corner opposite it. A value; owns nothing and
/// is valid as long as its tetrahedron, that is until the next insertion.
class VORN3D_EXPORT Facet3
{
public:
    /// The facet of pTet opposite corner opp3 (0 to 3); nothing is checked.
    Facet3(Tet3* pTet, int opp3) : m_pTet(pTet), m_opp3(opp3) {}

    /// The tetrahedron from which the facet is named.
    Tet3* getTet() const { return m_pTet; }
    /// The index of the corner opposite the facet.
    int getOpp3Index() const { return m_opp3; }

    /// The ith (0 to 2) corner index of the facet. In this order the corners appear counter-clockwise from
    /// the opposite corner, that is from inside the tetrahedron. Another ith aborts in the diagnostic
    /// configuration and is undefined in the release configuration.
    int getIntraTetIndex(int ith) const;

    /// The edge of the facet that does not contain the facet's ith (0 to 2) corner.
    Edge3 getEdge(int ith) const;

    /// True if both name the same facet, be it from the same tetrahedron or from the two sides.
    bool operator==(const Facet3& other) const;
    /// The opposite of ==.
    bool operator!=(const Facet3& other) const { return !(*this == other); }

private:
    Tet3* m_pTet;
    int m_opp3;
};

} // namespace VORN3D
