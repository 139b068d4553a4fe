// EdgeMatrix pairs the facets of a star of moderate size, faster than FacetHash: nothing is searched.
//
// Entry (p, q) of the matrix is the tetrahedron whose base runs from the vertex number p to number q.
// Neighbours run along their common edge in opposite senses, so each finds the other in the transposed entry.
// All entries are null between insertions: whoever has found its partner clears the entry, and one who stays
// alone its own.
#pragma once

#include "vorn3d/Tet3.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace VORN3D
{

class EdgeMatrix
{
public:
    /// Larger stars would need a matrix that no cache holds.
    static constexpr std::size_t MAX_FACETS = 254;

    /// Makes room for a star of up to MAX_FACETS facets.
    void start(std::size_t numFacets)
    {
        m_shift = 5;
        while (std::size_t{1} << m_shift < numFacets + 2)
            ++m_shift;
        const std::size_t numEntries = std::size_t{1} << 2 * m_shift;
        if (m_vTets.size() < numEntries)
            m_vTets.resize(numEntries);
    }

    /// Enters the tetrahedra of a star, one by one. Works on registers; the matrix must not be used otherwise
    /// meanwhile.
    class Matcher
    {
    public:
        explicit Matcher(EdgeMatrix& edges) : m_shift(edges.m_shift), m_pTets(edges.m_vTets.data()) {}

        /// Enters pTet at an edge of its base. Returns where its partner there will be found.
        std::uint32_t match(Tet3* pTet, std::uint32_t source, std::uint32_t target) const
        {
            m_pTets[(source << m_shift) + target] = pTet;
            return (target << m_shift) + source;
        }

    private:
        const unsigned m_shift;
        Tet3** const m_pTets;
    };

    /// The tetrahedron that shares the facet with pTet; null if there is none. To be asked once.
    Tet3* takePartner(std::uint32_t slot, const Tet3*)
    {
        Tet3* pPartner = std::exchange(m_vTets[slot], nullptr);
        if (pPartner == nullptr)
            m_vTets[getTransposed(slot)] = nullptr;
        return pPartner;
    }

private:
    std::size_t getTransposed(std::uint32_t slot) const
    {
        const std::uint32_t target = slot >> m_shift;
        const std::uint32_t source = slot & ((1u << m_shift) - 1);
        return (source << m_shift) + target;
    }

    unsigned m_shift = 0;
    std::vector<Tet3*> m_vTets;
};

} // namespace VORN3D
