// segmentWalk: its pieces, recomputed in rational arithmetic, follow each other from where the segment enters
// the hull to where it leaves.
#include "vorn3d/geometry/segmentWalk.h"
#include "TriangulatedSet.h"

#include <limits>
#include <map>

namespace VORN3D::tests
{
namespace
{

using Kind = LocationKind3;

/// The volume of the tetrahedron with corner ith replaced, in some unit.
mpq_class getVolume(const Tet3& tet, int ith, const Point3& p)
{
    std::array<std::array<mpq_class, 3>, 4> corners;
    for (int i = 0; i < 4; ++i) {
        const Coordinates c = coordinatesOf(i == ith ? p : *tet.getCorner(i));
        corners[static_cast<std::size_t>(i)] = {mpq_class(c[0]), mpq_class(c[1]), mpq_class(c[2])};
    }
    std::array<std::array<mpq_class, 3>, 3> d;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            d[i][k] = corners[i + 1][k] - corners[0][k];
    return (d[0][1] * d[1][2] - d[0][2] * d[1][1]) * d[2][0] +
           (d[0][2] * d[1][0] - d[0][0] * d[1][2]) * d[2][1] +
           (d[0][0] * d[1][1] - d[0][1] * d[1][0]) * d[2][2];
}

/// The part of a segment that half-spaces leave.
struct Interval
{
    mpq_class low = 0;
    mpq_class high = 1;

    bool hasLength() const { return low < high; }

    void clip(const mpq_class& from, const mpq_class& to)
    {
        if (from < 0 && to < 0) {
            high = low;
            return;
        }
        if (sgn(from) < 0 || sgn(to) < 0) {
            const mpq_class zero = from / (from - to);
            if (sgn(from) < 0)
                low = std::max(low, zero);
            else
                high = std::min(high, zero);
        }
    }
};

class SegmentWalk : public TriangulatedSet
{
protected:
    Interval clipToHull(const Point3& p, const Point3& q) const
    {
        Interval interval;
        interval.high = m_dt.is3D() ? 1 : 0;
        for (const Tet3* pTet : m_vTets)
            for (int i = 0; i < 4; ++i)
                if (pTet->getOppTet(i) == nullptr)
                    interval.clip(getVolume(*pTet, i, p), getVolume(*pTet, i, q));
        return interval;
    }

    void expectRight(const Point3& p, const Point3& q, Tet3* pStart)
    {
        const std::vector<SegmentPiece3> vPieces = segmentWalk(m_dt, p, q, pStart);
        const Interval inHull = clipToHull(p, q);
        ASSERT_EQ(!vPieces.empty(), inHull.hasLength() && p != q);
        mpq_class reached = inHull.low;
        for (const SegmentPiece3& piece : vPieces) {
            Interval interval;
            for (int k = 0; k < 4; ++k) {
                const int i = piece.aIndex[static_cast<std::size_t>(k)];
                const mpq_class from = getVolume(*piece.pTet, i, p), to = getVolume(*piece.pTet, i, q);
                interval.clip(from, to);
                ASSERT_EQ(sgn(from) == 0 && sgn(to) == 0, k > static_cast<int>(piece.kind));
            }
            ASSERT_TRUE(interval.hasLength());
            ASSERT_EQ(interval.low, reached);
            ASSERT_NO_FATAL_FAILURE(expectNear(piece.entry, interval.low));
            ASSERT_NO_FATAL_FAILURE(expectNear(piece.exit, interval.high));
            ASSERT_LE(piece.entry, piece.exit);
            reached = interval.high;
            ++m_numPieces[piece.kind];
        }
        ASSERT_TRUE(vPieces.empty() || reached == inHull.high);
        m_numMissed += vPieces.empty();
    }

    static void expectNear(double parameter, const mpq_class& expected)
    {
        const mpq_class error = abs(mpq_class(parameter) - expected);
        ASSERT_LE(error, mpq_class(5e-13) * expected + std::numeric_limits<double>::denorm_min());
    }

    std::map<Kind, int> m_numPieces;
    int m_numMissed = 0;
};

TEST_P(SegmentWalk, FollowsTheSegmentThroughTheHull)
{
    triangulate(27);
    const std::vector<Point3> vEnds = makeQueries(200);
    Random random(1);
    for (int i = 0; i < 300; ++i) {
        const auto draw = [&]() -> const Point3& {
            return i % 2 == 0 ? anyVertex(random) : vEnds[random.below(vEnds.size())];
        };
        const Point3& p = draw();
        const Point3& q = draw();
        SCOPED_TRACE(testing::Message() << p << " to " << q);
        ASSERT_NO_FATAL_FAILURE(expectRight(p, q, m_vTets.empty() ? nullptr : m_vTets[0]));
    }
    if (GetParam().name != "Grid")
        return;
    for (const Kind kind : {Kind::EDGE, Kind::FACET, Kind::CELL})
        EXPECT_GT(m_numPieces[kind], 20);
    EXPECT_GT(m_numMissed, 10);
}

INSTANTIATE_TEST_SUITE_P(PointSets, SegmentWalk, testing::ValuesIn(getPointSets()), getSetName);

} // namespace
} // namespace VORN3D::tests
