// Mesh files are read back by small readers of their own and compared with the input and with each other.
#include "output/meshWriters.h"
#include "Statistics.h"
#include "TemporaryDirectory.h"

#include "vorn3d/Vorn_3D.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <set>

namespace VORN3D::program
{

namespace
{

using Cells = std::vector<std::vector<int>>;

/// The numbers and words of a text file, one after the other.
class Tokens
{
public:
    explicit Tokens(const std::string& text) : m_stream(text) {}

    std::string word()
    {
        std::string text;
        EXPECT_TRUE(m_stream >> text);
        return text;
    }
    double number() { return std::strtod(word().c_str(), nullptr); }
    int integer() { return std::stoi(word()); }
    void expect(const std::string& words)
    {
        std::istringstream expected(words);
        for (std::string text; expected >> text;)
            EXPECT_EQ(word(), text);
    }
    Point3 point()
    {
        const double x = number();
        const double y = number();
        return {x, y, number()};
    }
    std::vector<int> integers(int num)
    {
        std::vector<int> vIntegers;
        for (int i = 0; i < num; ++i)
            vIntegers.push_back(integer());
        return vIntegers;
    }
    void expectEnd()
    {
        std::string text;
        EXPECT_FALSE(m_stream >> text) << text;
    }

private:
    std::istringstream m_stream;
};

double getVolume(const std::vector<Point3>& vPoints, int i, int j, int k, int l)
{
    const Point3& origin = vPoints.at(static_cast<std::size_t>(i));
    return dotProduct(crossProduct(vPoints.at(static_cast<std::size_t>(j)) - origin,
                                   vPoints.at(static_cast<std::size_t>(k)) - origin),
                      vPoints.at(static_cast<std::size_t>(l)) - origin) /
           6.0;
}

/// Random points, each twice.
class MeshWriters : public testing::Test
{
protected:
    static constexpr int numRandom = 500;

    MeshWriters()
    {
        std::mt19937 random(5);
        std::uniform_real_distribution<double> coordinate(-1.0, 1.0);
        for (int i = 0; i < numRandom; ++i)
            m_vPoints.emplace_back(coordinate(random), coordinate(random), coordinate(random));
        for (std::size_t i = m_vPoints.size(); i-- > 0;)
            m_vPoints.push_back(m_vPoints[i]);
        int index = 0;
        for (Point3& point : m_vPoints)
            point.setCustomIndex(index++);
        testing::internal::CaptureStdout();
        m_triangulation.insert(m_vPoints);
        testing::internal::GetCapturedStdout();
        m_mesh = makeMesh(m_triangulation);
        m_volume = measureMesh(m_triangulation).hullVolume;
    }

    Tokens write(const std::string& name)
    {
        OutputFile file(m_directory.getPath(name));
        chooseMeshFormat(name).pFunction({m_triangulation, m_mesh}, file);
        file.commit();
        return Tokens(m_directory.read(name));
    }

    /// Four corners, or neighbours, of each tetrahedron, after its number.
    Cells readQuadruples(const std::string& name, const std::string& header)
    {
        Tokens tokens = write(name);
        const int num = tokens.integer();
        tokens.expect(header);
        Cells vCells;
        for (int i = 0; i < num; ++i) {
            EXPECT_EQ(tokens.integer(), i);
            vCells.push_back(tokens.integers(4));
        }
        tokens.expectEnd();
        return vCells;
    }

    void expectVertices(const std::vector<Point3>& vPoints) const
    {
        ASSERT_EQ(vPoints.size(), m_vPoints.size() / 2);
        EXPECT_TRUE(std::equal(vPoints.begin(), vPoints.end(), m_vPoints.begin()));
    }

    void expectTets(const Cells& vTets) const
    {
        double sum = 0.0;
        for (const auto& tet : vTets) {
            const double volume = getVolume(m_vPoints, tet[0], tet[1], tet[2], tet[3]);
            EXPECT_GT(volume, 0.0);
            sum += volume;
        }
        EXPECT_NEAR(sum, m_volume, 1e-12);
    }

    /// A closed surface of genus 0 that encloses the mesh, seen counter-clockwise from outside.
    void expectHull(const std::vector<Point3>& vPoints, const Cells& vTriangles) const
    {
        std::set<std::pair<int, int>> edges;
        std::set<int> corners;
        double sum = 0.0;
        for (const auto& triangle : vTriangles) {
            corners.insert(triangle.begin(), triangle.end());
            for (std::size_t i = 0; i < 3; ++i)
                EXPECT_TRUE(edges.emplace(triangle[i], triangle[(i + 1) % 3]).second);
            sum += getVolume(vPoints, 0, triangle[0], triangle[1], triangle[2]);
        }
        for (const auto& [source, target] : edges)
            EXPECT_TRUE(edges.count({target, source}));
        // Each edge is listed from both sides.
        EXPECT_EQ(corners.size() + vTriangles.size(), edges.size() / 2 + 2);
        EXPECT_NEAR(sum, m_volume, 1e-12);
    }

    TemporaryDirectory m_directory;
    std::vector<Point3> m_vPoints;
    Vorn_3D m_triangulation;
    Mesh m_mesh;
    double m_volume;
};

TEST_F(MeshWriters, TetgenFilesBelongTogether)
{
    Tokens nodes = write("a.node");
    const int numNodes = nodes.integer();
    nodes.expect("3 1 1");
    std::vector<Point3> vPoints;
    std::vector<int> vHullFlags;
    for (int i = 0; i < numNodes; ++i) {
        EXPECT_EQ(nodes.integer(), i);
        vPoints.push_back(nodes.point());
        EXPECT_EQ(nodes.integer(), i) << "the input index";
        vHullFlags.push_back(nodes.integer());
    }
    nodes.expectEnd();
    expectVertices(vPoints);

    const Cells vTets = readQuadruples("a.ele", "4 0");
    expectTets(vTets);
    const Cells vNeighbors = readQuadruples("a.neigh", "4");
    ASSERT_EQ(vNeighbors.size(), vTets.size());
    for (std::size_t t = 0; t < vTets.size(); ++t) {
        for (std::size_t i = 0; i < 4; ++i) {
            std::vector<int> facet = vTets[t];
            facet.erase(facet.begin() + static_cast<int>(i));
            const int neighbor = vNeighbors[t][i];
            for (const int corner : facet) {
                if (neighbor < 0)
                    EXPECT_EQ(vHullFlags.at(static_cast<std::size_t>(corner)), 1);
                else
                    EXPECT_EQ(std::count(vTets.at(static_cast<std::size_t>(neighbor)).begin(),
                                         vTets[static_cast<std::size_t>(neighbor)].end(), corner),
                              1);
            }
            if (neighbor >= 0) {
                const auto& back = vNeighbors[static_cast<std::size_t>(neighbor)];
                EXPECT_EQ(std::count(back.begin(), back.end(), static_cast<int>(t)), 1);
            }
        }
    }
    // A closed surface of triangles.
    const auto numHullFacets = std::accumulate(
        vNeighbors.begin(), vNeighbors.end(), std::ptrdiff_t(0), [](auto sum, const auto& neighbors) {
            return sum + std::count(neighbors.begin(), neighbors.end(), -1);
        });
    EXPECT_EQ(2 * std::count(vHullFlags.begin(), vHullFlags.end(), 1) - 4, numHullFacets);
}

TEST_F(MeshWriters, MeditHoldsTheMeshAndItsHull)
{
    Tokens tokens = write("a.mesh");
    tokens.expect("MeshVersionFormatted 2 Dimension 3 Vertices");
    std::vector<Point3> vPoints(static_cast<std::size_t>(tokens.integer()));
    for (Point3& point : vPoints) {
        point = tokens.point();
        tokens.expect("0");
    }
    expectVertices(vPoints);
    const auto readCells = [&](const std::string& keyword, int numCorners) {
        tokens.expect(keyword);
        Cells vCells(static_cast<std::size_t>(tokens.integer()));
        for (auto& cell : vCells) {
            cell = tokens.integers(numCorners);
            for (int& corner : cell)
                --corner;
            tokens.expect("0");
        }
        return vCells;
    };
    expectTets(readCells("Tetrahedra", 4));
    expectHull(vPoints, readCells("Triangles", 3));
    tokens.expect("End");
    tokens.expectEnd();
}

TEST_F(MeshWriters, SurfacesAreClosedAndHoldTheHullAlone)
{
    for (const std::string name : {"a.ply", "a.off"}) {
        SCOPED_TRACE(name);
        Tokens tokens = write(name);
        const bool bPly = name == "a.ply";
        tokens.expect(bPly ? "ply format ascii 1.0 element vertex" : "OFF");
        std::vector<Point3> vPoints(static_cast<std::size_t>(tokens.integer()));
        if (bPly)
            tokens.expect("property double x property double y property double z element face");
        Cells vTriangles(static_cast<std::size_t>(tokens.integer()));
        tokens.expect(bPly ? "property list uchar int vertex_indices end_header" : "0");
        for (Point3& point : vPoints) {
            point = tokens.point();
            EXPECT_TRUE(std::count(m_vPoints.begin(), m_vPoints.end(), point)) << point;
        }
        for (auto& triangle : vTriangles) {
            tokens.expect("3");
            triangle = tokens.integers(3);
        }
        tokens.expectEnd();
        EXPECT_EQ(vTriangles.size(), 2 * vPoints.size() - 4);
        expectHull(vPoints, vTriangles);
    }
}

} // namespace

} // namespace VORN3D::program
