#include "kernel/TetStore.h"

#include <algorithm>

namespace VORN3D
{

TetStore::TetStore()
{
    m_pool.init(28, -1);
}

void TetStore::clear()
{
    m_pool.rewind();
    m_vDoomed.clear();
    m_vReusable.clear();
    m_numLeftOver = 0;
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
    const std::size_t numReused = std::min(num, m_vReusable.size());
    const std::size_t numNew = num - numReused;
    vRecords.makeRoomFor(num);
    m_vReusable.makeRoomFor(num); // for what has to be given back
    {
        ScratchList<Tet3*>::Appender records(vRecords, numReused);
        for (std::size_t i = 0; i < numReused; ++i)
            records.append(m_vReusable.takeLast());
    }
    try {
        for (std::size_t i = 0; i < numNew; ++i)
            vRecords.append(m_pool.newElement());
    } catch (...) {
        for (; !vRecords.empty(); m_vReusable.append(vRecords.takeLast()))
            vRecords.end()[-1]->hasBeenVisited = true;
        throw;
    }
}

Tet3* TetStore::takeRecord()
{
    return m_vReusable.empty() ? m_pool.newElement() : m_vReusable.takeLast();
}

} // namespace VORN3D
