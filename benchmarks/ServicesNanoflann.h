#pragma once

#include "Services.h"

#include <nanoflann.hpp>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace bench
{

class ServicesNanoflann
{
public:
    using Points = std::vector<Xyz>;

    static Points convert(const std::vector<Xyz>& vXyz) { return vXyz; }

    void insert(const Points& points)
    {
        m_cloud.points = points;
        m_pTree = std::make_unique<Tree>(3, m_cloud);
        m_pTree->buildIndex();
    }

    static void addServices()
    {
        addService<ServicesNanoflann>("nearest, random", makeRandomQueries, findNearest<1>);
        addService<ServicesNanoflann>("nearest, path", makePathQueries, findNearest<1>);
        addService<ServicesNanoflann>("10 nearest, random", makeRandomQueries, findNearest<10>);
        addService<ServicesNanoflann>("10 nearest, path", makePathQueries, findNearest<10>);
    }

private:
    struct Cloud
    {
        Points points;

        std::size_t kdtree_get_point_count() const { return points.size(); }
        double kdtree_get_pt(std::size_t i, std::size_t k) const
        {
            return k == 0 ? points[i].x : k == 1 ? points[i].y : points[i].z;
        }
        template <class Box>
        bool kdtree_get_bbox(Box&) const
        {
            return false;
        }
    };
    using Tree = nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Cloud>, Cloud, 3>;

    template <std::size_t k>
    static void findNearest(ServicesNanoflann& library, const Points& queries)
    {
        std::array<std::uint32_t, k> aIndex;
        std::array<double, k> aSqDistance;
        for (const Xyz& p : queries) {
            library.m_pTree->knnSearch(&p.x, k, aIndex.data(), aSqDistance.data());
            benchmark::DoNotOptimize(aIndex);
        }
    }

    Cloud m_cloud;
    std::unique_ptr<Tree> m_pTree;
};

} // namespace bench
