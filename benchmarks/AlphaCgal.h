#pragma once

#include "Alpha.h"

#include <CGAL/Alpha_shape_3.h>
#include <CGAL/Alpha_shape_cell_base_3.h>
#include <CGAL/Alpha_shape_vertex_base_3.h>
#include <CGAL/Delaunay_triangulation_3.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>

#include <iterator>
#include <memory>
#include <vector>

namespace bench
{

/// With exact comparisons of alpha or with those of rounded values.
template <class ExactComparisons>
class AlphaCgalBy
{
public:
    static constexpr bool EXACT = ExactComparisons::value;
    using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
    using Points = std::vector<Kernel::Point_3>;

    static Points convert(const std::vector<Xyz>& vXyz) { return emplaceAll<Points>(vXyz); }

    void makeFiltration(const Points& points)
    {
        Triangulation triangulation(points.begin(), points.end());
        m_pShape = std::make_unique<Shape>(triangulation, 0, Shape::GENERAL);
        m_pShape->filtration_with_alpha_values(CGAL::dispatch_output<CGAL::Object, typename Shape::FT>(
            std::back_inserter(m_vObjects), std::back_inserter(m_vValues)));
    }

    void count(SimplexCounts& counts) const
    {
        auto value = m_vValues.begin();
        for (const CGAL::Object& object : m_vObjects) {
            const int dimension = CGAL::object_cast<typename Shape::Cell_handle>(&object) ? 3
                                  : CGAL::object_cast<typename Shape::Facet>(&object)     ? 2
                                  : CGAL::object_cast<typename Shape::Edge>(&object)      ? 1
                                                                                          : 0;
            counts.add(dimension, CGAL::to_double(*value++));
        }
    }

    long makeSurface(double alpha)
    {
        m_pShape->set_alpha(alpha);
        std::vector<typename Shape::Facet> vFacets;
        m_pShape->get_alpha_shape_facets(std::back_inserter(vFacets), Shape::REGULAR);
        return static_cast<long>(vFacets.size());
    }

private:
    using Vertex = CGAL::Alpha_shape_vertex_base_3<Kernel, CGAL::Default, ExactComparisons>;
    using Cell = CGAL::Alpha_shape_cell_base_3<Kernel, CGAL::Default, ExactComparisons>;
    using Triangulation =
        CGAL::Delaunay_triangulation_3<Kernel, CGAL::Triangulation_data_structure_3<Vertex, Cell>>;
    using Shape = CGAL::Alpha_shape_3<Triangulation, ExactComparisons>;

    std::unique_ptr<Shape> m_pShape;
    std::vector<CGAL::Object> m_vObjects;
    std::vector<typename Shape::FT> m_vValues;
};

using AlphaCgal = AlphaCgalBy<CGAL::Tag_true>;
using AlphaCgalFast = AlphaCgalBy<CGAL::Tag_false>;

} // namespace bench
