#include "LiteralModel.h"

#include "MeshChecker.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace VORN3D::tests
{

namespace
{

using Index = LiteralModel::Index;
using Indices = LiteralModel::Indices;

// The Hilbert curve: digit and next state by octant and state.
constexpr std::uint32_t DIGIT[8][12] = {
    {0, 0, 0, 2, 4, 6, 4, 6, 2, 2, 4, 6}, {1, 7, 3, 3, 3, 5, 7, 7, 5, 1, 5, 1},
    {3, 1, 7, 1, 5, 1, 3, 5, 3, 5, 7, 7}, {2, 6, 4, 0, 2, 2, 0, 4, 4, 6, 6, 0},
    {7, 3, 1, 5, 7, 7, 5, 1, 1, 3, 3, 5}, {6, 4, 2, 4, 0, 4, 6, 0, 6, 0, 2, 2},
    {4, 2, 6, 6, 6, 0, 2, 2, 0, 4, 0, 4}, {5, 5, 5, 7, 1, 3, 1, 3, 7, 7, 1, 3}};
constexpr int NEXT[8][12] = {
    {1, 2, 0, 6, 11, 4, 5, 6, 10, 4, 7, 10}, {2, 6, 9, 0, 11, 4, 7, 1, 3, 4, 2, 3},
    {3, 0, 10, 6, 0, 8, 5, 6, 1, 8, 11, 2},  {2, 7, 9, 11, 7, 8, 3, 10, 1, 8, 2, 6},
    {4, 8, 1, 9, 5, 0, 1, 9, 10, 2, 7, 10},  {5, 8, 1, 0, 9, 6, 1, 4, 3, 7, 5, 3},
    {3, 0, 11, 9, 0, 10, 11, 9, 5, 2, 8, 4}, {5, 7, 11, 8, 7, 6, 11, 10, 9, 3, 5, 4}};

// The corners of each facet as seen from inside.
constexpr Index FACET[4][3] = {{1, 3, 2}, {0, 2, 3}, {0, 3, 1}, {0, 1, 2}};

// One count for all triangulations of a process.
int nextId = 1000;

void distribute(Index first, Index last, Index level, std::vector<Indices>& vLevels)
{
    while (last - first > 1 && level < vLevels.size() - 1) {
        const Index mid = first + (last - first) / 2;
        vLevels[level++].push_back(mid);
        distribute(first, mid, level, vLevels);
        first = mid + 1;
    }
    for (; first < last; ++first)
        vLevels[level].push_back(first);
}

// The order of insertion of n vertices along the curve, from coarse to fine.
Indices getCoarseToFine(std::size_t n)
{
    const double numHalvings = std::ceil(std::log(static_cast<double>(n)) / std::log(2.0));
    std::vector<Indices> vLevels(static_cast<std::size_t>(std::max(numHalvings - 4.0, 0.0)) + 1);
    distribute(0, n, 0, vLevels);
    Indices vOrder;
    for (std::size_t level = 0; level < vLevels.size(); ++level) {
        if (level % 2 == 0)
            std::reverse(vLevels[level].begin(), vLevels[level].end());
        vOrder.insert(vOrder.end(), vLevels[level].begin(), vLevels[level].end());
    }
    return vOrder;
}

} // namespace

// ---- The driver

Indices LiteralModel::insertBatch(const std::vector<Point3>& vPoints)
{
    growBox(vPoints);
    std::vector<std::pair<std::uint32_t, std::size_t>> vOrder;
    for (const Point3& p : vPoints)
        vOrder.emplace_back(getKey(p), vOrder.size());
    std::sort(vOrder.begin(), vOrder.end());
    Indices vHandles(vPoints.size()), vWanted;
    for (const auto& [key, i] : vOrder) {
        const auto [record, bNew] = store(vPoints[i]);
        vHandles[i] = record->second;
        if (bNew)
            vWanted.push_back(record->second);
    }

    Index start;
    if (m_vTets.empty()) {
        if (m_store.size() != vPoints.size() || m_store.size() != vWanted.size())
            vWanted = getVertices();
        start = createInitialTet();
    } else {
        // What earlier calls have left out comes in with the batch that names it.
        if (const Indices vLeftOut = getLeftOut(vHandles); vLeftOut.size() != vWanted.size())
            vWanted = vLeftOut;
        start = vWanted.empty() ? NONE : findNearbyTet(m_vPoints[vWanted.front()]);
    }
    if (start != NONE)
        for (const Index position : getCoarseToFine(vWanted.size()))
            start = insertVertex(vWanted[position], start);
    return vHandles;
}

// Leaves out all but the corners of the first tetrahedron if it makes that.
Index LiteralModel::insertSingle(const Point3& p)
{
    growBox({p});
    const Store::iterator record = store(p).first;
    const Index vertex = record->second;
    if (m_vTets.empty()) {
        createInitialTet();
        return vertex;
    }
    Index start = m_vOneTet[vertex];
    if (start == NONE)
        start = m_vOneTet[(record == m_store.begin() ? std::next(record) : std::prev(record))->second];
    insertVertex(vertex, start != NONE ? start : findNearbyTet(p));
    return vertex;
}

// The first quadruple in curve order that is not coplanar.
Index LiteralModel::createInitialTet()
{
    const Indices v = getVertices();
    const auto& x = m_vPoints;
    for (std::size_t i = 0; i < v.size(); ++i)
        for (std::size_t j = i + 1; j < v.size(); ++j)
            for (std::size_t k = j + 1; k < v.size(); ++k)
                for (std::size_t l = k + 1; l < v.size(); ++l)
                    if (const int sign = exactOrientation(x[v[i]], x[v[j]], x[v[k]], x[v[l]])) {
                        createTet({v[sign > 0 ? i : j], v[sign > 0 ? j : i], v[k], v[l]});
                        return 0;
                    }
    return NONE;
}

// ---- The vertices along the curve

void LiteralModel::growBox(const std::vector<Point3>& vPoints)
{
    if (!m_box.add(vPoints))
        return;
    m_box.enlargeBounds(1.0);
    m_store.clear();
    for (Index vertex = 0; vertex < m_vPoints.size(); ++vertex)
        m_store[{getKey(m_vPoints[vertex]), m_vPoints[vertex]}] = vertex;
}

std::uint32_t LiteralModel::getKey(const Point3& p) const
{
    double aDistance[3] = {p.x() - m_box.getMinX(), p.y() - m_box.getMinY(), p.z() - m_box.getMinZ()};
    double aHalf[3] = {m_box.getRangeX(), m_box.getRangeY(), m_box.getRangeZ()};
    std::uint32_t key = 0;
    int state = 0;
    for (int level = 0; level < 9; ++level) {
        unsigned octant = 0;
        for (int axis = 0; axis < 3; ++axis) {
            aHalf[axis] *= 0.5;
            const bool bUpper = aDistance[axis] >= aHalf[axis];
            aDistance[axis] -= bUpper ? aHalf[axis] : 0.0;
            octant = 2 * octant + (bUpper ? 1 : 0);
        }
        key = 8 * key + DIGIT[octant][state];
        state = NEXT[octant][state];
    }
    return key;
}

std::pair<LiteralModel::Store::iterator, bool> LiteralModel::store(const Point3& p)
{
    const auto result = m_store.try_emplace({getKey(p), p}, m_vPoints.size());
    if (result.second) {
        m_vPoints.push_back(p);
        m_vOneTet.push_back(NONE);
    }
    return result;
}

Indices LiteralModel::getVertices() const
{
    Indices vVertices;
    for (const auto& [place, vertex] : m_store)
        vVertices.push_back(vertex);
    return vVertices;
}

// Forwards from the first vertex of the point's cell, then backwards.
Index LiteralModel::findNearbyTet(const Point3& p) const
{
    Index before = NONE;
    for (const auto& [place, vertex] : m_store)
        if (m_vOneTet[vertex] != NONE) {
            if (place.first >= getKey(p))
                return m_vOneTet[vertex];
            before = m_vOneTet[vertex];
        }
    return before;
}

Indices LiteralModel::getLeftOut(const Indices& vVertices) const
{
    Indices vLeftOut;
    for (const Index vertex : getVertices())
        if (m_vOneTet[vertex] == NONE && std::count(vVertices.begin(), vVertices.end(), vertex) > 0)
            vLeftOut.push_back(vertex);
    return vLeftOut;
}

// ---- One vertex

// Returns the tetrahedron where the next walk starts.
Index LiteralModel::insertVertex(Index vertex, Index start)
{
    const Place place = locate(vertex, start);
    if (place.facet == AT_CORNER)
        return place.tet;
    const Index firstTet = m_vTets.size();
    Index last = NONE;
    if (place.facet == INSIDE)
        insertInside(vertex, place.tet);
    else
        last = insertOutside(vertex, place);
    linkStar(firstTet);
    return last != NONE ? last : m_vTets.size() - 1;
}

LiteralModel::Place LiteralModel::locate(Index vertex, Index tet) const
{
    Index facet = 0;
    for (int numLeft = 4; numLeft > 0; --numLeft, facet = (facet + 1) % 4) {
        const int side = getSide(tet, facet, vertex);
        if (side < 0) {
            const Index beyond = m_vTets[tet].aOpp[facet];
            if (beyond == NONE)
                return {tet, facet};
            facet = getIndexOf(tet, beyond);
            tet = beyond;
            numLeft = 4; // the facet just crossed is one of them
        } else if (side == 0) {
            for (const Index corner : m_vTets[tet].aCorner)
                if (m_vPoints[corner] == m_vPoints[vertex])
                    return {tet, AT_CORNER};
            Index other = NONE;
            bool bBeyond = false;
            for (Index i = 0; i < 4; ++i) {
                const int sideOfI = getSide(tet, i, vertex);
                bBeyond = bBeyond || sideOfI < 0;
                other = sideOfI == 0 && i != facet ? i : other;
            }
            if (!bBeyond && other == NONE)
                return {tet, m_vTets[tet].aOpp[facet] == NONE ? facet : INSIDE};
            if (!bBeyond)
                return turnToHull(tet, facet, other);
        }
    }
    return {tet, INSIDE};
}

// Turns around an edge, away from the facet opp3, until a hull facet comes up; INSIDE if none does.
LiteralModel::Place LiteralModel::turnToHull(Index tet, Index opp3, Index opp2) const
{
    const Index start = tet;
    do {
        const Index next = m_vTets[tet].aOpp[opp2];
        if (next == NONE)
            return {tet, opp2};
        const auto& aCorner = m_vTets[next].aCorner;
        const auto kept = std::find(aCorner.begin(), aCorner.end(), m_vTets[tet].aCorner[opp3]);
        opp3 = getIndexOf(tet, next);
        opp2 = static_cast<Index>(kept - aCorner.begin());
        tet = next;
    } while (tet != start);
    return {tet, INSIDE};
}

void LiteralModel::insertInside(Index vertex, Index tet)
{
    Indices vStack = {tet};
    m_vTets[tet].bDoomed = true;
    while (!vStack.empty()) {
        const Index doomed = vStack.back();
        vStack.pop_back();
        for (Index i = 4; i-- > 0;) {
            const Index neighbor = m_vTets[doomed].aOpp[i];
            if (neighbor != NONE && m_vTets[neighbor].bDoomed)
                continue;
            if (neighbor != NONE && isInConflict(neighbor, vertex)) {
                m_vTets[neighbor].bDoomed = true;
                vStack.push_back(neighbor);
            } else
                buildOn(vertex, {doomed, i}, false);
        }
    }
}

// Returns the last tetrahedron built on a facet from outside, if there is one.
Index LiteralModel::insertOutside(Index vertex, Place seen)
{
    Indices vDoomed, vVisible;
    for (const Index tet : gatherSeenTets(vertex, seen)) {
        m_vTets[tet].bDoomed = isInConflict(tet, vertex);
        (m_vTets[tet].bDoomed ? vDoomed : vVisible).push_back(tet);
    }
    for (Indices vStack = vDoomed; !vStack.empty();) {
        const Index doomed = vStack.back();
        vStack.pop_back();
        for (const Index neighbor : m_vTets[doomed].aOpp)
            if (neighbor != NONE && !m_vTets[neighbor].bDoomed && isInConflict(neighbor, vertex)) {
                m_vTets[neighbor].bDoomed = true;
                vStack.push_back(neighbor);
                vDoomed.push_back(neighbor);
            }
    }

    Index last = NONE;
    for (const Index tet : vVisible)
        for (Index i = 0; i < 4; ++i)
            if (m_vTets[tet].aOpp[i] == NONE && getSide(tet, i, vertex) < 0) {
                last = m_vTets.size();
                buildOn(vertex, {tet, i}, true);
            }
    for (const Index tet : vDoomed)
        for (Index i = 0; i < 4; ++i) {
            const Index beyond = m_vTets[tet].aOpp[i];
            if (getSide(tet, i, vertex) > 0 && (beyond == NONE || !m_vTets[beyond].bDoomed))
                buildOn(vertex, {tet, i}, false);
        }
    return last;
}

// The tetrahedra of the hull facets that the vertex is beyond, across hull edges from the first.
Indices LiteralModel::gatherSeenTets(Index vertex, Place seen) const
{
    struct HullEdge
    {
        Place facet;
        Index opp2;
    };
    Indices vSeen;
    std::vector<HullEdge> vStack;
    std::set<std::set<Index>> edgesMet;
    const auto add = [&](Place facet) {
        if (std::count(vSeen.begin(), vSeen.end(), facet.tet) == 0)
            vSeen.push_back(facet.tet);
        for (Index j = 0; j < 4; ++j) {
            std::set<Index> edge(m_vTets[facet.tet].aCorner.begin(), m_vTets[facet.tet].aCorner.end());
            edge.erase(m_vTets[facet.tet].aCorner[facet.facet]);
            edge.erase(m_vTets[facet.tet].aCorner[j]);
            if (j != facet.facet && edgesMet.insert(edge).second)
                vStack.push_back({facet, j});
        }
    };
    add(seen);
    while (!vStack.empty()) {
        const HullEdge edge = vStack.back();
        vStack.pop_back();
        const Place other = turnToHull(edge.facet.tet, edge.facet.facet, edge.opp2);
        if (getSide(other.tet, other.facet, vertex) < 0)
            add(other);
    }
    return vSeen;
}

// ---- Tetrahedra

void LiteralModel::createTet(const std::array<Index, 4>& aCorner)
{
    for (const Index corner : aCorner)
        m_vOneTet[corner] = m_vTets.size();
    m_vTets.push_back({aCorner, nextId++});
}

// Joins the vertex to a facet that it sees from inside or from outside; what is beyond is the neighbour.
void LiteralModel::buildOn(Index vertex, Place facet, bool bFromOutside)
{
    const auto& [a, b, c] = FACET[facet.facet];
    const auto& aCorner = m_vTets[facet.tet].aCorner;
    const Index tet = m_vTets.size();
    createTet({vertex, aCorner[a], aCorner[bFromOutside ? b : c], aCorner[bFromOutside ? c : b]});
    const Index beyond = bFromOutside ? facet.tet : m_vTets[facet.tet].aOpp[facet.facet];
    m_vTets[tet].aOpp[0] = beyond;
    if (beyond != NONE)
        m_vTets[beyond].aOpp[bFromOutside ? facet.facet : getIndexOf(facet.tet, beyond)] = tet;
}

// New tetrahedra that share an edge besides the new vertex are neighbours.
void LiteralModel::linkStar(Index firstTet)
{
    std::map<std::set<Index>, Place> facetAt;
    for (Index tet = firstTet; tet < m_vTets.size(); ++tet)
        for (Index i = 1; i < 4; ++i) {
            std::set<Index> edge(m_vTets[tet].aCorner.begin() + 1, m_vTets[tet].aCorner.end());
            edge.erase(m_vTets[tet].aCorner[i]);
            const auto [entry, bFirst] = facetAt.try_emplace(edge, Place{tet, i});
            if (!bFirst) {
                m_vTets[tet].aOpp[i] = entry->second.tet;
                m_vTets[entry->second.tet].aOpp[entry->second.facet] = tet;
            }
        }
}

// Positive on the side of the corner opposite.
int LiteralModel::getSide(Index tet, Index facet, Index vertex) const
{
    const auto& [a, b, c] = FACET[facet];
    const auto& aCorner = m_vTets[tet].aCorner;
    return exactOrientation(m_vPoints[aCorner[a]], m_vPoints[aCorner[b]], m_vPoints[aCorner[c]],
                            m_vPoints[vertex]);
}

bool LiteralModel::isInConflict(Index tet, Index vertex) const
{
    const auto& [a, b, c, d] = m_vTets[tet].aCorner;
    return exactInSphere(m_vPoints[a], m_vPoints[b], m_vPoints[c], m_vPoints[d], m_vPoints[vertex]) > 0;
}

Index LiteralModel::getIndexOf(Index neighbor, Index tet) const
{
    const auto& aOpp = m_vTets[tet].aOpp;
    return static_cast<Index>(std::find(aOpp.begin(), aOpp.end(), neighbor) - aOpp.begin());
}

} // namespace VORN3D::tests
