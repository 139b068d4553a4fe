// HullEdgeHints remembers, of hull edges with many tetrahedra around, which ones have the two hull facets.
//
// Growing across hull edges would else turn around them through all these tetrahedra: a thousand of them for
// each step along a segment whose points all see those of another one. A hint is only that: it may be
// outdated, and is checked before use. Records of tetrahedra stay readable as long as their pool is not
// rewound.
#pragma once

#include "kernel/EdgeKey.h"
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
    /// To be called when the records are made anew.
    void clear()
    {
        m_vHints.clear();
        m_numUsed = 0;
    }

    /// Takes note that pTet has a hull facet at the edge.
    void remember(const EdgeKey& edge, Tet3* pTet);

    /// The hull facet at the edge beside a known one; with null if it is not remembered.
    HullFacet findOther(const EdgeKey& edge, HullFacet known) const;

private:
    struct Hint
    {
        EdgeKey edge;
        Tet3* apTet[2] = {nullptr, nullptr};
    };

    static bool isOutdated(const Hint& hint);
    static std::size_t findPlace(const std::vector<Hint>& vHints, const EdgeKey& edge);
    void grow();

    // Open addressing with linear probing. Empty, or of a power of two's size and at most half used.
    std::vector<Hint> m_vHints;
    std::size_t m_numUsed = 0;
};

} // namespace VORN3D
