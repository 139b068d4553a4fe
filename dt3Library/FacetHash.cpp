#include "FacetHash.h"

namespace VORN3D {

void FacetHash::grow()
{
    std::vector<TwoTetStruct> vUsed;
    vUsed.reserve(m_numUsed);
    for (std::size_t i = 0; i <= m_mask; ++i)
        if (m_vSlots[i].stamp == m_stamp)
            vUsed.push_back(m_vSlots[i]);
    useSlots(2 * (m_mask + 1));
    startStamp();
    for (const TwoTetStruct& used : vUsed) {
        TwoTetStruct* pSlot = &m_vSlots[getKey(used.pSource, used.pTarget)];
        while (pSlot->stamp == m_stamp)
            pSlot = getNextSlot(pSlot);
        *pSlot = used;
        pSlot->stamp = m_stamp;
    }
}

} // namespace VORN3D
