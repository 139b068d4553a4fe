// The library beside the literal model: corner by corner, neighbour by neighbour, ID by ID, through random
// sequences of batches and single points in special position.
#include "LiteralModel.h"
#include "CapturedOutput.h"
#include "PointSets.h"

#include "vorn3d/Vorn_3D.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>

namespace VORN3D::tests
{

namespace
{

using Index = LiteralModel::Index;

/// A kind of point. All leave much to the order of insertion: many lie on one plane or on one sphere.
struct Kind
{
    std::string name;
    Point3 (*make)(Random& random);
};

void PrintTo(const Kind& kind, std::ostream* pOs)
{
    *pOs << kind.name;
}

Point3 onLattice(Random& random)
{
    return {random.whole(0, 3), random.whole(0, 3), random.whole(0, 3)};
}

/// Of 102 points with whole coordinates at the distance 15 from the origin, and the origin.
Point3 onLatticeSphere(Random& random)
{
    static const double aXyz[][3] = {{15, 0, 0}, {12, 9, 0}, {14, 5, 2}, {11, 10, 2}, {10, 10, 5}, {0, 0, 0}};
    const auto& xyz = aXyz[random.below(6)];
    const std::size_t axis = random.below(3);
    const auto sign = [&] { return random.below(2) == 0 ? 1.0 : -1.0; };
    return {sign() * xyz[axis], sign() * xyz[(axis + 1) % 3], sign() * xyz[(axis + 2) % 3]};
}

/// Mostly in one plane, so that there is no mesh for long; with zeros of both signs.
Point3 nearlyFlat(Random& random)
{
    const double z = random.below(12) == 0 ? random.whole(-2, 2) : 0.0;
    return {random.whole(-2, 2), random.whole(-2, 2), random.below(2) == 0 ? z : -z};
}

/// A lattice in one cell of the curve, or few, since some points are far away.
Point3 withOutliers(Random& random)
{
    Point3 p = onLattice(random);
    return random.below(10) == 0 ? Point3(1e4 * p.x(), 1e4 * p.y(), -1e4 * p.z()) : p;
}

Point3 inGeneralPosition(Random& random)
{
    return random.inCube(0.0, 1.0);
}

class BesideModel
{
public:
    /// The triangulation is empty.
    explicit BesideModel(Vorn_3D& dt) : m_dt(dt) {}

    void insertBatch(std::vector<Point3> vPoints)
    {
        std::vector<Point3*> vHandles;
        m_dt.insert(vPoints, vHandles);
        const LiteralModel::Indices vVertices = m_model.insertBatch(vPoints);
        ASSERT_EQ(vHandles.size(), vVertices.size());
        for (std::size_t i = 0; i < vHandles.size(); ++i)
            match(vHandles[i], vVertices[i], vPoints[i]);
        compare();
    }

    void insertSingle(Point3 p)
    {
        const Point3* pVtx = m_dt.insert(p);
        match(pVtx, m_model.insertSingle(p), p);
        compare();
    }

private:
    /// ID, corners, IDs of neighbours.
    using Description = std::array<int, 9>;

    void match(const Point3* pVtx, Index vertex, const Point3& p)
    {
        const auto entry = m_numberOf.try_emplace(pVtx, static_cast<int>(vertex)).first;
        EXPECT_EQ(entry->second, static_cast<int>(vertex));
        EXPECT_EQ(*pVtx, p);
    }

    int getNumber(const Point3* pVtx) const
    {
        const auto entry = m_numberOf.find(pVtx);
        return entry == m_numberOf.end() ? -1 : entry->second;
    }

    /// As it is printed: "Tetrahedron (ID=1000), ...".
    static int getId(const Tet3* pTet)
    {
        if (pTet == nullptr)
            return -1;
        std::ostringstream text;
        text << *pTet;
        return std::stoi(text.str().substr(text.str().find('=') + 1));
    }

    int getId(Index tet) const { return tet == LiteralModel::NONE ? -1 : m_model.getTets()[tet].id; }

    std::vector<Description> describeMesh() const
    {
        std::vector<Tet3*> vTets;
        m_dt.getTetrahedra(vTets);
        std::vector<Description> vDescriptions;
        for (const Tet3* pTet : vTets) {
            Description& description = vDescriptions.emplace_back(Description{getId(pTet)});
            for (int i = 0; i < 4; ++i) {
                description[static_cast<std::size_t>(1 + i)] = getNumber(pTet->getCorner(i));
                description[static_cast<std::size_t>(5 + i)] = getId(pTet->getOppTet(i));
            }
        }
        std::sort(vDescriptions.begin(), vDescriptions.end());
        return vDescriptions;
    }

    std::vector<Description> describeModel() const
    {
        std::vector<Description> vDescriptions;
        for (const LiteralModel::Tet& tet : m_model.getTets())
            if (!tet.bDoomed) {
                Description& description = vDescriptions.emplace_back(Description{tet.id});
                for (std::size_t i = 0; i < 4; ++i) {
                    description[1 + i] = static_cast<int>(tet.aCorner[i]);
                    description[5 + i] = getId(tet.aOpp[i]);
                }
            }
        return vDescriptions;
    }

    /// The vertices in curve order, each with its tetrahedron.
    void compareVertices() const
    {
        std::vector<Point3*> vVertices;
        m_dt.getVertices(vVertices);
        std::vector<std::pair<int, int>> vHas, vWanted;
        for (const Point3* pVtx : vVertices)
            vHas.emplace_back(getNumber(pVtx), getId(pVtx->getOneTet()));
        for (const Index vertex : m_model.getVertices())
            vWanted.emplace_back(static_cast<int>(vertex), getId(m_model.getOneTet(vertex)));
        ASSERT_EQ(vHas, vWanted);
    }

    void compare() const
    {
        compareVertices();
        ASSERT_EQ(describeMesh(), describeModel());
    }

    Vorn_3D& m_dt;
    LiteralModel m_model;
    std::map<const Point3*, int> m_numberOf;
};

class LiteralModelTest : public testing::TestWithParam<Kind>
{
protected:
    /// The first batch of a process has a box of its own kind.
    static void SetUpTestSuite()
    {
        std::vector<Point3> vFirst{{0, 0, 0}};
        Vorn_3D().insert(vFirst);
    }
};

TEST_P(LiteralModelTest, AgreesThroughRandomSequences)
{
    const CapturedOutput output;
    Vorn_3D used;
    for (std::uint64_t seed = 0; seed < 150 && !HasFailure(); ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Random random(seed);
        Vorn_3D fresh;
        used.clear();
        BesideModel both(seed % 2 == 0 ? fresh : used);
        const std::size_t maxBatch = std::size_t{4} << random.below(5);
        for (std::size_t numCalls = 2 + random.below(10); numCalls > 0 && !HasFailure(); --numCalls) {
            if (random.below(3) == 0) {
                std::vector<Point3> vPoints(random.below(maxBatch));
                for (Point3& p : vPoints)
                    p = GetParam().make(random);
                both.insertBatch(vPoints);
            } else
                both.insertSingle(GetParam().make(random));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, LiteralModelTest,
                         testing::Values(Kind{"Lattice", onLattice}, Kind{"LatticeSphere", onLatticeSphere},
                                         Kind{"NearlyFlat", nearlyFlat}, Kind{"WithOutliers", withOutliers},
                                         Kind{"General", inGeneralPosition}),
                         [](const auto& kind) { return kind.param.name; });

} // namespace

} // namespace VORN3D::tests
