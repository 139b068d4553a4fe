#include "meshTables.h"

#include <vorn3d/geometry/nearestVertex.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace VORN3D::python
{

namespace
{

struct Around
{
    explicit Around(const Tet3& tet)
    {
        tet.getCorners(aCorners[0], aCorners[1], aCorners[2], aCorners[3]);
        tet.getOppTets(aNeighbors[0], aNeighbors[1], aNeighbors[2], aNeighbors[3]);
    }

    Point3* aCorners[4];
    Tet3* aNeighbors[4];
};

// Far enough ahead for the memory to answer, near enough for the cache to hold what it has answered.
constexpr std::size_t PREFETCHED_TETS = 16;

// Records around a tetrahedron are anywhere in memory, and their numbers at their ends.
void prefetchAround(const Tet3& tet)
{
    const Around around(tet);
    for (int i = 0; i < 4; ++i) {
        __builtin_prefetch(reinterpret_cast<const char*>(around.aCorners[i] + 1) - 8);
        __builtin_prefetch(reinterpret_cast<const char*>(around.aNeighbors[i] + 1) - 8);
    }
}

template <class Record>
void writeNumbers(const Record* const (&aRecords)[4], Index* pRow)
{
    for (int i = 0; i < 4; ++i)
        pRow[i] = Triangulation::numberOf(aRecords[i]);
}

std::size_t positionOf(const Point3* pVtx)
{
    return static_cast<std::size_t>(Triangulation::numberOf(pVtx));
}

} // namespace

MeshTables makeMeshTables(const Triangulation& triangulation)
{
    const std::vector<Tet3*>& vTets = triangulation.getTets();
    MeshTables tables{{vTets.size(), 4}, {vTets.size(), 4}};
    for (std::size_t t = 0; t < vTets.size(); ++t) {
        if (t + PREFETCHED_TETS < vTets.size())
            prefetchAround(*vTets[t + PREFETCHED_TETS]);
        const Around around(*vTets[t]);
        writeNumbers<Point3>(around.aCorners, tables.simplices.row(t));
        writeNumbers<Tet3>(around.aNeighbors, tables.neighbors.row(t));
    }
    return tables;
}

Table<Index> makeHullFacets(const Triangulation& triangulation)
{
    std::vector<std::array<Index, 3>> vFacets;
    for (const Tet3* pTet : triangulation.getTets())
        for (int opp3 = 0; opp3 < 4; ++opp3)
            if (pTet->getOppTet(opp3) == nullptr) {
                std::array<int, 3> corners;
                pTet->getFacetIndices(opp3, corners[0], corners[1], corners[2]);
                auto& facet = vFacets.emplace_back();
                for (std::size_t i = 0; i < 3; ++i)
                    facet[i] = Triangulation::numberOf(pTet->getCorner(corners[i]));
            }
    Table<Index> facets(vFacets.size(), 3);
    for (std::size_t f = 0; f < vFacets.size(); ++f)
        std::copy(vFacets[f].begin(), vFacets[f].end(), facets.row(f));
    return facets;
}

Table<Index> makePointToVertex(const Triangulation& triangulation)
{
    Table<Index> numbers(triangulation.getNumPoints(), 1);
    std::transform(triangulation.getVertices().begin(), triangulation.getVertices().end(), numbers.data(),
                   [](const Point3* pVtx) { return Triangulation::numberOf(pVtx); });
    return numbers;
}

Table<Index> makeVertexToSimplex(const Triangulation& triangulation)
{
    triangulation.getTets();
    Table<Index> numbers(triangulation.getNumPoints(), 1);
    std::transform(triangulation.getVertices().begin(), triangulation.getVertices().end(), numbers.data(),
                   [](const Point3* pVtx) {
                       return Triangulation::numberOf(pVtx != nullptr ? pVtx->getOneTet() : nullptr);
                   });
    return numbers;
}

// The lists are made in curve order, in which neighbours are in the cache, and then put into that of the
// numbers.
VertexNeighbors makeVertexNeighbors(const Triangulation& triangulation, const Pulse& pulse)
{
    std::vector<Point3*> vVertices;
    triangulation.getMesh().getVertices(vVertices);
    std::vector<Index> vNeighbors;
    std::vector<std::size_t> vEnds;
    Table<Index> starts(triangulation.getNumPoints() + 1, 1);
    std::fill_n(starts.data(), starts.getNumRows(), 0);
    for (std::size_t i = 0; i < vVertices.size(); ++i) {
        if (i % 1024 == 0)
            pulse(i, vVertices.size());
        for (const Point3* pVtx : getVertexNeighbors(vVertices[i]))
            vNeighbors.push_back(Triangulation::numberOf(pVtx));
        requireIndices(vNeighbors.size());
        starts[positionOf(vVertices[i]) + 1] =
            static_cast<Index>(vNeighbors.size() - (i == 0 ? 0 : vEnds.back()));
        vEnds.push_back(vNeighbors.size());
    }
    std::partial_sum(starts.data(), starts.data() + starts.getNumRows(), starts.data());

    VertexNeighbors neighbors{std::move(starts), {vNeighbors.size(), 1}};
    auto itNeighbor = vNeighbors.begin();
    for (std::size_t i = 0; i < vVertices.size(); ++i) {
        const auto itEnd = vNeighbors.begin() + static_cast<std::ptrdiff_t>(vEnds[i]);
        std::copy(itNeighbor, itEnd, neighbors.vertices.data() + neighbors.starts[positionOf(vVertices[i])]);
        itNeighbor = itEnd;
    }
    return neighbors;
}

Table<double> makeCircumspheres(const Triangulation& triangulation)
{
    const std::vector<Tet3*>& vTets = triangulation.getTets();
    Table<double> spheres(vTets.size(), 4);
    for (std::size_t t = 0; t < vTets.size(); ++t) {
        const Point3 center = vTets[t]->getCircumcenter();
        const Point3& corner = *vTets[t]->getCorner(0);
        double squaredRadius = 0;
        for (int k = 0; k < 3; ++k) {
            const double difference = center.getCoordinates()[k] - corner.getCoordinates()[k];
            squaredRadius += difference * difference;
            spheres.row(t)[k] = center.getCoordinates()[k];
        }
        spheres.row(t)[3] = squaredRadius;
    }
    return spheres;
}

} // namespace VORN3D::python
