// Every stage of the predicates, and their answers, against rational arithmetic on hostile points.
//
// The ordinary run takes a few ten thousand configurations. VORN3D_ORACLE_CONFIGURATIONS=10000000 in the
// environment makes it a long one, which prints how many configurations each stage was the first to decide.
#include "hostilePoints.h"
#include "predicates/ExactKernels.h"
#include "predicates/ExactSign.h"
#include "predicates/NaloTest3.h"
#include "predicates/NeighborFilter.h"
#include "rationalSigns.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <map>
#include <numeric>
#include <sstream>
#include <utility>

namespace VORN3D
{

namespace
{

std::string describe(const FivePoints& points)
{
    std::ostringstream os;
    os << std::hexfloat;
    for (const Coordinates& p : points)
        os << "\n  " << p[0] << ", " << p[1] << ", " << p[2];
    return os.str();
}

std::array<Coordinates, 4> getFirstFour(const FivePoints& points)
{
    return {points[0], points[1], points[2], points[3]};
}

/// True if every product of the sphere determinant has a zero factor, tried one by one.
bool areAllProductsZero(const FivePoints& points)
{
    std::array<std::size_t, 4> rows = {0, 1, 2, 3};
    do {
        bool bZero = points[rows[3]] == points[4];
        for (std::size_t k = 0; k < 3; ++k)
            bZero |= points[rows[k]][k] == points[4][k];
        if (!bZero)
            return false;
    } while (std::next_permutation(rows.begin(), rows.end()));
    return true;
}

/// The side of the facet opposite corner i of the first four points on which the last one is: 1 if it is the
/// corner's in a positively oriented tetrahedron.
int getFacetSide(const FivePoints& points, std::size_t i)
{
    static constexpr std::size_t aFacet[4][3] = {{1, 3, 2}, {0, 2, 3}, {0, 3, 1}, {0, 1, 2}};
    const std::size_t(&f)[3] = aFacet[i];
    return getVolumeSign({points[f[0]], points[f[1]], points[f[2]], points[4]});
}

bool isEven(const std::array<int, 5>& permutation)
{
    int numInversions = 0;
    for (std::size_t i = 0; i < 5; ++i)
        for (std::size_t j = i + 1; j < 5; ++j)
            numInversions += permutation[i] > permutation[j];
    return numInversions % 2 == 0;
}

const std::vector<std::string>& getStageNames()
{
    static const std::vector<std::string> names = {"filter", "lattice", "permanent", "integers",
                                                   "B",      "C",       "D",         "extended range"};
    return names;
}

/// Asks all stages about the sign of one determinant, whichever of them would be asked in earnest.
template <class Points, class Stages>
std::vector<Sign> askAllStages(const NaloTest3& predicates, const Points& points,
                               const FilterResult& filtered, double errorBoundA)
{
    const auto signIf = [](bool bDecided, double det) { return bDecided ? getSign(det) : Sign::undecided; };
    const PermanentFilter filter = evaluateWithPermanent(points);
    std::vector<Sign> signs = {signIf(filtered.isCertain(), filtered.det),
                               signIf(isExactOnLattice(points, filtered.extent), filtered.det),
                               filter.getSign(errorBoundA, filtered.extent),
                               getSignByIntegers(points, filtered.extent)};
    if (areInExpansionRange(points)) {
        Stages stages(predicates, points, filter.permanent);
        for (const auto decide : {&Stages::decideB, &Stages::decideC, &Stages::decideExactly}) {
            const bool bDecided = (stages.*decide)();
            signs.push_back(signIf(bDecided, stages.getDeterminant()));
        }
    }
    signs.resize(7, Sign::undecided);
    signs.push_back(getSignInExtendedRange(points));
    return signs;
}

class ExactSignsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (std::size_t i = 0; i < 4; ++i)
            m_tet.setCorner(static_cast<int>(i), &m_aPoint[i]);
    }

    void set(const FivePoints& points)
    {
        for (std::size_t i = 0; i < 5; ++i) {
            m_aPoint[i].exchange(points[i][0], points[i][1], points[i][2]);
            m_apCoordinates[i] = m_aPoint[i].getCoordinates();
        }
    }

    /// Expects that no stage gives a wrong sign; counts the first that gives one.
    void checkStages(const std::vector<Sign>& signs, int expected, std::map<std::string, long>& counts)
    {
        const std::vector<std::string>& names = getStageNames();
        bool bCounted = false;
        for (std::size_t i = 0; i < signs.size(); ++i) {
            if (signs[i] == Sign::undecided)
                continue;
            EXPECT_EQ(static_cast<int>(signs[i]), expected) << names[i];
            counts[names[i]] += !bCounted;
            bCounted = true;
        }
        EXPECT_TRUE(bCounted);
    }

    // The determinant of the rows a - d, b - d, c - d has the opposite sign of the volume.
    void checkOrientation(const FivePoints& points)
    {
        const int volumeSign = getVolumeSign(getFirstFour(points));
        const OrientationPoints p = {m_apCoordinates[0], m_apCoordinates[1], m_apCoordinates[2],
                                     m_apCoordinates[3]};
        const std::vector<Sign> signs = askAllStages<OrientationPoints, AdaptiveOrientation>(
            m_predicates, p, filterOrientation(p[0], p[1], p[2], p[3]), m_predicates.o3derrboundA);
        checkStages(signs, -volumeSign, m_orientationCounts);
        const double det = m_predicates.orient3dadapt(m_aPoint[0], m_aPoint[1], m_aPoint[2], m_aPoint[3],
                                                      evaluateWithPermanent(p).permanent);
        EXPECT_EQ(static_cast<int>(getSign(det)), -volumeSign);
        EXPECT_EQ(getOrientation({0, 1, 2, 3, 4}), volumeSign);
    }

    void checkSphere(const FivePoints& points)
    {
        const int sphereSign = getSphereSign(points);
        const SpherePoints& p = m_apCoordinates;
        const std::vector<Sign> signs = askAllStages<SpherePoints, AdaptiveSphere>(
            m_predicates, p, filterSphere(p[0], p[1], p[2], p[3], p[4]), m_predicates.isperrboundA);
        checkStages(signs, sphereSign, m_sphereCounts);

        const Point3(&a)[5] = m_aPoint;
        const int signClass = sphereSign > 0 ? 1 : sphereSign < 0 ? 0 : 2;
        const double permanent = evaluateWithPermanent(p).permanent;
        EXPECT_EQ(m_predicates.insphereadapt(a[0], a[1], a[2], a[3], a[4], permanent), signClass);
        EXPECT_EQ(m_predicates.insphereexact(a[0], a[1], a[2], a[3], a[4]), signClass);
        const bool bInside = sphereSign < 0 || areAllProductsZero(points);
        EXPECT_EQ(m_predicates.sphereInclusionTest(&m_tet, &a[4]), bInside ? SIC_INSIDE : SIC_OUTSIDE);
    }

    /// The filter of the walk.
    void checkSides(const FivePoints& points)
    {
        Point3* const apCorner[] = {&m_aPoint[0], &m_aPoint[1], &m_aPoint[2], &m_aPoint[3]};
        const CertainSides sides = getCertainSides<Lanes>(apCorner, m_aPoint[4]);
        for (std::size_t i = 0; i < 4; ++i) {
            const int sign =
                static_cast<int>(sides.inside >> i & 1) - static_cast<int>(sides.beyond >> i & 1);
            if (sign != 0) {
                EXPECT_EQ(getFacetSide(points, i), sign) << i;
                ++m_numCertainSides;
            }
        }
    }

    /// The filter of the conflict region. Beyond the facet opposite corner i of four points there is each
    /// time the same tetrahedron, if that corner is one of its own and the one that it takes the place of is
    /// elsewhere; only seen from the other side.
    void checkNeighbors(const FivePoints& points, NeighborFilter judge)
    {
        const int sphereSign = getSphereSign(points);
        for (std::size_t i = 0; i < 4; ++i) {
            Point3 elsewhere(points[4][0], points[i][1], points[i][2]);
            Point3* apCorner[] = {&m_aPoint[0], &m_aPoint[1], &m_aPoint[2], &m_aPoint[3]};
            const Point3* apApex[] = {&m_aPoint[4], &m_aPoint[4], &m_aPoint[4], &m_aPoint[4]};
            apApex[i] = std::exchange(apCorner[i], &elsewhere);
            const NeighborVerdicts verdicts = judge(apCorner, apApex, m_aPoint[4]);
            if ((verdicts.getUndecided() >> i & 1) == 0) {
                EXPECT_EQ((verdicts.getInConflict() >> i & 1) != 0 ? 1 : -1, sphereSign) << i;
                ++m_numCertainConflicts;
            }
            if ((verdicts.getInside() >> i & 1) != 0) {
                EXPECT_EQ(getFacetSide(points, i), 1) << i;
            }
        }
    }

    int getOrientation(const std::array<int, 5>& order) const
    {
        const auto at = [&](std::size_t i) { return &m_aPoint[order[i]]; };
        const Orientation3 orientation = m_predicates.getOrientation3(at(0), at(1), at(2), at(3));
        return orientation == ORIENTATION3_POSITIVE ? 1 : orientation == ORIENTATION3_NEGATIVE ? -1 : 0;
    }

    void checkPermutations(const FivePoints& points)
    {
        const int volumeSign = getVolumeSign(getFirstFour(points));
        const int sphereSign = getSphereSign(points);
        std::array<int, 5> order = {0, 1, 2, 3, 4};
        do {
            const int parity = isEven(order) ? 1 : -1;
            if (order[4] == 4) {
                EXPECT_EQ(getOrientation(order), parity * volumeSign);
            }
            FivePoints permuted;
            for (std::size_t i = 0; i < 5; ++i)
                permuted[i] = points[static_cast<std::size_t>(order[i])];
            set(permuted);
            const bool bInside = parity * sphereSign < 0 || areAllProductsZero(permuted);
            EXPECT_EQ(m_predicates.sphereInclusionTest(&m_tet, &m_aPoint[4]),
                      bInside ? SIC_INSIDE : SIC_OUTSIDE);
            set(points);
        } while (std::next_permutation(order.begin(), order.end()));
    }

    const NaloTest3 m_predicates;
    Point3 m_aPoint[5];
    SpherePoints m_apCoordinates;
    Tet3 m_tet;
    std::map<std::string, long> m_orientationCounts;
    std::map<std::string, long> m_sphereCounts;
    long m_numCertainSides = 0;
    long m_numCertainConflicts = 0;
};

/// Calls check(points) for all combinations of values and shapes in turn, as they are and nudged.
template <class Check>
void forHostilePoints(long numConfigurations, const Check& check)
{
    const std::vector<Values> allValues = getAllValues();
    const std::vector<Shape> shapes = getAllShapes();
    for (long i = 0; i < numConfigurations && !testing::Test::HasFailure(); ++i) {
        Generator random(static_cast<unsigned long>(i));
        const auto combination = static_cast<std::size_t>(i);
        const Values& values = allValues[combination % allValues.size()];
        const Shape& shape = shapes[combination / allValues.size() % shapes.size()];
        FivePoints points = shape.make(random, values);
        if (random() % 2 == 0)
            nudge(points, random);
        check(points);
        if (testing::Test::HasFailure())
            ADD_FAILURE() << "configuration " << i << ": " << values.name << ", " << shape.name
                          << describe(points);
    }
}

long getNumConfigurations()
{
    const char* text = std::getenv("VORN3D_ORACLE_CONFIGURATIONS");
    return text == nullptr ? 40000 : std::atol(text);
}

void printCounts(const std::string& title, const std::map<std::string, long>& counts)
{
    std::cout << title << ", decided first by\n";
    for (const std::string& name : getStageNames())
        std::cout << "  " << std::left << std::setw(16) << name << std::right << std::setw(12)
                  << (counts.count(name) != 0 ? counts.at(name) : 0) << "\n";
}

TEST_F(ExactSignsTest, EveryStageIsRightOrUndecided)
{
    forHostilePoints(getNumConfigurations(), [&](const FivePoints& points) {
        set(points);
        checkOrientation(points);
        checkSphere(points);
    });
    for (const std::string& name : getStageNames()) {
        EXPECT_GT(m_orientationCounts[name], 0) << name;
        EXPECT_GT(m_sphereCounts[name], 0) << name;
    }
    if (std::getenv("VORN3D_ORACLE_CONFIGURATIONS") != nullptr) {
        printCounts("orientation", m_orientationCounts);
        printCounts("sphere", m_sphereCounts);
    }
}

TEST_F(ExactSignsTest, LaneFiltersAreRightOrUndecided)
{
    std::vector<NeighborFilter> filters = {judgeNeighbors};
    if (chooseNeighborFilter() != filters.front())
        filters.push_back(chooseNeighborFilter());
    const long numConfigurations = getNumConfigurations() / 2;
    forHostilePoints(numConfigurations, [&](const FivePoints& points) {
        set(points);
        checkSides(points);
        for (const NeighborFilter filter : filters)
            checkNeighbors(points, filter);
    });
    // Hostile as the points are, a good part of them is easy. Which ones there are depends on the compiler:
    // the order in which arguments are evaluated, random ones among them, is its own.
    EXPECT_GT(m_numCertainSides, numConfigurations);
    EXPECT_GT(m_numCertainConflicts, numConfigurations / 4 * static_cast<long>(filters.size()));
}

// All patterns of zero and other differences.
TEST_F(ExactSignsTest, ZeroPermanentsAreTold)
{
    for (unsigned pattern = 0; pattern < 1u << 12; ++pattern) {
        FivePoints points = {};
        for (unsigned i = 0; i < 12; ++i)
            points[i / 3][i % 3] = pattern >> i & 1;
        set(points);
        ASSERT_EQ(isPermanentZero(m_apCoordinates), areAllProductsZero(points)) << describe(points);
    }
}

TEST_F(ExactSignsTest, PermutationsGiveTheSignOfAlgebra)
{
    forHostilePoints(getNumConfigurations() / 100, [&](const FivePoints& points) {
        set(points);
        checkPermutations(points);
    });
}

} // namespace

} // namespace VORN3D
