#pragma once

#include "Inputs.h"

extern "C" {
#include <libqhull_r/qhull_ra.h>
}

#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench
{

class MeshQhull
{
public:
    using Points = std::vector<Xyz>;
    static constexpr const char* NAME = "Qhull";
    /// Its decisions are those of floating point; it merges facets where they are in doubt.
    static constexpr bool EXACT = false;

    static std::string version() { return qh_version; }
    static std::size_t count(const Points& points) { return points.size(); }
    static Points convert(std::vector<Xyz> vXyz) { return vXyz; }

    MeshQhull() { qh_zero(&m_qhull, stderr); }
    ~MeshQhull() { qh_freeqhull(&m_qhull, qh_ALL); }
    MeshQhull(const MeshQhull&) = delete;
    MeshQhull& operator=(const MeshQhull&) = delete;

    /// Delaunay with the last coordinate scaled, merged facets triangulated, no output.
    void insert(Points& points)
    {
        char command[] = "qhull d Qbb Qt Q12";
        if (qh_new_qhull(&m_qhull, 3, static_cast<int>(points.size()), &points.front().x, False, command,
                         nullptr, stderr) != 0)
            throw std::runtime_error("qhull failed");
    }

    std::size_t numTetrahedra()
    {
        qhT* qh = &m_qhull;
        std::size_t num = 0;
        facetT* facet;
        FORALLfacets num += facet->upperdelaunay ? 0 : 1;
        return num;
    }

private:
    qhT m_qhull;
};

} // namespace bench
