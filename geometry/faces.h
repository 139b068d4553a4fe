// Faces of a tetrahedron, as sets of corner indices.
#pragma once

#include "vertexStar.h"
#include "vorn3d/Iterators.h"
#include "vorn3d/geometry/locateClosed.h"

namespace VORN3D
{

/// Bit i stands for corner i: one bit for a vertex, four for the whole tetrahedron.
using FaceMask = unsigned;
constexpr FaceMask WHOLE_TET = 0xF;

inline bool hasCorner(FaceMask face, int i)
{
    return (face >> i & 1) != 0;
}

inline int countCorners(FaceMask face)
{
    return __builtin_popcount(face);
}

inline LocationKind3 getKind(FaceMask face)
{
    return static_cast<LocationKind3>(countCorners(face) - 1);
}

/// All corner indices in the order of Location3::aIndex.
inline std::array<int, 4> orderCorners(const Tet3& tet, FaceMask face)
{
    std::array<int, 4> aIndex;
    if (countCorners(face) == 3) {
        aIndex[3] = __builtin_ctz(~face);
        tet.getFacetIndices(aIndex[3], aIndex[0], aIndex[1], aIndex[2]);
        return aIndex;
    }
    std::size_t next = 0;
    for (const bool bInFace : {true, false})
        for (int i = 0; i < 4; ++i)
            if (hasCorner(face, i) == bInFace)
                aIndex[next++] = i;
    return aIndex;
}

/// The face of the mesh that contains a point inside the hull.
inline FaceMask getFace(const Location3& location)
{
    FaceMask face = 0;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(location.kind); ++i)
        face |= 1u << location.aIndex[i];
    return face;
}

/// The same face as seen from another tetrahedron that has it.
inline FaceMask translateFace(const Tet3& from, FaceMask face, const Tet3& to)
{
    FaceMask translated = 0;
    for (int i = 0; i < 4; ++i)
        if (hasCorner(face, i))
            translated |= 1u << to.getIntraTetIndex(from.getCorner(i));
    return translated;
}

/// The first tetrahedron around the edge of tet, turning both ways from it, that `isWanted`; or null.
template <class IsWanted>
Tet3* findTetAroundEdge(Tet3& tet, FaceMask edge, const IsWanted& isWanted)
{
    const std::array<int, 4> aIndex = orderCorners(tet, edge);
    for (const auto& [opp3, opp2] : {std::pair(aIndex[2], aIndex[3]), std::pair(aIndex[3], aIndex[2])}) {
        TetAroundEdgeIterator it(Edge3(&tet, opp3, opp2));
        const TetAroundEdgeIterator start(it);
        do
            if (isWanted(*it))
                return *it;
        while (!it.nextIsNull() && ++it != start);
        if (it == start && !it.nextIsNull())
            return nullptr;
    }
    return nullptr;
}

/// The first tetrahedron with the face of tet that `isWanted`; or null.
template <class IsWanted>
Tet3* findTetAtFace(Tet3& tet, FaceMask face, const IsWanted& isWanted)
{
    switch (getKind(face)) {
    case LocationKind3::VERTEX: {
        Tet3* pFound = nullptr;
        const auto visit = [&](const StarTet& reached, const Corners&, const OppTets&) {
            pFound = isWanted(reached.pTet) ? reached.pTet : nullptr;
            return pFound != nullptr;
        };
        forEachTetAroundVertex(*tet.getCorner(__builtin_ctz(face)), visit);
        return pFound;
    }
    case LocationKind3::EDGE:
        return findTetAroundEdge(tet, face, isWanted);
    default:
        if (isWanted(&tet))
            return &tet;
        Tet3* pBeyond = face == WHOLE_TET ? nullptr : tet.getOppTet(__builtin_ctz(~face));
        return pBeyond != nullptr && isWanted(pBeyond) ? pBeyond : nullptr;
    }
}

} // namespace VORN3D
