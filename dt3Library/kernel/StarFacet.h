// StarFacet is a facet on which the new vertex gets a tetrahedron: one of a doomed tetrahedron or, if it is
// seen from outside, of one that stays. The new tetrahedron's neighbour there is the one beyond, null on the
// hull, or the one that stays.
#pragma once

#include "kernel/TaggedTet.h"
#include "vorn3d/Tet3.h"

namespace VORN3D
{

class StarFacet
{
public:
    StarFacet() = default;

    /// The orientation is certain if the facet has been found to face the vertex.
    StarFacet(const Tet3* pTet, int ici, bool bFromOutside, bool bOrientationCertain)
        : m_tet(pTet,
                static_cast<unsigned>(ici) | unsigned{bFromOutside} << 2 | unsigned{bOrientationCertain} << 3)
    {
    }

    Tet3* getTet() const { return m_tet.getTet(); }
    int getIndex() const { return static_cast<int>(m_tet.getTag() & 3); }
    bool isFromOutside() const { return (m_tet.getTag() & 4) != 0; }
    bool isOrientationCertain() const { return (m_tet.getTag() & 8) != 0; }

private:
    TaggedTet m_tet;
};

} // namespace VORN3D
