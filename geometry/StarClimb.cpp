#include "StarClimb.h"

#include "vectors.h"
#include "vertexStar.h"

#include <cmath>

namespace VORN3D
{

namespace
{

constexpr double RELATIVE_ERROR = 0x1p-49;
constexpr double UNDERFLOW_ERROR = 0x1p-900;

/// A neighbour of the vertex, as its height f is computed.
struct Height
{
    double numerator;
    double bound; // of the numerator's terms
    double denominator;

    bool isPositive() const { return numerator > RELATIVE_ERROR * bound + UNDERFLOW_ERROR; }
};

class StarClimb
{
public:
    StarClimb(const DistanceOrder& order, Distant& nearest, const Tet3*& pTet)
        : m_order(order), m_nearest(nearest), m_pTet(pTet), m_pVtx(nearest.pVtx),
          m_towards(getVector(*nearest.pVtx, order.getQuery()))
    {
    }

    ClimbResult climb()
    {
        if (!chooseFirst())
            return ClimbResult::NEARER_FOUND;
        while (m_result == ClimbResult::NONE_NEARER && turnAroundTop()) {
        }
        if (m_result == ClimbResult::NONE_NEARER && !m_height.isPositive())
            return ClimbResult::UNDECIDED;
        return m_result;
    }

private:
    Height measure(const Point3& neighbor) const
    {
        const Vec v = getVector(*m_pVtx, neighbor);
        const double x = m_towards.x * v.x;
        const double y = m_towards.y * v.y;
        const double z = m_towards.z * v.z;
        return {x + y + z, std::fabs(x) + std::fabs(y) + std::fabs(z), dot(v, v)};
    }

    /// Begins at the highest corner of the tetrahedron. False if a corner is nearer.
    bool chooseFirst()
    {
        m_pTop = nullptr;
        for (Point3* pCorner : getCorners(*m_pTet)) {
            if (pCorner == m_pVtx)
                continue;
            if (isNearer(pCorner, m_pTet))
                return false;
            const Height height = measure(*pCorner);
            if (m_pTop == nullptr ||
                height.numerator * m_height.denominator > m_height.numerator * height.denominator) {
                m_pTop = pCorner;
                m_height = height;
            }
        }
        return true;
    }

    bool isNearer(Point3* pNeighbor, const Tet3* pTet)
    {
        const Distant neighbor = m_order.measure(pNeighbor);
        if (!m_order(neighbor, m_nearest))
            return false;
        m_nearest = neighbor;
        m_pTet = pTet;
        m_result = ClimbResult::NEARER_FOUND;
        return true;
    }

    /// Looks at a neighbour of the top in the link. True if that ends the turn: the neighbour is the new top,
    /// or decides the result.
    bool visit(Point3* pNeighbor, const Tet3* pTet)
    {
        if (isNearer(pNeighbor, pTet))
            return true;
        const Height height = measure(*pNeighbor);
        const double difference =
            height.numerator * m_height.denominator - m_height.numerator * height.denominator;
        const double errorBound =
            RELATIVE_ERROR * (height.bound * m_height.denominator + m_height.bound * height.denominator) +
            UNDERFLOW_ERROR * (height.denominator + m_height.denominator + 1.0);
        if (difference < -errorBound)
            return false;
        if (difference > errorBound) {
            m_pTop = pNeighbor;
            m_height = height;
            m_pTet = pTet;
        } else
            m_result = ClimbResult::UNDECIDED;
        return true;
    }

    /// Visits the neighbours of the top. True if there is a new top.
    bool turnAroundTop()
    {
        const Point3* pOldTop = m_pTop;
        const Tet3* pStart = m_pTet;
        Point3* apSide[2];
        int numSides = 0;
        for (Point3* pCorner : getCorners(*pStart))
            if (pCorner != m_pVtx && pCorner != m_pTop)
                apSide[numSides++] = pCorner;
        for (Point3* pSide : apSide)
            if (visit(pSide, pStart))
                return m_pTop != pOldTop;
        // Both ways; the second one only if the first ends at the hull.
        for (int way = 0; way < 2; ++way) {
            bool bClosed = false;
            if (turn(pStart, apSide[way], apSide[1 - way], bClosed) || bClosed)
                break;
        }
        return m_pTop != pOldTop;
    }

    /// Leaves the tetrahedron `pStart` by the facet opposite the corner pBehind. True if a visit ends the
    /// turn; bClosed tells that it came back to where it started.
    bool turn(const Tet3* pStart, Point3* pBehind, Point3* pAhead, bool& bClosed)
    {
        const Tet3* pTet = pStart;
        for (;;) {
            pTet = getOppTets(*pTet)[getIndex(getCorners(*pTet), pBehind)];
            if (pTet == nullptr)
                return false;
            if (pTet == pStart) {
                bClosed = true;
                return false;
            }
            Point3* pNew = nullptr;
            for (Point3* pCorner : getCorners(*pTet))
                if (pCorner != m_pVtx && pCorner != m_pTop && pCorner != pAhead)
                    pNew = pCorner;
            if (visit(pNew, pTet))
                return true;
            pBehind = pAhead;
            pAhead = pNew;
        }
    }

    static std::size_t getIndex(const Corners& corners, const Point3* pVtx)
    {
        return corners[1] == pVtx ? 1 : corners[2] == pVtx ? 2 : corners[3] == pVtx ? 3 : 0;
    }

    const DistanceOrder& m_order;
    Distant& m_nearest;
    const Tet3*& m_pTet; // has the vertex and the top as corners
    const Point3* m_pVtx;
    Vec m_towards;
    Point3* m_pTop = nullptr;
    Height m_height = {};
    ClimbResult m_result = ClimbResult::NONE_NEARER;
};

} // namespace

ClimbResult climbNearer(const DistanceOrder& order, Distant& nearest, const Tet3*& pTet)
{
    return StarClimb(order, nearest, pTet).climb();
}

} // namespace VORN3D
