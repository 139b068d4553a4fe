// The judge is judged: it accepts a sound mesh and names the fault of every spoiled one.
#include "MeshChecker.h"
#include "CapturedOutput.h"
#include "PointSets.h"
#include "TrackedTriangulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace VORN3D::tests
{
namespace
{

/// A mesh, and what a saboteur needs to get at it.
struct Victim
{
    explicit Victim(std::vector<Point3> vPoints) : vInput(std::move(vPoints))
    {
        outputOf([&] { dt.insert(vInput, vHandles); });
        dt.getTetrahedra(vTets);
    }
    Tet3* innerTet() const
    {
        const auto it = std::find_if(vTets.begin(), vTets.end(), [](const Tet3* p) {
            return p->getOppTet(0) && p->getOppTet(1) && p->getOppTet(2) && p->getOppTet(3);
        });
        return *it;
    }
    std::string faults() const
    {
        return joinFaults(findMeshFaults(dt)) + joinFaults(findVertexFaults(dt, vInput, vHandles));
    }

    Vorn_3D dt;
    std::vector<Point3> vInput;
    std::vector<Point3*> vHandles;
    std::vector<Tet3*> vTets;
    Point3 stranger;
};

/// Two tetrahedra on a common facet.
std::vector<Point3> twoTets()
{
    return {{1, 0, 0}, {-0.5, 1, 0}, {-0.5, -1, 0}, {0, 0, 2}, {0, 0, -2}};
}

/// Three tetrahedra around an edge.
std::vector<Point3> threeTets()
{
    return {{1, 0, 0}, {-0.5, 1, 0}, {-0.5, -1, 0}, {0, 0, 0.2}, {0, 0, -0.2}};
}

std::vector<Point3> someBall()
{
    std::vector<Point3> vPoints;
    Random random(5);
    for (int i = 0; i < 60; ++i)
        vPoints.push_back(random.inBall());
    vPoints.push_back(vPoints[7]);
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        vPoints[i].setCustomIndex(static_cast<int>(i));
    return vPoints;
}

void swapCorners(Tet3* pTet, int i, int k)
{
    Point3* pCorner = pTet->getCorner(i);
    pTet->setCorner(i, pTet->getCorner(k));
    pTet->setCorner(k, pCorner);
}

/// Mirrors a tetrahedron without disturbing its links.
void turnOver(Tet3* pTet)
{
    Tet3* pOpp = pTet->getOppTet(0);
    pTet->setOppTet(0, pTet->getOppTet(1));
    pTet->setOppTet(1, pOpp);
    swapCorners(pTet, 0, 1);
}

/// Cuts the mesh open along a facet inside it.
void cut(Tet3* pTet, int i)
{
    pTet->getOppTet(i)->setOppTet(pTet->getIntraTetIndexInOppTet(i), nullptr);
    pTet->setOppTet(i, nullptr);
}

void hollowOut(Victim& v)
{
    Tet3* pTet = v.innerTet();
    for (int i = 0; i < 4; ++i) {
        pTet->getCorner(i)->setOneTet(v.vHandles[0]->getOneTet());
        cut(pTet, i);
    }
}

/// Folds the second tetrahedron onto the first, so that their common facet stays as it is.
void fold(Victim& v)
{
    Tet3 *pTet = v.vTets[0], *pFolded = v.vTets[1];
    const int i = pFolded->getIntraTetIndex(pTet);
    pFolded->setCorner(i, pTet->getCorner(pTet->getIntraTetIndex(pFolded)));
    swapCorners(pFolded, (i + 1) % 4, (i + 2) % 4);
}

struct Sabotage
{
    const char* expected; ///< part of the message
    std::vector<Point3> (*makePoints)();
    std::function<void(Victim&)> spoil;
};

const std::vector<Sabotage>& getSabotages()
{
    static const std::vector<Sabotage> vSabotages = {
        {"does not have the vertices", someBall,
         [](Victim& v) { v.innerTet()->setCorner(2, v.innerTet()->getOppVtxInOppTet(1, true)); }},
        {"does not have the vertices", someBall, [](Victim& v) { swapCorners(v.innerTet(), 0, 1); }},
        {"is no vertex", someBall, [](Victim& v) { v.innerTet()->setCorner(2, &v.stranger); }},
        {"is negatively oriented", someBall, [](Victim& v) { turnOver(v.innerTet()); }},
        {"is flat", twoTets, [](Victim& v) { v.vHandles[3]->exchange(0, 0, 0); }},
        {"is not mutual", someBall,
         [](Victim& v) {
             v.innerTet()->getOppTet(0)->setOppTet(v.innerTet()->getIntraTetIndexInOppTet(0), nullptr);
         }},
        {"is not mutual", someBall,
         [](Victim& v) { v.innerTet()->setOppTet(0, v.innerTet()->getOppTet(1)); }},
        {"is in 4 facets", someBall,
         [](Victim& v) {
             Tet3* pTet = v.innerTet();
             cut(pTet, 2);
             cut(pTet, 3);
         }},
        {"Euler", someBall, [](Victim& v) { cut(v.innerTet(), 3); }},
        {"no sphere or disc", threeTets,
         [](Victim& v) { cut(v.vTets[0], v.vTets[0]->getIntraTetIndex(v.vTets[1])); }},
        {"not convex", twoTets, [](Victim& v) { v.vHandles[3]->exchange(3, 0, 2); }},
        {"beyond the hull facet", twoTets, [](Victim& v) { v.vHandles[3]->exchange(3, 0, 2); }},
        {"is inside the circumsphere of its neighbour", twoTets,
         [](Victim& v) { v.vHandles[3]->exchange(0, 0, 0.1); }},
        {"overlaps", twoTets, fold},
        {"Euler", someBall, hollowOut},
        {"visited mark", someBall, [](Victim& v) { v.innerTet()->hasBeenVisited = true; }},
        {"does not know an incident", twoTets, [](Victim& v) { v.vHandles[3]->setOneTet(nullptr); }},
        {"is no corner of its incident", twoTets,
         [](Victim& v) { v.vHandles[3]->setOneTet(v.vHandles[4]->getOneTet()); }},
        {"have different vertices", someBall,
         [](Victim& v) { v.vHandles[60] = &(v.stranger = v.vInput[60]); }},
        {"not the distinct input points", twoTets,
         [](Victim& v) { v.vHandles[2] = &(v.stranger = v.vInput[2]); }},
        {"has other coordinates", someBall, [](Victim& v) { std::swap(v.vHandles[3], v.vHandles[4]); }},
        {"has other coordinates", someBall, [](Victim& v) { v.vHandles[3] = nullptr; }},
        {"61 input points have 60 handles", someBall, [](Victim& v) { v.vHandles.pop_back(); }},
        {"has custom index 60, not 7", someBall, [](Victim& v) { v.vHandles[7]->setCustomIndex(60); }},
        {"is not in the mesh", twoTets, [](Victim& v) { v.vHandles[3]->setOneTet(nullptr); }},
    };
    return vSabotages;
}

TEST(MeshChecker, AcceptsSoundMeshes)
{
    EXPECT_EQ(Victim(someBall()).faults(), "");
    EXPECT_EQ(Victim(twoTets()).faults(), "");
    EXPECT_EQ(Victim({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}).faults(), "");
    EXPECT_EQ(Victim({}).faults(), "");
}

TEST(MeshChecker, NamesEveryFault)
{
    for (std::size_t i = 0; i < getSabotages().size(); ++i) {
        const Sabotage& sabotage = getSabotages()[i];
        SCOPED_TRACE("sabotage " + std::to_string(i));
        Victim victim(sabotage.makePoints());
        sabotage.spoil(victim);
        EXPECT_NE(victim.faults().find(sabotage.expected), std::string::npos) << victim.faults();
    }
}

TEST(MeshChecker, ReportsAtMost20Faults)
{
    Victim victim(someBall());
    for (Tet3* pTet : victim.vTets)
        pTet->setCorner(0, pTet->getCorner(1));
    EXPECT_EQ(findMeshFaults(victim.dt).size(), 20u);
}

TEST(MeshChecker, JudgesLocate)
{
    Victim victim(twoTets());
    const Point3 inside(0, 0, 1), onHullFacet(0.25, 0.5, 0), outside(9, 0, 0);
    const Tet3* pUpper = victim.vHandles[3]->getOneTet();
    const Tet3* pLower = victim.vHandles[4]->getOneTet();
    const auto isRight = [&](const Point3& q, const Tet3* pTet) {
        return findLocateFaults(victim.dt, q, pTet).empty();
    };
    EXPECT_TRUE(isRight(inside, pUpper));
    EXPECT_FALSE(isRight(inside, pLower));
    EXPECT_FALSE(isRight(inside, nullptr));
    EXPECT_TRUE(isRight({0, 0, 0}, pUpper) && isRight({0, 0, 0}, pLower));
    EXPECT_TRUE(isRight(onHullFacet, nullptr));
    EXPECT_FALSE(isRight(onHullFacet, pUpper));
    EXPECT_TRUE(isRight(outside, nullptr));
    EXPECT_TRUE(isRight({0, 0, 2}, pUpper));
    EXPECT_FALSE(isRight({0, 0, 2}, pLower));
}

/// The filter and the integers must agree: near a common plane or sphere, swapping two points flips every
/// sign, though the roundings differ, and scaling by 1e-60, which leaves the filter's range, keeps it.
TEST(MeshChecker, SignsAreExact)
{
    EXPECT_EQ(exactOrientation({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 5e-324}), 1);
    EXPECT_EQ(exactInSphere({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}), 0);
    EXPECT_EQ(exactInSphere({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1 - 1e-16}), 1);
    EXPECT_EQ(exactInSphere({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1 + 1e-15}), -1);
    EXPECT_EQ(exactInSphere({0, 0, 0}, {1e300, 0, 0}, {0, 1e300, 0}, {0, 0, 1e300}, {5e-324, 5e-324, 5e-324}),
              1);
    Random random(3);
    int numZero = 0;
    for (int run = 0; run < 20000; ++run) {
        Point3 a[5];
        for (Point3& p : a) {
            const double tiny = std::ldexp(1.0, -52);
            p = Point3(random.whole(0, 1) + tiny * random.whole(-1, 1),
                       random.whole(0, 1) + tiny * random.whole(0, 1), random.whole(0, 1));
        }
        const int sign = exactOrientation(a[0], a[1], a[2], a[3]);
        EXPECT_EQ(sign, -exactOrientation(a[3], a[1], a[2], a[0]));
        const int sphereSign = exactInSphere(a[0], a[1], a[2], a[3], a[4]);
        EXPECT_EQ(sphereSign, -exactInSphere(a[1], a[0], a[2], a[3], a[4]));
        EXPECT_EQ(sphereSign, -exactInSphere(a[0], a[1], a[2], a[4], a[3]));
        for (Point3& p : a)
            p.exchange(std::ldexp(p.x(), -200), std::ldexp(p.y(), -200), std::ldexp(p.z(), -200));
        EXPECT_EQ(sign, exactOrientation(a[0], a[1], a[2], a[3]));
        EXPECT_EQ(sphereSign, exactInSphere(a[0], a[1], a[2], a[3], a[4]));
        numZero += sphereSign == 0;
    }
    EXPECT_GT(numZero, 100);
    EXPECT_LT(numZero, 19000);
}

} // namespace
} // namespace VORN3D::tests
