#pragma once

#include "MeshVorn3D.h"
#include "Services.h"

#include "vorn3d/geometry/interpolate.h"
#include "vorn3d/geometry/nearestVertex.h"

#include <vector>

namespace bench
{

class ServicesVorn3D : public MeshVorn3D
{
public:
    static Points convert(const std::vector<Xyz>& vXyz)
    {
        Points points = MeshVorn3D::convert(vXyz);
        for (std::size_t i = 0; i < points.size(); ++i)
            points[i].setCustomIndex(static_cast<int>(i));
        return points;
    }

    static void addServices()
    {
        using Method = VORN3D::InterpolationMethod3;
        const auto locate = [](ServicesVorn3D& mesh, const Points& queries) {
            for (const VORN3D::Point3& p : queries)
                benchmark::DoNotOptimize(mesh.locate(p));
        };
        const auto locateNear = [](ServicesVorn3D& mesh, const Points& queries) {
            for (const VORN3D::Point3& p : queries)
                benchmark::DoNotOptimize(mesh.locateNear(p));
        };
        const auto findNearest = [](std::size_t k) {
            return [k](ServicesVorn3D& mesh, const Points& queries) {
                benchmark::DoNotOptimize(nearestVertices(mesh.m_dt, queries, k));
            };
        };
        const auto interpolate = [](Method method) {
            return [method](ServicesVorn3D& mesh, const Points& queries) {
                benchmark::DoNotOptimize(makeInterpolationMatrix(mesh.m_dt, queries, method));
            };
        };
        addService<ServicesVorn3D>("locate, random", makeRandomQueries, locate);
        addService<ServicesVorn3D>("locate, path", makePathQueries, locateNear);
        addService<ServicesVorn3D>("nearest, random", makeRandomQueries, findNearest(1));
        addService<ServicesVorn3D>("nearest, path", makePathQueries, findNearest(1));
        addService<ServicesVorn3D>("10 nearest, random", makeRandomQueries, findNearest(10));
        addService<ServicesVorn3D>("10 nearest, path", makePathQueries, findNearest(10));
        addService<ServicesVorn3D>("linear", makeRandomQueries, interpolate(Method::LINEAR));
        addService<ServicesVorn3D>("natural", makeRandomQueries, interpolate(Method::NATURAL));
    }
};

} // namespace bench
