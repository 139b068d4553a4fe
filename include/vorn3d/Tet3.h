#pragma once

#include "Export.h"
#include "Point3.h"

#include <cstdint>
#include <iosfwd>
#include <utility>

namespace VORN3D
{

class Edge3;
class Facet3;

/// A tetrahedron of the mesh: four corner vertices and the four neighbouring tetrahedra.
///
/// Conventions, valid throughout the library (docs/conventions.md has drawings):
///  - Corners are numbered 0 to 3 (the intra-tetrahedron index). Neighbour i lies across the facet opposite
///    corner i and is null where that facet is on the convex hull.
///  - A facet is named by the corner opposite it ("opp3"), an edge by the two corners not on it ("opp3" and
///    "opp2") or by its two ends (source and target).
///  - Every tetrahedron of a triangulation is positively oriented: corners 0, 1, 2 appear counter-clockwise
///    from corner 3, that is (c1 - c0) x (c2 - c0) . (c3 - c0) > 0.
///
/// Clients get pointers to tetrahedra from a triangulation, which owns them; a pointer is valid until the
/// next insertion. An index outside 0 to 3 is an error: it aborts in the diagnostic configuration and is
/// undefined in the release configuration. All members take constant time. The members that build a mesh
/// (setProperties(), setCorner(), setOppTet() and what they need) are for the triangulation alone; clients
/// have no reason to call them.
class VORN3D_EXPORT Tet3
{
public:
    // The record's alignment stands at its first member: before the class's name g++ 12 takes no alignas
    // beside the mark for export.
    /// The kernel's mark on tetrahedra that an insertion has removed; false on every tetrahedron of the mesh.
    alignas(16) bool hasBeenVisited;

    /// A record outside any mesh. A triangulation takes its records from a pool instead and fills them with
    /// setProperties().
    Tet3();
    ~Tet3() = default;
    Tet3& operator=(const Tet3&) = delete;

    /// Makes this record the tetrahedron of four vertices (not null): takes the next running ID, clears
    /// neighbours, mark and custom index, and becomes the incident tetrahedron of all four vertices.
    void setProperties(Point3* pI, Point3* pJ, Point3* pK, Point3* pL);

    /// Corner ith (0 to 3).
    Point3* getCorner(int ith) const;

    /// Replaces a corner; the vertex's link to its incident tetrahedron stays as it is.
    void setCorner(int ith, Point3* p);

    /// All four corners at once.
    void getCorners(Point3*& p0, Point3*& p1, Point3*& p2, Point3*& p3) const
    {
        p0 = aVertexPointer[0];
        p1 = aVertexPointer[1];
        p2 = aVertexPointer[2];
        p3 = aVertexPointer[3];
    }

    /// The neighbour across the facet opposite corner ith; null on the hull.
    Tet3* getOppTet(int ith) const;

    /// All four neighbours at once; null on the hull.
    void getOppTets(Tet3*& p0, Tet3*& p1, Tet3*& p2, Tet3*& p3) const
    {
        p0 = aOppTet[0];
        p1 = aOppTet[1];
        p2 = aOppTet[2];
        p3 = aOppTet[3];
    }

    /// The neighbour across the facet opposite the corner pp, which must be a corner of this tetrahedron.
    Tet3* getOppTet(const Point3* pp) const;

    /// Sets one side of a neighbour link (null clears it); the caller sets the other side.
    void setOppTet(int ith, Tet3* pC);

    /// The index of a corner, which must be one of this tetrahedron's (compared by address): another vertex
    /// aborts in the diagnostic configuration and gives 3 in the release configuration.
    int getIntraTetIndex(const Point3* pp) const;

    /// The index of a neighbour. A tetrahedron that is no neighbour means a corrupted mesh: the process ends
    /// with exit status 1 after a message.
    int getIntraTetIndex(const Tet3* pNeighbor) const;

    /// The index under which neighbour ith, which must exist, sees this tetrahedron.
    int getIntraTetIndexInOppTet(int ith) const;

    /// The same, given the neighbour pOther that sees this tetrahedron across its facet ith, found from the
    /// corners alone: for use before the links between the two exist.
    int getIntraTetIndexInOppTetForReg(const Tet3* pOther, int ith) const;

    /// The vertex across facet ith, the corner of the neighbour that is not shared. On the hull the result is
    /// null if bNullAllowed, else the process ends with exit status 1 after a message.
    Point3* getOppVtxInOppTet(int ith, bool bNullAllowed) const;

    /// The corners of the facet opposite corner opp3. Followed by opp3 they are an odd permutation of
    /// (0, 1, 2, 3): seen from outside a positively oriented tetrahedron they appear counter-clockwise.
    void getFacetIndices(int opp3, int& i0, int& i1, int& i2) const;

    /// Source and target of the j-th edge (0 to 2) of the facet opposite opp3, in the sense opposite to
    /// getFacetIndices(). The lookup is not checked: in the flat table, 3 is the next facet's first edge.
    static std::pair<int, int> getEdgeIndices(int opp3, int j);

    /// The facet opposite corner ith.
    Facet3 getFacet(int ith);

    /// The edge that contains neither of two different corners.
    Edge3 getEdge(int opp3ICI, int opp2ICI);

    /// True if p is one of the corners (by address).
    bool hasVertex(const Point3* p) const;

    /// True if a corner has exactly the coordinates of p.
    bool hasVertex(const Point3& p) const;

    /// The client's own number for this tetrahedron; -1 unless set. It goes with the tetrahedron: an
    /// insertion that replaces the tetrahedron loses it.
    int getCustomIndex() const { return customIndex; }
    /// Sets the client's own number, which may be any.
    void setCustomIndex(int index) { customIndex = index; }

    /// The centre of the circumscribed sphere, in floating-point arithmetic: see VORN3D::getCircumcenter().
    /// These centres are the corners of the Voronoi diagram.
    Point3 getCircumcenter() const;

    /// Checks that facet i0 of pT0 and facet i1 of pT1 have the same three vertices. Returns true; anything
    /// else means a corrupted mesh and ends the process with exit status 1 after a message.
    static bool haveCommonFacet(const Tet3* pT0, int i0, const Tet3* pT1, int i1);

    /// -1 on the hull. Not implemented for inner facets: prints so and returns 0.
    int debug_getOppTetIndex(int ith) const;

private:
    friend class Dt3;
    friend class ConflictTest;
    friend class Star;
    friend VORN3D_EXPORT std::ostream& operator<<(std::ostream& os, const Tet3& tet);

    Tet3(const Tet3& other);

    void fill(int label, Point3* pI, Point3* pJ, Point3* pK, Point3* pL)
    {
        hasBeenVisited = false;
        ID = label;
        setCornerAndLink(0, pI);
        setCornerAndLink(1, pJ);
        setCornerAndLink(2, pK);
        setCornerAndLink(3, pL);
        customIndex = -1;
    }

    void setCornerAndLink(int ith, Point3* p)
    {
        aVertexPointer[ith] = p;
        p->setOneTet(this);
    }

    std::uintptr_t getSumOfCorners() const
    {
        std::uintptr_t sum = 0;
        for (const Point3* pCorner : aVertexPointer)
            sum += reinterpret_cast<std::uintptr_t>(pCorner);
        return sum;
    }

    // Without a branch on the index; the check that the link is mutual is one that never fails in a sound
    // mesh.
    int getIndexOfNeighbor(const Tet3* pNeighbor) const
    {
        const bool b1 = aOppTet[1] == pNeighbor;
        const bool b2 = aOppTet[2] == pNeighbor;
        const bool b3 = aOppTet[3] == pNeighbor;
        const int ici = (b1 | b3) + 2 * (b2 | b3);
        return aOppTet[ici] == pNeighbor ? ici : getIntraTetIndex(pNeighbor);
    }

    // The same for a corner, which must be one.
    int getIndexOfCorner(const Point3* pCorner) const
    {
        const bool b1 = aVertexPointer[1] == pCorner;
        const bool b2 = aVertexPointer[2] == pCorner;
        const bool b3 = aVertexPointer[3] == pCorner;
        return (b1 | b3) + 2 * (b2 | b3);
    }

    // While a vertex outside the hull is inserted: the facets that it sees.
    std::uint8_t m_seenFacets;
    int ID;
    Point3* aVertexPointer[4];
    Tet3* aOppTet[4];
    int customIndex;
};

static_assert(sizeof(void*) != 8 || sizeof(Tet3) == 80, "the record of the tetrahedron pool");

/// ID, address, mark, orientation, corners and neighbours, one line each.
VORN3D_EXPORT std::ostream& operator<<(std::ostream& os, const Tet3& tet);

} // namespace VORN3D
