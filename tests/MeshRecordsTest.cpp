// Tetrahedra, facets, edges and the turn around an edge.
#include "nalo_tools/SimplePool.h"
#include "outcomes.h"
#include "vorn3d/Edge3.h"
#include "vorn3d/Facet3.h"
#include "vorn3d/Iterators.h"
#include "vorn3d/Vorn_3D.h"
#include "vorn3d/testDataGenerators.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace VORN3D
{

namespace
{

using testing::HasSubstr;

/// Six times the signed volume; exact for small integers.
double getVolume(const Point3& a, const Point3& b, const Point3& c, const Point3& d)
{
    return dotProduct(crossProduct(b - a, c - a), d - a);
}

/// Two tetrahedra by themselves, not yet linked. Corner i of the first is point i.
class TetrahedronTest : public testing::Test
{
protected:
    TetrahedronTest()
    {
        m_pool.init(2, -1);
        pTet = m_pool.newElement();
        pTet->setProperties(&aPoint[0], &aPoint[1], &aPoint[2], &aPoint[3]);
        pNeighbor = m_pool.newElement();
        pNeighbor->setProperties(&aPoint[1], &aPoint[4], &aPoint[2], &aPoint[3]);
    }

    Point3 aPoint[5] = {{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {0, 0, 4}, {4, 4, 4}};
    Tet3 *pTet, *pNeighbor;

private:
    SimplePool<Tet3> m_pool;
};

int getID(const Tet3* pTet)
{
    const std::string text = textOf(*pTet);
    return std::stoi(text.substr(text.find("ID=") + 3));
}

TEST_F(TetrahedronTest, PropertiesOfANewRecord)
{
    pTet->hasBeenVisited = true;
    pTet->setCustomIndex(3);
    pTet->setOppTet(1, pNeighbor);
    pTet->setProperties(&aPoint[3], &aPoint[1], &aPoint[0], &aPoint[2]);
    Point3* aCorner[4];
    pTet->getCorners(aCorner[0], aCorner[1], aCorner[2], aCorner[3]);
    EXPECT_THAT(aCorner, testing::ElementsAre(&aPoint[3], &aPoint[1], &aPoint[0], &aPoint[2]));
    EXPECT_TRUE(!pTet->getOppTet(1) && pTet->getCustomIndex() == -1 && !pTet->hasBeenVisited);
    for (const Point3* pCorner : aCorner)
        EXPECT_EQ(pCorner->getOneTet(), pTet);

    pNeighbor->setProperties(&aPoint[0], &aPoint[1], &aPoint[2], &aPoint[3]);
    EXPECT_EQ(getID(pNeighbor), getID(pTet) + 1);
    pTet->setCorner(2, &aPoint[0]);
    EXPECT_EQ(aPoint[0].getOneTet(), pNeighbor) << "setting a corner leaves the vertex alone";
}

TEST_F(TetrahedronTest, FacetTables)
{
    for (int opp3 = 0; opp3 < 4; ++opp3) {
        SCOPED_TRACE(opp3);
        int a, b, c;
        pTet->getFacetIndices(opp3, a, b, c);
        EXPECT_LT(a, std::min(b, c)) << "a row starts with its lowest index";
        EXPECT_LT(getVolume(aPoint[a], aPoint[b], aPoint[c], aPoint[opp3]), 0);

        const Facet3 facet = pTet->getFacet(opp3);
        const int aReverse[] = {a, c, b, a};
        for (int j = 0; j < 3; ++j) {
            EXPECT_EQ(facet.getIntraTetIndex(j), aReverse[j]) << "the facet handle turns the other way";
            EXPECT_EQ(Tet3::getEdgeIndices(opp3, j), std::pair(aReverse[j], aReverse[j + 1]));
            EXPECT_EQ(facet.getEdge(j).getTet(), pTet);
            EXPECT_EQ(facet.getEdge(j).getOpp3Index(), opp3);
            EXPECT_EQ(facet.getEdge(j).getOpp2Index(), aReverse[j]);
        }
    }
    EXPECT_EQ(Tet3::getEdgeIndices(0, 11), Tet3::getEdgeIndices(3, 2)) << "one flat table";
}

std::pair<Point3*, Point3*> getEnds(const Edge3& edge)
{
    return std::minmax({edge.getSourceVtx(), edge.getTargetVtx()}, std::less<>());
}

TEST_F(TetrahedronTest, EdgesAreOrderedByTheAddressesOfTheirEnds)
{
    std::vector<Edge3> vEdges;
    for (Tet3* p : {pTet, pNeighbor})
        for (int k = 0; k < 16; ++k)
            if (k / 4 != k % 4)
                vEdges.push_back(p->getEdge(k / 4, k % 4));
    for (const Edge3& a : vEdges) {
        Tet3* p = a.getTet();
        EXPECT_EQ(a.getSourceVtx(), p->getCorner(a.getSourceIndex()));
        EXPECT_EQ(a.getSourceVtx(), p->getEdge(a.getOpp2Index(), a.getOpp3Index()).getTargetVtx());
        EXPECT_GT(getVolume(*a.getTargetVtx(), *a.getSourceVtx(), *p->getCorner(a.getOpp2Index()),
                            *p->getCorner(a.getOpp3Index())),
                  0);
        for (const Edge3& b : vEdges) {
            EXPECT_EQ(a < b, getEnds(a) < getEnds(b));
            EXPECT_EQ(a == b, getEnds(a) == getEnds(b));
            EXPECT_EQ(a != b, getEnds(a) != getEnds(b));
        }
    }
}

TEST_F(TetrahedronTest, NothingLiesBeyondAHullFacet)
{
    EXPECT_TRUE(pTet->getFacet(1) != Facet3(nullptr, 0) && Facet3(nullptr, 0) != pTet->getFacet(1));
    EXPECT_EQ(pTet->getOppVtxInOppTet(1, true), nullptr);
    expectAbortOrExit([&] { pTet->getOppVtxInOppTet(1, false); },
                      "\n      Tet3::getOppVtxInOppTet, ERROR: no neighbor tet\n\n");
}

TEST_F(TetrahedronTest, VerticesByAddressAndByCoordinates)
{
    const Point3 copy(-0.0, 4, 0);
    EXPECT_TRUE(pTet->hasVertex(&aPoint[3]) && !pTet->hasVertex(&aPoint[4]) && !pTet->hasVertex(&copy));
    EXPECT_TRUE(pTet->hasVertex(copy) && !pTet->hasVertex(Point3(1e-300, 4, 0)));
    EXPECT_EQ(pTet->getCircumcenter(), Point3(2, 2, 2));
}

TEST_F(TetrahedronTest, Printing)
{
    pTet->setOppTet(0, pNeighbor);
    pTet->hasBeenVisited = true;
    std::string text = "Tetrahedron (ID=" + std::to_string(getID(pTet)) + "), (this=" + addressOf(pTet) +
                       "): hasBeenVisited=1, ownOri=ORI3_ORIENTATION3_POSITIVE\n";
    for (int i = 0; i < 4; ++i)
        text += "ith=" + std::to_string(i) + ", vertex (" + addressOf(&aPoint[i]) +
                "): " + textOf(aPoint[i]) +
                "  oppTet=" + (i == 0 ? addressOf(pNeighbor) : addressOf(nullptr) + " (NULL)") + "\n";
    EXPECT_EQ(textOf(*pTet), text);
    pTet->setProperties(&aPoint[1], &aPoint[0], &aPoint[2], &aPoint[3]);
    EXPECT_THAT(textOf(*pTet), HasSubstr("Visited=0, ownOri=ORI3_ORIENTATION3_NEGATIVE\n"));
    pTet->setCorner(2, &aPoint[0]);
    EXPECT_THAT(textOf(*pTet), HasSubstr("ownOri=ORI3_ZERO\n"));

    const auto line = [&](const char* role, int i) {
        return role + std::to_string(i) + ", " + addressOf(pNeighbor->getCorner(i)) + "\n";
    };
    const std::string rule(35, '-');
    EXPECT_EQ(outputOf([&] { TetAroundEdgeIterator(pNeighbor->getEdge(1, 3)).debug(); }),
              rule + "\n# This is a TetAroundEdgeIterator:\nEdge (pTet" + addressOf(pNeighbor) + "): \n" +
                  line("opp3ICI=", 1) + line("opp2ICI=", 3) + line("srcICI=", 2) + line("trgICI=", 0) + rule +
                  "\n\n");
}

TEST_F(TetrahedronTest, WrongArgumentsFailPlainAssertions)
{
    int i = 0, a, b, c;
    const std::pair<const char*, std::function<void()>> aCalls[] = {
        {"range03(ith)", [&] { pTet->getCorner(i); }},
        {"range03(ith)", [&] { pTet->setCorner(i, &aPoint[0]); }},
        {"range03(ith)", [&] { pTet->getOppTet(i); }},
        {"range03(ith)", [&] { pTet->setOppTet(i, pNeighbor); }},
        {"range03(ith)", [&] { Edge3(pTet, 2, 2); }},
        {"range03(opp3)", [&] { pTet->getFacetIndices(i, a, b, c); }},
        {"range02(ith)", [&] { pTet->getFacet(0).getIntraTetIndex(i); }},
        {"range02(ith)", [&] { pTet->getFacet(0).getEdge(i); }},
        {"false", [&] { pTet->getIntraTetIndexInOppTetForReg(pNeighbor, i); }},
        {"pd!=p1 && pd!=p2 && pd!=p3",
         [&] {
             pNeighbor->setProperties(&aPoint[1], &aPoint[2], &aPoint[3], &aPoint[1]);
             pNeighbor->getIntraTetIndexInOppTetForReg(pTet, 0);
         }},
        {"(pI!=NULL && pJ!=NULL && pK!=NULL && pL!=NULL)",
         [&] { pTet->setProperties(&aPoint[0], &aPoint[1], nullptr, &aPoint[3]); }},
        {"aVertexPointer[3]==pp", [&] { pTet->getIntraTetIndex(&aPoint[4]); }},
        {"this!=pC", [&] { pTet->setOppTet(2, pTet); }},
        {"opp3ICI!=opp2ICI", [&] { pTet->getEdge(2, 2); }},
    };
    for (const int wrongIndex : {-1, 4})
        for (const auto& [condition, call] : aCalls) {
            SCOPED_TRACE(condition);
            i = wrongIndex;
            expectAbortInDiagnostic(call, condition);
        }
    if (isRelease()) {
        pTet->setOppTet(3, pNeighbor);
        EXPECT_EQ(pTet->getOppTet(&aPoint[4]), pNeighbor);
        EXPECT_EQ(pTet->getIntraTetIndexInOppTetForReg(pNeighbor, 4), -1);
    }
}

TEST_F(TetrahedronTest, CorruptedMeshesEndTheProcess)
{
    const std::string text = textOf(*pTet);
    expectExit([&] { pTet->getIntraTetIndex(pNeighbor); },
               "Tet3::getIntraTetIndex went wrong: " + textOf(*pNeighbor) + ", this is " + text + "\n");
    if (!isRelease())
        expectEnd(
            [&] { pTet->setOppTet(2, pTet); }, testing::KilledBySignal(SIGABRT),
            "this=" + addressOf(pTet) + ", pC=" + addressOf(pTet) + "\n" + text +
                "\n      Tet3::setOppTet(), ERROR: trying to set *this as neighbor of *this, ith=2\n\n");
    const auto check = [&] { Tet3::haveCommonFacet(pTet, 1, pNeighbor, 1); };
    expectExit(check, "Tet3::haveCommonFacet() ERROR\n" + textOf(*pTet) + "...with index 1\n0,3,2\n" +
                          textOf(*pNeighbor) + "...with index " + "1" + "\n");
}

TEST_F(TetrahedronTest, IteratorsCarryAPayloadThatIsSetOnce)
{
    TetAroundEdgeIterator it(pTet->getEdge(0, 1));
    expectAbortInDiagnostic([&] { it.getPayload(); }, "storedPayload!=NULL");
    expectAbortInDiagnostic([&] { it.getPayloadICI(); }, "storedPayloadICI!=-1");
    it.setPayload(pNeighbor);
    it.setPayloadICI(2);
    expectAbortInDiagnostic([&] { it.setPayload(pTet); }, "storedPayload==NULL");
    expectAbortInDiagnostic([&] { it.setPayloadICI(1); }, "storedPayloadICI==-1");

    TetAroundEdgeIterator copy(it);
    copy.setPayloadICI(3);
    EXPECT_EQ(copy.getPayload(), pNeighbor);
    EXPECT_EQ(copy.getPayloadICI() + it.getPayloadICI(), 5) << "the index is not copied";
    EXPECT_TRUE(copy == it);
    EXPECT_TRUE(TetAroundEdgeIterator(pTet->getEdge(1, 0)) == it) << "in either direction";
    EXPECT_TRUE(TetAroundEdgeIterator(pTet->getEdge(0, 2)) != it);
}

/// A triangulation, with edges inside and on the hull.
class MeshTest : public testing::Test
{
protected:
    MeshTest()
    {
        std::vector<Point3> vPoints;
        std::vector<Point3*> vHandles;
        generateRandomPoints(60, 0, 1, vPoints, 1);
        outputOf([&] { m_dt.insert(vPoints, vHandles); });
        m_dt.getTetrahedra(vTets);
    }

    std::vector<Tet3*> vTets;

private:
    Vorn_3D m_dt;
};

TEST_F(MeshTest, LinksAreKnownFromBothSides)
{
    for (Tet3* pTet : vTets)
        for (int i = 0; i < 4; ++i) {
            Tet3* pOther = pTet->getOppTet(i);
            if (pOther == nullptr)
                continue;
            SCOPED_TRACE(testing::Message() << "facet " << i << " of " << *pTet << " and " << *pOther);
            const int j = pTet->getIntraTetIndexInOppTet(i);
            EXPECT_EQ(pTet->getOppTet(pTet->getCorner(i)), pOther);
            EXPECT_EQ(pOther->getOppTet(j), pTet);
            EXPECT_EQ(pTet->getOppVtxInOppTet(i, false), pOther->getCorner(j));
            EXPECT_TRUE(Tet3::haveCommonFacet(pTet, i, pOther, j));
            for (int k = 0; k < 4; ++k)
                EXPECT_EQ(pTet->getFacet(i) == pOther->getFacet(k), k == j);
            pTet->setOppTet(i, nullptr);
            EXPECT_EQ(pOther->getIntraTetIndexInOppTetForReg(pTet, i), j) << "needs no links";
            pTet->setOppTet(i, pOther);
        }
}

/// The tetrahedra around an edge, until the turn is complete or the hull is reached.
std::vector<Tet3*> turn(const Edge3& edge)
{
    std::vector<Tet3*> vVisited;
    TetAroundEdgeIterator it(edge);
    do {
        EXPECT_EQ(getEnds(it.getEdge()), getEnds(edge));
        EXPECT_EQ(it.getEdge().getTet(), *it);
        EXPECT_EQ(it.getOpp3Index(), it.getEdge().getOpp3Index());
        vVisited.push_back(*it);
        Tet3* pNext = it.previewNextTet();
        EXPECT_EQ(pNext, (*it)->getOppTet(it.getOpp2Index()));
        EXPECT_EQ(pNext == nullptr, it.nextIsNull());
        if (pNext == nullptr)
            return vVisited;
        EXPECT_EQ(*++it, pNext);
    } while (*it != edge.getTet() && vVisited.size() < 100);
    return vVisited;
}

TEST_F(MeshTest, TheTurnAroundAnEdgeMeetsEveryTetrahedronOnceAndStopsAtTheHull)
{
    int numRings = 0;
    for (Tet3* pTet : vTets)
        for (int k = 0; k < 16; ++k) {
            if (k / 4 == k % 4)
                continue;
            const Edge3 edge = pTet->getEdge(k / 4, k % 4);
            SCOPED_TRACE(testing::Message() << edge);
            std::vector<Tet3*> vForth = turn(edge), vBack = turn(pTet->getEdge(k % 4, k / 4)), vAll;
            std::copy_if(vTets.begin(), vTets.end(), std::back_inserter(vAll), [&](const Tet3* p) {
                return p->hasVertex(edge.getSourceVtx()) && p->hasVertex(edge.getTargetVtx());
            });
            std::reverse(vBack.begin() + 1, vBack.end());
            if (vForth == vBack && vAll.size() > 1)
                ++numRings;
            else
                vForth.insert(vForth.end(), vBack.begin() + 1, vBack.end());
            EXPECT_THAT(vForth, testing::UnorderedElementsAreArray(vAll));
        }
    EXPECT_GT(numRings, 100);
}

} // namespace

} // namespace VORN3D
