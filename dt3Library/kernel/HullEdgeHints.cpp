#include "kernel/HullEdgeHints.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace VORN3D
{

namespace
{

// The index of a facet of pTet that is on the hull, contains the edge and is not the known one; -1 if there
// is none. Dead records are marked as visited.
int findHullFacet(const Tet3* pTet, const EdgeKey& edge, HullFacet known)
{
    const Point3* p = edge.getLowEnd();
    const Point3* q = edge.getHighEnd();
    if (pTet->hasBeenVisited || !pTet->hasVertex(p) || !pTet->hasVertex(q))
        return -1;
    for (int i = 0; i < 4; ++i) {
        const bool bKnown = pTet == known.pTet && i == known.ici;
        const Point3* pOpposite = pTet->getCorner(i);
        if (pOpposite != p && pOpposite != q && pTet->getOppTet(i) == nullptr && !bKnown)
            return i;
    }
    return -1;
}

} // namespace

// Where the hint of the edge is, or would be.
std::size_t HullEdgeHints::findPlace(const std::vector<Hint>& vHints, const EdgeKey& edge)
{
    const std::size_t mask = vHints.size() - 1;
    std::size_t place = edge.getHash() & mask;
    while (vHints[place].apTet[0] != nullptr && !(vHints[place].edge == edge))
        place = (place + 1) & mask;
    return place;
}

// The latest hull facet at the edge comes first; the one remembered before stays beside it if it still is
// one, for an edge of the hull has two.
void HullEdgeHints::remember(const EdgeKey& edge, Tet3* pTet)
{
    if (2 * m_numUsed >= m_vHints.size())
        grow();
    Hint fresh{edge, {pTet, nullptr}};
    Hint& hint = m_vHints[findPlace(m_vHints, edge)];
    for (Tet3* pEarlier : hint.apTet)
        if (pEarlier != nullptr && pEarlier != pTet && findHullFacet(pEarlier, edge, {}) >= 0)
            fresh.apTet[1] = pEarlier;
    m_numUsed += hint.apTet[0] == nullptr;
    hint = fresh;
}

HullFacet HullEdgeHints::findOther(const EdgeKey& edge, HullFacet known) const
{
    if (m_vHints.empty())
        return {};
    for (Tet3* pTet : m_vHints[findPlace(m_vHints, edge)].apTet)
        if (pTet != nullptr) {
            const int ici = findHullFacet(pTet, edge, known);
            if (ici >= 0)
                return {pTet, ici};
        }
    return {};
}

bool HullEdgeHints::isOutdated(const Hint& hint)
{
    for (Tet3* pTet : hint.apTet)
        if (pTet != nullptr && findHullFacet(pTet, hint.edge, {}) >= 0)
            return false;
    return true;
}

// Most hints of a growing hull are outdated: without them the table stays about as small as the hull.
void HullEdgeHints::grow()
{
    const auto numValid = static_cast<std::size_t>(
        m_vHints.end() - m_vHints.begin() - std::count_if(m_vHints.begin(), m_vHints.end(), isOutdated));
    std::size_t size = std::max<std::size_t>(m_vHints.size(), 1024);
    while (size < 4 * numValid)
        size *= 2;
    std::vector<Hint> vGrown(size);
    for (const Hint& hint : m_vHints)
        if (!isOutdated(hint))
            vGrown[findPlace(vGrown, hint.edge)] = hint;
    m_vHints = std::move(vGrown);
    m_numUsed = numValid;
}

} // namespace VORN3D
