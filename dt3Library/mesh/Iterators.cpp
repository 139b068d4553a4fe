#include "vorn3d/Iterators.h"

#include "nalo_tools/assertion.h"
#include "vorn3d/Tet3.h"
#include "vorn3d/hosting.h"

#include <string>

namespace VORN3D
{

TetAroundEdgeIterator::TetAroundEdgeIterator(const Edge3& edge)
    : m_edge(edge), storedPayload(nullptr), storedPayloadICI(-1)
{
}

TetAroundEdgeIterator::TetAroundEdgeIterator(const TetAroundEdgeIterator& other)
    : m_edge(other.m_edge), storedPayload(other.storedPayload), storedPayloadICI(-1)
{
}

TetAroundEdgeIterator& TetAroundEdgeIterator::operator++()
{
    Tet3* pNext = previewNextTet();
    const int entered = pNext->getIntraTetIndex(m_edge.getTet());
    const Point3* pSource = m_edge.getSourceVtx();
    const Point3* pTarget = m_edge.getTargetVtx();
    int kept = 0;
    while (kept == entered || pNext->getCorner(kept) == pSource || pNext->getCorner(kept) == pTarget)
        ++kept;
    m_edge = Edge3(pNext, entered, kept);
    return *this;
}

bool TetAroundEdgeIterator::nextIsNull() const
{
    return previewNextTet() == nullptr;
}

Tet3* TetAroundEdgeIterator::previewNextTet() const
{
    return m_edge.getTet()->getOppTet(m_edge.getOpp2Index());
}

Tet3* TetAroundEdgeIterator::operator*() const
{
    return m_edge.getTet();
}

bool TetAroundEdgeIterator::operator==(const TetAroundEdgeIterator& other) const
{
    return m_edge.getTet() == other.m_edge.getTet() && m_edge == other.m_edge;
}

void TetAroundEdgeIterator::setPayload(Tet3* pTet)
{
    DEBUG_ASSERT_TEXT(storedPayload == nullptr, "storedPayload==NULL");
    storedPayload = pTet;
}

Tet3* TetAroundEdgeIterator::getPayload() const
{
    DEBUG_ASSERT_TEXT(storedPayload != nullptr, "storedPayload!=NULL");
    return storedPayload;
}

void TetAroundEdgeIterator::setPayloadICI(int ici)
{
    DEBUG_ASSERT_TEXT(storedPayloadICI == -1, "storedPayloadICI==-1");
    storedPayloadICI = ici;
}

int TetAroundEdgeIterator::getPayloadICI() const
{
    DEBUG_ASSERT_TEXT(storedPayloadICI != -1, "storedPayloadICI!=-1");
    return storedPayloadICI;
}

void TetAroundEdgeIterator::debug() const
{
    const std::string rule(35, '-');
    messages() << rule << "\n# This is a TetAroundEdgeIterator:\n" << m_edge << rule << "\n" << std::endl;
}

} // namespace VORN3D
