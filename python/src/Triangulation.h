// Triangulation is a Vorn_3D whose points and tetrahedra have numbers.
//
// Points are numbered in the order of insertion over all calls; equal points share a vertex, whose number is
// that of the first of them. Tetrahedra have the numbers of Vorn_3D::getArrays(), which change with every
// insertion. The custom indices of both are these numbers.
//
// Threads: one may insert, or any number read. Who comes in between gets an exception, not a lock, since
// waiting would be a deadlock for a progress callback that reads.
#pragma once

#include <vorn3d/MeshArrays.h>
#include <vorn3d/Vorn_3D.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

namespace VORN3D::python
{

/// The numbers of points and tetrahedra, those of scipy.spatial: -1 is none.
using Index = std::int32_t;

/// Throws std::overflow_error if there are more things than an Index can count.
void requireIndices(std::size_t num);

/// Called from time to time during long work, with how much of it is done and how much there is. What it
/// throws ends the work.
using Pulse = std::function<void(std::size_t numDone, std::size_t numTotal)>;

class Triangulation
{
public:
    /// How a batch is ordered before it is inserted: by Vorn_3D::insert(), or by getCanonicalOrder().
    enum class Order { CURVE, CANONICAL };

    explicit Triangulation(Order order) : m_order(order) {}

    /// Inserts n points of three coordinates each. One that is not finite throws std::invalid_argument, and
    /// nothing is changed.
    ///
    /// Whatever else is thrown, by the pulse too, the points are counted: the triangulation is valid and
    /// holds some of them, the next insertion brings in the others.
    void insert(const double* pCoordinates, std::size_t n, const Pulse& pulse);

    /// Checks the mesh; see Vorn_3D::checkValidity().
    bool check(const Pulse& pulse);

    /// Must be held while anything below is called. Throws std::runtime_error during an insertion, and for a
    /// triangulation that a fault of the library has left damaged.
    class Reading
    {
    public:
        explicit Reading(const Triangulation& triangulation);
        ~Reading() { --m_numReaders; }
        Reading(const Reading&) = delete;
        Reading& operator=(const Reading&) = delete;

    private:
        std::atomic<int>& m_numReaders;
    };

    const Vorn_3D& getMesh() const { return m_dt; }
    std::size_t getNumPoints() const { return m_numPoints; }

    /// The vertices of the points. The last points have none if memory ran out while they were stored; no
    /// tetrahedron has them as corners then.
    const std::vector<Point3*>& getHandles() const { return m_vHandles; }

    /// Corners and neighbours of the tetrahedra, and what stands for each point; see Vorn_3D::getArrays().
    MeshArrays getArrays() const;

    /// The tetrahedra by their numbers. Takes time linear in their number once after each insertion.
    const std::vector<Tet3*>& getTets() const;

    /// The numbers of vertices and tetrahedra; -1 for null. Those of tetrahedra are good after getTets().
    ///@{
    static Index numberOf(const Point3* pVtx) { return pVtx != nullptr ? pVtx->getCustomIndex() : -1; }
    static Index numberOf(const Tet3* pTet) { return pTet != nullptr ? pTet->getCustomIndex() : -1; }
    ///@}

private:
    class Writing;

    void append(const double* pCoordinates, std::size_t n);
    void insertPending();
    void insertPendingCanonically(std::vector<Point3*>& vHandles);
    void takeHandles(const std::vector<Point3*>& vHandles);

    Order m_order;
    Vorn_3D m_dt;
    std::vector<Point3*> m_vHandles;
    std::size_t m_numPoints = 0;
    std::vector<Point3> m_vPending; // the last points, which are not all in the mesh
    bool m_bDamaged = false;
    mutable std::atomic<int> m_numReaders{0}; // -1: an insertion

    mutable std::mutex m_numbering;
    mutable std::vector<Tet3*> m_vTets;
    mutable bool m_bNumbered = false;
};

/// To be called once, before anything else: the library prints nothing and does not end the process.
void setUpLibrary();

} // namespace VORN3D::python
