// HC3 owns the vertices of a triangulation and keeps them in the order of a Hilbert curve.
//
// Every vertex has a key: its cell's place on the curve, in a grid of 2^(numBits / 3) slabs per axis over the
// current bounding box. Vertices are ordered by key, equal keys by coordinates, so that the order holds each
// distinct position once. A point outside the box makes the box grow by more than needed and re-keys
// everything, which keeps the number of re-keyings logarithmic for points that spread outwards.
#pragma once

#include "nalo_tools/SimplePool.h"
#include "vertexStore/CurveOrder.h"
#include "vertexStore/HilbertGrid.h"
#include "vorn3d/Bbox3.h"
#include "vorn3d/Point3.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace VORN3D
{

class HC3
{
public:
    /// Key length in bits: at most 32 and a multiple of 3; anything else ends the process.
    explicit HC3(int numBits);

    HC3(const HC3&) = delete;
    HC3& operator=(const HC3&) = delete;

    /// No vertices and no box any more; the memory stays.
    void clear();

    /// The key of q. There must be a box already; a point outside it gets the key of a cell at its boundary.
    std::uint32_t getHilbertIndex(const Point3& q) const;

    /// Stores a batch. Afterwards vUserHandles, which must be empty, holds one vertex for each input point,
    /// and the vertices that are new have been appended to vNewVertices in the order in which they are to be
    /// inserted: by key and then in input order, but more than MAX_RUN of one key along a finer curve. Of
    /// equal points the first makes the vertex. O(n log n).
    void insert(const std::vector<Point3>& vInput, std::vector<Point3*>& vUserHandles,
                std::vector<Point3*>& vNewVertices);

    /// Stores one point. Returns its vertex and a tetrahedron to start its location from: the vertex's own if
    /// it is in the mesh, else its neighbour's on the curve, which may be null.
    std::pair<Point3*, Tet3*> insert(const Point3* p);

    /// A tetrahedron incident to a vertex near q along the curve; null if no vertex is in the mesh.
    Tet3* findNearbyTet(const Point3& q) const;

    /// The nearest to q, as computed, of some vertices that are in the mesh: numLooks on either side of q
    /// along the curve, and up to as many spread evenly over it. Null if none of these is. O(log n +
    /// numLooks).
    const Point3* findNearMeshVertex(const Point3& q, std::size_t numLooks) const;

    /// Appends all vertices in curve order.
    void getVertices(std::vector<Point3*>& out) const;

    /// True if pVtx, not null, is one of the vertices as an object. O(log n).
    bool owns(const Point3* pVtx) const;

    /// Puts vertices of this store into curve order. O(n log n).
    void sort(std::vector<Point3*>& vVertices) const;

    /// The records of the vertices, and maybe one behind them that is not in use.
    const SimplePool<Point3>& getPool() const { return vertexPool; }

    std::size_t getNumVertices() const { return sIdxVtx.size(); }

    /// Takes over the extents of the current box and computes all keys anew.
    void reindex();

private:
    struct Found
    {
        CurveOrder::Position position;
        bool bFound;
    };
    // A vertex for a position, and whether it was made for it.
    struct Stored
    {
        CurveOrder::Position position;
        bool bNew;
    };

    std::vector<std::uint64_t> getSortedKeyIndexPairs(const std::vector<Point3>& vInput) const;
    void takeOver(const Bbox3& box);
    Found find(const IdxVtx& record) const;
    Stored store(std::uint32_t hIndex, const Point3& p);
    Point3* makeSpareVertex(const Point3& p);
    void storeLongRun(std::uint32_t hIndex, const std::vector<std::uint32_t>& vRun,
                      const std::vector<Point3>& vInput, std::vector<Point3*>& vUserHandles,
                      std::vector<Point3*>& vNewVertices);

    Bbox3 bbox;
    int numBits;
    HilbertGrid grid{}; // of the box as of the last re-indexing
    bool bValid = false;
    SimplePool<Point3> vertexPool;
    CurveOrder sIdxVtx;
    // Taken from the pool but not in use, as the last point was a duplicate.
    Point3* pSpareVertex = nullptr;
};

} // namespace VORN3D
