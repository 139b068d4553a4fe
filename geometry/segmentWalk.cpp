// A segment is followed from face to face of the mesh. Wherever it is, in the relative interior of a face F,
// the next piece lies in a tetrahedron T around F such that the end q is on the inner side, or in the plane,
// of each facet of T that contains F; it lies in the face of T that F spans with the corners opposite those
// facets that q is strictly inside of. The piece ends at q, or in the facet of T that the segment leaves
// first.
//
// All decisions are orientations of four points. Let a(x), b(x) be the barycentric coordinates of x at two
// corners j, k of T with positive values at the beginning and negative ones at the end. The first vanishes
// before the second iff a(p) b(q) - b(p) a(q) > 0; with the two other corners m, n this is the ratio of the
// volumes [p q m n] and [j k m n], since the former is an alternating form in the coordinates at j and k.
#include "vorn3d/geometry/segmentWalk.h"

#include "faces.h"
#include "predicates.h"
#include "signedVolume.h"
#include "values/isFinite.h"

#include <algorithm>

namespace VORN3D
{

namespace
{

/// 1 on the side of corner i, 0 in the plane of the facet, -1 beyond it.
int getSide(const Tet3& tet, int i, const Point3& x)
{
    constexpr int SIDE[] = {1, -1, 0};
    return SIDE[getPredicates().getOrientation3(&tet, i, &x)];
}

/// 1 if the corner indices are an even permutation of 0, 1, 2, 3, else -1.
int getParity(const std::array<int, 4>& aIndex)
{
    int parity = 1;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = i + 1; j < 4; ++j)
            if (aIndex[i] > aIndex[j])
                parity = -parity;
    return parity;
}

class SegmentWalk
{
public:
    SegmentWalk(const Point3& p, const Point3& q) : m_p(p), m_q(q) {}

    /// Follows the segment from its beginning, which is in the relative interior of the face, or, having
    /// arrived from outside, from its entry there.
    void follow(Tet3& tet, FaceMask face)
    {
        m_pTet = &tet;
        m_face = face;
        while (enterNextTet())
            if (crossTet())
                return;
    }

    /// Finds the face of the hull in which the segment arrives from outside, having started at a facet that p
    /// is strictly beyond. False if it does not arrive.
    bool findEntry(Tet3* pTet, int facet);

    Tet3& getTet() const { return *m_pTet; }
    FaceMask getFace() const { return m_face; }
    std::vector<SegmentPiece3>& getPieces() { return m_vPieces; }

private:
    bool enterNextTet();
    bool crossTet();
    FaceMask findPiece(const Tet3& tet, FaceMask face) const;
    int compareExits(int j, int k) const;
    double getParameter(int facet) const;
    bool turnToNextHullFacet(Tet3*& pTet, int& facet, int offEdge) const;

    const Point3& m_p;
    const Point3& m_q;
    Tet3* m_pTet = nullptr;
    FaceMask m_face = 0;  // of m_pTet: what contains the current point in its relative interior
    FaceMask m_piece = 0; // of m_pTet: what contains the current piece
    double m_parameter = 0.0;
    std::vector<SegmentPiece3> m_vPieces;
};

/// The face of tet in which the segment goes on from the face where it is, or none.
FaceMask SegmentWalk::findPiece(const Tet3& tet, FaceMask face) const
{
    FaceMask piece = face;
    for (int i = 0; i < 4; ++i) {
        const int side = hasCorner(face, i) ? 0 : getSide(tet, i, m_q);
        if (side < 0)
            return 0;
        if (side > 0)
            piece |= 1u << i;
    }
    return piece;
}

bool SegmentWalk::enterNextTet()
{
    Tet3& from = *m_pTet;
    const FaceMask face = m_face;
    m_pTet = findTetAtFace(from, face, [&](Tet3* pTet) {
        m_face = translateFace(from, face, *pTet);
        m_piece = findPiece(*pTet, m_face);
        return m_piece != 0;
    });
    return m_pTet != nullptr;
}

/// The sign of the difference of the parameters at which the segment leaves facets j and k of the current
/// tetrahedron.
int SegmentWalk::compareExits(int j, int k) const
{
    std::array<int, 4> aIndex = orderCorners(*m_pTet, 1u << j | 1u << k);
    aIndex[0] = j;
    aIndex[1] = k;
    const Orientation3 orientation = getPredicates().getOrientation3(&m_p, &m_q, m_pTet->getCorner(aIndex[2]),
                                                                     m_pTet->getCorner(aIndex[3]));
    if (orientation == ORIENTATION3_COPLANAR)
        return 0;
    return orientation == ORIENTATION3_POSITIVE ? -getParity(aIndex) : getParity(aIndex);
}

double SegmentWalk::getParameter(int facet) const
{
    const double parameter =
        findZero(getSixfoldVolume(*m_pTet, facet, m_p), getSixfoldVolume(*m_pTet, facet, m_q));
    return std::max(m_parameter, parameter);
}

/// Adds the piece in the current tetrahedron and goes to its end. True if that is q.
bool SegmentWalk::crossTet()
{
    int first = -1;
    FaceMask exit = m_piece;
    for (int i = 0; i < 4; ++i) {
        if (!hasCorner(m_piece, i) || getSide(*m_pTet, i, m_q) >= 0)
            continue;
        const int comparison = first < 0 ? -1 : compareExits(i, first);
        if (comparison < 0) {
            first = i;
            exit = m_piece;
        }
        if (comparison <= 0)
            exit &= ~(1u << i);
    }
    const double entry = m_parameter;
    m_parameter = first < 0 ? 1.0 : getParameter(first);
    m_vPieces.push_back({m_pTet, getKind(m_piece), orderCorners(*m_pTet, m_piece), entry, m_parameter});
    m_face = exit;
    return first < 0;
}

/// From a hull facet to the one beyond the edge that it has opposite its corner offEdge. False if p does not
/// see that one.
bool SegmentWalk::turnToNextHullFacet(Tet3*& pTet, int& facet, int offEdge) const
{
    TetAroundEdgeIterator it(Edge3(pTet, facet, offEdge));
    while (!it.nextIsNull())
        ++it;
    pTet = *it;
    facet = it.getOpp2Index();
    return getSide(*pTet, facet, m_p) < 0;
}

// The facets that p sees, projected from p, are a planar triangulation of what the whole hull projects to, a
// convex region. In it this is the visibility walk to the projection of q. Each step goes to a facet whose
// plane the ray meets later, so it ends; among facets in one plane it ends as the triangulation there is
// Delaunay, too.
bool SegmentWalk::findEntry(Tet3* pTet, int facet)
{
    for (;;) {
        std::array<int, 3> aCorner;
        pTet->getFacetIndices(facet, aCorner[0], aCorner[1], aCorner[2]);
        FaceMask entry = 0;
        int crossed = -1;
        for (std::size_t i = 0; i < 3 && crossed < 0; ++i) {
            const Orientation3 side = getPredicates().getOrientation3(
                &m_p, pTet->getCorner(aCorner[(i + 1) % 3]), pTet->getCorner(aCorner[(i + 2) % 3]), &m_q);
            if (side == ORIENTATION3_POSITIVE)
                crossed = aCorner[i];
            else if (side == ORIENTATION3_NEGATIVE)
                entry |= 1u << aCorner[i];
        }
        if (crossed < 0) {
            m_pTet = pTet;
            m_face = entry;
            break;
        }
        if (!turnToNextHullFacet(pTet, facet, crossed))
            return false;
    }
    if (getSide(*pTet, facet, m_q) <= 0)
        return false;
    m_parameter = getParameter(facet);
    return true;
}

} // namespace

std::vector<SegmentPiece3> segmentWalk(const Vorn_3D& dt, const Point3& p, const Point3& q, Tet3* pStart)
{
    const Location3 beginning = locateClosed(dt, p, pStart);
    if (beginning.pTet == nullptr || !isFinite(q) || p == q)
        return {};
    SegmentWalk walk(p, q);
    if (beginning.kind != LocationKind3::OUTSIDE)
        walk.follow(*beginning.pTet, getFace(beginning));
    else if (walk.findEntry(beginning.pTet, beginning.aIndex[3]))
        walk.follow(walk.getTet(), walk.getFace());
    return std::move(walk.getPieces());
}

} // namespace VORN3D
