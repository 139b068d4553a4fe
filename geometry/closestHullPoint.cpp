// The nearest point of a convex body, seen from p outside, lies on a facet that p is beyond, and it is found
// by descent on these facets: let x be a point of theirs that is the nearest to p of all those that contain
// it, and suppose that the body has a nearer one, x + d, so that d . (p - x) > 0. From x + d in the direction
// of p - x one leaves the cone of the facets at x, since p is beyond one of them, through a facet that p is
// beyond, at a point x + e with e . (p - x) > 0. So on that facet there is one nearer than x, against what
// was supposed.
//
// Distances are computed in doubles. So that a search does not end among points that are equally near for
// them, all facets around these are looked at.
#include "closestHullPoint.h"

#include "NumberedSet.h"
#include "circumcenter.h"
#include "faces.h"
#include "predicates.h"

#include <algorithm>

namespace VORN3D
{

namespace
{

using TriangleWeights = std::array<double, 3>;

// Well above what rounding leaves of a weight that is zero.
constexpr double NEGLIGIBLE_WEIGHT = 1e-6;

// Of squared distances.
constexpr double ROUNDING = 0x1p-48;

/// A point of a hull facet.
struct FacetPoint
{
    Tet3* pTet;
    std::array<int, 3> aCorner;
    TriangleWeights aWeight;
    double sqDistance; // from p

    /// The face that contains the point, or that it is close to.
    FaceMask getFace() const
    {
        FaceMask face = 0;
        for (std::size_t i = 0; i < 3; ++i)
            face |= aWeight[i] > NEGLIGIBLE_WEIGHT ? 1u << aCorner[i] : 0u;
        return face;
    }
};

/// A triangle seen from a point. The sides are not differences of the other vectors, which may be much
/// longer.
struct SeenTriangle
{
    std::array<Vec, 3> aCorner;
    Vec ab;
    Vec ac;
    Vec bc;
};

double getSquaredDistance(const SeenTriangle& triangle, const TriangleWeights& aWeight)
{
    const Vec v = triangle.aCorner[0] + aWeight[1] * triangle.ab + aWeight[2] * triangle.ac;
    return dot(v, v);
}

/// How far along the side from the corner one is nearest to the point, from 0 to 1.
double findClosestOnSide(const Vec& corner, const Vec& side)
{
    const double sqLength = dot(side, side);
    return sqLength > 0.0 ? std::clamp(-dot(corner, side) / sqLength, 0.0, 1.0) : 0.0;
}

/// The points of which one is nearest to where the triangle is seen from: one on each side, and the one below
/// in the plane, or again a corner if that is not in the triangle. Where the triangle is so narrow that
/// rounding hides its plane, a side is near enough.
std::array<TriangleWeights, 4> getCandidates(const SeenTriangle& triangle)
{
    const auto& [aCorner, ab, ac, bc] = triangle;
    const double onAb = findClosestOnSide(aCorner[0], ab);
    const double onAc = findClosestOnSide(aCorner[0], ac);
    const double onBc = findClosestOnSide(aCorner[1], bc);
    const Vec normal = cross(ab, ac);
    const double sqLength = dot(normal, normal);
    const double b = dot(normal, cross(ac, aCorner[0])) / sqLength;
    const double c = dot(normal, cross(aCorner[0], ab)) / sqLength;
    const bool bInTriangle = b >= 0.0 && c >= 0.0 && b + c <= 1.0;
    return {{{1.0 - onAb, onAb, 0.0},
             {1.0 - onAc, 0.0, onAc},
             {0.0, 1.0 - onBc, onBc},
             bInTriangle ? TriangleWeights{1.0 - b - c, b, c} : TriangleWeights{1.0, 0.0, 0.0}}};
}

class HullDescent
{
public:
    explicit HullDescent(const LocalFrame& frame) : m_frame(frame) {}

    /// From a facet that p is beyond.
    FacetPoint findClosest(Tet3& tet, int facet)
    {
        m_closest.sqDistance = HUGE_VAL;
        visit(tet, facet);
        while (!m_vPending.empty()) {
            const FacetPoint point = m_vPending.back();
            m_vPending.pop_back();
            if (isAsNear(point))
                visitAround(point);
        }
        return m_closest;
    }

private:
    bool isAsNear(const FacetPoint& point) const
    {
        return point.sqDistance <= m_closest.sqDistance * (1.0 + ROUNDING);
    }

    void visit(Tet3& tet, int facet)
    {
        if (!m_visited.insert(reinterpret_cast<const char*>(&tet) + facet).second)
            return;
        FacetPoint point;
        point.pTet = &tet;
        tet.getFacetIndices(facet, point.aCorner[0], point.aCorner[1], point.aCorner[2]);
        const SeenTriangle triangle = orderAndSee(tet, point.aCorner);
        for (const TriangleWeights& aWeight : getCandidates(triangle)) {
            point.aWeight = aWeight;
            point.sqDistance = getSquaredDistance(triangle, aWeight);
            if (isAsNear(point))
                m_vPending.push_back(point);
            if (point.sqDistance < m_closest.sqDistance)
                m_closest = point;
        }
    }

    /// Puts the corner nearest to p first: so it is the one of large weight that is rounded.
    SeenTriangle orderAndSee(const Tet3& tet, std::array<int, 3>& aCorner) const
    {
        const auto getVector = [&](int corner) { return m_frame.getLocal(*tet.getCorner(corner)); };
        std::sort(aCorner.begin(), aCorner.end(), [&](int left, int right) {
            const Vec l = getVector(left), r = getVector(right);
            return dot(l, l) < dot(r, r);
        });
        const auto& [a, b, c] = aCorner;
        const auto getSide = [&](int from, int to) {
            return m_frame.getVector(tet.getCorner(from)->getCoordinates(),
                                     tet.getCorner(to)->getCoordinates());
        };
        return {{getVector(a), getVector(b), getVector(c)}, getSide(a, b), getSide(a, c), getSide(b, c)};
    }

    /// All hull facets that contain the point's face and that p is beyond.
    void visitAround(const FacetPoint& point)
    {
        const FaceMask face = point.getFace();
        findTetAtFace(*point.pTet, face, [&](Tet3* pTet) {
            const FaceMask here = translateFace(*point.pTet, face, *pTet);
            for (int i = 0; i < 4; ++i)
                if (!hasCorner(here, i) && pTet->getOppTet(i) == nullptr && isBeyond(*pTet, i))
                    visit(*pTet, i);
            return false;
        });
    }

    bool isBeyond(const Tet3& tet, int facet) const
    {
        return getPredicates().getOrientation3(&tet, facet, &m_frame.getOrigin()) == ORIENTATION3_NEGATIVE;
    }

    const LocalFrame& m_frame;
    FacetPoint m_closest;
    std::vector<FacetPoint> m_vPending;
    NumberedSet m_visited;
};

} // namespace

void appendClosestHullPoint(const Point3& p, Tet3& tet, int facet, std::vector<VertexWeight3>& vWeights)
{
    const LocalFrame frame(p, *tet.getCorner((facet + 1) & 3));
    const FacetPoint closest = HullDescent(frame).findClosest(tet, facet);
    for (std::size_t i = 0; i < 3; ++i)
        if (closest.aWeight[i] > 0.0)
            vWeights.push_back({closest.pTet->getCorner(closest.aCorner[i]), closest.aWeight[i]});
}

} // namespace VORN3D
