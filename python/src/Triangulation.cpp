#include "Triangulation.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <numeric>
#include <stdexcept>
#include <string>
#include <string_view>

namespace VORN3D::python
{

namespace
{

/// In place of an end of the process for any reason but memory.
class DamagedMesh : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

void throwFatal(const char* message)
{
    if (std::string_view(message).find("Out of memory") != std::string_view::npos)
        throw std::bad_alloc();
    throw DamagedMesh(std::string("fault in the library: ") + message);
}

class Observed
{
public:
    Observed(Vorn_3D& dt, const Pulse& pulse) : m_dt(dt)
    {
        m_dt.setProgressObserver([&pulse](std::size_t numDone, std::size_t numTotal) {
            pulse(numDone, numTotal);
            return true;
        });
    }
    ~Observed() { m_dt.setProgressObserver({}); }
    Observed(const Observed&) = delete;
    Observed& operator=(const Observed&) = delete;

private:
    Vorn_3D& m_dt;
};

} // namespace

void requireIndices(std::size_t num)
{
    if (num > static_cast<std::size_t>(std::numeric_limits<Index>::max()))
        throw std::overflow_error("the arrays can number less than 2**31 points, simplices or neighbours");
}

void setUpLibrary()
{
    setMessageStream(nullptr);
    setFatalHandler(&throwFatal);
    // The box of the first batch of a process has a margin of its own. Spent here, it makes the mesh of
    // points in special position the same whenever they are triangulated.
    Vorn_3D first;
    std::vector<Point3> vPoints{{0, 0, 0}};
    first.insert(vPoints);
}

class Triangulation::Writing
{
public:
    explicit Writing(Triangulation& triangulation) : m_numReaders(triangulation.m_numReaders)
    {
        int none = 0;
        if (!m_numReaders.compare_exchange_strong(none, -1))
            throw std::runtime_error(
                none < 0 ? "another insertion into this triangulation is under way"
                         : "this triangulation is being read, by another thread or below this call");
        if (triangulation.m_bDamaged) {
            m_numReaders = 0;
            throw std::runtime_error("this triangulation was left damaged by a fault in the library");
        }
    }
    ~Writing() { m_numReaders = 0; }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

private:
    std::atomic<int>& m_numReaders;
};

Triangulation::Reading::Reading(const Triangulation& triangulation) : m_numReaders(triangulation.m_numReaders)
{
    int num = m_numReaders;
    do
        if (num < 0)
            throw std::runtime_error(
                "an insertion into this triangulation is under way, in another thread or around this call");
    while (!m_numReaders.compare_exchange_weak(num, num + 1));
    if (triangulation.m_bDamaged) {
        --m_numReaders;
        throw std::runtime_error("this triangulation was left damaged by a fault in the library");
    }
}

void Triangulation::insert(const double* pCoordinates, std::size_t n, const Pulse& pulse)
{
    const Writing writing(*this);
    append(pCoordinates, n);
    if (m_vPending.empty())
        return;
    m_bNumbered = false;
    const Observed observed(m_dt, pulse);
    try {
        insertPending();
    } catch (const DamagedMesh&) {
        m_bDamaged = true;
        throw;
    }
    m_vPending = {};
}

// Adds the points to those pending, and makes room for their handles.
void Triangulation::append(const double* pCoordinates, std::size_t n)
{
    const std::size_t numPending = m_vPending.size();
    requireIndices(m_numPoints + n);
    m_vPending.reserve(numPending + n);
    m_vHandles.reserve(m_numPoints + n);
    for (std::size_t i = 0; i < n; ++i) {
        const double* p = pCoordinates + 3 * i;
        if (!std::isfinite(p[0]) || !std::isfinite(p[1]) || !std::isfinite(p[2])) {
            m_vPending.resize(numPending);
            throw std::invalid_argument("points must be finite: points[" + std::to_string(i) + "] is not");
        }
        m_vPending.emplace_back(p[0], p[1], p[2]);
        m_vPending.back().setCustomIndex(static_cast<int>(m_numPoints + i));
    }
    m_numPoints += n;
}

void Triangulation::insertPending()
{
    std::vector<Point3*> vHandles;
    try {
        if (m_order == Order::CURVE)
            m_dt.insert(m_vPending, vHandles);
        else
            insertPendingCanonically(vHandles);
    } catch (...) {
        takeHandles(vHandles);
        throw;
    }
    takeHandles(vHandles);
}

void Triangulation::insertPendingCanonically(std::vector<Point3*>& vHandles)
{
    std::vector<std::uint64_t> vNumbers(m_vPending.size());
    std::iota(vNumbers.begin(), vNumbers.end(), m_numPoints - m_vPending.size());
    const std::vector<std::size_t> vOrder = getCanonicalOrder(m_vPending, vNumbers, Bbox3(m_vPending));
    std::vector<Point3> vOrdered;
    vOrdered.reserve(vOrder.size());
    for (const std::size_t i : vOrder)
        vOrdered.push_back(m_vPending[i]);

    std::vector<Point3*> vInOrder;
    vHandles.reserve(vOrder.size());
    const auto putInPlace = [&] {
        vHandles.resize(vInOrder.size());
        for (std::size_t k = 0; k < vInOrder.size(); ++k)
            vHandles[vOrder[k]] = vInOrder[k];
    };
    try {
        m_dt.insertOrdered(vOrdered, vInOrder);
    } catch (...) {
        putInPlace();
        throw;
    }
    putInPlace();
}

// The handles are those of the last points, unless memory ran out before there were all. Of equal points the
// first gives the number.
void Triangulation::takeHandles(const std::vector<Point3*>& vHandles)
{
    if (vHandles.size() != m_vPending.size() || std::count(vHandles.begin(), vHandles.end(), nullptr) != 0)
        return;
    m_vHandles.resize(m_numPoints - m_vPending.size());
    for (Point3* pVtx : vHandles) {
        pVtx->setCustomIndex(std::min(pVtx->getCustomIndex(), static_cast<int>(m_vHandles.size())));
        m_vHandles.push_back(pVtx);
    }
}

bool Triangulation::check(const Pulse& pulse)
{
    const Writing writing(*this);
    const Observed observed(m_dt, pulse);
    return !m_dt.is3D() || m_dt.checkValidity("", true);
}

MeshArrays Triangulation::getArrays() const
{
    MeshArrays mesh = m_dt.getArrays(m_vHandles);
    requireIndices(mesh.vCorners.size() / 4);
    mesh.vVertices.resize(m_numPoints, NO_INDEX);
    mesh.vTets.resize(m_numPoints, NO_INDEX);
    return mesh;
}

const std::vector<Tet3*>& Triangulation::getTets() const
{
    const std::lock_guard lock(m_numbering);
    if (!m_bNumbered) {
        m_vTets = m_dt.getNumberedTetrahedra();
        int number = 0;
        for (Tet3* pTet : m_vTets)
            pTet->setCustomIndex(number++);
        m_bNumbered = true;
    }
    return m_vTets;
}

} // namespace VORN3D::python
