#include "FacetHash.h"

namespace VORN3D
{

void FacetHash::grow()
{
    std::vector<TwoTetStruct> vUsed;
    vUsed.reserve(m_numUsed);
    for (std::size_t i = 0; i <= m_mask; ++i)
        if (m_vSlots[i].stamp == m_stamp)
            vUsed.push_back(m_vSlots[i]);
    useSlots(2 * (m_mask + 1));
    ++m_stamp;
    for (TwoTetStruct& used : vUsed) {
        used.stamp = m_stamp;
        m_vSlots[findSlot(used.low, used.high)] = used;
    }
}

} // namespace VORN3D
