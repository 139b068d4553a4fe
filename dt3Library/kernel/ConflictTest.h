// ConflictTest tells which tetrahedra a new vertex is in conflict with: those whose circumscribed spheres
// contain it. A vertex on the sphere is outside it, so that cospherical neighbours stay.
#pragma once

#include "predicates/NaloTest3.h"
#include "predicates/NeighborFilter.h"
#include "vorn3d/Point3.h"
#include "vorn3d/Tet3.h"

#include <cstdint>

namespace VORN3D
{

/// What is to become of the neighbours of a doomed tetrahedron.
struct Neighborhood
{
    FacetMask inConflict;      // beyond these facets: to be doomed too
    FacetMask onHull;          // no neighbour
    FacetMask boundary;        // here the cavity ends: the neighbour is not in conflict, or there is none
    FacetMask certainlyInside; // the vertex is on the inner side of these
};

class ConflictTest
{
public:
    explicit ConflictTest(const NaloTest3& exactPredicates) : predicates(exactPredicates) {}

    bool isInConflict(const Tet3* pTet, const Point3* pVtx) const
    {
        return predicates.sphereInclusionTest(pTet, pVtx) != SIC_OUTSIDE;
    }

    /// Called where most of the time goes.
    [[gnu::always_inline]] Neighborhood judgeNeighborhood(const Tet3* pDoomed, const Point3* pVtx) const
    {
        const Point3* apApex[4];
        FacetMask visited = 0;
        FacetMask onHull = 0;
        const std::uintptr_t sumOfCorners = pDoomed->getSumOfCorners();
        for (int i = 0; i < 4; ++i) {
            const Tet3* pNeighbor = pDoomed->aOppTet[i];
            if (pNeighbor == nullptr) {
                onHull |= 1u << i;
                apApex[i] = pVtx;
                continue;
            }
            prefetchLinks(pNeighbor);
            visited |= FacetMask{pNeighbor->hasBeenVisited} << i;
            // The corner that is not shared is what the sums of all corners differ by: nothing is searched.
            const auto corner = reinterpret_cast<std::uintptr_t>(pDoomed->aVertexPointer[i]);
            apApex[i] =
                reinterpret_cast<const Point3*>(pNeighbor->getSumOfCorners() - (sumOfCorners - corner));
        }
        const NeighborVerdicts verdicts = filter(pDoomed->aVertexPointer, apApex, *pVtx);
        const FacetMask candidates = ALL_FACETS & ~(visited | onHull);
        FacetMask inConflict = verdicts.getInConflict() & candidates;
        const FacetMask undecided = verdicts.getUndecided() & candidates;
        if (undecided != 0)
            for (int i = 0; i < 4; ++i)
                if ((undecided >> i & 1) != 0)
                    inConflict |= FacetMask{isInConflict(pDoomed->aOppTet[i], pVtx)} << i;
        return {inConflict, onHull, (candidates & ~inConflict) | onHull, verdicts.getInside()};
    }

private:
    // Memory is on its way while the sphere tests run: here the links of a tetrahedron, which are read if it
    // is doomed and written if it is not.
    static void prefetchLinks(const Tet3* pTet) { __builtin_prefetch(&pTet->aOppTet[3]); }

    const NaloTest3& predicates;
    const NeighborFilter filter = chooseNeighborFilter();
};

} // namespace VORN3D
