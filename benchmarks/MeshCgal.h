#pragma once

#include "Inputs.h"

#include <CGAL/Delaunay_triangulation_3.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/version.h>

#include <string>
#include <vector>

namespace bench
{

class MeshCgal
{
public:
    using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
    using Triangulation = CGAL::Delaunay_triangulation_3<Kernel>;
    using Points = std::vector<Kernel::Point_3>;
    static constexpr const char* NAME = "CGAL";
    static constexpr bool EXACT = true;

    static std::string version() { return CGAL_VERSION_STR; }
    static std::size_t count(const Points& points) { return points.size(); }

    static Points convert(const std::vector<Xyz>& vXyz)
    {
        Points points;
        points.reserve(vXyz.size());
        for (const Xyz& p : vXyz)
            points.emplace_back(p.x, p.y, p.z);
        return points;
    }

    void insert(const Points& points) { m_dt.insert(points.begin(), points.end()); }

    void clear() { m_dt.clear(); }

    void insertSingly(const Points& points)
    {
        for (const Kernel::Point_3& p : points)
            m_dt.insert(p);
    }

    /// Starts where the last query ended, as a client with neighbouring queries would.
    bool locate(const Kernel::Point_3& p) { return locateNear(p); }

    /// Near the last query.
    bool locateNear(const Kernel::Point_3& p)
    {
        m_hint = m_dt.locate(p, m_hint);
        return !m_dt.is_infinite(m_hint);
    }

    std::size_t numTetrahedra() const
    {
        std::vector<Triangulation::Cell_handle> vCells;
        for (const Triangulation::Cell_handle cell : m_dt.finite_cell_handles())
            vCells.push_back(cell);
        return vCells.size();
    }

    bool check() const { return m_dt.is_valid(); }

private:
    Triangulation m_dt;
    Triangulation::Cell_handle m_hint;
};

} // namespace bench
