#pragma once

#include "Alpha.h"

#include <gudhi/Alpha_complex_3d.h>
#include <gudhi/Simplex_tree.h>

#include <vector>

namespace bench
{

template <Gudhi::alpha_complex::complexity COMPLEXITY>
class AlphaGudhiBy
{
public:
    static constexpr bool EXACT = COMPLEXITY != Gudhi::alpha_complex::complexity::FAST;
    using Complex = Gudhi::alpha_complex::Alpha_complex_3d<COMPLEXITY, false, false>;
    using Points = std::vector<typename Complex::Bare_point_3>;

    static Points convert(const std::vector<Xyz>& vXyz) { return emplaceAll<Points>(vXyz); }

    void makeFiltration(const Points& points)
    {
        Complex complex(points);
        complex.create_complex(m_tree);
        m_tree.initialize_filtration();
    }

    void count(SimplexCounts& counts)
    {
        for (const auto& simplex : m_tree.filtration_simplex_range())
            counts.add(m_tree.dimension(simplex), m_tree.filtration(simplex));
    }

    /// It has none.
    long makeSurface(double /*alpha*/) const { return -1; }

private:
    Gudhi::Simplex_tree<> m_tree;
};

using AlphaGudhi = AlphaGudhiBy<Gudhi::alpha_complex::complexity::EXACT>;
using AlphaGudhiFast = AlphaGudhiBy<Gudhi::alpha_complex::complexity::FAST>;

} // namespace bench
