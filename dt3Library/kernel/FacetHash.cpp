#include "kernel/FacetHash.h"

#include <algorithm>
#include <iterator>

namespace VORN3D
{

void FacetHash::growFor(std::size_t numEdges)
{
    if (m_mask >= SLOTS_PER_EDGE * numEdges)
        return;
    std::vector<TwoTetStruct> vUsed;
    const auto end = m_vSlots.begin() + static_cast<std::ptrdiff_t>(m_mask) + 1;
    std::copy_if(m_vSlots.begin(), end, std::back_inserter(vUsed),
                 [this](const TwoTetStruct& slot) { return slot.stamp == m_stamp; });
    start(2 * numEdges);
    for (TwoTetStruct& used : vUsed) {
        used.stamp = m_stamp;
        m_vSlots[findSlot(used.low, used.high)] = used;
    }
}

} // namespace VORN3D
