#include "kernel/HullEdgeHints.h"

#include <algorithm>
#include <cstddef>

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

// The latest hull facet at the edge comes first; the one remembered before stays beside it if it still is
// one, for an edge of the hull has two.
void HullEdgeHints::remember(const EdgeKey& edge, Tet3* pTet)
{
    if (4 * m_numUsed >= m_vHints.size())
        grow();
    Hint fresh{edge, {pTet, nullptr}};
    Hint& hint = m_vHints[getIndex(edge)];
    if (hint.edge == edge)
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
    const Hint& hint = m_vHints[getIndex(edge)];
    if (hint.edge == edge)
        for (Tet3* pTet : hint.apTet)
            if (pTet != nullptr) {
                const int ici = findHullFacet(pTet, edge, known);
                if (ici >= 0)
                    return {pTet, ici};
            }
    return {};
}

// Where two hints claim one place in the larger table, one is lost: a turn around its edge will find it
// again.
void HullEdgeHints::grow()
{
    std::vector<Hint> vOld(std::max<std::size_t>(2 * m_vHints.size(), 1024));
    vOld.swap(m_vHints);
    m_numUsed = 0;
    for (const Hint& hint : vOld)
        if (hint.apTet[0] != nullptr) {
            Hint& place = m_vHints[getIndex(hint.edge)];
            m_numUsed += place.apTet[0] == nullptr;
            place = hint;
        }
}

} // namespace VORN3D
