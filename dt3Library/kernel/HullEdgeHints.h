// HullEdgeHints remembers, of hull edges with many tetrahedra around, which ones have the two hull facets.
//
// Growing across hull edges would else turn around them through all these tetrahedra: a thousand of them for
// each step along a segment whose points all see those of another one. A hint is only that: it may be
// outdated or have been overwritten, and is checked before use. Records of tetrahedra stay readable as long
// as their pool.
#pragma once

#include "vorn3d/Point3.h"
#include "vorn3d/Tet3.h"

#include <cstddef>
#include <vector>

namespace VORN3D
{

/// A facet of a tetrahedron on the hull.
struct HullFacet
{
    Tet3* pTet;
    int ici;
};

class HullEdgeHints
{
public:
    /// Takes note that pTet has a hull facet at the edge p, q.
    void remember(const Point3* p, const Point3* q, Tet3* pTet);

    /// The hull facet at the edge p, q beside a known one; with null if it is not remembered.
    HullFacet findOther(const Point3* p, const Point3* q, HullFacet known) const;

private:
    struct Hint
    {
        const Point3* apEnd[2];
        Tet3* apTet[2];
    };

    static Hint makeHint(const Point3* p, const Point3* q);
    static bool haveSameEnds(const Hint& a, const Hint& b);
    std::size_t getIndex(const Hint& hint) const;
    void grow();

    // Each hint has one place, which others overwrite. Empty, or of a power of two's size.
    std::vector<Hint> m_vHints;
    std::size_t m_numUsed = 0;
};

} // namespace VORN3D
