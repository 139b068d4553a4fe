// Finds the surface that scattered points lie on, and lists the simplices of their alpha complexes in the
// order in which they appear as alpha grows.
#include <vorn3d/geometry/AlphaComplex.h>

#include <cmath>
#include <iostream>

int main()
{
    // Points on a torus, along a curve that winds around it.
    constexpr double PI = 3.14159265358979323846;
    std::vector<VORN3D::Point3> vPoints;
    for (int i = 0; i < 2000; ++i) {
        const double a = 2 * PI * i / 2000, b = 2 * PI * i * 0.38196601125010515;
        vPoints.emplace_back((3 + std::cos(b)) * std::cos(a), (3 + std::cos(b)) * std::sin(a), std::sin(b));
    }
    VORN3D::Vorn_3D triangulation;
    std::vector<VORN3D::Point3*> vHandles;
    triangulation.insert(vPoints, vHandles);
    const VORN3D::AlphaComplex complex(triangulation, vHandles);

    // Closed by triangles that span no more than the gaps between the points, and filled. Alpha is the square
    // of a radius.
    const auto filled = VORN3D::AlphaVoids3::FILLED;
    const double alpha = complex.enclosingAlpha();
    const VORN3D::AlphaSurface surface = complex.surface(alpha, filled);
    std::cout << "closes at radius " << std::round(1000 * std::sqrt(alpha)) / 1000 << ": "
              << surface.numRegular << " triangles, two for each of " << vPoints.size() << " points\n";
    std::cout << "it holds " << std::round(100 * complex.volume(alpha, filled) / (2 * PI * PI * 3))
              << " % of the torus, its tetrahedra alone "
              << std::round(100 * complex.volume(alpha) / (2 * PI * PI * 3)) << " %\n";

    // The void inside lasts until a sphere of radius 1 has no room in it.
    const VORN3D::AlphaVoid3 longest = complex.voids().front();
    std::cout << "its void lasts until radius " << std::sqrt(complex.getValues()[longest.death]) << '\n';

    // The filtration, as programs for persistent homology take it: each simplex after its faces.
    std::size_t numBefore = 0;
    int characteristic = 0;
    for (const VORN3D::AlphaSimplex3& simplex : complex.filtration())
        if (complex.getValues()[simplex.rank] <= alpha) {
            ++numBefore;
            characteristic += simplex.dimension % 2 == 0 ? 1 : -1;
        }
    std::cout << numBefore << " simplices up to that alpha, Euler's characteristic " << characteristic
              << '\n';
}
