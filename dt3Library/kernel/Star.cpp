#include "kernel/Star.h"
#include "vorn3d/hosting.h"

#include "mesh/indexTables.h"
#include "mesh/runningLabel.h"
#include "nalo_tools/assertion.h"

namespace VORN3D
{

void Star::clear()
{
    m_vFacets.clear();
    m_numVisible = 0;
    m_vTets.clear();
    m_vSlots.clear();
}

void Star::makeRoom(TetStore& tets)
{
    m_vSlots.makeRoomFor(3 * m_vFacets.size());
    m_numbers.makeRoomFor(m_vFacets.size());
    if (isModerate())
        m_edgeMatrix.start(m_vFacets.size());
    else
        m_facetHash.start(2 * m_vFacets.size());
    tets.takeRecords(m_vFacets.size(), m_vTets);
}

std::size_t Star::join(Point3* pVtx, const NaloTest3& predicates)
{
    if (isModerate()) {
        make(pVtx, predicates, m_edgeMatrix);
        return link(m_edgeMatrix);
    }
    make(pVtx, predicates, m_facetHash);
    return link(m_facetHash);
}

template <class Edges>
void Star::make(Point3* pVtx, const NaloTest3& predicates, Edges& edges)
{
    const typename Edges::Matcher matcher(edges);
    StarNumbers::Numberer numberer(m_numbers);
    ScratchList<std::uint32_t>::Appender slots(m_vSlots, 3 * m_vFacets.size());
    std::int32_t label = takeRunningLabels(static_cast<std::uint32_t>(m_vFacets.size()));
    for (std::size_t i = 0; i < m_vFacets.size(); ++i) {
        const StarFacet facet = m_vFacets[i];
        const int ici = facet.getIndex();
        const int(&aCorner)[3] = facet.isFromOutside() ? INWARD_FACET[ici] : OUTWARD_FACET[ici];
        Point3* a = facet.getTet()->aVertexPointer[aCorner[0]];
        Point3* b = facet.getTet()->aVertexPointer[aCorner[1]];
        Point3* c = facet.getTet()->aVertexPointer[aCorner[2]];
        if (!facet.isOrientationCertain())
            checkOrientation(pVtx, a, b, c, predicates);
        Tet3* pNewTet = m_vTets[i];
        pNewTet->fill(label++, pVtx, a, b, c);
        linkBeyond(pNewTet, facet);
        const std::uint32_t ia = numberer.number(a);
        const std::uint32_t ib = numberer.number(b);
        const std::uint32_t ic = numberer.number(c);
        slots.append(matcher.match(pNewTet, ib, ic));
        slots.append(matcher.match(pNewTet, ic, ia));
        slots.append(matcher.match(pNewTet, ia, ib));
    }
}

void Star::linkBeyond(Tet3* pNewTet, StarFacet facet)
{
    Tet3* pTet = facet.getTet();
    const int ici = facet.getIndex();
    if (facet.isFromOutside()) {
        pNewTet->aOppTet[0] = pTet;
        pTet->aOppTet[ici] = pNewTet;
        return;
    }
    Tet3* pBeyond = pTet->aOppTet[ici];
    pNewTet->aOppTet[0] = pBeyond;
    if (pBeyond != nullptr)
        pBeyond->aOppTet[pBeyond->getIndexOfNeighbor(pTet)] = pNewTet;
}

// Links the tetrahedra of the star with each other.
template <class Edges>
std::size_t Star::link(Edges& edges)
{
    std::size_t numAlone = 0;
    const std::uint32_t* pSlot = m_vSlots.begin();
    for (Tet3* pTet : m_vTets)
        for (int i = 1; i < 4; ++i) {
            Tet3* pPartner = edges.takePartner(*pSlot++, pTet);
            pTet->aOppTet[i] = pPartner;
            numAlone += pPartner == nullptr;
        }
    return numAlone;
}

void checkOrientation(const Point3* a, const Point3* b, const Point3* c, const Point3* d,
                      const NaloTest3& predicates)
{
    const Orientation3 orientation = predicates.getOrientation3(a, b, c, d);
    if (orientation == ORIENTATION3_POSITIVE)
        return;
    const bool bNegative = orientation == ORIENTATION3_NEGATIVE;
    messages() << "Dt3::createTet(), ERROR: "
               << (bNegative ? "ORIENTATION3_NEGATIVE" : "ORIENTATION3_COPLANAR") << " ORIENTATION OF: \n";
    const auto precision = messages().precision(15);
    for (const Point3* p : {a, b, c, d})
        messages() << *p << "\n";
    messages().precision(precision);
    if (!bNegative)
        messages() << "..probably a legal situaion but observe!\n";
    messages().flush();
    VORN_ASSERT_TEXT(!bNegative, "false");
}

} // namespace VORN3D
