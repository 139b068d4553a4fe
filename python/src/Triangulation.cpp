#include "Triangulation.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numeric>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

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

// Adds the points to those pending, and makes room for all that is needed to remember them.
void Triangulation::append(const double* pCoordinates, std::size_t n)
{
    const std::size_t first = m_vVertices.size();
    const std::size_t numPending = m_vPending.size();
    requireIndices(first + n);
    m_vPending.reserve(numPending + n);
    m_vVertices.reserve(first + n);
    for (std::size_t i = 0; i < n; ++i) {
        const double* p = pCoordinates + 3 * i;
        if (!std::isfinite(p[0]) || !std::isfinite(p[1]) || !std::isfinite(p[2])) {
            m_vPending.resize(numPending);
            throw std::invalid_argument("points must be finite: points[" + std::to_string(i) + "] is not");
        }
        m_vPending.emplace_back(p[0], p[1], p[2]);
        m_vPending.back().setCustomIndex(static_cast<int>(first + i));
    }
    m_vVertices.resize(first + n, nullptr);
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
    std::iota(vNumbers.begin(), vNumbers.end(), m_vVertices.size() - m_vPending.size());
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

// The handles, if there are any, are those of the last points. Of equal points the first gives the number.
void Triangulation::takeHandles(const std::vector<Point3*>& vHandles)
{
    const std::size_t first = m_vVertices.size() - m_vPending.size();
    for (std::size_t i = 0; i < vHandles.size(); ++i) {
        Point3* pVtx = vHandles[i];
        m_vVertices[first + i] = pVtx;
        if (pVtx != nullptr)
            pVtx->setCustomIndex(std::min(pVtx->getCustomIndex(), static_cast<int>(first + i)));
    }
}

bool Triangulation::check(const Pulse& pulse)
{
    const Writing writing(*this);
    const Observed observed(m_dt, pulse);
    return !m_dt.is3D() || m_dt.checkValidity("", true);
}

const std::vector<Tet3*>& Triangulation::getTets() const
{
    const std::lock_guard lock(m_numbering);
    if (!m_bNumbered) {
        m_vTets.clear();
        m_dt.getTetrahedra(m_vTets);
        requireIndices(m_vTets.size());
        if (m_order == Order::CANONICAL)
            sortTets();
        int number = 0;
        for (Tet3* pTet : m_vTets)
            pTet->setCustomIndex(number++);
        m_bNumbered = true;
    }
    return m_vTets;
}

// By the numbers of the corners: first into buckets by the first corner, which are small.
void Triangulation::sortTets() const
{
    const auto firstCorner = [](const Tet3* pTet) {
        return static_cast<std::size_t>(numberOf(pTet->getCorner(0)));
    };
    const auto otherCorners = [](const Tet3* pTet) {
        return std::tuple(numberOf(pTet->getCorner(1)), numberOf(pTet->getCorner(2)),
                          numberOf(pTet->getCorner(3)));
    };
    std::vector<std::size_t> vEnd(getNumPoints() + 1);
    for (const Tet3* pTet : m_vTets)
        ++vEnd[firstCorner(pTet) + 1];
    std::partial_sum(vEnd.begin(), vEnd.end(), vEnd.begin());
    std::vector<Tet3*> vSorted(m_vTets.size());
    std::vector<std::size_t> vNext(vEnd.begin(), vEnd.end() - 1);
    for (Tet3* pTet : m_vTets)
        vSorted[vNext[firstCorner(pTet)]++] = pTet;
    for (std::size_t i = 0; i + 1 < vEnd.size(); ++i)
        std::sort(vSorted.begin() + static_cast<std::ptrdiff_t>(vEnd[i]),
                  vSorted.begin() + static_cast<std::ptrdiff_t>(vEnd[i + 1]),
                  [&](const Tet3* a, const Tet3* b) { return otherCorners(a) < otherCorners(b); });
    m_vTets = std::move(vSorted);
}

} // namespace VORN3D::python
