#pragma once

#include "Alpha.h"
#include "MeshVorn3D.h"

#include "vorn3d/geometry/AlphaComplex.h"

#include <memory>
#include <vector>

namespace bench
{

class AlphaVorn3D : public MeshVorn3D
{
public:
    void makeFiltration(Points points)
    {
        m_dt.setVerbosity(false);
        std::vector<VORN3D::Point3*> vHandles;
        m_dt.insert(points, vHandles);
        m_pComplex = std::make_unique<VORN3D::AlphaComplex>(m_dt, vHandles);
        m_vFiltration = m_pComplex->filtration();
    }

    void count(SimplexCounts& counts) const
    {
        for (const VORN3D::AlphaSimplex3& simplex : m_vFiltration)
            counts.add(simplex.dimension, m_pComplex->getValues()[simplex.rank]);
    }

    long makeSurface(double alpha) const { return static_cast<long>(m_pComplex->surface(alpha).numRegular); }

private:
    std::unique_ptr<VORN3D::AlphaComplex> m_pComplex;
    std::vector<VORN3D::AlphaSimplex3> m_vFiltration;
};

} // namespace bench
