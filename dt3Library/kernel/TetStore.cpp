#include "kernel/TetStore.h"

#include <algorithm>

namespace VORN3D
{

TetStore::TetStore()
{
    m_pool.init(28, -1);
}

void TetStore::startInsertion()
{
    m_vDoomed.swap(m_vReusable);
    m_numLeftOver = m_vDoomed.size();
}

void TetStore::spareDoomed()
{
    while (m_vDoomed.size() > m_numLeftOver)
        m_vDoomed.takeLast()->hasBeenVisited = false;
}

void TetStore::takeRecords(std::size_t num, ScratchList<Tet3*>& vRecords)
{
    const std::size_t numBefore = vRecords.size();
    vRecords.makeRoomFor(num);
    m_vReusable.makeRoomFor(num); // for what has to be given back
    try {
        for (std::size_t i = 0; i < num; ++i)
            vRecords.append(takeRecord());
    } catch (...) {
        while (vRecords.size() > numBefore) {
            m_vReusable.append(vRecords.takeLast());
            m_vReusable.end()[-1]->hasBeenVisited = true;
        }
        throw;
    }
}

Tet3* TetStore::takeRecord()
{
    return m_vReusable.empty() ? m_pool.newElement() : m_vReusable.takeLast();
}

} // namespace VORN3D
