// AffineBasis collects affinely independent vertices: at most four, two different ones, three not on a line,
// four not in a plane. Affine independence is a matroid, so taking vertices greedily in a given order yields
// the lexicographically first basis of that order (J. Edmonds, Matroids and the greedy algorithm, 1971).
#pragma once

#include "predicates/NaloTest3.h"
#include "vorn3d/Point3.h"

#include <vector>

namespace VORN3D
{

class AffineBasis
{
public:
    explicit AffineBasis(const NaloTest3& predicates) : m_predicates(predicates) {}

    /// Adds pVtx if it is independent of the vertices held; says whether it did.
    bool tryAdd(Point3* pVtx);

    void clear() { m_vVertices.clear(); }

    /// True when four vertices are held: the points seen span space.
    bool isFullDimensional() const { return m_vVertices.size() == 4; }

    /// The vertices held, in the order in which they were added.
    const std::vector<Point3*>& getVertices() const { return m_vVertices; }

private:
    bool isIndependent(const Point3* pVtx) const;
    bool isCollinear(const Point3* pVtx) const;

    const NaloTest3& m_predicates;
    std::vector<Point3*> m_vVertices;
};

} // namespace VORN3D
