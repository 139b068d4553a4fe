// A point set, its mesh, and the points that a query about it must survive.
#pragma once

#include "CapturedOutput.h"
#include "PointSets.h"
#include "rationalSigns.h"
#include "vorn3d/Vorn_3D.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace VORN3D::tests
{

inline Coordinates coordinatesOf(const Point3& p)
{
    return {p.x(), p.y(), p.z()};
}

inline Point3 middle(const Point3& a, const Point3& b)
{
    return {a.x() / 2 + b.x() / 2, a.y() / 2 + b.y() / 2, a.z() / 2 + b.z() / 2};
}

class TriangulatedSet : public testing::TestWithParam<PointSet>
{
protected:
    void triangulate(std::size_t num)
    {
        std::vector<Point3> vPoints = makePoints(GetParam(), num);
        outputOf([&] { m_dt.insert(vPoints, m_vHandles); });
        if (m_dt.is3D())
            m_dt.getTetrahedra(m_vTets);
        m_dt.getVertices(m_vVertices);
    }

    const Point3& anyVertex(Random& random) const { return *m_vVertices[random.below(m_vVertices.size())]; }

    /// num points, in turn at vertices, in the middle of edges, facets and tetrahedra (exactly there on
    /// lattices), in the centres of their spheres, in the middle between any two vertices and beyond one of
    /// them, and on the mirrored side of a facet.
    std::vector<Point3> makeQueries(std::size_t num) const
    {
        Random random(num);
        std::vector<Point3> vQueries = {{0, 0, 0}, {1e300, 1e-300, -1e300}};
        while (vQueries.size() < num) {
            const Point3& a = anyVertex(random);
            const Point3& b = anyVertex(random);
            vQueries.push_back(a);
            vQueries.push_back(middle(a, b));
            vQueries.emplace_back(2 * a.x() - b.x(), 2 * a.y() - b.y(), 2 * a.z() - b.z());
            if (m_vTets.empty())
                continue;
            Point3* aCorner[4];
            const Tet3& tet = *m_vTets[random.below(m_vTets.size())];
            tet.getCorners(aCorner[0], aCorner[1], aCorner[2], aCorner[3]);
            std::rotate(aCorner, aCorner + random.below(4), aCorner + 4);
            const Point3 onEdge = middle(*aCorner[0], *aCorner[1]);
            const Point3 onFacet = middle(onEdge, *aCorner[2]);
            vQueries.insert(vQueries.end(),
                            {onEdge,
                             onFacet,
                             middle(onFacet, *aCorner[3]),
                             tet.getCircumcenter(),
                             {2 * onFacet.x() - aCorner[3]->x(), 2 * onFacet.y() - aCorner[3]->y(),
                              2 * onFacet.z() - aCorner[3]->z()}});
        }
        const auto isBad = [](const Point3& p) {
            return !std::isfinite(p.x()) || !std::isfinite(p.y()) || !std::isfinite(p.z());
        };
        vQueries.erase(std::remove_if(vQueries.begin(), vQueries.end(), isBad), vQueries.end());
        return vQueries;
    }

    Vorn_3D m_dt;
    std::vector<Point3*> m_vHandles;
    std::vector<Tet3*> m_vTets;
    std::vector<Point3*> m_vVertices;
};

/// Names tests by their point set.
inline std::string getSetName(const testing::TestParamInfo<PointSet>& info)
{
    return info.param.name;
}

} // namespace VORN3D::tests
