// Follows a straight line through the mesh, as a ray of light or the drill of a bore hole: how long it is in
// what.
#include <vorn3d/geometry/segmentWalk.h>

#include <iostream>

int main()
{
    // A box, cut into tetrahedra around the point in its middle.
    std::vector<VORN3D::Point3> vPoints{{2, 2, 2}};
    for (int i = 0; i < 8; ++i)
        vPoints.emplace_back(i & 1 ? 4 : 0, i & 2 ? 4 : 0, i & 4 ? 4 : 0);
    VORN3D::Vorn_3D triangulation;
    triangulation.insert(vPoints);

    const char* const aKind[] = {"", "along an edge", "in a facet", "through a tetrahedron"};
    const auto print = [&](const VORN3D::Point3& p, const VORN3D::Point3& q) {
        std::cout << "from " << p.x() << ' ' << p.y() << ' ' << p.z() << ":\n";
        for (const VORN3D::SegmentPiece3& piece : segmentWalk(triangulation, p, q))
            std::cout << "  " << piece.entry << " to " << piece.exit << ' '
                      << aKind[static_cast<int>(piece.kind)] << '\n';
    };
    print({-2, 1.5, 2.25}, {6, 1.5, 2.25}); // from outside to outside
    print({0, 0, 0}, {4, 4, 4});            // from corner to corner, through the middle
    print({-1, 0, 5}, {5, 0, 5});           // past the box
}
