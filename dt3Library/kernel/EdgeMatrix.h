// EdgeMatrix pairs the facets of a star of moderate size, faster than FacetHash: nothing is searched.
//
// The vertices of the star get consecutive numbers, and entry (p, q) of the matrix is the tetrahedron whose
// base runs from p to q. Neighbours run along their common edge in opposite senses, so each finds the other
// in the transposed entry. All entries are null between insertions: whoever has found its partner clears the
// entry, and one who stays alone its own.
//
// The numbers stand in the vertices, whose records an insertion reads and writes anyway.
#pragma once

#include "nalo_tools/ScratchList.h"
#include "vorn3d/Point3.h"
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
        // A disk of f triangles has at most f + 2 vertices. One more is written and not counted.
        m_shift = 5;
        while (std::size_t{1} << m_shift < numFacets + 2)
            ++m_shift;
        const std::size_t numVertices = std::size_t{1} << m_shift;
        if (m_vVertices.size() > numVertices)
            return;
        m_vTets.resize(numVertices * numVertices);
        m_vVertices.resize(numVertices + 1);
    }

    /// Enters the tetrahedra of a star, one by one. Works on registers; the matrix must not be used otherwise
    /// meanwhile.
    class Matcher
    {
    public:
        explicit Matcher(EdgeMatrix& edges)
            : m_shift(edges.m_shift), m_pTets(edges.m_vTets.data()), m_pVertices(edges.m_vVertices.data())
        {
        }
        Matcher(const Matcher&) = delete;
        Matcher& operator=(const Matcher&) = delete;
        ~Matcher()
        {
            for (std::int32_t i = 0; i < m_numVertices; ++i)
                m_pVertices[i]->m_starNumber = -1;
        }

        /// Enters pTet, whose base is a, b, c. Appends where its partners at the edges opposite these three
        /// will be found.
        void match(Tet3* pTet, Point3* a, Point3* b, Point3* c, ScratchList<std::uint32_t>::Appender& slots)
        {
            const std::uint32_t ia = number(a);
            const std::uint32_t ib = number(b);
            const std::uint32_t ic = number(c);
            slots.append(enter(pTet, ib, ic));
            slots.append(enter(pTet, ic, ia));
            slots.append(enter(pTet, ia, ib));
        }

    private:
        // Whether the vertex has a number already is a matter of chance, so nothing branches on it.
        std::uint32_t number(Point3* pVtx)
        {
            const std::int32_t own = pVtx->m_starNumber;
            const std::int32_t number = own < 0 ? m_numVertices : own;
            m_pVertices[m_numVertices] = pVtx;
            m_numVertices += own < 0;
            pVtx->m_starNumber = number;
            return static_cast<std::uint32_t>(number);
        }

        std::uint32_t enter(Tet3* pTet, std::uint32_t source, std::uint32_t target)
        {
            m_pTets[(source << m_shift) + target] = pTet;
            return (target << m_shift) + source;
        }

        const unsigned m_shift;
        Tet3** const m_pTets;
        Point3** const m_pVertices;
        std::int32_t m_numVertices = 0;
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
    std::vector<Point3*> m_vVertices;
};

} // namespace VORN3D
