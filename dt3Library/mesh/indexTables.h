// The local index conventions of a tetrahedron, as tables with proofs of their rules.
//
//              3            Corner i lies opposite facet i.
//            . | .          Positive orientation: corners 0, 1, 2 appear counter-clockwise from
//          .   |   .        corner 3 (here corner 1 is in front).
//        0 - - | - - 2
//          .   |   .
//            . | .
//              1
#pragma once

namespace VORN3D
{

/// A facet's corners in the sense in which they appear counter-clockwise from the opposite corner: the order
/// of the per-facet orientation test. Followed by the facet's own index, an even permutation of (0, 1, 2, 3).
constexpr int INWARD_FACET[4][3] = {{1, 3, 2}, {0, 2, 3}, {0, 3, 1}, {0, 1, 2}};

/// The same corners in the reverse sense, counter-clockwise from outside: an odd permutation.
constexpr int OUTWARD_FACET[4][3] = {{1, 2, 3}, {0, 3, 2}, {0, 1, 3}, {0, 2, 1}};

/// The edges (source, target) of each facet, running around it in the inward sense; entry 3 * facet + j.
constexpr int FACET_EDGE[12][2] = {{1, 3}, {3, 2}, {2, 1}, {0, 2}, {2, 3}, {3, 0},
                                   {0, 3}, {3, 1}, {1, 0}, {0, 1}, {1, 2}, {2, 0}};

/// Source and target corner of the edge named by (opp3, opp2); -99 marks the invalid diagonal.
constexpr int EDGE_SOURCE[4][4] = {{-99, 2, 3, 1}, {3, -99, 0, 2}, {1, 3, -99, 0}, {2, 0, 1, -99}};
constexpr int EDGE_TARGET[4][4] = {{-99, 3, 1, 2}, {2, -99, 3, 0}, {3, 0, -99, 1}, {1, 2, 0, -99}};

constexpr bool isEvenPermutation(int a, int b, int c, int d)
{
    const int aIndex[4] = {a, b, c, d};
    int numInversions = 0;
    for (int i = 0; i < 4; ++i)
        for (int j = i + 1; j < 4; ++j)
            if (aIndex[i] > aIndex[j])
                ++numInversions;
    return numInversions % 2 == 0;
}

constexpr bool areFacetTablesConsistent()
{
    for (int i = 0; i < 4; ++i) {
        const int(&in)[3] = INWARD_FACET[i];
        const int(&out)[3] = OUTWARD_FACET[i];
        if (!isEvenPermutation(in[0], in[1], in[2], i) || isEvenPermutation(out[0], out[1], out[2], i))
            return false;
        for (int j = 0; j < 3; ++j) {
            const int(&edge)[2] = FACET_EDGE[3 * i + j];
            if (edge[0] != in[j] || edge[1] != in[(j + 1) % 3])
                return false;
        }
    }
    return true;
}

constexpr bool areEdgeTablesConsistent()
{
    for (int opp3 = 0; opp3 < 4; ++opp3)
        for (int opp2 = 0; opp2 < 4; ++opp2)
            if (opp3 != opp2 &&
                (!isEvenPermutation(EDGE_TARGET[opp3][opp2], EDGE_SOURCE[opp3][opp2], opp2, opp3) ||
                 EDGE_SOURCE[opp3][opp2] != EDGE_TARGET[opp2][opp3]))
                return false;
    return true;
}

static_assert(areFacetTablesConsistent(), "orientation of the facets and of their edges");
static_assert(areEdgeTablesConsistent(), "orientation of the edges; swapping opp3 and opp2 reverses an edge");

} // namespace VORN3D
