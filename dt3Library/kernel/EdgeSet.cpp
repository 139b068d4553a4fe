#include "kernel/EdgeSet.h"

#include <algorithm>
#include <iterator>

namespace VORN3D
{

void EdgeSet::grow()
{
    std::vector<Slot> vUsed;
    const auto end = m_vSlots.begin() + static_cast<std::ptrdiff_t>(m_mask) + 1;
    std::copy_if(m_vSlots.begin(), end, std::back_inserter(vUsed),
                 [this](const Slot& slot) { return slot.stamp == m_stamp; });
    const std::size_t numSlots = 2 * (m_mask + 1);
    if (m_vSlots.size() < numSlots)
        m_vSlots.resize(numSlots);
    m_mask = numSlots - 1;
    ++m_stamp;
    for (const Slot& used : vUsed)
        findSlot(used.edge) = {used.edge, m_stamp};
}

} // namespace VORN3D
