#include "meshFaces.h"

#include "Groups.h"
#include "cornerTables.h"
#include "nalo_tools/assertion.h"

#include <algorithm>

namespace VORN3D
{

MeshFaces::MeshFaces(const MeshArrays& mesh)
{
    listTriangles(mesh);
    listEdges(mesh.vVertices.size());
}

void MeshFaces::listTriangles(const MeshArrays& mesh)
{
    const std::size_t numFacets = mesh.vNeighbors.size();
    VORN_REQUIRE_TEXT(numFacets < NO_INDEX, "fewer than 2^30 tetrahedra");
    vTriangleOfFacet.resize(numFacets);
    vTriangleCorners.reserve(3 * (numFacets / 2 + 1));
    for (std::size_t facet = 0; facet < numFacets; ++facet) {
        const std::size_t tet = facet / 4;
        const std::size_t neighbor = mesh.vNeighbors[facet];
        if (neighbor < tet) { // which is not the case of NO_INDEX
            vTriangleOfFacet[facet] = vTriangleOfFacet[getFacetOfNeighbor(mesh, neighbor, tet)];
            continue;
        }
        vTriangleOfFacet[facet] = static_cast<std::uint32_t>(vFacetOfTriangle.size());
        vFacetOfTriangle.push_back(facet);
        for (const std::size_t corner : FACET_CORNERS[facet % 4])
            vTriangleCorners.push_back(mesh.vCorners[4 * tet + corner]);
    }
}

/// Each edge is a side of several triangles: these are sorted by its ends, the smaller one by counting.
void MeshFaces::listEdges(std::size_t numPoints)
{
    struct Side
    {
        std::size_t place; // in vEdgeOfSide
        std::uint32_t larger;

        bool operator<(const Side& other) const { return larger < other.larger; }
    };
    const auto getEnds = [this](std::size_t place) {
        const std::size_t first = place - place % 3;
        return std::minmax(vTriangleCorners[first + (place + 1) % 3],
                           vTriangleCorners[first + (place + 2) % 3]);
    };
    const std::size_t numSides = vTriangleCorners.size();
    vEdgeOfSide.resize(numSides);
    Groups<Side> sides(numPoints, [&](const auto& use) {
        for (std::size_t place = 0; place < numSides; ++place) {
            const auto [smaller, larger] = getEnds(place);
            use(smaller, Side{place, larger});
        }
    });
    for (std::uint32_t smaller = 0; smaller < numPoints; ++smaller) {
        std::sort(sides.begin(smaller), sides.end(smaller));
        for (const Side* p = sides.begin(smaller); p != sides.end(smaller); ++p) {
            if (p == sides.begin(smaller) || (p - 1)->larger != p->larger)
                vEdgeEnds.insert(vEdgeEnds.end(), {smaller, p->larger});
            vEdgeOfSide[p->place] = static_cast<std::uint32_t>(getNumEdges() - 1);
        }
    }
}

} // namespace VORN3D
