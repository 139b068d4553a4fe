// Interpolates values that are known at scattered points only, as from weather stations or drill holes:
// weights are made once, and applied to several columns of values.
#include <vorn3d/geometry/interpolate.h>

#include <cmath>
#include <iomanip>
#include <iostream>

namespace
{

using VORN3D::Point3;

double getTemperature(const Point3& p)
{
    return 20 + 5 * std::sin(p.x()) - 3 * p.z();
}

double getPressure(const Point3& p)
{
    return 1013 - 12 * p.z();
}

/// Prints both values at each point, and how far the first is from the truth.
void print(const std::string& name, const std::vector<Point3>& vPoints, const std::vector<double>& vValues)
{
    std::cout << name << ":\n";
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        if (std::isnan(vValues[2 * i]))
            std::cout << "  outside\n";
        else
            std::cout << "  " << vValues[2 * i] << " (off by "
                      << std::fabs(vValues[2 * i] - getTemperature(vPoints[i])) << ") " << vValues[2 * i + 1]
                      << '\n';
}

} // namespace

int main()
{
    // The vertices carry the places of their values.
    std::vector<Point3> vStations;
    VORN3D::generateRandomPoints(3000, 0, 3, vStations, 1);
    std::vector<double> vValues;
    for (std::size_t i = 0; i < vStations.size(); ++i) {
        vStations[i].setCustomIndex(static_cast<int>(i));
        vValues.push_back(getTemperature(vStations[i]));
        vValues.push_back(getPressure(vStations[i]));
    }
    VORN3D::Vorn_3D triangulation;
    triangulation.insert(vStations);

    const std::vector<Point3> vPoints{{1, 1, 1}, {0.5, 2, 2.5}, {2.2, 0.3, 1.7}, {4, 1, 1}};
    using Method = VORN3D::InterpolationMethod3;
    std::cout << std::fixed << std::setprecision(4);
    const auto linear = makeInterpolationMatrix(triangulation, vPoints, Method::LINEAR);
    print("linear", vPoints, linear.apply(vValues, 2));
    const auto natural = makeInterpolationMatrix(triangulation, vPoints, Method::NATURAL);
    print("natural neighbours", vPoints, natural.apply(vValues, 2));
    std::cout << "weights of the first point: " << linear.vRowStart[1] << " and " << natural.vRowStart[1]
              << '\n';

    // Beyond the hull, a single point, its value that of the nearest place of the hull.
    double clamped = 0;
    for (const auto& [pVtx, weight] :
         interpolateLinear(triangulation, vPoints[3], VORN3D::OutsideHull3::CLAMP))
        clamped += weight * getPressure(*pVtx);
    std::cout << "clamped: " << clamped << '\n';
}
