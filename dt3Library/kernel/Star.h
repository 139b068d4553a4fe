// Star joins a new vertex to the facets of its cavity.
//
// The facets are listed first, in the order in which the cavity is found, which is that of the tetrahedra to
// be made and so part of the result; those seen from outside the hull come before the others. Then room is
// made, which may fail and changes nothing in the mesh; then the tetrahedra are made and linked, which
// cannot. The lists keep their memory from one insertion to the next.
#pragma once

#include "kernel/EdgeMatrix.h"
#include "kernel/FacetHash.h"
#include "kernel/StarFacet.h"
#include "kernel/StarNumbers.h"
#include "kernel/TetStore.h"
#include "nalo_tools/ScratchList.h"
#include "predicates/NaloTest3.h"
#include "vorn3d/Point3.h"
#include "vorn3d/Tet3.h"

#include <cstddef>
#include <cstdint>

namespace VORN3D
{

class Star
{
public:
    void clear();

    ScratchList<StarFacet>& getFacets() { return m_vFacets; }

    /// To be called when all facets seen from outside are listed, and no other.
    void endVisibleFacets() { m_numVisible = m_vFacets.size(); }

    /// Takes a record for each facet.
    void makeRoom(TetStore& tets);

    /// Makes the tetrahedra and links them with each other and with those beyond the facets. A facet that the
    /// vertex is not on the inner side of is reported. Returns the number of new facets that stay without a
    /// neighbour, which are on the new hull.
    std::size_t join(Point3* pVtx, const NaloTest3& predicates);

    /// In the order of the facets.
    ScratchList<Tet3*>& getTets() { return m_vTets; }

    /// The last tetrahedron made on a facet seen from outside, if there is one, else the last one.
    Tet3* getLastTet() { return m_vTets[(m_numVisible > 0 ? m_numVisible : m_vTets.size()) - 1]; }

private:
    bool isModerate() const { return m_vFacets.size() <= EdgeMatrix::MAX_FACETS; }

    template <class Edges>
    void make(Point3* pVtx, const NaloTest3& predicates, Edges& edges);
    static void linkBeyond(Tet3* pNewTet, StarFacet facet);
    template <class Edges>
    std::size_t link(Edges& edges);

    ScratchList<StarFacet> m_vFacets;
    std::size_t m_numVisible = 0;
    ScratchList<Tet3*> m_vTets;
    ScratchList<std::uint32_t> m_vSlots; // where each tetrahedron's partners at facets 1 to 3 are found
    StarNumbers m_numbers;
    EdgeMatrix m_edgeMatrix;
    FacetHash m_facetHash;
};

/// Checks that a tetrahedron with these corners may be made: a negative orientation is an error, a flat
/// tetrahedron is reported.
void checkOrientation(const Point3* a, const Point3* b, const Point3* c, const Point3* d,
                      const NaloTest3& predicates);

} // namespace VORN3D
