#pragma once

#include "Inputs.h"

#include <tetgen.h>

#include <ctime>
#include <string>
#include <vector>

namespace bench
{

class MeshTetgen
{
public:
    using Points = std::vector<Xyz>;
    static constexpr const char* NAME = "TetGen";
    static constexpr bool EXACT = true;

    static std::string version() { return "1.5"; }
    static std::size_t count(const Points& points) { return points.size(); }
    static Points convert(std::vector<Xyz> vXyz) { return vXyz; }

    /// The steps of TetGen's own driver up to the Delaunay tetrahedralization, without its output.
    void insert(Points& points)
    {
        char quiet[] = "Q";
        m_behavior.parse_commandline(quiet);
        m_input.pointlist = &points.front().x;
        m_input.numberofpoints = static_cast<int>(points.size());
        m_mesh.b = &m_behavior;
        m_mesh.in = &m_input;
        m_mesh.initializepools();
        m_mesh.transfernodes();
        exactinit(m_behavior.verbose, m_behavior.noexact, m_behavior.nostaticfilter,
                  m_mesh.xmax - m_mesh.xmin, m_mesh.ymax - m_mesh.ymin, m_mesh.zmax - m_mesh.zmin);
        clock_t startOfSorting = 0;
        m_mesh.incrementaldelaunay(startOfSorting);
        m_input.pointlist = nullptr;
    }

    /// Without the tetrahedra that join hull facets to TetGen's point at infinity.
    std::size_t numTetrahedra() const
    {
        return static_cast<std::size_t>(m_mesh.tetrahedrons->items - m_mesh.hullsize);
    }

private:
    static_assert(sizeof(Xyz) == 3 * sizeof(REAL), "an array of points is an array of coordinates");

    tetgenbehavior m_behavior;
    tetgenio m_input;
    tetgenmesh m_mesh;
};

} // namespace bench
