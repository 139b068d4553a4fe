// The mesh as numbers.
#include "kernel/Dt3.h"
#include "kernel/TetNumbers.h"

#include "nalo_tools/assertion.h"

#include <array>

namespace VORN3D
{

namespace
{

// Numbers the vertices by the first of their handles, from the places of their records in the pool.
class VertexNumbers
{
public:
    VertexNumbers(const HC3& hc, const std::vector<Point3*>& vUserHandles)
        : m_order(hc.getPool()), m_vNumbers(m_order.getNumElements(), NO_INDEX)
    {
        VORN_REQUIRE_TEXT(vUserHandles.size() < NO_INDEX, "fewer than 2^32 - 1 points");
        std::uint32_t number = 0;
        for (const Point3* pVtx : vUserHandles) {
            VORN_REQUIRE_TEXT(m_order.owns(pVtx), "a handle of this triangulation");
            const std::size_t place = m_order.getPlace(pVtx);
            if (m_vNumbers[place] == NO_INDEX)
                m_vNumbers[place] = number;
            ++number;
        }
    }

    std::uint32_t getPlace(const Point3* pVtx) const
    {
        return static_cast<std::uint32_t>(m_order.getPlace(pVtx));
    }

    std::uint32_t getNumber(std::uint32_t place) const { return m_vNumbers[place]; }

private:
    PoolOrder<Point3> m_order;
    std::vector<std::uint32_t> m_vNumbers; // by place
};

std::uint32_t getNumber(const TetNumbers& tetNumbers, const Tet3* pTet)
{
    return pTet == nullptr ? NO_INDEX : tetNumbers.getNumber(pTet);
}

} // namespace

MeshArrays Dt3::getArrays(const std::vector<Point3*>& vUserHandles) const
{
    const VertexNumbers vertexNumbers(hc, vUserHandles);
    const TetNumbers tetNumbers(tets);

    MeshArrays mesh;
    mesh.vCorners.resize(4 * tetNumbers.getNumTets());
    mesh.vNeighbors.resize(4 * tetNumbers.getNumTets());
    std::uint32_t* pCorner = mesh.vCorners.data();
    std::uint32_t* pNeighbor = mesh.vNeighbors.data();
    tetNumbers.forEachTet([&](const Tet3* pTet) {
        std::array<Point3*, 4> apCorner;
        pTet->getCorners(apCorner[0], apCorner[1], apCorner[2], apCorner[3]);
        for (const Point3* pVtx : apCorner)
            *pCorner++ = vertexNumbers.getPlace(pVtx);
        std::array<Tet3*, 4> apNeighbor;
        pTet->getOppTets(apNeighbor[0], apNeighbor[1], apNeighbor[2], apNeighbor[3]);
        for (const Tet3* pOther : apNeighbor)
            *pNeighbor++ = getNumber(tetNumbers, pOther);
    });
    // In a loop of its own many of these reads, all over the table, are under way at a time.
    for (std::uint32_t& corner : mesh.vCorners)
        corner = vertexNumbers.getNumber(corner);

    mesh.vVertices.reserve(vUserHandles.size());
    mesh.vTets.reserve(vUserHandles.size());
    for (const Point3* pVtx : vUserHandles) {
        mesh.vVertices.push_back(vertexNumbers.getNumber(vertexNumbers.getPlace(pVtx)));
        mesh.vTets.push_back(getNumber(tetNumbers, pVtx->getOneTet()));
    }
    return mesh;
}

std::vector<Tet3*> Dt3::getNumberedTetrahedra() const
{
    std::vector<Tet3*> vTets;
    vTets.reserve(tets.getNumTets());
    TetNumbers(tets).forEachTet([&vTets](Tet3* pTet) { vTets.push_back(pTet); });
    return vTets;
}

} // namespace VORN3D
