#include "vorn3d/Tet3.h"

#include "mesh/indexTables.h"
#include "mesh/runningLabel.h"
#include "nalo_tools/assertion.h"
#include "nalo_tools/endProcess.h"
#include "nalo_tools/log.h"
#include "nalo_tools/rangeChecks.h"
#include "predicates/NaloTest3.h"
#include "vorn3d/Edge3.h"
#include "vorn3d/Facet3.h"

#include <string>

namespace VORN3D
{

Tet3::Tet3() : hasBeenVisited(false), ID(takeRunningLabels(1)), aVertexPointer{}, aOppTet{}, customIndex(-1)
{
    messages() << "Tet default constructor (is actually not called)" << std::endl;
}

// A copied tetrahedron would claim the neighbours of its original, so nothing is copied.
Tet3::Tet3(const Tet3&)
{
    messages() << "CCTOR of Tet3" << std::endl;
}

void Tet3::setProperties(Point3* pI, Point3* pJ, Point3* pK, Point3* pL)
{
    ID = takeRunningLabels(1);
    DEBUG_ASSERT_TEXT(pI != nullptr && pJ != nullptr && pK != nullptr && pL != nullptr,
                      "(pI!=NULL && pJ!=NULL && pK!=NULL && pL!=NULL)");
    Point3* const aCorner[4] = {pI, pJ, pK, pL};
    for (int i = 0; i < 4; ++i) {
        aVertexPointer[i] = aCorner[i];
        aCorner[i]->setOneTet(this);
        aOppTet[i] = nullptr;
    }
    hasBeenVisited = false;
    customIndex = -1;
}

Point3* Tet3::getCorner(int ith) const
{
    DEBUG_ASSERT(range03(ith));
    return aVertexPointer[ith];
}

void Tet3::setCorner(int ith, Point3* p)
{
    DEBUG_ASSERT(range03(ith));
    aVertexPointer[ith] = p;
}

Tet3* Tet3::getOppTet(int ith) const
{
    DEBUG_ASSERT(range03(ith));
    return aOppTet[ith];
}

Tet3* Tet3::getOppTet(const Point3* pp) const
{
    return aOppTet[getIntraTetIndex(pp)];
}

void Tet3::setOppTet(int ith, Tet3* pC)
{
    if (pC == this) {
        messages() << "this=" << this << ", pC=" << pC << "\n" << *pC;
        logError("Tet3::setOppTet()", "trying to set *this as neighbor of *this, ith=" + std::to_string(ith));
        DEBUG_ASSERT_TEXT(this != pC, "this!=pC");
    }
    DEBUG_ASSERT(range03(ith));
    aOppTet[ith] = pC;
}

int Tet3::getIntraTetIndex(const Point3* pp) const
{
    for (int i = 0; i < 3; ++i)
        if (aVertexPointer[i] == pp)
            return i;
    DEBUG_ASSERT_TEXT(aVertexPointer[3] == pp, "aVertexPointer[3]==pp");
    return 3;
}

int Tet3::getIntraTetIndex(const Tet3* pNeighbor) const
{
    for (int i = 0; i < 4; ++i)
        if (aOppTet[i] == pNeighbor)
            return i;
    messages() << "Tet3::getIntraTetIndex went wrong: " << *pNeighbor << ", this is " << *this << std::endl;
    endProcess("Tet3::getIntraTetIndex went wrong");
}

int Tet3::getIntraTetIndexInOppTet(int ith) const
{
    return getOppTet(ith)->getIntraTetIndex(this);
}

int Tet3::getIntraTetIndexInOppTetForReg(const Tet3* pOther, int ith) const
{
    static const char* const CONDITION[4] = {"pd!=p1 && pd!=p2 && pd!=p3", "pd!=p0 && pd!=p2 && pd!=p3",
                                             "pd!=p0 && pd!=p1 && pd!=p3", "pd!=p0 && pd!=p1 && pd!=p2"};
    if (!range03(ith)) {
        DEBUG_ASSERT_TEXT(false, "false");
        return -1;
    }
    const auto isSharedCorner = [pOther, ith](const Point3* p) {
        for (const int i : OUTWARD_FACET[ith])
            if (pOther->aVertexPointer[i] == p)
                return true;
        return false;
    };
    for (int k = 0; k < 4; ++k)
        if (!isSharedCorner(aVertexPointer[k]))
            return k;
    DEBUG_ASSERT_TEXT(false, CONDITION[ith]);
    return 3;
}

Point3* Tet3::getOppVtxInOppTet(int ith, bool bNullAllowed) const
{
    const Tet3* pNeighbor = getOppTet(ith);
    if (pNeighbor != nullptr)
        return pNeighbor->aVertexPointer[pNeighbor->getIntraTetIndex(this)];
    if (bNullAllowed)
        return nullptr;
    logError("Tet3::getOppVtxInOppTet", "no neighbor tet");
    DEBUG_ASSERT_TEXT(false, "false");
    endProcess("Tet3::getOppVtxInOppTet: no neighbor tet");
}

void Tet3::getFacetIndices(int opp3, int& i0, int& i1, int& i2) const
{
    DEBUG_ASSERT(range03(opp3));
    i0 = OUTWARD_FACET[opp3][0];
    i1 = OUTWARD_FACET[opp3][1];
    i2 = OUTWARD_FACET[opp3][2];
}

std::pair<int, int> Tet3::getEdgeIndices(int opp3, int j)
{
    const int(&edge)[2] = FACET_EDGE[3 * opp3 + j];
    return {edge[0], edge[1]};
}

Facet3 Tet3::getFacet(int ith)
{
    return {this, ith};
}

Edge3 Tet3::getEdge(int opp3ICI, int opp2ICI)
{
    if (opp3ICI == opp2ICI) {
        logError("Tet3::getEdge()", "opp3ICI==opp2ICI=" + std::to_string(opp3ICI));
        DEBUG_ASSERT_TEXT(opp3ICI != opp2ICI, "opp3ICI!=opp2ICI");
    }
    return {this, opp3ICI, opp2ICI};
}

bool Tet3::hasVertex(const Point3* p) const
{
    for (const Point3* pCorner : aVertexPointer)
        if (pCorner == p)
            return true;
    return false;
}

bool Tet3::hasVertex(const Point3& p) const
{
    for (const Point3* pCorner : aVertexPointer)
        if (*pCorner == p)
            return true;
    return false;
}

Point3 Tet3::getCircumcenter() const
{
    return VORN3D::getCircumcenter(*aVertexPointer[0], *aVertexPointer[1], *aVertexPointer[2],
                                   *aVertexPointer[3]);
}

namespace
{

void printFacetOf(const Tet3& tet, int opp3)
{
    int i0, i1, i2;
    tet.getFacetIndices(opp3, i0, i1, i2);
    messages() << tet << "...with index " << opp3 << "\n" << i0 << "," << i1 << "," << i2 << "\n";
}

} // namespace

bool Tet3::haveCommonFacet(const Tet3* pT0, int i0, const Tet3* pT1, int i1)
{
    int a0[3];
    int a1[3];
    pT0->getFacetIndices(i0, a0[0], a0[1], a0[2]);
    pT1->getFacetIndices(i1, a1[0], a1[1], a1[2]);
    const auto isCornerOfSecond = [&](const Point3* p) {
        return p == pT1->aVertexPointer[a1[0]] || p == pT1->aVertexPointer[a1[1]] ||
               p == pT1->aVertexPointer[a1[2]];
    };
    bool bCommon = true;
    for (const int i : a0)
        bCommon = bCommon && isCornerOfSecond(pT0->aVertexPointer[i]);
    if (bCommon)
        return true;
    messages() << "Tet3::haveCommonFacet() ERROR\n";
    printFacetOf(*pT0, i0);
    printFacetOf(*pT1, i1);
    endProcess("Tet3::haveCommonFacet() ERROR");
}

int Tet3::debug_getOppTetIndex(int ith) const
{
    if (getOppTet(ith) == nullptr)
        return -1;
    messages() << "Tet3::debug_getTetIndex(): Not implemented yet" << std::endl;
    return 0;
}

std::ostream& operator<<(std::ostream& os, const Tet3& tet)
{
    const NaloTest3 predicates;
    const Orientation3 ori = predicates.getOrientation3(tet.aVertexPointer[0], tet.aVertexPointer[1],
                                                        tet.aVertexPointer[2], tet.aVertexPointer[3]);
    os << "Tetrahedron (ID=" << tet.ID << "), (this=" << static_cast<const void*>(&tet)
       << "): hasBeenVisited=" << (tet.hasBeenVisited ? 1 : 0) << ", ownOri=" << getOrientationText(ori)
       << "\n";
    for (int ith = 0; ith < 4; ++ith) {
        const Point3* pCorner = tet.aVertexPointer[ith];
        const Tet3* pOpp = tet.aOppTet[ith];
        os << "ith=" << ith << ", vertex (" << static_cast<const void*>(pCorner) << "): " << *pCorner
           << "  oppTet=" << static_cast<const void*>(pOpp) << (pOpp == nullptr ? " (NULL)" : "") << "\n";
    }
    return os;
}

} // namespace VORN3D
