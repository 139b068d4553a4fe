// The judge is judged: it accepts a sound mesh and names the fault of every spoiled one.
#include "MeshChecker.h"
#include "CapturedOutput.h"
#include "PointSets.h"
#include "TrackedTriangulation.h"

#include <gmock/gmock.h>
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

const std::vector<Point3> vTwoTets = {{1, 0, 0}, {-0.5, 1, 0}, {-0.5, -1, 0}, {0, 0, 2}, {0, 0, -2}};
const std::vector<Point3> vThreeTets = {{1, 0, 0}, {-0.5, 1, 0}, {-0.5, -1, 0}, {0, 0, 0.2}, {0, 0, -0.2}};

const std::vector<Point3> vBall = [] {
    std::vector<Point3> vPoints;
    Random random(5);
    for (int i = 0; i < 61; ++i) {
        vPoints.push_back(i == 60 ? vPoints[7] : random.inBall());
        vPoints.back().setCustomIndex(i);
    }
    return vPoints;
}();

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
    std::vector<Point3> vPoints;
    std::function<void(Victim&)> spoil;
};

const Sabotage aSabotages[] = {
    {"does not have the vertices", vBall, [](Victim& v) { swapCorners(v.innerTet(), 0, 1); }},
    {"is no vertex", vBall, [](Victim& v) { v.innerTet()->setCorner(2, &v.stranger); }},
    {"is negatively oriented", vBall, [](Victim& v) { turnOver(v.innerTet()); }},
    {"is flat", vTwoTets, [](Victim& v) { v.vHandles[3]->exchange(0, 0, 0); }},
    {"is not mutual", vBall, [](Victim& v) { v.innerTet()->setOppTet(0, v.innerTet()->getOppTet(1)); }},
    {"is in 4 facets", vBall,
     [](Victim& v) {
         Tet3* pTet = v.innerTet();
         cut(pTet, 2);
         cut(pTet, 3);
     }},
    {"Euler", vBall, [](Victim& v) { cut(v.innerTet(), 3); }},
    {"no sphere or disc", vThreeTets,
     [](Victim& v) { cut(v.vTets[0], v.vTets[0]->getIntraTetIndex(v.vTets[1])); }},
    {"not convex", vTwoTets, [](Victim& v) { v.vHandles[3]->exchange(3, 0, 2); }},
    {"beyond the hull facet", vTwoTets, [](Victim& v) { v.vHandles[3]->exchange(3, 0, 2); }},
    {"is inside the circumsphere of its neighbour", vTwoTets,
     [](Victim& v) { v.vHandles[3]->exchange(0, 0, 0.1); }},
    {"overlaps", vTwoTets, fold},
    {"visited mark", vBall, [](Victim& v) { v.innerTet()->hasBeenVisited = true; }},
    {"does not know an incident", vTwoTets, [](Victim& v) { v.vHandles[3]->setOneTet(nullptr); }},
    {"is not in the mesh", vTwoTets, [](Victim& v) { v.vHandles[3]->setOneTet(nullptr); }},
    {"is no corner of its incident", vTwoTets,
     [](Victim& v) { v.vHandles[3]->setOneTet(v.vHandles[4]->getOneTet()); }},
    {"have different vertices", vBall, [](Victim& v) { v.vHandles[60] = &(v.stranger = v.vInput[60]); }},
    {"not the distinct input points", vTwoTets,
     [](Victim& v) { v.vHandles[2] = &(v.stranger = v.vInput[2]); }},
    {"has other coordinates", vBall, [](Victim& v) { std::swap(v.vHandles[3], v.vHandles[4]); }},
    {"has other coordinates", vBall, [](Victim& v) { v.vHandles[3] = nullptr; }},
    {"61 input points have 60 handles", vBall, [](Victim& v) { v.vHandles.pop_back(); }},
    {"has custom index 60, not 7", vBall, [](Victim& v) { v.vHandles[7]->setCustomIndex(60); }},
};

TEST(MeshChecker, AcceptsSoundMeshes)
{
    for (const std::vector<Point3>& vPoints : {{}, vTwoTets, vBall, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}})
        EXPECT_EQ(Victim(vPoints).faults(), "");
}

TEST(MeshChecker, NamesEveryFault)
{
    for (const Sabotage& sabotage : aSabotages) {
        Victim victim(sabotage.vPoints);
        sabotage.spoil(victim);
        EXPECT_THAT(victim.faults(), testing::HasSubstr(sabotage.expected));
    }
}

TEST(MeshChecker, ReportsAtMost20Faults)
{
    Victim victim(vBall);
    for (Tet3* pTet : victim.vTets)
        pTet->setCorner(0, pTet->getCorner(1));
    EXPECT_EQ(findMeshFaults(victim.dt).size(), 20u);
}

TEST(MeshChecker, JudgesLocate)
{
    Victim victim(vTwoTets);
    const Tet3* pUpper = victim.vHandles[3]->getOneTet();
    const Tet3* pLower = victim.vHandles[4]->getOneTet();
    const auto isRight = [&](const Point3& q, const Tet3* pTet) {
        return findLocateFaults(victim.dt, q, pTet).empty();
    };
    for (const Point3& q : {Point3(0, 0, 1), Point3(0, 0, 2)}) // inside and at a corner
        EXPECT_TRUE(isRight(q, pUpper) && !isRight(q, pLower) && !isRight(q, nullptr));
    EXPECT_TRUE(isRight({0, 0, 0}, pUpper) && isRight({0, 0, 0}, pLower));
    EXPECT_TRUE(isRight({0.25, 0.5, 0}, nullptr) && !isRight({0.25, 0.5, 0}, pUpper)) << "on a hull facet";
    EXPECT_TRUE(isRight({9, 0, 0}, nullptr));
}

/// The filter and the integers must agree: near a common plane or sphere, swapping two points flips every
/// sign, though the roundings differ, and scaling by 1e-60, which leaves the filter's range, keeps it.
TEST(MeshChecker, SignsAreExact)
{
    EXPECT_EQ(exactOrientation({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 5e-324}), 1);
    for (const auto& [z, sign] : {std::pair(1.0, 0), std::pair(1 - 1e-16, 1), std::pair(1 + 1e-15, -1)})
        EXPECT_EQ(exactInSphere({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, z}), sign);
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
