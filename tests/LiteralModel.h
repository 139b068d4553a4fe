// The triangulation as the library defines it, literally: what is inserted when, where walks go, which
// tetrahedra are doomed, and in which order, with which corners and under which IDs new ones are made. Each
// rule stands here in its plainest form: ordered maps for stores and hashes, exhaustive searches, exact
// arithmetic for every test, records that are never used again, no care for speed.
#pragma once

#include "vorn3d/Bbox3.h"
#include "vorn3d/Point3.h"

#include <array>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace VORN3D::tests
{

class LiteralModel
{
public:
    /// Vertices and tetrahedra are numbered as they are made.
    using Index = std::size_t;
    using Indices = std::vector<Index>;
    static constexpr Index NONE = SIZE_MAX;

    struct Tet
    {
        std::array<Index, 4> aCorner;
        int id;
        std::array<Index, 4> aOpp = {NONE, NONE, NONE, NONE};
        bool bDoomed = false;
    };

    /// Return the vertices of the points. At most 64 points of a batch may lie in one cell of the curve, and
    /// the process must have had its first batch, whose box alone has a smaller margin.
    ///@{
    Indices insertBatch(const std::vector<Point3>& vPoints);
    Index insertSingle(const Point3& p);
    ///@}

    const std::vector<Tet>& getTets() const { return m_vTets; }
    Index getOneTet(Index vertex) const { return m_vOneTet[vertex]; }

    /// In curve order.
    Indices getVertices() const;

private:
    using Store = std::map<std::pair<std::uint32_t, Point3>, Index>;

    /// Where a walk ends: at a facet of the hull that the vertex is beyond or in, or as told below.
    struct Place
    {
        Index tet;
        Index facet;
    };
    static constexpr Index INSIDE = 4;
    static constexpr Index AT_CORNER = 5;

    void growBox(const std::vector<Point3>& vPoints);
    std::uint32_t getKey(const Point3& p) const;
    std::pair<Store::iterator, bool> store(const Point3& p);
    Index findNearbyTet(const Point3& p) const;
    Indices getLeftOut(const Indices& vVertices) const;

    Index createInitialTet();
    Index insertVertex(Index vertex, Index start);
    Place locate(Index vertex, Index tet) const;
    Place turnToHull(Index tet, Index opp3, Index opp2) const;
    void insertInside(Index vertex, Index tet);
    Index insertOutside(Index vertex, Place seen);
    Indices gatherSeenTets(Index vertex, Place seen) const;
    void createTet(const std::array<Index, 4>& aCorner);
    void buildOn(Index vertex, Place facet, bool bFromOutside);
    void linkStar(Index firstTet);

    int getSide(Index tet, Index facet, Index vertex) const;
    bool isInConflict(Index tet, Index vertex) const;
    Index getIndexOf(Index neighbor, Index tet) const;

    Bbox3 m_box;
    Store m_store;
    std::vector<Point3> m_vPoints;
    Indices m_vOneTet;
    std::vector<Tet> m_vTets;
};

} // namespace VORN3D::tests
