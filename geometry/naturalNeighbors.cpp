#include "naturalNeighbors.h"

#include "predicates.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace VORN3D
{

namespace
{

// Of the weighted mean of the neighbours from p, relative to their largest distance from p.
constexpr double LARGEST_DEVIATION = 0x1p-44;
constexpr int MAX_CORRECTIONS = 6;

// Of a pivot relative to the first one, which rounding leaves of one that is zero.
constexpr double NEGLIGIBLE_PIVOT = 0x1p-44;

bool isFinite(const Vec& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// The three corners of a facet as they appear from outside, starting with each of them in turn.
std::array<std::array<std::size_t, 3>, 3> getRotations(const Tet3& tet, int facet)
{
    int i0, i1, i2;
    tet.getFacetIndices(facet, i0, i1, i2);
    const auto a = static_cast<std::size_t>(i0);
    const auto b = static_cast<std::size_t>(i1);
    const auto c = static_cast<std::size_t>(i2);
    return {{{a, b, c}, {b, c, a}, {c, a, b}}};
}

using SymmetricMatrix = std::array<std::array<double, 3>, 3>;

/// Solves matrix * x = b for a positive semidefinite matrix by elimination, the largest pivots first, in the
/// directions in which the matrix is not negligible; in the others x is zero.
std::array<double, 3> solve(SymmetricMatrix matrix, std::array<double, 3> b)
{
    std::array<std::size_t, 3> order = {0, 1, 2};
    const auto isSmaller = [&](std::size_t i, std::size_t j) { return matrix[i][i] < matrix[j][j]; };
    double firstPivot = 0.0;
    std::size_t rank = 0;
    for (; rank < 3; ++rank) {
        std::swap(order[rank], *std::max_element(order.begin() + static_cast<std::ptrdiff_t>(rank),
                                                 order.end(), isSmaller));
        const std::size_t k = order[rank];
        firstPivot = std::max(firstPivot, matrix[k][k]);
        if (!(matrix[k][k] > NEGLIGIBLE_PIVOT * firstPivot))
            break;
        for (std::size_t i = rank + 1; i < 3; ++i) {
            const std::size_t row = order[i];
            const double factor = matrix[row][k] / matrix[k][k];
            for (std::size_t column = 0; column < 3; ++column)
                matrix[row][column] -= factor * matrix[k][column];
            b[row] -= factor * b[k];
        }
    }
    std::array<double, 3> x = {};
    for (std::size_t i = rank; i-- > 0;) {
        const std::size_t k = order[i];
        double rest = b[k];
        for (std::size_t j = i + 1; j < rank; ++j)
            rest -= matrix[k][order[j]] * x[order[j]];
        x[k] = rest / matrix[k][k];
    }
    return x;
}

} // namespace

bool NaturalNeighbors::appendWeights(const Point3& p, Tet3& start, std::vector<VertexWeight3>& vWeights)
{
    clear();
    m_frame = LocalFrame(p, *start.getCorner(0));
    if (!reach(&start))
        return false;
    for (std::uint32_t i = 0; i < m_vCells.size(); ++i)
        if (!visitFacets(i))
            return false;
    addBoundaryEdges();
    if (!normalize() || !correct())
        return false;
    for (std::size_t i = 0; i < m_vShares.size(); ++i)
        vWeights.push_back({m_vVertices[i], m_vShares[i]});
    return true;
}

void NaturalNeighbors::clear()
{
    m_cellNumbers.clear();
    m_vertexNumbers.clear();
    m_edgeNumbers.clear();
    m_vCells.clear();
    m_vVertices.clear();
    m_vLocal.clear();
    m_vShares.clear();
    m_vBoundaryEdges.clear();
}

/// Adds a tetrahedron to the cavity. False if the centre of its sphere is beyond the range of doubles.
bool NaturalNeighbors::reach(Tet3* pTet)
{
    m_cellNumbers.insert(pTet);
    const Corners corners = getCorners(*pTet);
    Cell cell;
    cell.pTet = pTet;
    for (std::size_t i = 0; i < 4; ++i) {
        const auto [number, bNew] = m_vertexNumbers.insert(corners[i]);
        cell.aVertex[i] = number;
        if (bNew) {
            m_vVertices.push_back(corners[i]);
            m_vLocal.push_back(m_frame.getLocal(*corners[i]));
            m_vShares.push_back(0.0);
        }
    }
    const std::optional<Vec> center =
        getCenterFromLast(m_frame, {corners[0]->getCoordinates(), corners[1]->getCoordinates(),
                                    corners[2]->getCoordinates(), corners[3]->getCoordinates()});
    if (!center)
        return false;
    cell.center = *center + m_vLocal[cell.aVertex[3]];
    m_vCells.push_back(cell);
    return isFinite(cell.center);
}

/// Adds the steps through the facets of a cell. False if p is in the plane of one on the hull.
bool NaturalNeighbors::visitFacets(std::uint32_t numCell)
{
    const Point3& p = m_frame.getOrigin();
    const OppTets neighbors = getOppTets(*m_vCells[numCell].pTet);
    for (int i = 0; i < 4; ++i) {
        Tet3* pNeighbor = neighbors[static_cast<std::size_t>(i)];
        const std::int64_t number = pNeighbor == nullptr ? -1 : m_cellNumbers.find(pNeighbor);
        if (number >= 0) {
            // Of the two cells at a facet the one reached later counts the step.
            if (number < numCell)
                addStep(m_vCells[numCell], i, m_vCells[static_cast<std::size_t>(number)].center);
            continue;
        }
        const bool bInConflict =
            pNeighbor != nullptr && getPredicates().sphereInclusionTest(pNeighbor, &p) == SIC_INSIDE;
        if (bInConflict ? !reach(pNeighbor) : !addNewTet(m_vCells[numCell], i))
            return false;
    }
    return true;
}

/// For the tetrahedron that p makes with a facet of the cavity's boundary.
bool NaturalNeighbors::addNewTet(const Cell& cell, int facet)
{
    const auto rotations = getRotations(*cell.pTet, facet);
    const Corners corners = getCorners(*cell.pTet);
    const auto& [a, b, c] = rotations[0];
    const std::optional<Vec> center =
        getCenterFromLast(m_frame, {corners[a]->getCoordinates(), corners[b]->getCoordinates(),
                                    corners[c]->getCoordinates(), m_frame.getOrigin().getCoordinates()});
    if (!center || !isFinite(*center))
        return false;
    addStep(cell, facet, *center);
    for (const auto& rotation : rotations)
        addToEdge(cell.aVertex[rotation[0]], cell.aVertex[rotation[1]], *center);
    return true;
}

/// From the centre of a cell through one of its facets to the next centre. A turn around the edge from a to b
/// of the facet, as it appears from outside, is right-handed.
void NaturalNeighbors::addStep(const Cell& cell, int facet, const Vec& nextCenter)
{
    for (const auto& [a, b, c] : getRotations(*cell.pTet, facet)) {
        const Vec& apex = m_vLocal[cell.aVertex[a]];
        m_vShares[cell.aVertex[a]] += dot(m_vLocal[cell.aVertex[b]] - m_vLocal[cell.aVertex[c]],
                                          cross(cell.center - apex, nextCenter - apex));
    }
}

/// The new tetrahedron lies beyond the facet that a right-handed turn around from -> to leaves the cavity by.
void NaturalNeighbors::addToEdge(std::uint32_t from, std::uint32_t to, const Vec& newCenter)
{
    const std::uint32_t low = std::min(from, to);
    const std::uint32_t high = std::max(from, to);
    const auto [number, bNew] = m_edgeNumbers.insert(std::uint64_t{low} << 32 | high);
    if (bNew)
        m_vBoundaryEdges.push_back({low, high, {}});
    m_vBoundaryEdges[number].aCenter[from < to ? 1 : 0] = newCenter;
}

void NaturalNeighbors::addBoundaryEdges()
{
    for (const BoundaryEdge& edge : m_vBoundaryEdges) {
        const auto& [first, last] = edge.aCenter;
        const Vec& low = m_vLocal[edge.low];
        const Vec& high = m_vLocal[edge.high];
        m_vShares[edge.low] += dot(high, cross(last - low, first - low));
        m_vShares[edge.high] += dot(low, cross(first - high, last - high));
    }
}

/// Divides the shares by their sum; rounding may have made small ones negative. False if there is no such
/// number.
bool NaturalNeighbors::normalize()
{
    double sum = 0.0;
    for (double& share : m_vShares) {
        share = std::max(share, 0.0);
        sum += share;
    }
    for (double& share : m_vShares)
        share /= sum;
    return sum > 0.0 && std::isfinite(sum);
}

/// Makes p the weighted mean of the neighbours, up to the largest deviation. False if rounding has left so
/// little of the shares that this does not succeed.
bool NaturalNeighbors::correct()
{
    double extent = 0.0;
    for (const Vec& local : m_vLocal)
        extent = std::max(extent, getExtent(local));
    for (int i = 0; i < MAX_CORRECTIONS; ++i) {
        const Vec mean = getMean();
        if (getExtent(mean) <= LARGEST_DEVIATION * extent)
            return true;
        moveMean(mean);
        if (!normalize())
            return false;
    }
    return false;
}

/// Of the neighbours by their shares, from p.
Vec NaturalNeighbors::getMean() const
{
    Vec mean;
    for (std::size_t i = 0; i < m_vShares.size(); ++i)
        mean = mean + m_vShares[i] * m_vLocal[i];
    return mean;
}

/// Brings the mean to p. With C the covariance of the neighbours x_i, the changes by -w_i (x_i - mean) . C^-1
/// mean are the least in the sum of their squares by the weights w_i.
void NaturalNeighbors::moveMean(const Vec& mean)
{
    SymmetricMatrix covariance = {};
    for (std::size_t i = 0; i < m_vShares.size(); ++i) {
        const Vec d = m_vLocal[i] - mean;
        const std::array<double, 3> coordinates = {d.x, d.y, d.z};
        for (std::size_t row = 0; row < 3; ++row)
            for (std::size_t column = 0; column < 3; ++column)
                covariance[row][column] += m_vShares[i] * coordinates[row] * coordinates[column];
    }
    const std::array<double, 3> x = solve(covariance, {mean.x, mean.y, mean.z});
    const Vec solution = {x[0], x[1], x[2]};
    if (isFinite(solution))
        for (std::size_t i = 0; i < m_vShares.size(); ++i)
            m_vShares[i] *= 1.0 - dot(solution, m_vLocal[i] - mean);
}

} // namespace VORN3D
