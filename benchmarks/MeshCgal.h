#pragma once

#include "Inputs.h"

#include <CGAL/Delaunay_triangulation_3.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Unique_hash_map.h>
#include <CGAL/version.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace bench
{

/// With CGAL's own structure for location (Fast_location), or without (Compact_location).
template <class LocationPolicy>
class MeshCgalBy
{
public:
    using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
    using Point = Kernel::Point_3;
    using Points = std::vector<Point>;
    using Triangulation = CGAL::Delaunay_triangulation_3<Kernel, LocationPolicy>;
    using Cell = typename Triangulation::Cell_handle;
    using Vertex = typename Triangulation::Vertex_handle;
    static constexpr const char* NAME = "CGAL";
    static constexpr bool EXACT = true;

    static std::string version() { return CGAL_VERSION_STR; }
    static std::size_t count(const Points& points) { return points.size(); }
    static Points convert(const std::vector<Xyz>& vXyz) { return emplaceAll<Points>(vXyz); }

    void insert(const Points& points) { m_dt.insert(points.begin(), points.end()); }

    void clear() { m_dt.clear(); }

    void insertSingly(const Points& points)
    {
        for (const Point& p : points)
            m_dt.insert(p);
    }

    /// Each near the one before.
    void insertNear(const Points& points)
    {
        Cell hint;
        for (const Point& p : points)
            hint = m_dt.insert(p, hint)->cell();
    }

    void insertNumbered(const Points& points) { insert(points); }

    bool locate(const Point& p)
    {
        // Fast_location has a start of its own; without it a client starts where the last query ended.
        return USES_HINTS ? locateNear(p) : !m_dt.is_infinite(m_dt.locate(p));
    }

    /// Near the last query.
    bool locateNear(const Point& p)
    {
        m_hint = m_dt.locate(p, m_hint);
        return !m_dt.is_infinite(m_hint);
    }

    std::size_t numTetrahedra() const
    {
        std::vector<Cell> vCells;
        for (const Cell cell : m_dt.finite_cell_handles())
            vCells.push_back(cell);
        return vCells.size();
    }

    std::size_t makeArrays() const
    {
        CGAL::Unique_hash_map<Cell, std::uint32_t> cellNumbers(UINT32_MAX, m_dt.number_of_cells());
        CGAL::Unique_hash_map<Vertex, std::uint32_t> vertexNumbers(UINT32_MAX, m_dt.number_of_vertices());
        std::uint32_t numCells = 0;
        std::uint32_t numVertices = 0;
        for (const Cell cell : m_dt.finite_cell_handles())
            cellNumbers[cell] = numCells++;
        for (const Vertex vertex : m_dt.finite_vertex_handles())
            vertexNumbers[vertex] = numVertices++;
        std::vector<std::uint32_t> vCorners;
        std::vector<std::uint32_t> vNeighbors;
        for (const Cell cell : m_dt.finite_cell_handles())
            for (int i = 0; i < 4; ++i) {
                vCorners.push_back(vertexNumbers[cell->vertex(i)]);
                vNeighbors.push_back(cellNumbers[cell->neighbor(i)]);
            }
        return vNeighbors.size() / 4;
    }

    bool check() const { return m_dt.is_valid(); }

protected:
    Triangulation m_dt;

private:
    static constexpr bool USES_HINTS = std::is_same_v<LocationPolicy, CGAL::Compact_location>;

    Cell m_hint;
};

using MeshCgal = MeshCgalBy<CGAL::Compact_location>;
using MeshCgalFast = MeshCgalBy<CGAL::Fast_location>;

} // namespace bench
