// Which simplices have a sphere of their own, the smallest through their vertices: a simplex is called
// Gabriel if no vertex is strictly inside that sphere, and then its radius counts; otherwise the least value
// of those that it is a face of. Only the neighbours need be looked at. Lift the vertices to the paraboloid:
// the sphere is the cut with a hyperplane, vertices inside are lifted below it, and the simplex lies in it.
// The mesh is lifted to a convex function, so its difference from the hyperplane is convex too, and has its
// minimum on the simplex if it is not negative in the vertices around, which surround it. For a triangle
// these are the opposite corners of its tetrahedra, for an edge those of its triangles. Convexity is not
// strict where vertices are cospherical, and need not be.
#include "alphaRanks.h"

#include "circumcenterSides.h"
#include "radiusOrder.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace VORN3D
{

namespace
{

constexpr std::uint32_t UNRANKED = std::numeric_limits<std::uint32_t>::max();

/// Ranks the simplices of a mesh.
class SimplexRanker
{
public:
    SimplexRanker(const std::vector<std::array<double, 3>>& vPoints, const MeshArrays& mesh,
                  const MeshFaces& faces)
        : m_vPoints(vPoints), m_mesh(mesh), m_faces(faces)
    {
    }

    AlphaRanks rank()
    {
        findGabrielTriangles();
        findGabrielEdges();
        listCandidates();
        rankCandidates();
        rankOthers();
        return std::move(m_ranks);
    }

private:
    template <std::size_t N>
    PointArray<N> getPoints(const std::uint32_t* pCorners) const
    {
        PointArray<N> points;
        for (std::size_t i = 0; i < N; ++i)
            points[i] = m_vPoints[pCorners[i]].data();
        return points;
    }

    TetPoints getTetPoints(std::size_t tet) const { return getPoints<4>(&m_mesh.vCorners[4 * tet]); }

    void findGabrielTriangles()
    {
        m_vIsTriangleGabriel.assign(m_faces.getNumTriangles(), true);
        for (std::size_t tet = 0; 4 * tet < m_mesh.vCorners.size(); ++tet) {
            const std::array<Sign, 4> sides = getCircumcenterSides(getTetPoints(tet));
            for (std::size_t i = 0; i < 4; ++i)
                if (sides[i] == Sign::negative)
                    m_vIsTriangleGabriel[m_faces.vTriangleOfFacet[4 * tet + i]] = false;
        }
    }

    void findGabrielEdges()
    {
        m_vIsEdgeGabriel.assign(m_faces.getNumEdges(), true);
        for (std::size_t side = 0; side < m_faces.vEdgeOfSide.size(); ++side) {
            const std::uint32_t edge = m_faces.vEdgeOfSide[side];
            if (!m_vIsEdgeGabriel[edge])
                continue;
            TrianglePoints triangle = getPoints<3>(&m_faces.vTriangleCorners[side - side % 3]);
            std::swap(triangle[side % 3], triangle[2]);
            if (getDiametralSide(triangle) == Sign::negative)
                m_vIsEdgeGabriel[edge] = false;
        }
    }

    /// Candidates for values of their own: all tetrahedra, then the Gabriel triangles, then the Gabriel
    /// edges.
    void listCandidates()
    {
        for (std::uint32_t i = 0; i < m_vIsTriangleGabriel.size(); ++i)
            if (m_vIsTriangleGabriel[i])
                m_vGabrielTriangles.push_back(i);
        for (std::uint32_t i = 0; i < m_vIsEdgeGabriel.size(); ++i)
            if (m_vIsEdgeGabriel[i])
                m_vGabrielEdges.push_back(i);
    }

    SimplexPoints getCandidate(std::size_t i) const
    {
        const std::size_t numTets = m_mesh.vCorners.size() / 4;
        if (i < numTets)
            return {getTetPoints(i), 4};
        i -= numTets;
        if (i < m_vGabrielTriangles.size()) {
            const auto p = getPoints<3>(&m_faces.vTriangleCorners[3 * std::size_t{m_vGabrielTriangles[i]}]);
            return {{p[0], p[1], p[2], nullptr}, 3};
        }
        i -= m_vGabrielTriangles.size();
        const auto p = getPoints<2>(&m_faces.vEdgeEnds[2 * std::size_t{m_vGabrielEdges[i]}]);
        return {{p[0], p[1], nullptr, nullptr}, 2};
    }

    void rankCandidates()
    {
        const std::size_t numTets = m_mesh.vCorners.size() / 4;
        const std::size_t num = numTets + m_vGabrielTriangles.size() + m_vGabrielEdges.size();
        RadiusRanks ranks = rankByRadius(num, [this](std::size_t i) { return getCandidate(i); });
        auto next = ranks.vRanks.begin() + static_cast<std::ptrdiff_t>(numTets);
        m_ranks.vTets.assign(ranks.vRanks.begin(), next);
        m_ranks.vTriangles.assign(m_faces.getNumTriangles(), UNRANKED);
        for (const std::uint32_t triangle : m_vGabrielTriangles)
            m_ranks.vTriangles[triangle] = *next++;
        m_ranks.vEdges.assign(m_faces.getNumEdges(), UNRANKED);
        for (const std::uint32_t edge : m_vGabrielEdges)
            m_ranks.vEdges[edge] = *next++;
        m_ranks.vValues = std::move(ranks.vValues);
    }

    void rankOthers()
    {
        for (std::size_t facet = 0; facet < m_faces.vTriangleOfFacet.size(); ++facet) {
            const std::uint32_t triangle = m_faces.vTriangleOfFacet[facet];
            if (!m_vIsTriangleGabriel[triangle])
                m_ranks.vTriangles[triangle] =
                    std::min(m_ranks.vTriangles[triangle], m_ranks.vTets[facet / 4]);
        }
        for (std::size_t side = 0; side < m_faces.vEdgeOfSide.size(); ++side) {
            const std::uint32_t edge = m_faces.vEdgeOfSide[side];
            if (!m_vIsEdgeGabriel[edge])
                m_ranks.vEdges[edge] = std::min(m_ranks.vEdges[edge], m_ranks.vTriangles[side / 3]);
        }
    }

    const std::vector<std::array<double, 3>>& m_vPoints;
    const MeshArrays& m_mesh;
    const MeshFaces& m_faces;
    std::vector<char> m_vIsTriangleGabriel;
    std::vector<char> m_vIsEdgeGabriel;
    std::vector<std::uint32_t> m_vGabrielTriangles;
    std::vector<std::uint32_t> m_vGabrielEdges;
    AlphaRanks m_ranks;
};

} // namespace

AlphaRanks rankSimplices(const std::vector<std::array<double, 3>>& vPoints, const MeshArrays& mesh,
                         const MeshFaces& faces)
{
    return SimplexRanker(vPoints, mesh, faces).rank();
}

} // namespace VORN3D
