// Mesh files, byte for byte: two tetrahedra with a common facet, of points of which one comes twice.
#include "output/meshWriters.h"
#include "TemporaryDirectory.h"
#include "output/surfaceWriters.h"

#include "vorn3d/Vorn_3D.h"
#include "vorn3d/hosting.h"

#include <gtest/gtest.h>

namespace VORN3D::program
{

namespace
{

const std::string points = "0 0 0\n4 0 0\n0 4 0\n0 0 4\n1 1 -3\n";

// Corners of the facets on the hull, counter-clockwise from outside.
const std::string facets = "3 0 3 2\n3 1 2 3\n3 1 3 0\n3 4 0 2\n3 1 4 2\n3 1 0 4\n";

const std::pair<std::string, std::string> aFiles[] = {
    {"a.node", "5 3 1 1\n0 0 0 0 0 1\n1 4 0 0 1 1\n2 0 4 0 2 1\n3 0 0 4 4 1\n4 1 1 -3 5 1\n"},
    {"a.ele", "2 4 0\n0 1 0 3 2\n1 1 4 0 2\n"},
    {"a.neigh", "2 4\n0 -1 -1 1 -1\n1 -1 0 -1 -1\n"},
    {"a.mesh", "MeshVersionFormatted 2\nDimension 3\n"
               "Vertices\n5\n0 0 0 0\n4 0 0 0\n0 4 0 0\n0 0 4 0\n1 1 -3 0\n"
               "Tetrahedra\n2\n2 1 4 3 0\n2 5 1 3 0\n"
               "Triangles\n6\n1 4 3 0\n2 3 4 0\n2 4 1 0\n5 1 3 0\n2 5 3 0\n2 1 5 0\n"
               "End\n"},
    {"a.ply",
     "ply\nformat ascii 1.0\nelement vertex 5\nproperty double x\nproperty double y\nproperty double z\n"
     "element face 6\nproperty list uchar int vertex_indices\nend_header\n" +
         points + facets},
    {"a.off", "OFF\n5 6 0\n" + points + facets}};

TEST(MeshWriters, WriteEveryNumberInItsPlace)
{
    const TemporaryDirectory directory;
    std::ostream* const pEarlier = setMessageStream(nullptr);
    std::vector<Point3> vPoints{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {4, 0, 0}, {0, 0, 4}, {1, 1, -3}};
    int index = 0;
    for (Point3& point : vPoints)
        point.setCustomIndex(index++);
    Vorn_3D triangulation;
    triangulation.insert(vPoints);
    const Mesh mesh = makeMesh(triangulation);
    for (const auto& [name, text] : aFiles) {
        OutputFile file(directory.getPath(name));
        chooseMeshFormat(name).pFunction({triangulation, mesh}, file);
        file.commit();
        EXPECT_EQ(directory.read(name), text) << name;
    }
    setMessageStream(pEarlier);
}

TEST(SurfaceWriters, WriteEveryNumberInItsPlace)
{
    // A pyramid on a square; the second point is not of it.
    const TemporaryDirectory directory;
    const std::vector<Point3> vPoints{{0, 0, 0}, {9, 9, 9}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {1, 1, 0.5}};
    std::vector<const Point3*> vHandles;
    for (const Point3& p : vPoints)
        vHandles.push_back(&p);
    const Surface surface =
        makeSurface(vHandles, {0, 4, 3, 2, 0, 2, 5, 2, 3, 5, 3, 4, 5, 4, 0, 5}, {4, 7, 10, 13, 16});
    const auto write = [&](const std::string& name) {
        OutputFile file(directory.getPath(name));
        chooseFormatOfExtension(getSurfaceFormats(), name).pFunction(surface, file);
        file.commit();
        return directory.read(name);
    };
    const std::string vertices = "0 0 0\n2 0 0\n2 2 0\n0 2 0\n1 1 0.5\n";
    const std::string faces = "4 0 3 2 1\n3 0 1 4\n3 1 2 4\n3 2 3 4\n3 3 0 4\n";
    EXPECT_EQ(write("a.off"), "OFF\n5 5 0\n" + vertices + faces);
    const std::string ply = write("a.ply");
    EXPECT_EQ(ply.substr(ply.find("end_header")), "end_header\n" + vertices + faces);
    EXPECT_NE(ply.find("element face 5\nproperty list uchar int"), std::string::npos);
    EXPECT_EQ(write("a.obj"), "v 0 0 0\nv 2 0 0\nv 2 2 0\nv 0 2 0\nv 1 1 0.5\n"
                              "f 1 4 3 2\nf 1 2 5\nf 2 3 5\nf 3 4 5\nf 4 1 5\n");

    // The square as two triangles. 0, 1, 2 and 0.5 as floats, the least significant byte first.
    const std::string stl = write("a.stl");
    ASSERT_EQ(stl.size(), 84u + 6 * 50);
    EXPECT_EQ(stl.substr(80, 4), std::string("\6\0\0\0", 4));
    const std::string zero(4, '\0'), one("\0\0\x80\x3f", 4), two("\0\0\0\x40", 4), half("\0\0\0\x3f", 4);
    const std::string down("\0\0\x80\xbf", 4), end(2, '\0');
    EXPECT_EQ(stl.substr(84 + 50, 50),
              zero + zero + down + zero + zero + zero + two + two + zero + two + zero + zero + end);
    EXPECT_EQ(stl.substr(84 + 100 + 12, 38), zero + zero + zero + two + zero + zero + one + one + half + end);
}

} // namespace

} // namespace VORN3D::program
