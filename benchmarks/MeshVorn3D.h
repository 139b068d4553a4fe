#pragma once

#include "Inputs.h"

#include "vorn3d/Vorn_3D.h"

#include <exception>
#include <iostream>
#include <sstream>
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

    static std::string version() { return VORN3D::getVorn3DVersion(); }
    static std::size_t count(const Points& points) { return points.size(); }

    static Points convert(const std::vector<Xyz>& vXyz)
    {
        Points points;
        points.reserve(vXyz.size());
        for (const Xyz& p : vXyz)
            points.emplace_back(p.x, p.y, p.z);
        return points;
    }

    void insert(Points& points)
    {
        const QuietOutput quiet;
        m_dt.insert(points);
    }

    void insertSingly(Points& points)
    {
        const QuietOutput quiet;
        for (VORN3D::Point3& p : points)
            m_dt.insert(p);
    }

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

    /// Links, sides of facets and empty spheres.
    bool check()
    {
        const QuietOutput quiet;
        return m_dt.checkValidity("benchmark", true);
    }

private:
    // The library reports each batch on standard output, which belongs to the benchmark's own report;
    // only what it says of a failure is wanted.
    class QuietOutput
    {
    public:
        QuietOutput() : m_pBuffer(std::cout.rdbuf(m_sink.rdbuf())) {}
        ~QuietOutput()
        {
            std::cout.rdbuf(m_pBuffer);
            if (std::uncaught_exceptions() > 0)
                std::cerr << m_sink.str();
        }
        QuietOutput(const QuietOutput&) = delete;
        QuietOutput& operator=(const QuietOutput&) = delete;

    private:
        std::ostringstream m_sink;
        std::streambuf* m_pBuffer;
    };

protected:
    VORN3D::Vorn_3D m_dt;

private:
    VORN3D::Tet3* m_pLast = nullptr;
};

} // namespace bench
