// Interpolates a value that is known at scattered points only, as from weather stations or drill holes:
// linearly within each tetrahedron.
#include <vorn3d/Vorn_3D.h>

#include <cmath>
#include <iomanip>
#include <iostream>
#include <optional>
#include <utility>

namespace
{

using VORN3D::Point3;
using VORN3D::Tet3;

class Interpolation
{
public:
    /// The points with their values, one for each.
    Interpolation(std::vector<Point3> vPoints, std::vector<double> vValues) : m_vValues(std::move(vValues))
    {
        for (std::size_t i = 0; i < vPoints.size(); ++i)
            vPoints[i].setCustomIndex(static_cast<int>(i));
        m_triangulation.insert(vPoints);
    }

    /// The value at p; none outside the hull of the points.
    std::optional<double> getValue(const Point3& p)
    {
        const Tet3* pTet = m_triangulation.locate(p);
        if (pTet == nullptr)
            return std::nullopt;
        double value = 0;
        for (int i = 0; i < 4; ++i)
            value += getWeight(*pTet, i, p) *
                     m_vValues[static_cast<std::size_t>(pTet->getCorner(i)->getCustomIndex())];
        return value;
    }

private:
    /// The barycentric coordinate: the distance of p from facet i, that of corner i being 1.
    static double getWeight(const Tet3& tet, int i, const Point3& p)
    {
        int i0, i1, i2;
        tet.getFacetIndices(i, i0, i1, i2);
        const Point3& a = *tet.getCorner(i0);
        const VORN3D::Vector3 normal = crossProduct(*tet.getCorner(i1) - a, *tet.getCorner(i2) - a);
        return dotProduct(normal, p - a) / dotProduct(normal, *tet.getCorner(i) - a);
    }

    VORN3D::Vorn_3D m_triangulation;
    std::vector<double> m_vValues;
};

double measure(const Point3& p)
{
    return 20 + 5 * std::sin(p.x()) - 3 * p.z();
}

} // namespace

int main()
{
    std::vector<Point3> vPoints;
    VORN3D::generateRandomPoints(3000, 0, 3, vPoints, 1);
    std::vector<double> vValues;
    for (const Point3& p : vPoints)
        vValues.push_back(measure(p));
    Interpolation interpolation(vPoints, vValues);

    std::cout << std::fixed << std::setprecision(2);
    for (const Point3& p : {Point3(1, 1, 1), Point3(0.5, 2, 2.5), Point3(2.2, 0.3, 1.7), Point3(4, 1, 1)}) {
        std::cout << "at " << p.x() << ' ' << p.y() << ' ' << p.z() << ": ";
        if (const std::optional<double> value = interpolation.getValue(p))
            std::cout << *value << ", truly " << measure(p) << '\n';
        else
            std::cout << "outside\n";
    }
}
