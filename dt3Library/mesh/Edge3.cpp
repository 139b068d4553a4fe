#include "vorn3d/Edge3.h"

#include "mesh/indexTables.h"
#include "nalo_tools/rangeChecks.h"
#include "vorn3d/Tet3.h"

#include <functional>
#include <ostream>
#include <tuple>
#include <utility>

namespace VORN3D
{

namespace
{

constexpr int INVALID_INDEX = -99;

} // namespace

Edge3::Edge3(Tet3* pTet, int opp3ICI, int opp2ICI)
    : m_pTet(pTet), m_opp3ICI(opp3ICI), m_opp2ICI(opp2ICI), m_pLow(getSourceVtx()), m_pHigh(getTargetVtx())
{
    if (std::less<>()(m_pHigh, m_pLow))
        std::swap(m_pLow, m_pHigh);
}

int Edge3::getSourceIndex() const
{
    return range03(m_opp3ICI) && range03(m_opp2ICI) ? EDGE_SOURCE[m_opp3ICI][m_opp2ICI] : INVALID_INDEX;
}

int Edge3::getTargetIndex() const
{
    return range03(m_opp3ICI) && range03(m_opp2ICI) ? EDGE_TARGET[m_opp3ICI][m_opp2ICI] : INVALID_INDEX;
}

Point3* Edge3::getSourceVtx() const
{
    return m_pTet->getCorner(getSourceIndex());
}

Point3* Edge3::getTargetVtx() const
{
    return m_pTet->getCorner(getTargetIndex());
}

bool Edge3::operator<(const Edge3& other) const
{
    const std::less<> isLower;
    if (m_pLow != other.m_pLow)
        return isLower(m_pLow, other.m_pLow);
    return isLower(m_pHigh, other.m_pHigh);
}

bool Edge3::operator==(const Edge3& other) const
{
    return m_pLow == other.m_pLow && m_pHigh == other.m_pHigh;
}

std::ostream& operator<<(std::ostream& os, const Edge3& edge)
{
    const std::tuple<const char*, int> aRole[4] = {{"opp3ICI=", edge.getOpp3Index()},
                                                   {"opp2ICI=", edge.getOpp2Index()},
                                                   {"srcICI=", edge.getSourceIndex()},
                                                   {"trgICI=", edge.getTargetIndex()}};
    os << "Edge (pTet" << static_cast<const void*>(edge.m_pTet) << "): \n";
    for (const auto& [role, index] : aRole)
        os << role << index << ", " << static_cast<const void*>(edge.m_pTet->getCorner(index)) << "\n";
    return os;
}

} // namespace VORN3D
