#include "kernel/HullEdgeHints.h"

#include "kernel/FacetHash.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <utility>

namespace VORN3D
{

namespace
{

// The index of a facet of pTet that is on the hull, contains p and q and is not the known one; -1 if there is
// none. Dead records are marked as visited.
int findHullFacet(const Tet3* pTet, const Point3* p, const Point3* q, HullFacet known)
{
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

void HullEdgeHints::remember(const Point3* p, const Point3* q, Tet3* pTet)
{
    if (4 * m_numUsed >= m_vHints.size())
        grow();
    Hint fresh = makeHint(p, q);
    Hint& hint = m_vHints[getIndex(fresh)];
    fresh.apTet[0] = pTet;
    if (haveSameEnds(hint, fresh))
        for (Tet3* pEarlier : hint.apTet)
            if (pEarlier != nullptr && pEarlier != pTet && findHullFacet(pEarlier, p, q, {}) >= 0)
                fresh.apTet[1] = pEarlier;
    m_numUsed += hint.apTet[0] == nullptr;
    hint = fresh;
}

HullFacet HullEdgeHints::findOther(const Point3* p, const Point3* q, HullFacet known) const
{
    if (m_vHints.empty())
        return {};
    const Hint probe = makeHint(p, q);
    const Hint& hint = m_vHints[getIndex(probe)];
    if (haveSameEnds(hint, probe))
        for (Tet3* pTet : hint.apTet)
            if (pTet != nullptr) {
                const int ici = findHullFacet(pTet, p, q, known);
                if (ici >= 0)
                    return {pTet, ici};
            }
    return {};
}

HullEdgeHints::Hint HullEdgeHints::makeHint(const Point3* p, const Point3* q)
{
    if (std::less<>()(q, p))
        std::swap(p, q);
    return {{p, q}, {}};
}

std::size_t HullEdgeHints::getIndex(const Hint& hint) const
{
    const auto low = reinterpret_cast<std::uintptr_t>(hint.apEnd[0]);
    const auto high = reinterpret_cast<std::uintptr_t>(hint.apEnd[1]);
    return hashEdge(low, high) & (m_vHints.size() - 1);
}

bool HullEdgeHints::haveSameEnds(const Hint& a, const Hint& b)
{
    return a.apEnd[0] == b.apEnd[0] && a.apEnd[1] == b.apEnd[1];
}

void HullEdgeHints::grow()
{
    std::vector<Hint> vOld(std::max<std::size_t>(2 * m_vHints.size(), 1024));
    vOld.swap(m_vHints);
    m_numUsed = 0;
    for (const Hint& hint : vOld)
        if (hint.apTet[0] != nullptr) {
            Hint& place = m_vHints[getIndex(hint)];
            m_numUsed += place.apTet[0] == nullptr;
            place = hint;
        }
}

} // namespace VORN3D
