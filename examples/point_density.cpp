// Estimates how densely points lie, at the points and everywhere between them.
#include <vorn3d/geometry/interpolate.h>
#include <vorn3d/geometry/pointDensity.h>

#include <cmath>
#include <iostream>

int main()
{
    // A lattice with steps that double at x = 8: eight times as dense on the left as on the right.
    std::vector<VORN3D::Point3> vPoints;
    for (int x = 0; x <= 24; ++x)
        for (int y = 0; y <= 16; ++y)
            for (int z = 0; z <= 16; ++z)
                if (x <= 8 || (x % 2 == 0 && y % 2 == 0 && z % 2 == 0)) {
                    vPoints.emplace_back(x, y, z);
                    vPoints.back().setCustomIndex(static_cast<int>(vPoints.size()) - 1);
                }
    VORN3D::Vorn_3D triangulation;
    triangulation.insert(vPoints);

    const std::vector<double> vDensities = pointDensity(triangulation);
    const std::vector<VORN3D::Point3> vQueries{{4.5, 8.5, 8.5}, {17, 9, 9}};
    const std::vector<double> vAtQueries = makeInterpolationMatrix(triangulation, vQueries).apply(vDensities);
    std::cout << "left about " << std::lround(vAtQueries[0]) << ", right about "
              << std::lround(8 * vAtQueries[1]) << " / 8\n";
}
