// Sibson's coordinates of a point inside the hull.
#pragma once

#include "NumberedSet.h"
#include "circumcenter.h"
#include "vertexStar.h"
#include "vorn3d/geometry/interpolate.h"

#include <cstdint>

namespace VORN3D
{

// NaturalNeighbors computes the shares that the Voronoi cell of p, were it a vertex, would take from the
// cells around it. It keeps its memory from one point to the next.
//
// The cavity of p are the tetrahedra whose circumscribed spheres contain it. What p takes from vertex i is a
// convex polytope: the part of the cell of i that is nearer to p. Its corners are the centres of the cavity's
// tetrahedra at i and of the new ones, which p would make with the cavity's boundary facets at i. Its volume
// is the sum of signed tetrahedra with apex i over its faces: for every neighbour j, the face between the
// cells of i and j, in the plane halfway between them, whose corners are the centres in the order in which
// one turns around the edge ij; and the face between the cells of i and p. Each face is cut into triangles
// with the middle m of ij, or of ip, so that each triangle belongs to a step from one centre to the next:
//
//     6 volume(i, m, c, c') = det(m - i, c - i, c' - i) = det(j - i, c - i, c' - i) / 2.
//
// A step through facet abc of the cavity counts for the edges ab and ac in the share of a, in opposite
// senses: together det(b - c, centre - a, next centre - a). At an edge ij of the cavity's boundary, the step
// between the centres of the two new tetrahedra counts for the faces ij and ip, in opposite senses too.
class NaturalNeighbors
{
public:
    /// Appends the weights of all natural neighbours of p, which must not be a vertex, in the closed
    /// tetrahedron `start`. False, and none, if p is on the boundary of the hull, if centres are beyond the
    /// range of doubles, or if rounding has spoiled the volumes.
    bool appendWeights(const Point3& p, Tet3& start, std::vector<VertexWeight3>& vWeights);

private:
    struct Cell
    {
        Tet3* pTet;
        std::array<std::uint32_t, 4> aVertex; // numbers of the corners
        Vec center;
    };

    // An edge of the cavity's boundary, with the centres of the two new tetrahedra there.
    struct BoundaryEdge
    {
        // The numbers of the ends, the smaller first.
        std::uint32_t low;
        std::uint32_t high;
        // Turning right-handed around low -> high, one leaves the cavity for the second and comes back from
        // the first.
        std::array<Vec, 2> aCenter;
    };

    void clear();
    bool reach(Tet3* pTet);
    bool visitFacets(std::uint32_t numCell);
    bool addNewTet(const Cell& cell, int facet);
    void addStep(const Cell& cell, int facet, const Vec& nextCenter);
    void addToEdge(std::uint32_t from, std::uint32_t to, const Vec& newCenter);
    void addBoundaryEdges();
    bool normalize();
    bool correct();
    Vec getMean() const;
    void moveMean(const Vec& mean);

    LocalFrame m_frame;
    NumberedSet m_cellNumbers;
    NumberedSet m_vertexNumbers;
    NumberedSet m_edgeNumbers;
    std::vector<Cell> m_vCells;
    std::vector<Point3*> m_vVertices;
    std::vector<Vec> m_vLocal;     // of the vertices
    std::vector<double> m_vShares; // of the vertices, in some unit
    std::vector<BoundaryEdge> m_vBoundaryEdges;
};

} // namespace VORN3D
