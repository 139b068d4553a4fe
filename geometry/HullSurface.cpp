#include "vorn3d/geometry/HullSurface.h"

#include "cornerTables.h"
#include "hullSurfaceOfMesh.h"
#include "nalo_tools/assertion.h"
#include "predicates.h"
#include "vectors.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace VORN3D
{

namespace
{

using Triangle = std::array<std::uint32_t, 3>;

void listTriangles(const MeshArrays& mesh, HullSurface& surface)
{
    for (std::size_t i = 0; i < mesh.vNeighbors.size(); ++i) {
        if (mesh.vNeighbors[i] != NO_INDEX)
            continue;
        const std::size_t tet = i / 4;
        Triangle triangle;
        for (std::size_t k = 0; k < 3; ++k) {
            triangle[k] = mesh.vCorners[4 * tet + FACET_CORNERS[i % 4][k]];
            VORN_REQUIRE_TEXT(triangle[k] != NO_INDEX, "handles of all vertices");
        }
        surface.vTriangles.push_back(triangle);
        surface.vTets.push_back(static_cast<std::uint32_t>(tet));
    }
}

/// Each edge of a closed surface has two sides, which go opposite ways.
void linkTriangles(HullSurface& surface)
{
    struct Side
    {
        std::uint32_t first, second; // the ends of the edge, the smaller number first
        std::uint32_t triangle;
        std::uint32_t opp; // the corner of the triangle that is not on it
    };
    std::vector<Side> vSides;
    vSides.reserve(3 * surface.vTriangles.size());
    for (std::uint32_t t = 0; t < surface.vTriangles.size(); ++t)
        for (std::uint32_t i = 0; i < 3; ++i) {
            const auto [first, second] =
                std::minmax(surface.vTriangles[t][(i + 1) % 3], surface.vTriangles[t][(i + 2) % 3]);
            vSides.push_back({first, second, t, i});
        }
    std::sort(vSides.begin(), vSides.end(), [](const Side& a, const Side& b) {
        return a.first != b.first ? a.first < b.first : a.second < b.second;
    });
    surface.vNeighbors.resize(surface.vTriangles.size());
    for (std::size_t i = 0; i < vSides.size(); i += 2) {
        const Side &a = vSides[i], &b = vSides[i + 1];
        surface.vNeighbors[a.triangle][a.opp] = b.triangle;
        surface.vNeighbors[b.triangle][b.opp] = a.triangle;
    }
}

void listVertices(HullSurface& surface)
{
    std::vector<std::uint32_t>& vVertices = surface.vVertices;
    for (const Triangle& triangle : surface.vTriangles)
        vVertices.insert(vVertices.end(), triangle.begin(), triangle.end());
    std::sort(vVertices.begin(), vVertices.end());
    vVertices.erase(std::unique(vVertices.begin(), vVertices.end()), vVertices.end());
}

/// Area and volume, as seen from a vertex.
void measure(const std::vector<Point3*>& vHandles, HullSurface& surface)
{
    if (surface.vVertices.empty())
        return;
    const Point3& apex = *vHandles[surface.vVertices.front()];
    double doubleArea = 0.0, sixfoldVolume = 0.0;
    for (const Triangle& triangle : surface.vTriangles) {
        const Point3& a = *vHandles[triangle[0]];
        const Vec normal = cross(getVector(a, *vHandles[triangle[1]]), getVector(a, *vHandles[triangle[2]]));
        doubleArea += std::hypot(normal.x, normal.y, normal.z);
        sixfoldVolume += dot(getVector(apex, a), normal);
    }
    surface.area = doubleArea / 2.0;
    surface.volume = sixfoldVolume / 6.0;
}

/// Makes facets of triangles, and walks around their borders.
class PolygonMaker
{
public:
    PolygonMaker(const HullSurface& surface, const std::vector<Point3*>& vHandles)
        : m_surface(surface), m_vHandles(vHandles)
    {
    }

    HullPolygons make()
    {
        nameFacets();
        placeVertices();
        for (const Side& start : findStarts()) {
            m_polygons.vFirst.push_back(m_polygons.vCorners.size());
            walkAround(start);
        }
        m_polygons.vFirst.push_back(m_polygons.vCorners.size());
        return std::move(m_polygons);
    }

private:
    /// The edge of a triangle from its corner opp + 1 to its corner opp + 2.
    struct Side
    {
        std::uint32_t triangle;
        std::size_t opp;

        bool operator!=(const Side& other) const { return triangle != other.triangle || opp != other.opp; }
    };

    std::uint32_t getNeighbor(const Side& side) const
    {
        return m_surface.vNeighbors[side.triangle][side.opp];
    }
    std::uint32_t getFacet(std::uint32_t triangle) const { return m_polygons.vFacetOfTriangle[triangle]; }
    std::uint32_t getSource(const Side& side) const
    {
        return m_surface.vTriangles[side.triangle][(side.opp + 1) % 3];
    }
    const Point3* getPoint(std::uint32_t triangle, std::size_t corner) const
    {
        return m_vHandles[m_surface.vTriangles[triangle][corner]];
    }

    /// The same edge as a side of the other triangle.
    Side getTwin(const Side& side) const
    {
        const std::uint32_t neighbor = getNeighbor(side);
        std::size_t opp = 0;
        while (m_surface.vTriangles[neighbor][(opp + 2) % 3] != getSource(side))
            ++opp;
        return {neighbor, opp};
    }

    bool isFlat(const Side& side) const
    {
        const Side twin = getTwin(side);
        return getPredicates().getOrientation3(getPoint(side.triangle, 0), getPoint(side.triangle, 1),
                                               getPoint(side.triangle, 2),
                                               getPoint(twin.triangle, twin.opp)) == ORIENTATION3_COPLANAR;
    }

    template <class Use>
    void forEachSide(const Use& use) const
    {
        for (std::uint32_t triangle = 0; triangle < m_surface.vTriangles.size(); ++triangle)
            for (std::size_t opp = 0; opp < 3; ++opp)
                use(Side{triangle, opp});
    }

    /// Two triangles are of one facet if a chain of neighbours in one plane joins them.
    void nameFacets()
    {
        std::vector<std::uint32_t>& vFacetOf = m_polygons.vFacetOfTriangle;
        vFacetOf.assign(m_surface.vTriangles.size(), NO_INDEX);
        std::vector<std::uint32_t> vReached;
        for (std::uint32_t first = 0; first < vFacetOf.size(); ++first) {
            if (vFacetOf[first] != NO_INDEX)
                continue;
            const std::uint32_t facet = m_numFacets++;
            vFacetOf[first] = facet;
            vReached.assign(1, first);
            for (std::size_t i = 0; i < vReached.size(); ++i)
                for (std::size_t opp = 0; opp < 3; ++opp) {
                    const Side side = {vReached[i], opp};
                    std::uint32_t& facetBeyond = vFacetOf[getNeighbor(side)];
                    if (facetBeyond == NO_INDEX && isFlat(side)) {
                        facetBeyond = facet;
                        vReached.push_back(getNeighbor(side));
                    }
                }
        }
    }

    bool isBorder(const Side& side) const { return getFacet(side.triangle) != getFacet(getNeighbor(side)); }

    /// The position of a point among the vertices of the surface.
    std::size_t getPosition(std::uint32_t number) const
    {
        const auto& vVertices = m_surface.vVertices;
        return static_cast<std::size_t>(std::lower_bound(vVertices.begin(), vVertices.end(), number) -
                                        vVertices.begin());
    }

    /// As many facets meet in a vertex as edges between facets begin there; in the middle of an edge that
    /// runs straight through it, these are two.
    void placeVertices()
    {
        std::vector<unsigned> vNumBorders(m_surface.vVertices.size(), 0);
        forEachSide([&](const Side& side) {
            if (isBorder(side))
                ++vNumBorders[getPosition(getSource(side))];
        });
        for (const unsigned numBorders : vNumBorders)
            m_polygons.vPlaces.push_back(numBorders == 0   ? HullPlace3::IN_FACET
                                         : numBorders == 2 ? HullPlace3::ON_EDGE
                                                           : HullPlace3::CORNER);
    }

    bool isAtCorner(const Side& side) const
    {
        return m_polygons.vPlaces[getPosition(getSource(side))] == HullPlace3::CORNER;
    }

    /// For each facet a side on its border that begins in a corner.
    std::vector<Side> findStarts() const
    {
        std::vector<Side> vStarts(m_numFacets, {NO_INDEX, 0});
        forEachSide([&](const Side& side) {
            Side& start = vStarts[getFacet(side.triangle)];
            if (start.triangle == NO_INDEX && isBorder(side) && isAtCorner(side))
                start = side;
        });
        return vStarts;
    }

    /// The side on the border that begins where this one ends: turns around that vertex, through the facet.
    Side getNextOnBorder(const Side& side) const
    {
        Side next = {side.triangle, (side.opp + 1) % 3};
        while (!isBorder(next)) {
            const Side twin = getTwin(next);
            next = {twin.triangle, (twin.opp + 1) % 3};
        }
        return next;
    }

    void walkAround(const Side& start)
    {
        Side side = start;
        do {
            if (isAtCorner(side)) {
                m_polygons.vCorners.push_back(getSource(side));
                m_polygons.vNeighbors.push_back(getFacet(getNeighbor(side)));
            }
            side = getNextOnBorder(side);
        } while (side != start);
    }

    const HullSurface& m_surface;
    const std::vector<Point3*>& m_vHandles;
    HullPolygons m_polygons;
    std::uint32_t m_numFacets = 0;
};

} // namespace

HullSurface makeHullSurfaceOfMesh(const MeshArrays& mesh, const std::vector<Point3*>& vHandles)
{
    HullSurface surface;
    listTriangles(mesh, surface);
    linkTriangles(surface);
    listVertices(surface);
    measure(vHandles, surface);
    return surface;
}

HullSurface makeHullSurface(const Vorn_3D& dt, const std::vector<Point3*>& vUserHandles)
{
    return makeHullSurfaceOfMesh(dt.getArrays(vUserHandles), vUserHandles);
}

HullPolygons mergeCoplanarTriangles(const HullSurface& surface, const std::vector<Point3*>& vUserHandles)
{
    return PolygonMaker(surface, vUserHandles).make();
}

} // namespace VORN3D
