// Dt3 is the kernel: it owns the mesh and grows a Delaunay tetrahedralization one vertex at a time.
//
// Representation: tetrahedra with corners and neighbours, neighbour i across the facet opposite corner i;
// null on the hull. There is no infinite vertex: the mesh is exactly the convex hull.
//
// True before and after every public call:
//   (1) links are mutual, and linked facets have the same three vertices;
//   (2) every tetrahedron is positively oriented;
//   (3) no vertex lies strictly inside the circumscribed sphere of a tetrahedron. A vertex on it counts as
//       outside, so that cospherical neighbours stay and no flat tetrahedron is made;
//   (4) the tetrahedra fill the convex hull of the vertices in the mesh;
//   (5) a vertex in the mesh points to a tetrahedron that has it as a corner, any other vertex to none;
//   (6) `hasBeenVisited` is set exactly on the dead records (TetStore.h).
//
// Sources: A. Bowyer, Computing Dirichlet tessellations, and D. Watson, Computing the n-dimensional Delaunay
// tessellation, both Computer Journal 24 (1981); growth of the hull as beneath-beyond, F. Preparata and
// M. Shamos, Computational Geometry, 1985.
#pragma once

#include "kernel/ConflictTest.h"
#include "kernel/EdgeKey.h"
#include "kernel/HullEdgeHints.h"
#include "kernel/Star.h"
#include "kernel/TetStore.h"
#include "nalo_tools/ScratchList.h"
#include "predicates/AffineBasis.h"
#include "predicates/NaloTest3.h"
#include "vertexStore/HC3.h"
#include "vorn3d/MeshArrays.h"
#include "vorn3d/Point3.h"
#include "vorn3d/Tet3.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace VORN3D
{

class Dt3
{
public:
    /// What locateConflictTet() answers beside the index 0 to 3 of a hull facet.
    enum LocateResult { LOCATED_INSIDE = -1, LOCATED_VERTEX = -2, LOCATE_GAVE_UP = -99 };

    Dt3();
    Dt3(const Dt3&) = delete;
    Dt3& operator=(const Dt3&) = delete;

    // --- Dt3.cpp: the driver ---

    /// See Vorn_3D::clear().
    void clear();

    /// In which order the vertices of a batch enter the mesh.
    enum class Order { ALONG_CURVE, AS_GIVEN };

    /// Inserts a batch and fills vUserHandles with one vertex for each input point, in input order.
    void insert(std::vector<Point3>& vInputPoints, std::vector<Point3*>& vUserHandles, Order order);

    /// Inserts one point and returns its vertex.
    Point3* insert(Point3& p);

    /// Inserts vertices into the three-dimensional mesh, coarse to fine; the first walk starts at pLastTet.
    /// Says whether all are in: the progress observer may have ended it.
    bool triangulate(std::vector<Point3*>& vVertices, Tet3* pLastTet);

    bool is3D() const { return bFullDimensional; }
    int getDimension() const { return static_cast<int>(span.getVertices().size()) - 1; }
    void setVerbosity(bool b) { bVerbose = b; }

    /// See Vorn_3D::setProgressObserver().
    using ProgressObserver = std::function<bool(std::size_t numDone, std::size_t numTotal)>;
    void setProgressObserver(ProgressObserver observer) { progressObserver = std::move(observer); }

    // --- Dt3Location.cpp: the walk ---

    /// A tetrahedron near p to start a walk from; null if there is none.
    Tet3* findNearbyTet(const Point3& p) const;

    /// Walks from pStartTet to pVtx and moves pStartTet to where the walk ends. Returns
    ///   -1      the point is inside pStartTet or on an inner facet or inner edge of it;
    ///   -2      the point has the coordinates of a corner of pStartTet;
    ///   0 to 3  the point is outside the hull or on its boundary, beyond or in this hull facet of pStartTet;
    ///   -99     the walk gave up.
    int locateConflictTet(const Point3* pVtx, Tet3*& pStartTet) const;

    /// Where a walk has ended: `result` is as above.
    struct Location
    {
        Tet3* pTet;
        int result;
        std::size_t numTests; // facets looked at
    };

    /// Which of the facets that the point is beyond a walk crosses: the first one, or that opposite the
    /// corner that is farthest from the point. Where tetrahedra are long, the first one may lead far away.
    enum class Crossing { FIRST, OPPOSITE_FARTHEST };

    /// The same, but a walk that turns out long goes on from somewhere near in space, leaving far corners
    /// behind, and it is given up only where the mesh must be broken: a walk meets no tetrahedron of a
    /// Delaunay mesh twice.
    Location locateInMesh(const Point3* pVtx, Tet3* pStartTet, Crossing crossing) const;

    /// The tetrahedron that contains p or has it as a vertex, see Vorn_3D::locate().
    Tet3* locate(const Point3& p, Tet3* pStart) const;

    /// The same in the closed convex hull, see Vorn_3D::locateClosed().
    Tet3* locateClosed(const Point3& p, Tet3* pStart, int& seenFacet) const;

    // --- Dt3Insertion.cpp and, for a vertex outside the hull, Dt3Hull.cpp: one vertex ---

    struct Insertion
    {
        Tet3* pTet; // incident to the vertex, to start the next walk from
        std::size_t numWalkTests;
    };

    /// Inserts *ppVtx. If the mesh has a vertex with its coordinates already, *ppVtx is replaced by that one.
    /// Running out of memory changes nothing.
    Insertion insertVertex(Point3** ppVtx, Tet3* pStartTet, Crossing crossing);

    /// A tetrahedron with these corners, from a dead record or the pool. A negative orientation is an error;
    /// a flat tetrahedron is reported and made.
    Tet3* createTet(Point3* a, Point3* b, Point3* c, Point3* d);

    // --- Dt3Queries.cpp: reading the mesh back ---

    /// Fills vTet, which must be empty, with all tetrahedra in ascending address order. O(number of records).
    void getAllTetrahedra(std::vector<Tet3*>& vTet) const;

    /// Appends the tetrahedra that have pVtx as a corner, in ascending address order.
    void getTetsAroundVertex(const Point3* pVtx, std::vector<Tet3*>& vTets) const;

    /// Appends every stored vertex in curve order.
    void getVertices(std::vector<Point3*>& v) const;

    /// Prints every tetrahedron on standard output.
    void print(const std::string& name) const;

    /// Writes the mesh as a scene file, with *pVtx highlighted if it is not null.
    void show(const std::string& filename, const Point3* pVtx) const;

    // --- Dt3Arrays.cpp: the mesh as numbers ---

    /// See Vorn_3D::getArrays().
    MeshArrays getArrays(const std::vector<Point3*>& vUserHandles) const;
    std::vector<Tet3*> getNumberedTetrahedra() const;

    // --- Dt3Validity.cpp: the checker ---

    /// Looks for the first fault of the mesh; true if there is none. A fault is described on standard output;
    /// one of shape also goes to a scene file in the working directory. The empty spheres are checked if
    /// bCheckSphereInc; the second argument has no effect. O(number of tetrahedra).
    bool checkValidity(const std::string& name, bool bCheckVisited, bool bCheckSphereInc) const;

private:
    // An edge of the hull in one of its two facets there: opp3 is the facet's index in pTet, opp2 the index
    // of its corner that is not on the edge.
    struct HullEdge
    {
        Tet3* pTet;
        int opp3;
        int opp2;
    };

    // A tetrahedron doomed by a vertex outside the hull, and what is known of its facets.
    struct DoomedTet
    {
        Tet3* pTet;
        Neighborhood around;
    };

    // What a look at one tetrahedron means for the walk: it ends with a result of locateConflictTet(), or
    // goes on across the facet `result` places after the first one looked at.
    struct WalkStep
    {
        bool bEnds;
        int result;
    };

    // So many tetrahedra around a hull edge are worth remembering where its facets are.
    static constexpr int LONG_TURN = 16;

    bool isToGoOn(std::size_t numDone, std::size_t numTotal) const;
    template <class Sequence>
    bool insertAll(Sequence sequence, Tet3* pLastTet);
    void startUp(const std::vector<Point3*>& vUserHandles, std::vector<Point3*>& vNewVertices, Order order);
    void noteArrivals(const std::vector<Point3*>& vUserHandles, const std::vector<Point3*>& vNewVertices,
                      Order order);
    void forgetArrivals();
    Tet3* createInitialTet(Order order);
    void addLeftOut(const std::vector<Point3*>& vUserHandles, std::vector<Point3*>& vNewVertices) const;

    Location locateFrom(const Point3& p, Tet3* pStart) const;
    template <Crossing crossing>
    Location walk(const Point3* pVtx, Tet3* pTet, std::size_t maxTests) const;
    static Tet3* giveUp(Tet3* pTet);
    Tet3* findNearerTet(const Point3& p, Tet3* pTet, std::size_t numLooks) const;
    template <Crossing crossing>
    WalkStep lookAround(const Point3* pVtx, Tet3*& pTet, FacetMask untested, int first) const;
    WalkStep lookAroundExactly(const Point3* pVtx, Tet3*& pTet, FacetMask untested, int first) const;
    WalkStep judgeCoplanar(const Point3* pVtx, Tet3*& pTet, int ici) const;
    int circleEdgeToHull(Tet3*& pTet, int opp3, int opp2) const;
    void checkStrictlyInside(const Tet3* pTet, const Point3* pVtx) const;

    Tet3* adoptExistingVertex(Point3** ppVtx, Tet3* pTet) const;
    void findCavityInside(const Point3* pVtx, Tet3* pTet);
    Tet3* fillCavity(Point3* pVtx, bool bInside);
    // Memory is on its way while the sphere tests run: the records that a tetrahedron links to, which are
    // tested if it is doomed.
    static void prefetchNeighbors(const Tet3* pTet)
    {
        for (const Tet3* pNeighbor : pTet->aOppTet)
            __builtin_prefetch(pNeighbor);
    }
    void growFrom(Tet3* pDoomed, const Point3* pVtx);

    void findCavityOutside(const Point3* pVtx, HullFacet facet);
    void gatherSeenTets(const Point3* pVtx, HullFacet facet);
    void addSeenFacet(HullEdge entered);
    static bool isGathered(HullEdge edge);
    static EdgeKey getEdgeKey(HullFacet facet, int j);
    static HullEdge getEdge(HullFacet facet, const EdgeKey& key);
    HullEdge turnToHull(HullEdge edge);
    void growConflictRegionOutside(const Point3* pVtx);
    void doomOutside(const std::array<Tet3*, 4>& apTets, FacetMask toDoom);
    void pushVisibleFacets();
    void pushCavityFacets(const DoomedTet& doomed, const Point3* pVtx);
    void rememberNewHullEdges();
    void rememberEdges(HullFacet facet);

    void followLinks(std::vector<Tet3*>& vTet) const;
    Tet3* findLiveTet() const;

    bool areAllFlawless(const std::vector<Tet3*>& vTets, bool bCheckSphereInc) const;
    bool isFlawless(const Tet3* pTet, bool bCheckSphereInc) const;
    static int findIndexInNeighbor(const Tet3* pTet, int ici);
    bool checkTet(const Tet3* pTet, const std::string& name, bool bCheckSphereInc) const;
    static void checkUnvisited(const Tet3* pTet);
    bool checkNegativeSide(const Tet3* pTet, int ici, const Point3* pFarVtx, const std::string& name) const;
    bool checkEmptySphere(const Tet3* pTet, const Point3* pFarVtx) const;

    NaloTest3 predicates;
    const ConflictTest conflictTest{predicates};
    HC3 hc;
    TetStore tets;
    std::size_t numMeshVertices = 0;
    bool bFullDimensional = false;
    Tet3* pLatestTet = nullptr; // the one that the last insertion has answered
    // The batch that made the first tetrahedron has not brought in all that is stored.
    bool bStartingUp = false;
    AffineBasis span; // of all vertices: complete once there is a mesh
    // The handles of those, in the order in which their points were given, and how many vertices that makes.
    std::vector<Point3*> vArrived;
    std::size_t numArrived = 0;
    bool bVerbose = false;
    ProgressObserver progressObserver;
    HullEdgeHints hullEdgeHints;

    // Scratch of the current insertion, kept to save its memory.
    Star star;
    ScratchList<Tet3*> vStack; // doomed, but neighbours not looked at
    ScratchList<Tet3*> vSeenTets;
    ScratchList<HullEdge> vHullEdges;
    // A turn around a hull edge found no hint: those at the new hull facets will be as long.
    bool bTurnedLong = false;
    ScratchList<DoomedTet> vDoomedOutside;
    ScratchList<std::uint32_t> vUnexplored; // indices of those whose neighbours were not looked at
};

} // namespace VORN3D
