// Tetrahedra, facets, edges and the turn around an edge, on small meshes linked by hand.
#include "nalo_tools/SimplePool.h"
#include "outcomes.h"
#include "vorn3d/Edge3.h"
#include "vorn3d/Facet3.h"
#include "vorn3d/Iterators.h"
#include "vorn3d/Tet3.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <set>
#include <vector>

namespace VORN3D
{

namespace
{

using testing::HasSubstr;
using Indices = std::array<int, 4>;

bool isEven(const Indices& permutation)
{
    int numInversions = 0;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = i + 1; j < 4; ++j)
            numInversions += permutation[i] > permutation[j];
    return numInversions % 2 == 0;
}

bool isPermutation(const Indices& indices)
{
    return std::set<int>(indices.begin(), indices.end()) == std::set<int>{0, 1, 2, 3};
}

/// Six times the signed volume; exact for small integers.
double getVolume(const Point3& a, const Point3& b, const Point3& c, const Point3& d)
{
    return dotProduct(crossProduct(b - a, c - a), d - a);
}

/// A mesh of positively oriented tetrahedra, with the corner numbers of each turned in one of the twelve even
/// ways, so that a rule that holds only for some index is noticed.
class HandMadeMesh
{
public:
    HandMadeMesh() { m_pool.init(64, -1); }

    Tet3* add(Point3* a, Point3* b, Point3* c, Point3* d)
    {
        std::array<Point3*, 4> aCorner = {a, b, c, d};
        if (getVolume(*a, *b, *c, *d) < 0)
            std::swap(aCorner[2], aCorner[3]);
        Indices order = {0, 1, 2, 3};
        for (std::size_t n = 0; n < vTets.size() % 12; ++n)
            do
                std::next_permutation(order.begin(), order.end());
            while (!isEven(order));
        const auto corner = [&](std::size_t i) { return aCorner[static_cast<std::size_t>(order[i])]; };
        vTets.push_back(m_pool.newElement());
        vTets.back()->setProperties(corner(0), corner(1), corner(2), corner(3));
        return vTets.back();
    }

    static std::set<Point3*> getFacetVertices(const Tet3* pTet, int opp3)
    {
        std::set<Point3*> vertices;
        for (int i = 0; i < 4; ++i)
            if (i != opp3)
                vertices.insert(pTet->getCorner(i));
        return vertices;
    }

    /// Calls f(tet, i, neighbour, j) for the two sides (tet, i) and (neighbour, j) of every inner facet,
    /// twice.
    template <typename F>
    void forEachInnerFacet(F f) const
    {
        for (Tet3* pTet : vTets)
            for (Tet3* pOther : vTets)
                for (int i = 0; i < 4; ++i)
                    for (int j = 0; j < 4; ++j)
                        if (pTet != pOther && getFacetVertices(pTet, i) == getFacetVertices(pOther, j))
                            f(pTet, i, pOther, j);
    }

    void link()
    {
        forEachInnerFacet([](Tet3* pTet, int i, Tet3* pOther, int) { pTet->setOppTet(i, pOther); });
    }

    std::vector<Tet3*> vTets;

private:
    SimplePool<Tet3> m_pool;
};

/// Tetrahedra in a ring, or in a fan with one tetrahedron less, around the edge from pLow to pHigh.
class Ring : public HandMadeMesh
{
public:
    Ring(std::size_t numRim, bool bClosed)
    {
        static constexpr double aRim[][2] = {{4, 0}, {3, 4}, {-2, 5}, {-5, 1}, {-3, -4}, {2, -5}};
        for (std::size_t i = 0; i < numRim; ++i)
            vRim.emplace_back(aRim[i * 6 / numRim][0], aRim[i * 6 / numRim][1], 0.0);
        for (std::size_t i = 0; i < (bClosed ? numRim : numRim - 1); ++i)
            add(&low, &high, &vRim[i], &vRim[(i + 1) % numRim]);
        link();
    }

    /// The edge as seen from a tetrahedron, in one direction or the other.
    Edge3 getAxis(Tet3* pTet, bool bForward) const
    {
        std::vector<int> vOff;
        for (int i = 0; i < 4; ++i)
            if (pTet->getCorner(i) != &low && pTet->getCorner(i) != &high)
                vOff.push_back(i);
        return bForward ? pTet->getEdge(vOff[0], vOff[1]) : pTet->getEdge(vOff[1], vOff[0]);
    }

    Point3 low{0, 0, -3};
    Point3 high{0, 0, 3};
    std::vector<Point3> vRim;
};

class TetrahedronTest : public testing::Test
{
protected:
    TetrahedronTest() { pTet->setProperties(&aPoint[0], &aPoint[1], &aPoint[2], &aPoint[3]); }

    Point3 aPoint[5] = {{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {0, 0, 4}, {4, 4, 4}};
    HandMadeMesh mesh;
    Tet3* pTet = mesh.add(&aPoint[0], &aPoint[1], &aPoint[2], &aPoint[3]);
    Tet3* pNeighbor = mesh.add(&aPoint[1], &aPoint[2], &aPoint[3], &aPoint[4]);
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
    EXPECT_EQ(pTet->getCustomIndex(), 3);
    pTet->setProperties(&aPoint[3], &aPoint[1], &aPoint[0], &aPoint[2]);
    Point3* aCorner[4];
    pTet->getCorners(aCorner[0], aCorner[1], aCorner[2], aCorner[3]);
    EXPECT_THAT(aCorner, testing::ElementsAre(&aPoint[3], &aPoint[1], &aPoint[0], &aPoint[2]));
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(pTet->getCorner(i), aCorner[i]);
        EXPECT_EQ(pTet->getOppTet(i), nullptr);
        EXPECT_EQ(aPoint[i].getOneTet(), pTet);
    }
    EXPECT_EQ(pTet->getCustomIndex(), -1);
    EXPECT_FALSE(pTet->hasBeenVisited);

    const int id = getID(pTet);
    EXPECT_GE(id, 1000);
    pNeighbor->setProperties(&aPoint[0], &aPoint[1], &aPoint[2], &aPoint[3]);
    EXPECT_EQ(getID(pNeighbor), id + 1);
    EXPECT_EQ(aPoint[0].getOneTet(), pNeighbor);
    pTet->setCorner(2, &aPoint[0]);
    EXPECT_EQ(pTet->getCorner(2), &aPoint[0]);
    EXPECT_EQ(aPoint[0].getOneTet(), pNeighbor) << "setting a corner leaves the vertex alone";

    EXPECT_EQ(outputOf([] { Tet3(); }), "Tet default constructor (is actually not called)\n");
    pTet->setProperties(&aPoint[0], &aPoint[1], &aPoint[2], &aPoint[3]);
    EXPECT_EQ(getID(pTet), id + 3) << "constructed records take a number too";
}

TEST_F(TetrahedronTest, FacetTables)
{
    for (int opp3 = 0; opp3 < 4; ++opp3) {
        SCOPED_TRACE(opp3);
        int a, b, c;
        pTet->getFacetIndices(opp3, a, b, c);
        ASSERT_TRUE(isPermutation({a, b, c, opp3}));
        EXPECT_FALSE(isEven({a, b, c, opp3}));
        EXPECT_LT(a, std::min(b, c)) << "a row starts with its lowest index";
        EXPECT_LT(getVolume(aPoint[a], aPoint[b], aPoint[c], aPoint[opp3]), 0);

        const Facet3 facet = pTet->getFacet(opp3);
        EXPECT_EQ(facet.getTet(), pTet);
        EXPECT_EQ(facet.getOpp3Index(), opp3);
        EXPECT_EQ(facet.getIntraTetIndex(0), a);
        EXPECT_EQ(facet.getIntraTetIndex(1), c) << "the facet handle turns the other way";
        EXPECT_EQ(facet.getIntraTetIndex(2), b);

        for (int j = 0; j < 3; ++j) {
            const auto [source, target] = Tet3::getEdgeIndices(opp3, j);
            EXPECT_EQ(source, facet.getIntraTetIndex(j));
            EXPECT_EQ(target, facet.getIntraTetIndex((j + 1) % 3));
            const Edge3 edge = facet.getEdge(j);
            EXPECT_EQ(edge.getTet(), pTet);
            EXPECT_EQ(edge.getOpp3Index(), opp3);
            EXPECT_EQ(edge.getOpp2Index(), facet.getIntraTetIndex(j));
        }
    }
    for (int opp3 = 0; opp3 < 3; ++opp3)
        EXPECT_EQ(Tet3::getEdgeIndices(opp3, 3), Tet3::getEdgeIndices(opp3 + 1, 0)) << "one flat table";
}

TEST_F(TetrahedronTest, EdgeTables)
{
    for (int opp3 = 0; opp3 < 4; ++opp3)
        for (int j = 0; j < 3; ++j) {
            const auto [source, target] = Tet3::getEdgeIndices(opp3, j);
            const int opp2 = 6 - opp3 - source - target;
            SCOPED_TRACE(testing::Message() << "opp3 " << opp3 << ", opp2 " << opp2);
            const Edge3 edge = pTet->getEdge(opp3, opp2);
            EXPECT_EQ(edge.getSourceIndex(), target) << "directed against the facet's edge list";
            EXPECT_EQ(edge.getTargetIndex(), source);
            EXPECT_TRUE(isEven({edge.getTargetIndex(), edge.getSourceIndex(), opp2, opp3}));
            EXPECT_EQ(edge.getSourceVtx(), &aPoint[target]);
            EXPECT_EQ(edge.getTargetVtx(), &aPoint[source]);

            const Edge3 reverse = pTet->getEdge(opp2, opp3);
            EXPECT_EQ(reverse.getSourceVtx(), edge.getTargetVtx());
            EXPECT_EQ(reverse.getTargetVtx(), edge.getSourceVtx());
            EXPECT_TRUE(edge == reverse && !(edge < reverse) && !(reverse < edge));
        }
}

TEST_F(TetrahedronTest, EdgesAreOrderedByTheAddressesOfTheirEnds)
{
    for (Tet3* pA : mesh.vTets)
        for (int a = 0; a < 16; ++a)
            for (Tet3* pB : mesh.vTets)
                for (int b = 0; b < 16; ++b) {
                    if (a / 4 == a % 4 || b / 4 == b % 4)
                        continue;
                    const Edge3 edgeA(pA, a / 4, a % 4), edgeB(pB, b / 4, b % 4);
                    const auto endsA =
                        std::minmax({edgeA.getSourceVtx(), edgeA.getTargetVtx()}, std::less<>());
                    const auto endsB =
                        std::minmax({edgeB.getSourceVtx(), edgeB.getTargetVtx()}, std::less<>());
                    EXPECT_EQ(edgeA < edgeB, endsA < endsB);
                    EXPECT_EQ(edgeA == edgeB, endsA == endsB);
                    EXPECT_EQ(edgeA != edgeB, endsA != endsB);
                }
}

TEST(Links, AreKnownFromBothSides)
{
    Ring ring(6, true);
    int numSides = 0;
    ring.forEachInnerFacet([&](Tet3* pTet, int i, Tet3* pOther, int j) {
        SCOPED_TRACE(testing::Message()
                     << "facet " << i << " of " << *pTet << " and " << j << " of " << *pOther);
        ++numSides;
        Point3* pAcross = pOther->getCorner(j);
        EXPECT_EQ(pTet->getOppTet(i), pOther);
        EXPECT_EQ(pTet->getOppTet(pTet->getCorner(i)), pOther);
        EXPECT_EQ(pTet->getIntraTetIndex(pTet->getCorner(i)), i);
        EXPECT_EQ(pTet->getIntraTetIndex(pOther), i);
        EXPECT_EQ(pTet->getIntraTetIndexInOppTet(i), j);
        EXPECT_EQ(pTet->getOppVtxInOppTet(i, false), pAcross);
        EXPECT_EQ(pTet->getOppVtxInOppTet(i, true), pAcross);
        EXPECT_TRUE(Tet3::haveCommonFacet(pTet, i, pOther, j));
        EXPECT_TRUE(pTet->hasVertex(pTet->getCorner(i)));
        EXPECT_FALSE(pTet->hasVertex(pAcross));
        for (int k = 0; k < 16; ++k) {
            const Facet3 facet = pTet->getFacet(k / 4), otherFacet = pOther->getFacet(k % 4);
            const bool bSame = k / 4 == i && k % 4 == j;
            EXPECT_TRUE((facet == otherFacet) == bSame && (facet != otherFacet) == !bSame) << k;
        }
        pTet->setOppTet(i, nullptr);
        EXPECT_EQ(pOther->getIntraTetIndexInOppTetForReg(pTet, i), j) << "needs no links";
        pTet->setOppTet(i, pOther);
    });
    EXPECT_EQ(numSides, 12);
}

TEST_F(TetrahedronTest, NothingLiesBeyondAHullFacet)
{
    EXPECT_TRUE(pTet->getFacet(1) != Facet3(nullptr, 0) && Facet3(nullptr, 0) != pTet->getFacet(1));
    EXPECT_EQ(pTet->getOppVtxInOppTet(1, true), nullptr);
    expectAbortOrExit([&] { pTet->getOppVtxInOppTet(1, false); },
                      "\n      Tet3::getOppVtxInOppTet, ERROR: no neighbor tet\n\n");
    EXPECT_EQ(pTet->debug_getOppTetIndex(1), -1);
    pTet->setOppTet(1, pNeighbor);
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(pTet->debug_getOppTetIndex(1), 0); }),
              "Tet3::debug_getTetIndex(): Not implemented yet\n");
}

TEST_F(TetrahedronTest, VerticesByAddressAndByCoordinates)
{
    EXPECT_FALSE(pTet->hasVertex(&aPoint[4]) || pTet->hasVertex(aPoint[4]));
    const Point3 copy(-0.0, 4, 0);
    EXPECT_FALSE(pTet->hasVertex(&copy));
    EXPECT_TRUE(pTet->hasVertex(copy));
    EXPECT_FALSE(pTet->hasVertex(Point3(1e-300, 4, 0)));
    EXPECT_EQ(pTet->getCircumcenter(), Point3(2, 2, 2));
}

TEST_F(TetrahedronTest, Printing)
{
    pTet->setOppTet(0, pNeighbor);
    pTet->hasBeenVisited = true;
    const auto expectedText = [](const Tet3* p, const std::string& flag, const std::string& orientation) {
        std::string text = "Tetrahedron (ID=" + std::to_string(getID(p)) + "), (this=" + addressOf(p) +
                           "): hasBeenVisited=" + flag + ", ownOri=" + orientation + "\n";
        for (int i = 0; i < 4; ++i)
            text += "ith=" + std::to_string(i) + ", vertex (" + addressOf(p->getCorner(i)) +
                    "): " + textOf(*p->getCorner(i)) + "  oppTet=" + addressOf(p->getOppTet(i)) +
                    (p->getOppTet(i) ? "\n" : " (NULL)\n");
        return text;
    };
    EXPECT_EQ(textOf(*pTet), expectedText(pTet, "1", "ORI3_ORIENTATION3_POSITIVE"));
    pNeighbor->setProperties(&aPoint[1], &aPoint[0], &aPoint[2], &aPoint[3]);
    EXPECT_EQ(textOf(*pNeighbor), expectedText(pNeighbor, "0", "ORI3_ORIENTATION3_NEGATIVE"));
    pNeighbor->setCorner(2, &aPoint[0]);
    EXPECT_EQ(textOf(*pNeighbor), expectedText(pNeighbor, "0", "ORI3_ZERO"));

    const Edge3 edge = pTet->getEdge(1, 3);
    const auto line = [&](const char* role, int i) {
        return role + std::to_string(i) + ", " + addressOf(&aPoint[i]) + "\n";
    };
    const std::string edgeText = "Edge (pTet" + addressOf(pTet) + "): \n" + line("opp3ICI=", 1) +
                                 line("opp2ICI=", 3) + line("srcICI=", 2) + line("trgICI=", 0);
    EXPECT_EQ(textOf(edge), edgeText);
    const std::string rule(35, '-');
    EXPECT_EQ(outputOf([&] { TetAroundEdgeIterator(edge).debug(); }),
              rule + "\n# This is a TetAroundEdgeIterator:\n" + edgeText + rule + "\n\n");
}

TEST_F(TetrahedronTest, WrongArgumentsFailPlainAssertions)
{
    using Calls = std::vector<std::function<void()>>;
    const auto expectAborts = [](const Calls& vCalls, const std::string& condition) {
        for (std::size_t n = 0; n < vCalls.size(); ++n) {
            SCOPED_TRACE(testing::Message() << "call " << n << " of " << condition);
            expectAbortInDiagnostic(vCalls[n], condition);
        }
    };
    for (const int i : {-1, 4}) {
        int a, b, c;
        expectAborts({[&] { pTet->getCorner(i); }, [&] { pTet->setCorner(i, &aPoint[0]); },
                      [&] { pTet->getOppTet(i); }, [&] { pTet->setOppTet(i, pNeighbor); },
                      [&] { pTet->getOppVtxInOppTet(i, true); }, [&] { pTet->debug_getOppTetIndex(i); }},
                     "range03(ith)");
        expectAborts({[&] { pTet->getFacetIndices(i, a, b, c); },
                      [&] { Tet3::haveCommonFacet(pTet, 0, pNeighbor, i); },
                      [&] { Tet3::haveCommonFacet(pTet, i, pNeighbor, 0); }},
                     "range03(opp3)");
        expectAborts({[&] { pTet->getFacet(0).getIntraTetIndex(i); }, [&] { pTet->getFacet(0).getEdge(i); }},
                     "range02(ith)");
        expectAborts({[&] { pTet->getIntraTetIndexInOppTetForReg(pNeighbor, i); }}, "false");
    }
    expectAborts({[&] { Edge3(pTet, 2, 2); }}, "range03(ith)");
    expectAborts({[&] { pTet->setProperties(&aPoint[0], &aPoint[1], nullptr, &aPoint[3]); }},
                 "(pI!=NULL && pJ!=NULL && pK!=NULL && pL!=NULL)");
    expectAborts({[&] { pTet->getOppTet(&aPoint[4]); }, [&] { pTet->getIntraTetIndex(&aPoint[4]); }},
                 "aVertexPointer[3]==pp");
    if (isRelease()) {
        pTet->setOppTet(3, pNeighbor);
        EXPECT_EQ(pTet->getOppTet(&aPoint[4]), pNeighbor);
        EXPECT_EQ(pTet->getIntraTetIndex(&aPoint[4]), 3);
        EXPECT_EQ(pTet->getIntraTetIndexInOppTetForReg(pNeighbor, 4), -1);
    }
}

TEST_F(TetrahedronTest, ANeighborWithoutAnApexFailsAPlainAssertion)
{
    const char* aCondition[] = {"pd!=p1 && pd!=p2 && pd!=p3", "pd!=p0 && pd!=p2 && pd!=p3",
                                "pd!=p0 && pd!=p1 && pd!=p3", "pd!=p0 && pd!=p1 && pd!=p2"};
    for (int i = 0; i < 4; ++i) {
        Point3* pTwice = &aPoint[(i + 1) % 4];
        pNeighbor->setProperties(pTwice, &aPoint[(i + 2) % 4], &aPoint[(i + 3) % 4], pTwice);
        const auto search = [&] { return pNeighbor->getIntraTetIndexInOppTetForReg(pTet, i); };
        expectAbortInDiagnostic(search, aCondition[i]);
        EXPECT_EQ(isRelease() ? search() : 3, 3);
    }
}

TEST_F(TetrahedronTest, WrongLinksAndEdgesAreReportedBeforeTheAssertion)
{
    const std::string addresses = "this=" + addressOf(pTet) + ", pC=" + addressOf(pTet) + "\n";
    const std::string linkError =
        "      Tet3::setOppTet(), ERROR: trying to set *this as neighbor of *this, ith=2";
    const std::string linkReport = addresses + textOf(*pTet) + "\n" + linkError + "\n\n";
    const auto setLink = [&] { pTet->setOppTet(2, pTet); };
    expectAbortInDiagnostic(setLink, "this!=pC");
    if (isRelease()) {
        EXPECT_EQ(outputOf(setLink), linkReport);
        EXPECT_EQ(pTet->getOppTet(2), pTet);
    } else
        expectEnd(setLink, testing::KilledBySignal(SIGABRT), linkReport);

    const auto getEdge = [&] { pTet->getEdge(2, 2); };
    expectAbortInDiagnostic(getEdge, "opp3ICI!=opp2ICI");
    if (!isRelease())
        expectEnd(getEdge, testing::KilledBySignal(SIGABRT),
                  "\n      Tet3::getEdge(), ERROR: opp3ICI==opp2ICI=2\n\n");
}

TEST_F(TetrahedronTest, CorruptedMeshesEndTheProcess)
{
    expectExit([&] { pTet->getIntraTetIndex(pNeighbor); },
               "Tet3::getIntraTetIndex went wrong: " + textOf(*pNeighbor) + ", this is " + textOf(*pTet) +
                   "\n");
    const int j = pNeighbor->getIntraTetIndex(&aPoint[4]);
    EXPECT_TRUE(Tet3::haveCommonFacet(pTet, 0, pNeighbor, j));
    const auto check = [&] { Tet3::haveCommonFacet(pTet, 1, pNeighbor, j); };
    expectExit(check, "Tet3::haveCommonFacet() ERROR\n" + textOf(*pTet));
    expectExit(check, "...with index 1\n0,3,2\n" + textOf(*pNeighbor));
    expectExit(check, "...with index " + std::to_string(j) + "\n");
}

/// The tetrahedra from `start` on, until the turn is complete or the hull is reached.
std::vector<Tet3*> turn(const TetAroundEdgeIterator& start)
{
    std::vector<Tet3*> vVisited;
    TetAroundEdgeIterator it(start);
    do {
        EXPECT_TRUE(it.getEdge() == start.getEdge() && !(it.getEdge() < start.getEdge()));
        EXPECT_EQ(it.getEdge().getTet(), *it);
        EXPECT_EQ(it.getOpp3Index(), it.getEdge().getOpp3Index());
        EXPECT_EQ(it.getOpp2Index(), it.getEdge().getOpp2Index());
        EXPECT_EQ(it.previewNextTet(), (*it)->getOppTet(it.getOpp2Index()));
        vVisited.push_back(*it);
        if (it.nextIsNull())
            return vVisited;
        Tet3* pNext = it.previewNextTet();
        EXPECT_EQ(*++it, pNext);
    } while (it != start && vVisited.size() < 100);
    return vVisited;
}

TEST(TetAroundEdgeIterator, VisitsEveryTetrahedronOfARingOnce)
{
    for (std::size_t n = 3; n <= 6; ++n) {
        const Ring ring(n, true);
        for (std::size_t first = 0; first < n; ++first) {
            SCOPED_TRACE(testing::Message() << "ring of " << n << ", from " << first);
            std::vector<Tet3*> vAscending, vDescending;
            for (std::size_t i = 0; i < n; ++i) {
                vAscending.push_back(ring.vTets[(first + i) % n]);
                vDescending.push_back(ring.vTets[(first + n - i) % n]);
            }
            const std::vector<Tet3*> vOneWay =
                turn(TetAroundEdgeIterator(ring.getAxis(ring.vTets[first], true)));
            const std::vector<Tet3*> vOtherWay =
                turn(TetAroundEdgeIterator(ring.getAxis(ring.vTets[first], false)));
            EXPECT_TRUE((vOneWay == vAscending && vOtherWay == vDescending) ||
                        (vOneWay == vDescending && vOtherWay == vAscending));
        }
    }
}

TEST(TetAroundEdgeIterator, StopsAtTheHull)
{
    const Ring fan(6, false);
    for (std::size_t first = 0; first < 5; ++first) {
        const std::size_t n0 = turn(TetAroundEdgeIterator(fan.getAxis(fan.vTets[first], true))).size();
        const std::size_t n1 = turn(TetAroundEdgeIterator(fan.getAxis(fan.vTets[first], false))).size();
        EXPECT_EQ(std::min(n0, n1), std::min(first + 1, 5 - first));
        EXPECT_EQ(n0 + n1, 6u);
    }
}

TEST_F(TetrahedronTest, IteratorsCarryAPayloadThatIsSetOnce)
{
    TetAroundEdgeIterator it(pTet->getEdge(0, 1));
    expectAbortInDiagnostic([&] { it.getPayload(); }, "storedPayload!=NULL");
    expectAbortInDiagnostic([&] { it.getPayloadICI(); }, "storedPayloadICI!=-1");
    it.setPayload(pNeighbor);
    it.setPayloadICI(2);
    EXPECT_EQ(it.getPayload(), pNeighbor);
    EXPECT_EQ(it.getPayloadICI(), 2);
    expectAbortInDiagnostic([&] { it.setPayload(pTet); }, "storedPayload==NULL");
    expectAbortInDiagnostic([&] { it.setPayloadICI(1); }, "storedPayloadICI==-1");

    TetAroundEdgeIterator copy(it);
    EXPECT_EQ(copy.getPayload(), pNeighbor);
    copy.setPayloadICI(3);
    EXPECT_EQ(copy.getPayloadICI(), 3);
    EXPECT_TRUE(copy == it);
    EXPECT_TRUE(TetAroundEdgeIterator(pTet->getEdge(1, 0)) == it) << "in either direction";
    EXPECT_TRUE(TetAroundEdgeIterator(pTet->getEdge(0, 2)) != it);
}

} // namespace

} // namespace VORN3D
