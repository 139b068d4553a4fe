// Dt3 is the kernel: it owns the mesh and grows a Delaunay tetrahedralization one vertex at a time.
//
// Representation: tetrahedra with corners and neighbours, neighbour i across the facet opposite corner i;
// null on the hull. There is no infinite vertex: the mesh is exactly the convex hull.
//
// True before and after every public call:
//   (1) links are mutual, and linked facets have the same three vertices;
//   (2) every tetrahedron is positively oriented;
//   (3) no vertex lies strictly inside the circumscribed sphere of a tetrahedron;
//   (4) a vertex in the mesh points to a tetrahedron that has it as a corner, any other vertex to none;
//   (5) `hasBeenVisited` is set exactly on the dead records, which wait in vDoomedTets and vReusableTets.
//
// Sources: A. Bowyer, Computing Dirichlet tessellations, and D. Watson, Computing the n-dimensional Delaunay
// tessellation, both Computer Journal 24 (1981); growth of the hull as beneath-beyond, F. Preparata and
// M. Shamos, Computational Geometry, 1985.
#pragma once

#include "kernel/EdgeMatrix.h"
#include "kernel/FacetHash.h"
#include "kernel/HullEdgeHints.h"
#include "kernel/TaggedTet.h"
#include "nalo_tools/ScratchList.h"
#include "nalo_tools/SimplePool.h"
#include "predicates/AffineBasis.h"
#include "predicates/NaloTest3.h"
#include "predicates/NeighborFilter.h"
#include "vertexStore/HC3.h"
#include "vorn3d/Point3.h"
#include "vorn3d/Tet3.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace VORN3D
{

class Vorn_3D;

class Dt3
{
public:
    /// What locateConflictTet() answers beside the index 0 to 3 of a hull facet.
    enum LocateResult { LOCATED_INSIDE = -1, LOCATED_VERTEX = -2, LOCATE_GAVE_UP = -99 };

    explicit Dt3(Vorn_3D* pOwner);
    Dt3(const Dt3&) = delete;
    Dt3& operator=(const Dt3&) = delete;

    // --- Dt3.cpp: the driver ---

    /// Inserts a batch and fills vUserHandles with one vertex for each input point, in input order.
    void insert(std::vector<Point3>& vInputPoints, std::vector<Point3*>& vUserHandles);

    /// Inserts one point and returns its vertex.
    Point3* insert(Point3& p);

    /// Inserts vertices into the three-dimensional mesh, coarse to fine; the first walk starts at pLastTet.
    void triangulate(std::vector<Point3*>& vVertices, Tet3* pLastTet);

    /// The first tetrahedron, made of the first four vertices in curve order that are not coplanar; null
    /// while all are coplanar.
    Tet3* createInitialTet();

    bool is3D() const { return bFullDimensional; }
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

    /// The same, but gives up only where the mesh must be broken: a walk meets no tetrahedron of a Delaunay
    /// mesh twice, however far it has to go. Adds the number of facets looked at to numTests.
    int locateInMesh(const Point3* pVtx, Tet3*& pStartTet, std::size_t& numTests) const;

    // --- Dt3Insertion.cpp and, for a vertex outside the hull, Dt3Hull.cpp: one vertex ---

    /// Inserts *ppVtx and returns a tetrahedron incident to it. If the mesh has a vertex with its coordinates
    /// already, *ppVtx is replaced by that one.
    Tet3* insertVertex(Point3** ppVtx, Tet3* pStartTet);

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

    // --- Dt3Validity.cpp: the checker ---

    /// Looks for the first fault of the mesh; true if there is none. A fault is described on standard output;
    /// one of shape also goes to a scene file in the working directory. The empty spheres are checked if
    /// bCheckSphereInc; the second argument has no effect. O(number of tetrahedra).
    bool checkValidity(const std::string& name, bool bCheckVisited, bool bCheckSphereInc) const;

private:
    // The neighbours of a doomed tetrahedron that are to be doomed too, the facets where the cavity ends, and
    // those that the vertex is certainly on the inner side of.
    struct Neighborhood
    {
        FacetMask inConflict;
        FacetMask boundary;
        FacetMask certainlyInside;
    };

    // A facet on which the new vertex gets a tetrahedron: one of a doomed tetrahedron or, if it is seen from
    // outside, of one that stays. The new tetrahedron's neighbour there is the one beyond, null on the hull,
    // or the one that stays.
    class StarFacet
    {
    public:
        StarFacet() = default;
        StarFacet(const Tet3* pTet, int ici, bool bFromOutside, bool bOrientationCertain)
            : m_tet(pTet, static_cast<unsigned>(ici) | unsigned{bFromOutside} << 2 |
                              unsigned{bOrientationCertain} << 3)
        {
        }

        Tet3* getTet() const { return m_tet.getTet(); }
        int getIndex() const { return static_cast<int>(m_tet.getTag() & 3); }
        bool isFromOutside() const { return (m_tet.getTag() & 4) != 0; }
        bool isOrientationCertain() const { return (m_tet.getTag() & 8) != 0; }

    private:
        TaggedTet m_tet;
    };

    // An edge of the hull, from its two facets: opp3 and opp2 are the corners of pTet not on the edge.
    struct HullEdge
    {
        Tet3* pTet;
        int opp3;
        int opp2;
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
    void startUp(std::vector<Point3*>& vNewVertices);
    std::vector<Point3*> getUntriangulated(const std::vector<Point3*>& vUserHandles) const;

    int walk(const Point3* pVtx, Tet3*& pStartTet, std::size_t maxTests, std::size_t& numTests) const;
    WalkStep lookAround(const Point3* pVtx, Tet3*& pTet, FacetMask untested, int first) const;
    WalkStep lookAroundExactly(const Point3* pVtx, Tet3*& pTet, FacetMask untested, int first) const;
    WalkStep judgeCoplanar(const Point3* pVtx, Tet3*& pTet, int ici) const;
    int circleEdgeToHull(Tet3*& pTet, int opp3, int opp2) const;
    void checkStrictlyInside(const Tet3* pTet, const Point3* pVtx) const;

    Tet3* adoptExistingVertex(Point3** ppVtx, Tet3* pTet) const;
    void findCavityInside(const Point3* pVtx, Tet3* pTet);
    Tet3* fillCavity(Point3* pVtx, bool bInside);
    void startInsertion();
    void abandonInsertion();
    void doom(Tet3* pTet);
    bool isInConflict(const Tet3* pTet, const Point3* pVtx) const;
    static void prefetchLinks(const Tet3* pTet);
    static void prefetchNeighbors(const Tet3* pTet);
    Neighborhood judgeNeighborhood(const Tet3* pDoomed, const Point3* pVtx) const;
    void growFrom(Tet3* pDoomed, const Point3* pVtx);
    void growConflictRegionOutside(const Point3* pVtx);
    bool isStarModerate() const;
    void makeRoomForStar();
    template <class Edges>
    std::size_t joinToStar(Point3* pVtx, Edges& edges);
    template <class Edges>
    void buildStar(Point3* pVtx, Edges& edges);
    static void linkBeyond(Tet3* pNewTet, StarFacet facet);
    template <class Edges>
    std::size_t linkStar(Edges& edges);
    Tet3* takeRecord();
    void takeRecords();
    void checkOrientation(const Point3* a, const Point3* b, const Point3* c, const Point3* d) const;

    void findCavityOutside(const Point3* pVtx, Tet3* pCurTet, int opp3ICI);
    void gatherSeenTets(const Point3* pVtx, Tet3* pTet, int ici);
    HullFacet turnToHull(HullEdge edge);
    void rememberNewHullEdges();
    void rememberEdges(HullFacet facet);
    void addSeenFacet(Tet3* pTet, int ici);
    bool isNewEdge(const Tet3* pTet, const Point3* pSource, const Point3* pTarget);
    void pushVisibleFacets(Tet3* pTet, const Point3* pVtx);
    void pushCavityFacetsOutside(Tet3* pDoomed, const Point3* pVtx);

    void followLinks(std::vector<Tet3*>& vTet) const;
    std::size_t getNumTets() const;
    Tet3* findLiveTet() const;

    bool areAllFlawless(const std::vector<Tet3*>& vTets, bool bCheckSphereInc) const;
    bool isFlawless(const Tet3* pTet, bool bCheckSphereInc) const;
    static int findIndexInNeighbor(const Tet3* pTet, int ici);
    bool checkTet(const Tet3* pTet, const std::string& name, bool bCheckSphereInc) const;
    static void checkUnvisited(const Tet3* pTet);
    bool checkNegativeSide(const Tet3* pTet, int ici, const Point3* pFarVtx, const std::string& name) const;
    bool checkEmptySphere(const Tet3* pTet, const Point3* pFarVtx) const;

    SimplePool<Tet3> tetPool;
    ScratchList<Tet3*> vDoomedTets;
    ScratchList<Tet3*> vReusableTets;
    EdgeMatrix edgeMatrix;
    FacetHash facetHash;
    NaloTest3 predicates;
    const NeighborFilter judgeNeighbors = chooseNeighborFilter();
    bool bFullDimensional = false;
    HC3 hc;
    AffineBasis spannedFlat;
    Vorn_3D* pFacade;
    bool bVerbose = false;
    ProgressObserver progressObserver;
    std::size_t numMeshVertices = 0;
    std::size_t numWalkTests = 0;

    // Scratch of the current insertion, kept to save its memory.
    std::size_t numLeftOverTets = 0;
    ScratchList<Tet3*> vStack; // doomed, but neighbours not looked at
    ScratchList<StarFacet> vStar;
    std::size_t numVisibleFacets = 0;
    ScratchList<Tet3*> vNewTets;
    ScratchList<std::uint32_t>
        vSlots; // where the partners at facets 1 to 3 of each new tetrahedron are found
    std::vector<Tet3*> vSeenTets;
    ScratchList<HullEdge> vHullEdges;
    FacetHash horizonEdges;
    HullEdgeHints hullEdgeHints;
    std::size_t numHorizonEdges = 0;
};

} // namespace VORN3D
