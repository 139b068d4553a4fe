// The mesh as numbers.
#include "kernel/Dt3.h"
#include "kernel/TetNumbers.h"

#include "nalo_tools/assertion.h"

#include <algorithm>
#include <array>

namespace VORN3D
{

namespace
{

// Numbers the vertices by the first of their handles, from the places of their records in the pool.
class VertexNumbers
{
public:
    // Appends the number of each handle's vertex to vVertices.
    VertexNumbers(const HC3& hc, const std::vector<Point3*>& vUserHandles,
                  std::vector<std::uint32_t>& vVertices)
        : m_pool(hc.getPool()), m_order(m_pool), m_vNumbers(m_order.getNumElements(), NO_INDEX)
    {
        VORN_REQUIRE_TEXT(vUserHandles.size() < NO_INDEX, "fewer than 2^32 - 1 points");
        vVertices.reserve(vUserHandles.size());
        std::uint32_t number = 0;
        for (const Point3* pVtx : vUserHandles) {
            VORN_REQUIRE_TEXT(m_order.owns(pVtx), "a handle of this triangulation");
            std::uint32_t& numberOfVertex = m_vNumbers[m_order.getPlace(pVtx)];
            numberOfVertex = std::min(numberOfVertex, number++);
            vVertices.push_back(numberOfVertex);
        }
    }

    std::uint32_t getPlace(const Point3* pVtx) const
    {
        return static_cast<std::uint32_t>(m_order.getPlace(pVtx));
    }

    std::uint32_t getNumber(std::uint32_t place) const { return m_vNumbers[place]; }

    // Calls visit(number, vertex), in the order of the records, which the handles need not have.
    template <typename Visitor>
    void forEachNumbered(Visitor visit) const
    {
        auto number = m_vNumbers.begin();
        m_pool.forEachBlock([&](const Point3* pFirst, std::size_t size) {
            for (const Point3* pVtx = pFirst; pVtx < pFirst + size; ++pVtx, ++number)
                if (*number != NO_INDEX)
                    visit(*number, pVtx);
        });
    }

private:
    const SimplePool<Point3>& m_pool;
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
    MeshArrays mesh;
    const VertexNumbers vertexNumbers(hc, vUserHandles, mesh.vVertices);
    const TetNumbers tetNumbers(tets);

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

    mesh.vTets.resize(vUserHandles.size());
    vertexNumbers.forEachNumbered([&](std::uint32_t number, const Point3* pVtx) {
        mesh.vTets[number] = getNumber(tetNumbers, pVtx->getOneTet());
    });
    for (std::size_t i = 0; i < mesh.vTets.size(); ++i)
        mesh.vTets[i] = mesh.vTets[mesh.vVertices[i]];
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
