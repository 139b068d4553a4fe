// StarNumbers gives the vertices of a star consecutive numbers, by which its edges are named.
//
// The numbers stand in the vertices, whose records an insertion reads and writes anyway.
#pragma once

#include "vorn3d/Point3.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

class StarNumbers
{
public:
    /// Makes room for the vertices of a star of so many facets.
    void makeRoomFor(std::size_t numFacets)
    {
        // A disk of f triangles has at most f + 2 vertices. One more is written and not counted.
        if (m_vVertices.size() < numFacets + 3)
            m_vVertices.resize(numFacets + 3);
    }

    /// Numbers the vertices of one star, and takes the numbers back at the end of its life. Works on
    /// registers.
    class Numberer
    {
    public:
        explicit Numberer(StarNumbers& numbers) : m_pVertices(numbers.m_vVertices.data()) {}
        Numberer(const Numberer&) = delete;
        Numberer& operator=(const Numberer&) = delete;
        ~Numberer()
        {
            for (std::int32_t i = 0; i < m_numVertices; ++i)
                m_pVertices[i]->m_starNumber = -1;
        }

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

    private:
        Point3** const m_pVertices;
        std::int32_t m_numVertices = 0;
    };

private:
    std::vector<Point3*> m_vVertices;
};

} // namespace VORN3D
