// TetStore owns the records of the tetrahedra and knows which are dead.
//
// Records live in a pool and never move. A tetrahedron that an insertion removes is doomed; its record is
// reused from the next insertion on, so that the tetrahedra of the cavity can be read while the star is
// built. Two lists change roles from insertion to insertion: one takes the doomed, the other gives records.
// Between insertions `hasBeenVisited` is set exactly on the records in these two lists.
#pragma once

#include "nalo_tools/ScratchList.h"
#include "nalo_tools/SimplePool.h"
#include "vorn3d/Tet3.h"

#include <cstddef>

namespace VORN3D
{

class TetStore
{
public:
    TetStore();

    /// All records are free again; their memory stays.
    void clear();

    /// What the insertion before has doomed becomes reusable.
    void startInsertion();

    /// The tetrahedra doomed by the current insertion come behind the first getNumLeftOver() entries, which
    /// are records that were reusable before and not needed.
    ScratchList<Tet3*>& getDoomed() { return m_vDoomed; }
    std::size_t getNumLeftOver() const { return m_numLeftOver; }

    void doom(Tet3* pTet)
    {
        m_vDoomed.append(pTet);
        pTet->hasBeenVisited = true;
    }

    /// Lets the tetrahedra doomed by the current insertion live.
    void spareDoomed();

    /// A record, which is to be filled: a reusable one while there are any.
    Tet3* takeRecord();

    /// Fills the empty list vRecords with `num` of them. Running out of memory leaves it empty.
    void takeRecords(std::size_t num, ScratchList<Tet3*>& vRecords);

    /// The number of live tetrahedra.
    std::size_t getNumTets() const { return m_pool.getNumElements() - m_vDoomed.size() - m_vReusable.size(); }

    /// All records, live and dead.
    const SimplePool<Tet3>& getPool() const { return m_pool; }

    /// Calls visit(Tet3*) for all dead records, between insertions.
    template <typename Visitor>
    void forEachDead(Visitor visit) const
    {
        for (const ScratchList<Tet3*>* pList : {&m_vDoomed, &m_vReusable})
            for (std::size_t i = 0; i < pList->size(); ++i)
                visit((*pList)[i]);
    }

    /// Calls visit(Tet3*) for all records, dead ones too, in ascending address order.
    template <typename Visitor>
    void forEachRecord(Visitor visit) const
    {
        m_pool.forEachElement(visit);
    }

private:
    SimplePool<Tet3> m_pool;
    ScratchList<Tet3*> m_vDoomed;
    ScratchList<Tet3*> m_vReusable;
    std::size_t m_numLeftOver = 0;
};

} // namespace VORN3D
