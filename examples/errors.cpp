// What can go wrong, and how the library tells: wrong use throws VornException, after a report on standard
// output. An answer that there is nothing comes as a null pointer or as an empty list.
#include <vorn3d/Vorn_3D.h>

#include <iostream>
#include <limits>

namespace
{

/// Whether the batch was taken. A batch is checked before anything of it is stored.
bool tryToInsert(VORN3D::Vorn_3D& triangulation, std::vector<VORN3D::Point3> vPoints)
{
    try {
        triangulation.insert(vPoints);
        return true;
    } catch (const VORN3D::VornException&) {
        return false;
    }
}

std::size_t countVertices(const VORN3D::Vorn_3D& triangulation)
{
    std::vector<VORN3D::Point3*> vVertices;
    triangulation.getVertices(vVertices);
    return vVertices.size();
}

} // namespace

int main()
{
    VORN3D::Vorn_3D triangulation;

    // Points in a plane are no error; there is just no mesh yet.
    const bool bTaken = tryToInsert(triangulation, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}});
    std::cout << "points in a plane: " << (bTaken ? "taken" : "refused") << ", "
              << (triangulation.is3D() ? "a mesh" : "no mesh") << '\n';
    tryToInsert(triangulation, {{0, 0, 1}});
    std::cout << "one above it: " << (triangulation.is3D() ? "a mesh" : "no mesh") << '\n';

    // A coordinate that is not a number: the report names the point, and the triangulation is as it was.
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    if (!tryToInsert(triangulation, {{5, 5, 5}, {5, nan, 5}}))
        std::cout << "refused; there are " << countVertices(triangulation) << " vertices as before\n";

    // Nothing there: null, not an exception.
    std::cout << "a tetrahedron at 9 9 9: " << (triangulation.locate({9, 9, 9}) != nullptr ? "yes" : "no")
              << '\n';

    // In doubt about the mesh itself, have it checked; what is checked and found is printed.
    const bool bSound = triangulation.checkValidity("example", true);
    std::cout << "the mesh is " << (bSound ? "sound" : "damaged") << '\n';
}
