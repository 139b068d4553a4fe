#pragma once

#include "Inputs.h"

#include "vorn3d/Vorn_3D.h"

#include <string>
#include <vector>

namespace bench
{

class MeshVorn3D
{
public:
    using Points = std::vector<VORN3D::Point3>;
    static constexpr const char* NAME = "Vorn3D";
    static constexpr bool EXACT = true;

    /// Standard output belongs to the benchmark's own report.
    MeshVorn3D() { VORN3D::setMessageStream(nullptr); }

    static std::string version() { return VORN3D::getVorn3DVersion(); }
    static std::size_t count(const Points& points) { return points.size(); }

    static Points convert(const std::vector<Xyz>& vXyz) { return emplaceAll<Points>(vXyz); }

    void insert(Points& points) { m_dt.insert(points); }
    void clear() { m_dt.clear(); }

    void insertSingly(Points& points)
    {
        for (VORN3D::Point3& p : points)
            m_dt.insert(p);
    }

    /// There is no hint to give: the library finds the last point by itself.
    void insertNear(Points& points) { insertSingly(points); }

    bool locate(const VORN3D::Point3& p) { return m_dt.locate(p) != nullptr; }

    /// Near the last such query.
    bool locateNear(const VORN3D::Point3& p)
    {
        m_pLast = m_dt.locate(p, m_pLast);
        return m_pLast != nullptr;
    }

    std::size_t numTetrahedra() const
    {
        if (!m_dt.is3D())
            return 0;
        std::vector<VORN3D::Tet3*> vTets;
        m_dt.getTetrahedra(vTets);
        return vTets.size();
    }

    void insertNumbered(Points& points) { m_dt.insert(points, m_vHandles); }

    std::size_t makeArrays() const { return m_dt.getArrays(m_vHandles).vCorners.size() / 4; }

    /// Links, sides of facets and empty spheres.
    bool check() { return m_dt.checkValidity("benchmark", true); }

protected:
    VORN3D::Vorn_3D m_dt;

private:
    VORN3D::Tet3* m_pLast = nullptr;
    std::vector<VORN3D::Point3*> m_vHandles;
};

} // namespace bench
