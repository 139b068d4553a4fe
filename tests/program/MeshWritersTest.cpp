// Mesh files, byte for byte: two tetrahedra with a common facet, of points of which one comes twice.
#include "output/meshWriters.h"
#include "TemporaryDirectory.h"

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

} // namespace

} // namespace VORN3D::program
