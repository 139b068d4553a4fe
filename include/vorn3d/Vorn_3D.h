#pragma once

#include "Ball3.h"
#include "Bbox3.h"
#include "Edge3.h"
#include "Export.h"
#include "Facet3.h"
#include "Iterators.h"
#include "MeshArrays.h"
#include "Point3.h"
#include "Segment3.h"
#include "Tet3.h"
#include "Triangle3.h"
#include "Vector3.h"
#include "VornException.h"
#include "canonicalOrder.h"
#include "hosting.h"
#include "testDataGenerators.h"
#include "timer.h"
#include "version.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace VORN3D
{

class Dt3;

/// A Delaunay tetrahedralization of points in space.
///
/// Points are inserted singly or in batches, in any number of calls. The mesh covers exactly the convex hull
/// of the points; it exists as soon as four of them are not coplanar. No vertex lies strictly inside the
/// circumscribed sphere of a tetrahedron; every decision behind that is exact for any finite coordinates.
/// Points in special position have several such meshes. Which of them it is depends on the order of
/// insertion, and so, with insert(), on the points, the batches they come in, and the boxes of these; the box
/// of the first batch of a process gets a narrower margin than those of all others. So a program that is run
/// again gets the same mesh, unless several threads insert their first batches at the same time. With
/// insertOrdered() it depends on the order of the points alone.
///
/// Handles: a `Point3*` is valid for the life of the triangulation, a `Tet3*`, and what is made from it,
/// until the next insertion. The triangulation owns both; clients never delete them.
///
/// Threads: an insertion, and setting an observer or the verbosity, must be alone. Between insertions any
/// number of threads may read one triangulation: is3D(), getDimension(), locate(), locateClosed(),
/// getVertices(), getTetrahedra(), getTetsAroundVertex(), getArrays(), getNumberedTetrahedra() and the
/// handles. Different triangulations are independent.
///
/// Errors: wrong usage is reported and throws VornException; the triangulation is then as it was. Running out
/// of memory for the mesh ends the process after a message, unless setFatalHandler() says otherwise.
///
/// Output: the library reports on standard output, or where setMessageStream() sends its text, a line
/// `numPoints=` for every batch included.
///
/// Cost: on well spread points about 6.75 tetrahedra a point, of 80 bytes each, and a time that grows in
/// proportion to their number. At worst, as for points on two skew lines, the mesh itself grows with the
/// square.
///
/// Sources: A. Bowyer, Computing Dirichlet tessellations, and D. Watson, Computing the n-dimensional Delaunay
/// tessellation, both Computer Journal 24 (1981); O. Devillers, S. Pion, M. Teillaud, Walking in a
/// triangulation (2002); J. Shewchuk, Adaptive precision floating-point arithmetic and fast robust geometric
/// predicates (1997).
class VORN3D_EXPORT Vorn_3D
{
public:
    /// An empty triangulation.
    Vorn_3D();

    /// Frees the mesh; all its handles become invalid.
    ~Vorn_3D();

    Vorn_3D(const Vorn_3D&) = delete;
    Vorn_3D& operator=(const Vorn_3D&) = delete;

    /// Takes everything out; all handles become invalid. What is inserted then gives the mesh that it would
    /// give in a new triangulation. The memory is kept for it, which saves time where many small sets are
    /// triangulated one after the other; progress observer and verbosity stay as they are. Takes time in
    /// proportion to the number of vertices at most.
    void clear();

    /// Inserts one point and returns its vertex: the existing one if a point with the same coordinates was
    /// inserted before. While all points are coplanar the vertex is only stored. When a single point makes
    /// the triangulation three-dimensional, the first tetrahedron is all there is: earlier points other than
    /// its corners stay outside the mesh until they are inserted again (inserting batches leaves no point
    /// out). p is copied and not changed; the vertex carries its custom index. A coordinate that is not
    /// finite throws VornException.
    ///
    /// The cost is that of locate() and of the tetrahedra replaced, on well spread points some twenty. A
    /// point outside the bounding box of all points so far makes the box grow by more than needed and all
    /// vertices be sorted again, which becomes the rarer the larger the box is.
    Point3* insert(Point3& p);

    /// Inserts a batch of points, which is much faster than inserting them one by one: they are sorted along
    /// a space-filling curve first. The points are copied and not changed. A coordinate that is not finite
    /// throws VornException, before anything is stored. A batch has fewer than 2^32 points.
    void insert(std::vector<Point3>& vInputPoints);

    /// The same, and fills vUserHandles (which should be empty; otherwise it is cleared after a warning) with
    /// one vertex for each input point, in input order. Equal points share a vertex; it carries the custom
    /// index of the first of them.
    void insert(std::vector<Point3>& vInputPoints, std::vector<Point3*>& vUserHandles);

    /// Inserts a batch in the order in which the points are given, with the same promises otherwise: vertices
    /// enter the mesh in input order, those that earlier calls have stored before there was a mesh in front,
    /// and the first tetrahedron is made of the first four vertices in that order that are not coplanar.
    ///
    /// So the mesh is a function of the points and of their order, whatever the batches, the process and the
    /// platform are: points inserted by insertOrdered() from the start give the same tetrahedra in one call
    /// or in several (and singly by insert(), once there is a mesh). And it is so locally: a vertex on a
    /// sphere counts as outside of it, so that points on a common sphere are triangulated as if they had been
    /// raised by infinitesimals, each by far more than those before it (a placing triangulation: J. De Loera,
    /// J. Rambau, F. Santos, Triangulations, 2010, section 4.3). Two sets that agree in some region, in their
    /// points and in the order of these, have the same tetrahedra there: all those whose circumscribed
    /// spheres lie in it.
    ///
    /// A good order is spatial and comes from coarse to fine, as that of getCanonicalOrder(), and costs as
    /// much as insert(). In a random one memory is touched all over the place; in an order that sweeps
    /// through space more tetrahedra are made that do not last.
    void insertOrdered(std::vector<Point3>& vInputPoints, std::vector<Point3*>& vUserHandles);

    /// Called from time to time during long work, with how much of it is done and how much there is in all:
    /// vertices brought into the mesh while a batch is inserted, tetrahedra looked at while the mesh is
    /// checked. At the end both are equal. Returns whether to go on.
    using ProgressObserver = std::function<bool(std::size_t numDone, std::size_t numTotal)>;

    /// Sets the observer of later batch insertions and checks; an empty function removes it. It is called
    /// every 4096 vertices or tetrahedra, more often where vertices take long, on the thread that works, and
    /// must not use the triangulation.
    ///
    /// If it answers false, or throws, the insertion ends at once. The triangulation is then valid and holds
    /// the vertices brought in so far, a sample spread evenly over the points of the batch, or the first ones
    /// if the order is given; all other points of the batch are stored as vertices without a tetrahedron
    /// (`getOneTet()` is null), and the handles are filled. Inserting the same points again, in a batch or
    /// singly, completes it. If it was the insertion that made the triangulation three-dimensional, the next
    /// batch brings in all points stored so far. A check ends at once too, and answers false: nothing is
    /// known of the mesh then. Having met a fault, a check goes through the mesh once more from the start to
    /// describe the first one.
    void setProgressObserver(ProgressObserver observer);

    /// A tetrahedron that contains p: in its interior, on a facet or edge inside the hull, or as a corner.
    /// Null if p is outside the convex hull or on its boundary without being a vertex, is not finite, or if
    /// there is no mesh yet. Exact.
    ///
    /// The search walks from a vertex that is near p on a space-filling curve; on well spread points it takes
    /// a few steps. It would give up, with a message and null, in a damaged mesh only.
    Tet3* locate(const Point3& p);

    /// The same, by a walk that starts at pStart, several times as fast where that is close to p, as the last
    /// answer is for queries along a path. If pStart is null, or an insertion has removed it, the walk starts
    /// as without it; it must otherwise be of this triangulation.
    Tet3* locate(const Point3& p, Tet3* pStart);

    /// The same for the convex hull with its boundary: a tetrahedron that contains p, in its interior or on
    /// its boundary; seenFacet is -1 then. If p is outside, the result is a tetrahedron at the hull, and its
    /// hull facet number seenFacet is one that p is strictly beyond. Null if p is not finite or there is no
    /// mesh yet. Exact; the walk is that of locate().
    Tet3* locateClosed(const Point3& p, Tet3* pStart, int& seenFacet) const;

    /// Appends every stored vertex, triangulated or not, in the order of a space-filling curve. Takes time
    /// linear in their number.
    void getVertices(std::vector<Point3*>& vVertices) const;

    /// Fills vTets, which must be empty (otherwise VornException is thrown), with all tetrahedra in ascending
    /// order of their addresses. If there is no mesh it says so on standard output and leaves vTets empty.
    /// Takes time linear in the size of the mesh.
    void getTetrahedra(std::vector<Tet3*>& vTets) const;

    /// Appends the tetrahedra that have pVtx as a corner, in ascending order of their addresses. If pVtx is
    /// null or no vertex of this mesh, that is reported and nothing appended. Takes time in proportion to
    /// their number k, k log k for the order, and log n for n vertices.
    void getTetsAroundVertex(Point3* pVtx, std::vector<Tet3*>& vTets);

    /// The mesh as arrays of numbers, for points that are numbered by their place in vUserHandles: what the
    /// batch insertions have filled, of several batches one after the other, or vertices in any order.
    /// A corner that has none of these handles is NO_INDEX.
    ///
    /// The order of the tetrahedra depends on the insertions alone and is the same on every platform. A
    /// handle that is not of this triangulation throws VornException, and so do 2^32 - 1 points or tetrahedra
    /// or more. Takes time linear in the size of the mesh and of vUserHandles, a tenth of what inserting
    /// takes.
    MeshArrays getArrays(const std::vector<Point3*>& vUserHandles) const;

    /// The tetrahedra by their numbers in getArrays(); empty if there is no mesh. Takes time linear in their
    /// number.
    std::vector<Tet3*> getNumberedTetrahedra() const;

    /// Checks the mesh and says whether it is sound; the first fault ends the check. Always checked: links
    /// between neighbours are mutual, and neighbours lie on different sides of their common facet. With
    /// bPrintInfo also: no vertex of a neighbour lies strictly inside the circumscribed sphere of a
    /// tetrahedron, which makes the mesh a Delaunay tetrahedralization. Exact, in time linear in the size of
    /// the mesh.
    ///
    /// What was checked, under the label `name`, and what was found goes to standard output. A fault is also
    /// drawn: the scene file "00000_negSideBug.list" or "00000_sphereIncBug.list" in the working directory,
    /// numbered onwards through the process (see show()). A tetrahedron with the kernel's mark throws
    /// VornException; a link that is not mutual ends the process with exit status 1.
    bool checkValidity(const std::string& name, bool bPrintInfo);

    /// Writes the mesh as a scene for a 3D viewer, a text file in the OOGL format: all tetrahedra in changing
    /// translucent colours, the vertices as green points, and *pVtx, if not null, as a larger red one. The
    /// file is about 850 bytes a tetrahedron. If it cannot be opened, the process ends with exit status 1
    /// after a message.
    void show(const std::string& filename, Point3* pVtx);

    /// Prints every tetrahedron with its corners and neighbours on standard output, under the label `name`,
    /// in seven lines each.
    void print(const std::string& name);

    /// True as soon as four inserted points are not coplanar, and so as soon as there is a mesh.
    bool is3D() const;

    /// The dimension of the points inserted so far: 0 if all are equal, 1 on a line, 2 in a plane, 3 as soon
    /// as there is a mesh; -1 if there are none. Exact.
    int getDimension() const;

    /// Switches trace lines on standard output on or off; they are off at first. Reports of faults and the
    /// line of every batch are printed in any case.
    void setVerbosity(bool b);

private:
    std::unique_ptr<Dt3> m_pDt;
};

} // namespace VORN3D
