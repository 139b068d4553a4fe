#include "vorn3d/Facet3.h"

#include "mesh/indexTables.h"
#include "nalo_tools/assertion.h"
#include "nalo_tools/rangeChecks.h"
#include "vorn3d/Edge3.h"
#include "vorn3d/Tet3.h"

namespace VORN3D
{

int Facet3::getIntraTetIndex(int ith) const
{
    DEBUG_ASSERT(range02(ith));
    return INWARD_FACET[m_opp3][ith];
}

Edge3 Facet3::getEdge(int ith) const
{
    return {m_pTet, m_opp3, getIntraTetIndex(ith)};
}

bool Facet3::operator==(const Facet3& other) const
{
    if (m_pTet == other.m_pTet && m_opp3 == other.m_opp3)
        return true;
    if (m_pTet == nullptr || other.m_pTet == nullptr || m_pTet->getOppTet(m_opp3) != other.m_pTet)
        return false;
    return other.m_opp3 == m_pTet->getIntraTetIndexInOppTet(m_opp3);
}

} // namespace VORN3D
