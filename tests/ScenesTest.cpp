// Scene files: the writers, the palette, and the scene of a whole mesh.
#include "TemporaryDirectory.h"
#include "outcomes.h"
#include "sceneText.h"
#include "scenes/Visualizer3.h"
#include "vorn3d/Vorn_3D.h"

#include <functional>
#include <iterator>
#include <locale>
#include <set>
#include <thread>

namespace VORN3D::tests
{

namespace
{

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

    TemporaryDirectory m_directory;
};

TEST_F(Scenes, Texts)
{
    const std::string text = textOfScene([](Visualizer3& out) {
        out.writePoints({X, Point3(1.0 / 3, -2.5e-7, 1234567.0)}, 5, GREEN);
        out.writeSegment(X, Y, RED);
        out.writePolygon({O, X, Y}, RED);
        out.writeSphere(Point3(1, 2, 3), 4.0);
        EXPECT_EQ(outputOf([&] { out.writePoints({}, 5, GREEN); }),
                  "\n      Visualizer3::writePoints, WARNING: vPoints.empty()\n\n");
        out.close(); // ends the scene once
    });
    EXPECT_EQ(text, scene("LIST\n{\nappearance{linewidth 5}\nVECT\n2 2 1\n1 1 \n1 0 \n1 0 0\n"
                          "0.333333 -2.5e-07 1.23457e+06\n0 1 0 0.5\n}\n" +
                          segment(X, Y, "1 0 0 0.5") + triangle(O, X, Y, "1 0 0 0.5") +
                          "{\nappearance { +edge -face }\nSPHERE 2 1 2 3\n}\n"));
}

TEST_F(Scenes, PolygonIsAFanOrItsOutline)
{
    const std::vector<Point3> vSquare = {O, X, Point3(1, 1, 0), Y};
    EXPECT_EQ(textOfScene([&](Visualizer3& out) { out.writePolygon(vSquare, "c"); }),
              scene(triangle(O, X, vSquare[2], "c") + triangle(O, vSquare[2], Y, "c")));
    std::string outline;
    for (std::size_t i = 0; i < 4; ++i)
        outline += segment(vSquare[i], vSquare[(i + 1) % 4], "0 0 0 1");
    EXPECT_EQ(textOfScene([&](Visualizer3& out) { out.writePolygon(vSquare, "BOUNDARY"); }), scene(outline));
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
    const std::string text =
        textOfScene([](Visualizer3& out) { out.writePoint(Point3(0.5, 12345, 1e6), 12345, RED); });
    std::locale::global(previous);
    EXPECT_EQ(text, scene(point(Point3(0.5, 12345, 1e6), 12345, RED)));
}

TEST_F(Scenes, PaletteHasDistinctTranslucentColors)
{
    EXPECT_EQ(std::set<std::string>(std::begin(colorArray), std::end(colorArray)).size(), 27u);
    for (const std::string color : colorArray)
        EXPECT_THAT(color, testing::MatchesRegex("(0|1|[01]?\\.[0-9]+)([ \t](0|1|[01]?\\.[0-9]+)){2} 0\\.5"));
    EXPECT_EQ(std::string(colorArray[0]) + ", " + colorArray[7] + ", " + colorArray[18] + ", " + RED + ", " +
                  GREEN,
              "0 0.749 1 0.5, 1 0.627 0 0.5, 0.49\t0.99 0.00 0.5, 1 0 0 0.5, 0 1 0 0.5");
    EXPECT_STREQ(colorNameArray[18], "CLAWNGREEN");
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
        for (int n = 0; n < 1000; ++n) {
            scene.getNextColor();
            scene.writePoint(O, 1, RED);
        }
    };
    std::thread other(writeMany, "other.list");
    writeMany("test.list");
    other.join();
    for (const char* filename : {"test.list", "other.list"})
        EXPECT_EQ(m_directory.read(filename).size(), scene("").size() + 1000 * point(O, 1, RED).size());
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

    std::string objects;
    for (std::size_t i = 0; i < m_vTets.size(); ++i) {
        objects += tetrahedron(*m_vTets[i], colorArray[(12 + i) % 14]);
        for (int corner = 0; corner < 4; ++corner)
            objects += point(*m_vTets[i]->getCorner(corner), 5, GREEN);
    }
    EXPECT_EQ(m_directory.read("mesh.list"), scene(objects + point(Point3(2, 2, 2), 10, RED)));
}

TEST_F(MeshScenes, WithoutMeshOrHighlight)
{
    EXPECT_EQ(outputOf([&] { m_triangulation.show("none.list", nullptr); }),
              "Dt3::getAllTetrahedra(), oneTet==NULL\n  Dt3::show(): vTets.size()=0\n"
              "Visualizer, writing none.list\n  Writing none.list\n");
    EXPECT_EQ(m_directory.read("none.list"), scene(""));
    EXPECT_EQ(outputOf([&] { m_triangulation.print("before"); }),
              "Dt3::getAllTetrahedra(), oneTet==NULL\n\n\n**** Dt3::print(before), numTets=0\n");
}

TEST_F(MeshScenes, PrintListsEveryTetrahedron)
{
    insert({O, X, Y, Z, Point3(2, 2, 2)});
    EXPECT_EQ(outputOf([&] { m_triangulation.print("after"); }), "\n\n**** Dt3::print(after), numTets=2\n" +
                                                                     textOf(*m_vTets[0]) + "\n\n" +
                                                                     textOf(*m_vTets[1]) + "\n\n");
}

} // namespace

} // namespace VORN3D::tests
