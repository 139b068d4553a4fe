#pragma once

#include "MeshCgal.h"
#include "Services.h"

#include <CGAL/Orthogonal_k_neighbor_search.h>
#include <CGAL/Search_traits_3.h>
#include <CGAL/natural_neighbor_coordinates_3.h>
#include <CGAL/spatial_sort.h>

#include <array>
#include <iterator>
#include <utility>
#include <vector>

namespace bench
{

/// CGAL's tree for several nearest points, which its triangulation does not find.
class CgalTree
{
public:
    using Kernel = MeshCgalFast::Kernel;
    using Points = MeshCgalFast::Points;

    static Points convert(const std::vector<Xyz>& vXyz) { return MeshCgalFast::convert(vXyz); }

    void insert(const Points& points)
    {
        m_tree.insert(points.begin(), points.end());
        m_tree.build();
    }

    static void findTenNearest(CgalTree& library, const Points& queries)
    {
        for (const Kernel::Point_3& p : queries) {
            Search search(library.m_tree, p, 10);
            benchmark::DoNotOptimize(search.begin());
        }
    }

private:
    using Search = CGAL::Orthogonal_k_neighbor_search<CGAL::Search_traits_3<Kernel>>;

    Search::Tree m_tree;
};

/// CGAL's triangulation with its own structure for location.
class ServicesCgal : public MeshCgalFast
{
public:
    static void addServices()
    {
        const auto locate = [](ServicesCgal& cgal, const Points& queries) {
            for (const Point& p : queries)
                benchmark::DoNotOptimize(cgal.m_dt.locate(p));
        };
        const auto locateNear = [](ServicesCgal& cgal, const Points& queries) {
            Cell cell;
            for (const Point& p : queries)
                cell = cgal.m_dt.locate(p, cell);
            benchmark::DoNotOptimize(cell);
        };
        const auto findNearest = [](ServicesCgal& cgal, const Points& queries) {
            Cell cell;
            for (const Point& p : sortAlongCurve(queries)) {
                cell = cgal.m_dt.locate(p, cell);
                benchmark::DoNotOptimize(cgal.m_dt.nearest_vertex(p, cell));
            }
        };
        addService<ServicesCgal>("locate, random", makeRandomQueries, locate);
        addService<ServicesCgal>("locate, path", makePathQueries, locateNear);
        addService<ServicesCgal>("nearest, random", makeRandomQueries, findNearest);
        addService<ServicesCgal>("nearest, path", makePathQueries, findNearest);
        addService<CgalTree>("10 nearest, random", makeRandomQueries, CgalTree::findTenNearest);
        addService<CgalTree>("10 nearest, path", makePathQueries, CgalTree::findTenNearest);
        addService<ServicesCgal>("linear", makeRandomQueries, &ServicesCgal::interpolateLinear);
        addService<ServicesCgal>("natural", makeRandomQueries, &ServicesCgal::interpolateNatural);
    }

private:
    static Points sortAlongCurve(Points points)
    {
        CGAL::spatial_sort(points.begin(), points.end());
        return points;
    }

    /// Barycentric coordinates in doubles.
    static void interpolateLinear(ServicesCgal& cgal, const Points& queries)
    {
        std::vector<std::pair<Vertex, double>> weights;
        Cell cell;
        for (const Point& p : sortAlongCurve(queries)) {
            cell = cgal.m_dt.locate(p, cell);
            if (cgal.m_dt.is_infinite(cell))
                continue;
            std::array<Point, 4> corners;
            for (int i = 0; i < 4; ++i)
                corners[static_cast<std::size_t>(i)] = cell->vertex(i)->point();
            const double whole = CGAL::volume(corners[0], corners[1], corners[2], corners[3]);
            for (std::size_t i = 0; i < 4; ++i) {
                const Point corner = std::exchange(corners[i], p);
                weights.emplace_back(cell->vertex(static_cast<int>(i)),
                                     CGAL::volume(corners[0], corners[1], corners[2], corners[3]) / whole);
                corners[i] = corner;
            }
        }
        benchmark::DoNotOptimize(weights.data());
    }

    static void interpolateNatural(ServicesCgal& cgal, const Points& queries)
    {
        std::vector<std::pair<Vertex, double>> weights;
        Cell cell;
        for (const Point& p : sortAlongCurve(queries)) {
            cell = cgal.m_dt.locate(p, cell);
            double sum = 0.0;
            if (!cgal.m_dt.is_infinite(cell))
                CGAL::sibson_natural_neighbor_coordinates_3(cgal.m_dt, p, std::back_inserter(weights), sum,
                                                            cell);
            benchmark::DoNotOptimize(sum);
        }
        benchmark::DoNotOptimize(weights.data());
    }
};

} // namespace bench
