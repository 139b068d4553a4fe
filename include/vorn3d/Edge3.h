#pragma once

#include "Export.h"

#include <iosfwd>

namespace VORN3D
{

class Point3;
class Tet3;

/// A directed edge of the mesh, named from one of its tetrahedra by the two corners not on it. In a
/// positively oriented tetrahedron (target, source, opp2, opp3) are positively oriented; swapping opp3 and
/// opp2 reverses the edge. A value; owns nothing and is valid as long as its tetrahedron.
class VORN3D_EXPORT Edge3
{
public:
    /// Two different corner indices (0 to 3) of pTet.
    Edge3(Tet3* pTet, int opp3ICI, int opp2ICI);

    Tet3* getTet() const { return m_pTet; }
    int getOpp3Index() const { return m_opp3ICI; }
    int getOpp2Index() const { return m_opp2ICI; }

    /// Corner index of the source; -99 for an invalid pair of indices.
    int getSourceIndex() const;
    /// Corner index of the target; -99 for an invalid pair of indices.
    int getTargetIndex() const;

    Point3* getSourceVtx() const;
    Point3* getTargetVtx() const;

    /// An order by the addresses of the two ends, whatever the direction and the tetrahedron.
    bool operator<(const Edge3& other) const;

    /// True if both have the same ends, in either direction and seen from any tetrahedron.
    bool operator==(const Edge3& other) const;
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
