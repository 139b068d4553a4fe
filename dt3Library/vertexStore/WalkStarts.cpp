#include "vertexStore/WalkStarts.h"

#include "vertexStore/HilbertGrid.h"
#include "vorn3d/Bbox3.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace VORN3D
{

namespace
{

constexpr std::uint32_t NONE = UINT32_MAX;
constexpr int KEY_BITS = 30;
// Runs of so many points in one cell need no finer order.
constexpr std::ptrdiff_t SMALL_RUN = 16;
// Each refinement divides by 2^10; the range of doubles has room for some two hundred.
constexpr int MAX_REFINEMENTS = 256;

// A point of the curve: its position in the batch and the key of its cell.
struct CurvePoint
{
    std::uint32_t key;
    std::uint32_t position;
};
using CurveIterator = std::vector<CurvePoint>::iterator;

// The smallest cube at the lower corner of the points' box that holds them.
HilbertGrid getCube(const std::vector<Point3*>& vVertices, CurveIterator first, CurveIterator last)
{
    Bbox3 box;
    for (auto it = first; it != last; ++it)
        box.add(*vVertices[it->position]);
    const double extent = box.getMaxRange();
    return {box.getMinX(), box.getMinY(), box.getMinZ(), extent, extent, extent};
}

// Sorts [first, last) along a Hilbert curve in a cube, and runs that fall into one cell along finer ones.
void sortAlongCurve(const std::vector<Point3*>& vVertices, CurveIterator first, CurveIterator last,
                    int numRefinements)
{
    const HilbertGrid cube = getCube(vVertices, first, last);
    if (!std::isfinite(cube.rangeX) || numRefinements == MAX_REFINEMENTS)
        return;
    for (auto it = first; it != last; ++it)
        it->key = cube.getKey(*vVertices[it->position], KEY_BITS);
    std::sort(first, last, [](const CurvePoint& a, const CurvePoint& b) {
        return std::make_pair(a.key, a.position) < std::make_pair(b.key, b.position);
    });
    for (auto run = first; run != last;) {
        const auto runEnd = std::find_if(run, last, [run](const CurvePoint& p) { return p.key != run->key; });
        if (runEnd - run > SMALL_RUN)
            sortAlongCurve(vVertices, run, runEnd, numRefinements + 1);
        run = runEnd;
    }
}

std::vector<std::uint32_t> getFineOrder(const std::vector<Point3*>& vVertices)
{
    std::vector<CurvePoint> vCurve(vVertices.size());
    for (std::size_t i = 0; i < vCurve.size(); ++i)
        vCurve[i].position = static_cast<std::uint32_t>(i);
    sortAlongCurve(vVertices, vCurve.begin(), vCurve.end(), 0);
    std::vector<std::uint32_t> vFine(vCurve.size());
    std::transform(vCurve.begin(), vCurve.end(), vFine.begin(),
                   [](const CurvePoint& p) { return p.position; });
    return vFine;
}

double getDistance(const Point3& p, const Point3& q)
{
    return std::hypot(p.x() - q.x(), p.y() - q.y(), p.z() - q.z());
}

} // namespace

// A linked list of the vertices along the fine curve, emptied in the reverse order of insertion: when a
// vertex leaves it, its neighbours are those of the vertices inserted before it that are next to it on the
// curve.
void WalkStarts::findNearEarlierVertices()
{
    const std::size_t n = m_vVertices.size();
    const std::vector<std::uint32_t> vFine = getFineOrder(m_vVertices);
    std::vector<std::uint32_t> vPrevious(n, NONE);
    std::vector<std::uint32_t> vNext(n, NONE);
    for (std::size_t i = 1; i < n; ++i) {
        vPrevious[vFine[i]] = vFine[i - 1];
        vNext[vFine[i - 1]] = vFine[i];
    }
    m_vNearEarlier.resize(n);
    for (auto it = m_vOrder.rbegin(); it != m_vOrder.rend(); ++it) {
        const std::uint32_t previous = vPrevious[*it];
        const std::uint32_t next = vNext[*it];
        if (previous != NONE)
            vNext[previous] = next;
        if (next != NONE)
            vPrevious[next] = previous;
        const auto getDistanceTo = [&](std::uint32_t other) {
            return other == NONE ? HUGE_VAL : getDistance(*m_vVertices[*it], *m_vVertices[other]);
        };
        m_vNearEarlier[*it] = getDistanceTo(previous) < getDistanceTo(next) ? previous : next;
    }
}

Tet3* WalkStarts::getStartNearEarlier(std::size_t k, Tet3* pLastTet) const
{
    const std::uint32_t near = m_vNearEarlier[m_vOrder[k]];
    Tet3* pStart = near == NONE ? nullptr : m_vVertices[near]->getOneTet();
    return pStart == nullptr ? pLastTet : pStart;
}

} // namespace VORN3D
