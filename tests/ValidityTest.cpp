// The validity checker: sound meshes, and meshes with a fault made on purpose.
#include "TemporaryDirectory.h"
#include "outcomes.h"
#include "predicates/NaloTest3.h"
#include "sceneText.h"
#include "vorn3d/Vorn_3D.h"
#include "vorn3d/testDataGenerators.h"

#include <map>
#include <random>
#include <utility>

namespace VORN3D::tests
{

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class Validity : public testing::Test
{
protected:
    void insert(std::vector<Point3> vPoints)
    {
        m_vHandles.clear();
        m_vTets.clear();
        outputOf([&] { m_triangulation.insert(vPoints, m_vHandles); });
        m_triangulation.getTetrahedra(m_vTets);
    }

    /// Two tetrahedra with a common facet in the plane z = 0 and apices above and below.
    void insertTwoTetrahedra()
    {
        insert({Point3(0, 0, 0), Point3(4, 0, 0), Point3(0, 4, 0), Point3(0, 0, 4), Point3(1, 1, -3)});
        ASSERT_EQ(m_vTets.size(), 2u);
    }

    Point3& getLowerApex() { return *m_vHandles[4]; }

    /// What the check prints; its answer goes to m_bValid.
    std::string check(bool bWithSpheres)
    {
        return outputOf([&] { m_bValid = m_triangulation.checkValidity("here", bWithSpheres); });
    }

    /// The first facet with a tetrahedron beyond it, in the order in which the checker goes.
    std::pair<Tet3*, int> findFirstInnerFacet() const
    {
        for (Tet3* pTet : m_vTets)
            for (int i = 0; i < 4; ++i)
                if (pTet->getOppTet(i) != nullptr)
                    return {pTet, i};
        throw std::logic_error("no inner facet");
    }

    /// Reverses the orientation; the links stay sound.
    static void swapCornersAndNeighbors(Tet3* pTet)
    {
        Point3* const p0 = pTet->getCorner(0);
        pTet->setCorner(0, pTet->getCorner(1));
        pTet->setCorner(1, p0);
        Tet3* const pOpp0 = pTet->getOppTet(0);
        pTet->setOppTet(0, pTet->getOppTet(1));
        pTet->setOppTet(1, pOpp0);
    }

    static std::string makeHeader(std::size_t numTets, bool bWithSpheres)
    {
        const std::string num = std::to_string(numTets);
        return "\n\n** CheckValidity at [ here]: Number of tetrahedra: " + num +
               "\n   with --checkvisited\n   " + (bWithSpheres ? "with" : "without") +
               " --checkSphereInc\n   vTets.size()=" + num + "\n";
    }

    static std::string makeBanner(const std::string& message)
    {
        const std::string row(message.size() + 36, '*');
        return "\n" + row + "\n" + std::string(18, ' ') + message + "\n" + row + "\n\n";
    }

    std::string readLastFile() const
    {
        std::string name;
        for (std::istringstream names(m_directory.list()); names >> name;)
            ;
        return m_directory.read(name);
    }

    TemporaryDirectory m_directory;
    Vorn_3D m_triangulation;
    std::vector<Point3*> m_vHandles;
    std::vector<Tet3*> m_vTets;
    bool m_bValid = false;
};

const std::string SUCCESS = "** CheckValidity at (here) has been finished, seems OK\n\n";

TEST_F(Validity, SoundMeshes)
{
    EXPECT_EQ(check(true), "Dt3::getAllTetrahedra(), oneTet==NULL\n" + makeHeader(0, true) + SUCCESS);
    EXPECT_TRUE(m_bValid);

    // A tetrahedron by itself; then the cube around it, whose eight corners lie on one sphere.
    const std::vector<Point3> vCorners = {Point3(0, 0, 0), Point3(1, 0, 0), Point3(0, 1, 0), Point3(0, 0, 1)};
    const std::vector<Point3> vOthers = {Point3(1, 1, 0), Point3(1, 0, 1), Point3(0, 1, 1), Point3(1, 1, 1)};
    for (const auto& vPoints : {vCorners, vOthers}) {
        insert(vPoints);
        EXPECT_EQ(m_vTets.size() == 1, vPoints == vCorners);
        for (const bool bWithSpheres : {false, true}) {
            m_bValid = false;
            EXPECT_EQ(check(bWithSpheres), makeHeader(m_vTets.size(), bWithSpheres) + SUCCESS);
            EXPECT_TRUE(m_bValid);
        }
    }
    EXPECT_EQ(m_directory.list(), "");
}

TEST_F(Validity, VertexInsideACircumsphere)
{
    insertTwoTetrahedra();
    getLowerApex().exchange(1, 1, -0.5);
    check(false);
    EXPECT_TRUE(m_bValid);

    const std::string output = check(true);
    EXPECT_FALSE(m_bValid);
    const auto [pTet, ici] = findFirstInnerFacet();
    const Point3* pFarVtx = pTet->getOppVtxInOppTet(ici, false);
    EXPECT_THAT(output, StartsWith(makeHeader(2, true) + makeBanner("checkValidity: ERROR ERROR ERROR") +
                                   "Dt3::checkValidity, HUH - sphereIncTest failed: \n" + textOf(*pTet) +
                                   ", Vertex=" + addressOf(pFarVtx) + "=" + textOf(*pFarVtx) + "\n"));

    EXPECT_THAT(m_directory.list(), testing::MatchesRegex("[0-9]{5}_sphereIncBug\\.list "));
    const std::string sphere = "{\nappearance { +edge -face }\nSPHERE 3.4641 2 2 2\n}\n";
    EXPECT_EQ(readLastFile(),
              scene(tetrahedron(*pTet, "1 0 0 0.5") + point(*pFarVtx, 8, "1 1 1 0.5") + sphere));
}

// Its circumscribed sphere is infinite; the scene must still be readable.
TEST_F(Validity, FlatTetrahedron)
{
    insertTwoTetrahedra();
    const auto [pFlat, ici] = findFirstInnerFacet();
    pFlat->getCorner(ici)->exchange(1, 1, 0);
    EXPECT_THAT(check(true), HasSubstr("sphereIncTest failed"));
    EXPECT_FALSE(m_bValid);
    EXPECT_THAT(readLastFile(), testing::Not(HasSubstr("SPHERE")));
}

TEST_F(Validity, VertexOnTheWrongSideOfAFacet)
{
    insertTwoTetrahedra();
    const auto [pTet, ici] = findFirstInnerFacet();
    const Point3* pFarVtx = pTet->getOppVtxInOppTet(ici, false);
    for (const double z : {0.0, 0.5}) {
        getLowerApex().exchange(1, 1, z);
        const std::string output = check(false);
        EXPECT_FALSE(m_bValid);
        EXPECT_THAT(output,
                    StartsWith(makeHeader(2, false) + makeBanner("ERROR: checkValidity at [here]") +
                               "Dt3::checkValidity, HUH, vertex " + addressOf(pFarVtx) +
                               " should be on the negative side, tet=\n" + textOf(*pTet) +
                               "oppIndex=" + std::to_string(ici) + ", Vertex=" + addressOf(pFarVtx) + "=" +
                               textOf(*pFarVtx) + "\ncheckValidity: " + (z == 0.0 ? "coplanar" : "positive") +
                               "\n  Dt3::show(): vTets.size()=2\n"));

        EXPECT_THAT(m_directory.list(), testing::EndsWith("_negSideBug.list "));
        EXPECT_THAT(readLastFile(), HasSubstr(coordinates(*pFarVtx)));
    }
}

/// The verdict by the plain definition: every facet from both sides.
bool isValid(const std::vector<Tet3*>& vTets, bool bWithSpheres)
{
    const NaloTest3 predicates;
    for (const Tet3* pTet : vTets)
        for (int i = 0; i < 4; ++i)
            if (const Point3* pFarVtx = pTet->getOppVtxInOppTet(i, true))
                if (predicates.getOrientation3(pTet, i, pFarVtx) != ORIENTATION3_NEGATIVE ||
                    (bWithSpheres && predicates.sphereInclusionTest(pTet, pFarVtx) == SIC_INSIDE))
                    return false;
    return true;
}

TEST_F(Validity, VerdictOnRandomFaultsIsThatOfTheDefinition)
{
    std::mt19937 engine(11);
    const auto below = [&engine](std::size_t num) { return engine() % num; };
    std::map<bool, int> numVerdicts;
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        std::vector<Point3> vPoints;
        for (int n = 0; n < 10; ++n)
            vPoints.emplace_back(double(below(9)), double(below(9)), double(below(9)));
        Vorn_3D triangulation;
        std::vector<Point3*> vVertices;
        std::vector<Tet3*> vTets;
        outputOf([&] { triangulation.insert(vPoints, vVertices); });
        triangulation.getTetrahedra(vTets);

        Tet3* const pTet = vTets[below(vTets.size())];
        Point3* const pVtx = vVertices[below(vVertices.size())];
        if (round % 4 == 0)
            swapCornersAndNeighbors(pTet);
        else if (round % 4 == 1)
            pTet->setCorner(int(below(4)), pVtx);
        else
            pVtx->exchange(pVtx->x() + 0.25 * double(below(3)), pVtx->y(), pVtx->z() - 0.5);
        for (const bool bWithSpheres : {false, true}) {
            const bool bExpected = isValid(vTets, bWithSpheres);
            bool bFound = !bExpected;
            outputOf([&] { bFound = triangulation.checkValidity("here", bWithSpheres); });
            EXPECT_EQ(bFound, bExpected);
            ++numVerdicts[bFound];
        }
    }
    EXPECT_GT(numVerdicts[true], 50);
    EXPECT_GT(numVerdicts[false], 50);
}

TEST_F(Validity, ObserverFollowsAndStopsTheCheck)
{
    std::vector<Point3> vPoints;
    generateRandomPoints(3000, 0, 1, vPoints, 1);
    insert(vPoints);
    const std::size_t numTets = m_vTets.size();
    std::vector<std::size_t> vNumDone;
    std::size_t maxNumDone = numTets;
    m_triangulation.setProgressObserver([&](std::size_t numDone, std::size_t numTotal) {
        EXPECT_EQ(numTotal, numTets);
        vNumDone.push_back(numDone);
        return numDone < maxNumDone;
    });
    EXPECT_THAT(check(true), testing::EndsWith(SUCCESS));
    EXPECT_TRUE(m_bValid);
    EXPECT_THAT(vNumDone, ElementsAre(0, 4096, 8192, 12288, numTets));

    const std::string stopped = "** CheckValidity at (here) has been stopped\n\n";
    maxNumDone = 8192;
    EXPECT_EQ(check(true), makeHeader(numTets, true) + stopped);
    EXPECT_FALSE(m_bValid);

    // The search for the first of several faults, after the last tetrahedron was met with one.
    swapCornersAndNeighbors(m_vTets.back());
    m_triangulation.setProgressObserver([bAgain = false](std::size_t numDone, std::size_t) mutable {
        return numDone > 0 || !std::exchange(bAgain, true);
    });
    EXPECT_EQ(check(true), makeHeader(numTets, true) + stopped);

    m_triangulation.setProgressObserver([](std::size_t, std::size_t) -> bool { throw std::size_t(1); });
    outputOf([&] { EXPECT_THROW(m_triangulation.checkValidity("here", true), std::size_t); });
    EXPECT_EQ(m_directory.list(), "");
}

TEST_F(Validity, BrokenLinkEndsTheProcess)
{
    insertTwoTetrahedra();
    const auto [pTet, ici] = findFirstInnerFacet();
    Tet3* const pNeighbor = pTet->getOppTet(ici);
    pNeighbor->setOppTet(pNeighbor->getIntraTetIndex(pTet), nullptr);
    expectExit([&] { m_triangulation.checkValidity("here", false); }, "Tet3::getIntraTetIndex went wrong: ");
}

TEST_F(Validity, MarkedTetrahedronThrows)
{
    insertTwoTetrahedra();
    m_vTets[1]->hasBeenVisited = true;
    const std::string output =
        outputOf([&] { EXPECT_THROW(m_triangulation.checkValidity("here", false), VornException); });
    EXPECT_THAT(output,
                StartsWith(makeHeader(2, false) +
                           "\n      Dt3::CheckValidity(), ERROR: pcurrentTet->hasBeenvisited=true\n\n" +
                           textOf(*m_vTets[1]) + "\n\n      Vorn, , ERROR: Condition [ false failed ]\n\n"));

    // A mark does not keep a tetrahedron from being listed, as long as links lead there from one without.
    std::vector<Tet3*> vTets;
    m_triangulation.getTetrahedra(vTets);
    EXPECT_EQ(vTets, m_vTets);
    m_vTets[0]->hasBeenVisited = true;
    vTets.clear();
    EXPECT_EQ(outputOf([&] { m_triangulation.getTetrahedra(vTets); }),
              "Dt3::getAllTetrahedra(), oneTet==NULL\n");
    EXPECT_TRUE(vTets.empty());
    expectThrow([&] { m_triangulation.getTetrahedra(m_vTets); }, "vTet.empty()");
}

TEST_F(Validity, DumpFilesAreNumberedThroughTheProcess)
{
    // A process of its own, in which no fault was found before.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto checkTwice = [this] {
        insertTwoTetrahedra();
        for (const double z : {0.5, -0.5}) {
            getLowerApex().exchange(1, 1, z);
            check(true);
        }
        const bool bNumbered = m_directory.list() == "00000_negSideBug.list 00001_sphereIncBug.list ";
        m_directory.remove();
        std::_Exit(bNumbered ? 0 : 1);
    };
    EXPECT_EXIT(checkTwice(), testing::ExitedWithCode(0), "");
}

} // namespace

} // namespace VORN3D::tests
