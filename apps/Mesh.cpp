#include "Mesh.h"

#include "Progress.h"

#include "vorn3d/Vorn_3D.h"

#include <algorithm>

namespace VORN3D::program
{

namespace
{

/// The numbers of vertices by their custom indices.
using VertexNumbers = std::vector<int>;

std::vector<const Point3*> listVertices(const Vorn_3D& triangulation)
{
    std::vector<Point3*> vStored;
    triangulation.getVertices(vStored);
    std::vector<const Point3*> vVertices(vStored.begin(), vStored.end());
    std::sort(vVertices.begin(), vVertices.end(),
              [](const Point3* p, const Point3* q) { return p->getCustomIndex() < q->getCustomIndex(); });
    return vVertices;
}

VertexNumbers numberVertices(const std::vector<const Point3*>& vVertices)
{
    VertexNumbers vNumbers(static_cast<std::size_t>(vVertices.back()->getCustomIndex()) + 1);
    int number = 0;
    for (const Point3* pVtx : vVertices)
        vNumbers[static_cast<std::size_t>(pVtx->getCustomIndex())] = number++;
    return vNumbers;
}

void numberTets(const std::vector<Tet3*>& vTets)
{
    int number = 0;
    for (Tet3* pTet : vTets)
        pTet->setCustomIndex(number++);
}

int getCornerNumber(const Tet3& tet, int ith, const VertexNumbers& vNumbers)
{
    return vNumbers[static_cast<std::size_t>(tet.getCorner(ith)->getCustomIndex())];
}

int getNeighborNumber(const Tet3& tet, int ith)
{
    const Tet3* pNeighbor = tet.getOppTet(ith);
    return pNeighbor == nullptr ? Mesh::none : pNeighbor->getCustomIndex();
}

Mesh::Triple getFacet(const Tet3& tet, int opp3, const VertexNumbers& vNumbers)
{
    Mesh::Triple corners{};
    tet.getFacetIndices(opp3, corners[0], corners[1], corners[2]);
    for (int& corner : corners)
        corner = getCornerNumber(tet, corner, vNumbers);
    return corners;
}

void addTet(const Tet3& tet, const VertexNumbers& vNumbers, Mesh& mesh)
{
    Mesh::Quadruple corners{};
    Mesh::Quadruple neighbors{};
    for (int i = 0; i < 4; ++i) {
        corners[static_cast<std::size_t>(i)] = getCornerNumber(tet, i, vNumbers);
        neighbors[static_cast<std::size_t>(i)] = getNeighborNumber(tet, i);
        if (tet.getOppTet(i) == nullptr)
            mesh.vHullFacets.push_back(getFacet(tet, i, vNumbers));
    }
    mesh.vCorners.push_back(corners);
    mesh.vNeighbors.push_back(neighbors);
}

} // namespace

Mesh makeMesh(const Vorn_3D& triangulation)
{
    std::vector<Tet3*> vTets;
    triangulation.getTetrahedra(vTets);
    numberTets(vTets);
    Mesh mesh;
    mesh.vVertices = listVertices(triangulation);
    mesh.vCorners.reserve(vTets.size());
    mesh.vNeighbors.reserve(vTets.size());
    const VertexNumbers vNumbers = numberVertices(mesh.vVertices);
    Progress progress("numbering the mesh", vTets.size());
    for (const Tet3* pTet : vTets) {
        addTet(*pTet, vNumbers, mesh);
        progress.update(mesh.vCorners.size());
    }
    return mesh;
}

std::vector<bool> findHullVertices(const Mesh& mesh)
{
    std::vector<bool> vbOnHull(mesh.vVertices.size(), false);
    for (const Mesh::Triple& facet : mesh.vHullFacets)
        for (const int corner : facet)
            vbOnHull[static_cast<std::size_t>(corner)] = true;
    return vbOnHull;
}

} // namespace VORN3D::program
