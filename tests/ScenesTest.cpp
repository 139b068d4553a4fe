// Scene files: the writers, the palette, and the scene of a whole mesh.
#include "OoglReader.h"
#include "TemporaryDirectory.h"
#include "outcomes.h"
#include "scenes/Visualizer3.h"
#include "vorn3d/Vorn_3D.h"

#include <functional>
#include <iterator>
#include <locale>
#include <set>
#include <stdexcept>
#include <thread>

namespace VORN3D::tests
{

namespace
{

using testing::ElementsAre;

const Point3 O(0, 0, 0), X(1, 0, 0), Y(0, 1, 0), Z(0, 0, 1);

class Scenes : public testing::Test
{
protected:
    /// The text of the scene that `write` fills.
    std::string textOfScene(const std::function<void(Visualizer3&)>& write) const
    {
        const auto writeAndClose = [&] {
            Visualizer3 scene("test.list");
            write(scene);
        };
        EXPECT_EQ(outputOf(writeAndClose), "Visualizer, writing test.list\n  Writing test.list\n");
        return m_directory.read("test.list");
    }

    std::vector<SceneObject> objectsOfScene(const std::function<void(Visualizer3&)>& write) const
    {
        return readScene(textOfScene(write));
    }

    TemporaryDirectory m_directory;
};

TEST_F(Scenes, Texts)
{
    const std::string text = textOfScene([](Visualizer3& scene) {
        scene.writePoints({X, Point3(1.0 / 3, -2.5e-7, 1234567.0)}, 5, GREEN);
        scene.writeSegment(X, Y, RED);
        scene.writePolygon({O, X, Y}, RED);
        scene.writeSphere(Point3(1, 2, 3), 4.0);
        EXPECT_EQ(outputOf([&] { scene.writePoints({}, 5, GREEN); }),
                  "\n      Visualizer3::writePoints, WARNING: vPoints.empty()\n\n");
        scene.close(); // ends the scene once
    });
    EXPECT_EQ(text, "LIST\n{\nLIST\n{\nappearance{linewidth 5}\nVECT\n2 2 1\n1 1 \n1 0 \n1 0 0\n"
                    "0.333333 -2.5e-07 1.23457e+06\n0 1 0 0.5\n}\n"
                    "{\nVECT\n1 2 1\n2\n1\n1 0 0\n0 1 0\n1 0 0 0.5\n}\n"
                    "{\nOFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2 1 0 0 0.5\n}\n"
                    "{\nappearance { +edge -face }\nSPHERE 2 1 2 3\n}\n}\n");
    const auto vObjects = readScene(text);
    ASSERT_EQ(vObjects.size(), 4u);
    EXPECT_EQ(vObjects[0].appearance, (Appearance{{"linewidth", 5}}));
    EXPECT_EQ(vObjects[1].appearance, Appearance()) << "a line width ends with its points";
}

TEST_F(Scenes, PolygonIsAFanOrItsOutline)
{
    const std::vector<Point3> vSquare = {O, X, Point3(1, 1, 0), Y};
    const auto vTriangles =
        objectsOfScene([&](Visualizer3& scene) { scene.writePolygon(vSquare, CPALEGREEN); });
    ASSERT_EQ(vTriangles.size(), 2u);
    EXPECT_THAT(vTriangles[0].vPoints, ElementsAre(O, X, Point3(1, 1, 0)));
    EXPECT_THAT(vTriangles[1].vPoints, ElementsAre(O, Point3(1, 1, 0), Y));
    const auto vSides = objectsOfScene([&](Visualizer3& scene) { scene.writePolygon(vSquare, "BOUNDARY"); });
    ASSERT_EQ(vSides.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_THAT(vSides[i].vPoints, ElementsAre(vSquare[i], vSquare[(i + 1) % 4]));
        EXPECT_THAT(vSides[i].vColors, ElementsAre("0 0 0 1"));
    }
    expectAbortInDiagnostic([] { Visualizer3("test.list").writePolygon({O, X}, RED); }, "vPoints.size()>2");
}

TEST_F(Scenes, WrongUseEndsTheProcess)
{
    expectEnd([] { Visualizer3("test.list").writeTet(nullptr, RED); }, testing::KilledBySignal(SIGABRT),
              "Visualizer3:.writeTet(), ERROR: c==NULL");
    expectExit([] { Visualizer3 scene("no/such/directory.list"); },
               "Visualizer, writing no/such/directory.list\nno/such/directory.list not open\n");
}

// What a scene says must not depend on how the client's users write numbers.
TEST_F(Scenes, NumbersIgnoreTheLocale)
{
    struct Decimals : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale previous = std::locale::global(std::locale(std::locale::classic(), new Decimals));
    const auto vObjects =
        objectsOfScene([](Visualizer3& scene) { scene.writePoint(Point3(0.5, 12345, 1e6), 5, RED); });
    std::locale::global(previous);
    EXPECT_THAT(vObjects.at(0).vPoints, ElementsAre(Point3(0.5, 12345, 1e6)));
}

TEST_F(Scenes, PaletteHasDistinctTranslucentColors)
{
    const std::set<std::string> colors(std::begin(colorArray), std::end(colorArray));
    EXPECT_EQ(colors.size(), 27u);
    EXPECT_EQ(std::size(colorNameArray), 27u);
    EXPECT_STREQ(colorNameArray[18], "CLAWNGREEN");
    EXPECT_STREQ(colorArray[18], "0.49\t0.99 0.00 0.5");
    // The reader knows what a colour is.
    const auto vPoints = objectsOfScene([&](Visualizer3& scene) {
        for (const std::string& color : colors)
            scene.writePoint(O, 1, color);
    });
    for (const SceneObject& point : vPoints)
        EXPECT_THAT(point.vColors.at(0), testing::EndsWith(" 0.5"));
}

TEST_F(Scenes, ColorsAreHandedOutInTurn)
{
    Visualizer3::colorCursor = 0;
    for (int n = 0; n < 30; ++n) {
        EXPECT_EQ(Visualizer3::getColor(), colorArray[n % 14]) << n;
        EXPECT_EQ(Visualizer3::getNextColor(), colorArray[n % 14]) << n;
    }
    Visualizer3::colorCursor = 14;
    EXPECT_EQ(outputOf([] { EXPECT_EQ(Visualizer3::getNextColor(), WHITE); }),
              "Attention, returning colorArray[13] which is the last available color\n");
    EXPECT_EQ(Visualizer3::getColor(), DARKBLUE);
}

TEST_F(Scenes, SeveralThreadsMayWriteAtOnce)
{
    const auto writeMany = [](const char* filename) {
        Visualizer3 scene(filename);
        for (int n = 0; n < 1000; ++n)
            scene.writePoint(O, 1, scene.getNextColor());
    };
    std::thread other(writeMany, "other.list");
    writeMany("test.list");
    other.join();
    for (const char* filename : {"test.list", "other.list"})
        EXPECT_EQ(readScene(m_directory.read(filename)).size(), 1000u);
}

class MeshScenes : public Scenes
{
protected:
    void insert(std::vector<Point3> vPoints)
    {
        outputOf([&] { m_triangulation.insert(vPoints, m_vHandles); });
        m_triangulation.getTetrahedra(m_vTets);
    }

    Vorn_3D m_triangulation;
    std::vector<Point3*> m_vHandles;
    std::vector<Tet3*> m_vTets;
};

void expectPoint(const SceneObject& object, const Point3& p, const std::string& color, int linewidth)
{
    EXPECT_THAT(object.vPoints, ElementsAre(p));
    EXPECT_THAT(object.vColors, ElementsAre(color));
    EXPECT_EQ(object.appearance, (Appearance{{"linewidth", linewidth}}));
}

TEST_F(MeshScenes, ShowWritesEveryTetrahedronAndItsCorners)
{
    // Few digits, so that coordinates come back exactly.
    insert(
        {O, X, Y, Z, Point3(2, 2, 2), Point3(0.25, 0.25, 0.125), Point3(3, -1, 0.5), Point3(-1.5, 0.75, 4)});
    ASSERT_GT(m_vTets.size(), 5u);
    Visualizer3::colorCursor = 12;
    EXPECT_EQ(outputOf([&] { m_triangulation.show("mesh.list", m_vHandles[4]); }),
              "  Dt3::show(): vTets.size()=" + std::to_string(m_vTets.size()) +
                  "\nVisualizer, writing mesh.list\n  Writing mesh.list\n");

    const auto vObjects = readScene(m_directory.read("mesh.list"));
    ASSERT_EQ(vObjects.size(), 8 * m_vTets.size() + 1);
    for (std::size_t i = 0; i < 8 * m_vTets.size(); ++i) {
        SCOPED_TRACE(i);
        const int k = static_cast<int>(i % 8);
        const Tet3* pTet = m_vTets[i / 8];
        const SceneObject& object = vObjects[i];
        if (k < 4) { // the facet opposite corner k
            std::vector<Point3> vExpected;
            for (int corner = 0; corner < 4; ++corner)
                if (corner != k)
                    vExpected.push_back(*pTet->getCorner(corner));
            EXPECT_EQ(object.vPoints, vExpected);
            EXPECT_THAT(object.vColors, ElementsAre(colorArray[(12 + i / 8) % 14]));
        } else
            expectPoint(object, *pTet->getCorner(k - 4), GREEN, 5);
    }
    expectPoint(vObjects.back(), Point3(2, 2, 2), RED, 10);
}

TEST_F(MeshScenes, WithoutMeshOrHighlight)
{
    EXPECT_EQ(outputOf([&] { m_triangulation.show("none.list", nullptr); }),
              "Dt3::getAllTetrahedra(), oneTet==NULL\n  Dt3::show(): vTets.size()=0\n"
              "Visualizer, writing none.list\n  Writing none.list\n");
    EXPECT_TRUE(readScene(m_directory.read("none.list")).empty());
    EXPECT_EQ(outputOf([&] { m_triangulation.print("before"); }),
              "Dt3::getAllTetrahedra(), oneTet==NULL\n\n\n**** Dt3::print(before), numTets=0\n");
    insert({O, X, Y, Z});
    outputOf([&] { m_triangulation.show("one.list", nullptr); });
    EXPECT_EQ(readScene(m_directory.read("one.list")).size(), 8u);
}

TEST_F(MeshScenes, PrintListsEveryTetrahedron)
{
    insert({O, X, Y, Z, Point3(2, 2, 2)});
    EXPECT_EQ(outputOf([&] { m_triangulation.print("after"); }), "\n\n**** Dt3::print(after), numTets=2\n" +
                                                                     textOf(*m_vTets[0]) + "\n\n" +
                                                                     textOf(*m_vTets[1]) + "\n\n");
}

// The reader is what the tests above rely on.
TEST(OoglReader, RefusesWhatIsNotGrammar)
{
    const std::string good =
        "LIST { appearance { linewidth 2 } { OFF 3 1 0  0 0 0  1 0 0  0 1 0\n3 0 1 2 1 0 0 1\n}"
        " { VECT 2 3 1  2 1  1 0  0 0 0  1 0 0  0 1 0  0 0 0 1 }\n }";
    ASSERT_EQ(readScene(good).size(), 2u);
    EXPECT_EQ(readScene(good)[1].appearance.at("linewidth"), 2);
    const std::pair<std::string, std::string> aSpoiled[] = {{good, ""},
                                                            {"LIST {", "LIST"},
                                                            {"LIST", ""},
                                                            {"}\n }", "}"},
                                                            {"}\n }", "} } }"},
                                                            {"OFF 3", "OFF 4"},
                                                            {"OFF 3 1", "OFF 3 2"},
                                                            {"3 0 1 2", "3 0 1 3"},
                                                            {"1 0 0 1\n", "1 0 0\n"},
                                                            {"1 0 0 1\n", "1 0 0 2\n"},
                                                            {"VECT 2 3", "VECT 2 4"},
                                                            {"2 1  1 0", "2 1  1 1"},
                                                            {"VECT", "VEKT"},
                                                            {"linewidth", "width"},
                                                            {"0 1 0  0 0", "0 nan 0  0 0"}};
    for (const auto& [part, replacement] : aSpoiled) {
        std::string text = good;
        ASSERT_NE(text.find(part), std::string::npos) << part;
        text.replace(text.find(part), part.size(), replacement);
        EXPECT_THROW(readScene(text), std::runtime_error) << text;
    }
}

} // namespace

} // namespace VORN3D::tests
