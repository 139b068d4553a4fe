#include "MeshChecker.h"

#include <gmpxx.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <climits>
#include <cmath>
#include <functional>
#include <iterator>
#include <numeric>
#include <sstream>

namespace VORN3D::tests
{
namespace
{

using Index = std::size_t;
constexpr Index nowhere = static_cast<Index>(-1);

/// Facet i of a tetrahedron, listed so that corner i lies on its positive side.
constexpr Index facetCorners[4][3] = {{1, 3, 2}, {0, 2, 3}, {0, 3, 1}, {0, 1, 2}};

class Report
{
public:
    template <class... Parts>
    void add(const Parts&... parts)
    {
        if (m_vFaults.size() == 20)
            return;
        std::ostringstream text;
        text.precision(17);
        (text << ... << parts);
        m_vFaults.push_back(text.str());
    }
    bool isEmpty() const { return m_vFaults.empty(); }
    const Faults& get() const { return m_vFaults; }

private:
    Faults m_vFaults;
};

// Exact signs. Each determinant is written once and evaluated in two kinds of numbers.

/// A double together with the sum of the absolute values of all terms that went into it.
struct Estimate
{
    double value;
    double magnitude;
};

Estimate operator+(Estimate a, Estimate b)
{
    return {a.value + b.value, a.magnitude + b.magnitude};
}
Estimate operator-(Estimate a, Estimate b)
{
    return {a.value - b.value, a.magnitude + b.magnitude};
}
Estimate operator*(Estimate a, Estimate b)
{
    return {a.value * b.value, a.magnitude * b.magnitude};
}

template <class Number>
using Row = std::array<Number, 3>;

template <class Number>
Number det3(const Row<Number>& a, const Row<Number>& b, const Row<Number>& c)
{
    const Number yz = b[1] * c[2] - b[2] * c[1];
    const Number zx = b[2] * c[0] - b[0] * c[2];
    const Number xy = b[0] * c[1] - b[1] * c[0];
    return a[0] * yz + a[1] * zx + a[2] * xy;
}

template <class Number>
Number squaredLength(const Row<Number>& a)
{
    return a[0] * a[0] + a[1] * a[1] + a[2] * a[2];
}

struct OrientationDeterminant
{
    template <class Number>
    static Number evaluate(const std::array<Row<Number>, 3>& d)
    {
        return det3(d[0], d[1], d[2]);
    }
};

struct SphereDeterminant
{
    template <class Number>
    static Number evaluate(const std::array<Row<Number>, 4>& d)
    {
        const Number first = squaredLength(d[0]) * det3(d[1], d[2], d[3]);
        const Number second = squaredLength(d[1]) * det3(d[0], d[2], d[3]);
        const Number third = squaredLength(d[2]) * det3(d[0], d[1], d[3]);
        const Number fourth = squaredLength(d[3]) * det3(d[0], d[1], d[2]);
        return first - second + third - fourth;
    }
};

/// The coordinates as integers: all multiplied by the power of two that makes the finest of them whole.
template <Index num>
std::array<Row<mpz_class>, num> toIntegers(const std::array<const double*, num>& vPoints)
{
    int aExponent[num][3];
    double aMantissa[num][3];
    int finest = INT_MAX;
    for (Index p = 0; p < num; ++p)
        for (Index k = 0; k < 3; ++k) {
            aMantissa[p][k] = std::ldexp(std::frexp(vPoints[p][k], &aExponent[p][k]), DBL_MANT_DIG);
            if (aMantissa[p][k] != 0.0)
                finest = std::min(finest, aExponent[p][k]);
        }
    std::array<Row<mpz_class>, num> vIntegers;
    for (Index p = 0; p < num; ++p)
        for (Index k = 0; k < 3; ++k)
            if (aMantissa[p][k] != 0.0) {
                vIntegers[p][k] = aMantissa[p][k];
                vIntegers[p][k] <<= static_cast<mp_bitcnt_t>(aExponent[p][k] - finest);
            }
    return vIntegers;
}

/// The sign of a determinant of the differences between the first points and the last one.
///
/// The filter: no term passes more than 17 roundings, so 64 units of 2^-53 times the magnitude bound the
/// error with room to spare. Differences below 1e50 cannot overflow, and what underflow loses, times the
/// largest factors that may follow, stays below 1e-150.
template <class Determinant, Index num>
int signOf(const std::array<const double*, num>& vPoints)
{
    std::array<Row<Estimate>, num - 1> vEstimates;
    double largest = 0.0;
    for (Index p = 0; p + 1 < num; ++p)
        for (Index k = 0; k < 3; ++k) {
            const double difference = vPoints[p][k] - vPoints[num - 1][k];
            vEstimates[p][k] = {difference, std::fabs(difference)};
            largest = std::max(largest, std::fabs(difference));
        }
    if (largest < 1e50) {
        const Estimate det = Determinant::evaluate(vEstimates);
        if (std::fabs(det.value) > 32 * DBL_EPSILON * det.magnitude + 1e-150)
            return det.value > 0.0 ? 1 : -1;
    }
    const auto vIntegers = toIntegers(vPoints);
    std::array<Row<mpz_class>, num - 1> vDifferences;
    for (Index p = 0; p + 1 < num; ++p)
        for (Index k = 0; k < 3; ++k)
            vDifferences[p][k] = vIntegers[p][k] - vIntegers[num - 1][k];
    return sgn(Determinant::evaluate(vDifferences));
}

int orientation(const double* a, const double* b, const double* c, const double* d)
{
    return signOf<OrientationDeterminant, 4>({b, c, d, a});
}

int inSphere(const double* a, const double* b, const double* c, const double* d, const double* e)
{
    return signOf<SphereDeterminant, 5>({a, b, c, d, e});
}

bool areCollinear(const double* a, const double* b, const double* c)
{
    static const double aProbes[4][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    return std::all_of(std::begin(aProbes), std::end(aProbes),
                       [&](const double* probe) { return orientation(a, b, c, probe) == 0; });
}

// The mesh, copied out of the library's records.

struct Mesh
{
    std::vector<const Point3*> vVertices; ///< ascending addresses
    std::vector<const Tet3*> vTets;       ///< ascending addresses
    std::vector<std::array<Index, 4>> vCorners;
    std::vector<std::array<Index, 4>> vOpp; ///< `nowhere` on the hull

    Index size() const { return vTets.size(); }
    const double* at(Index vertex) const { return vVertices[vertex]->getCoordinates(); }
    const double* corner(Index tet, Index i) const { return at(vCorners[tet][i]); }
    Index facetVertex(Index tet, Index i, Index k) const { return vCorners[tet][facetCorners[i][k]]; }

    /// The side of facet i of a tetrahedron on which q lies: 1 on the inner one, 0 in its plane.
    int side(Index tet, Index i, const double* q) const
    {
        return orientation(at(facetVertex(tet, i, 0)), at(facetVertex(tet, i, 1)), at(facetVertex(tet, i, 2)),
                           q);
    }

    /// The smallest of the four sides: 1 if q is strictly inside, 0 on the boundary, -1 outside.
    int containment(Index tet, const double* q) const
    {
        int smallest = 1;
        for (Index i = 0; i < 4 && smallest >= 0; ++i)
            smallest = std::min(smallest, side(tet, i, q));
        return smallest;
    }

    template <class Visit>
    void forEachHullFacet(Visit visit) const
    {
        for (Index t = 0; t < size(); ++t)
            for (Index i = 0; i < 4; ++i)
                if (vOpp[t][i] == nowhere)
                    visit(t, i);
    }
};

template <class T>
Index find(const std::vector<const T*>& vSorted, const T* p)
{
    const auto it = std::lower_bound(vSorted.begin(), vSorted.end(), p, std::less<const T*>());
    return it != vSorted.end() && *it == p ? static_cast<Index>(it - vSorted.begin()) : nowhere;
}

template <class T>
std::vector<const T*> sortedCopy(const std::vector<T*>& v)
{
    std::vector<const T*> vSorted(v.begin(), v.end());
    std::sort(vSorted.begin(), vSorted.end(), std::less<const T*>());
    return vSorted;
}

void resolveTet(Mesh& mesh, Index t, Report& report)
{
    for (int i = 0; i < 4; ++i) {
        const Tet3* pOpp = mesh.vTets[t]->getOppTet(i);
        const auto k = static_cast<Index>(i);
        mesh.vCorners[t][k] = find<Point3>(mesh.vVertices, mesh.vTets[t]->getCorner(i));
        mesh.vOpp[t][k] = pOpp ? find(mesh.vTets, pOpp) : nowhere;
        if (mesh.vCorners[t][k] == nowhere)
            report.add("tetrahedron ", t, ": corner ", i, " is no vertex of the triangulation");
        if (pOpp && mesh.vOpp[t][k] == nowhere)
            report.add("tetrahedron ", t, ": neighbour ", i, " is not in the list of tetrahedra");
    }
    if (mesh.vTets[t]->hasBeenVisited)
        report.add("tetrahedron ", t, " carries the visited mark");
}

Mesh readMesh(const Vorn_3D& dt, Report& report)
{
    std::vector<Point3*> vVertices;
    std::vector<Tet3*> vTets;
    dt.getVertices(vVertices);
    if (dt.is3D())
        dt.getTetrahedra(vTets);
    Mesh mesh{sortedCopy(vVertices), sortedCopy(vTets), {}, {}};
    if (!std::equal(vTets.begin(), vTets.end(), mesh.vTets.begin()))
        report.add("the tetrahedra are not listed in the order of their addresses");
    if (dt.is3D() && vTets.empty())
        report.add("three-dimensional without a tetrahedron");
    mesh.vCorners.resize(mesh.size());
    mesh.vOpp.resize(mesh.size());
    for (Index t = 0; t < mesh.size(); ++t)
        resolveTet(mesh, t, report);
    return mesh;
}

// Topology.

std::array<Index, 3> sortedFacet(const Mesh& mesh, Index t, Index i)
{
    std::array<Index, 3> v = {mesh.facetVertex(t, i, 0), mesh.facetVertex(t, i, 1),
                              mesh.facetVertex(t, i, 2)};
    std::sort(v.begin(), v.end());
    return v;
}

/// The facet under which the neighbour across facet i sees tetrahedron t.
Index mirrorFacet(const Mesh& mesh, Index t, Index i)
{
    const auto& vOpp = mesh.vOpp[mesh.vOpp[t][i]];
    return static_cast<Index>(std::find(vOpp.begin(), vOpp.end(), t) - vOpp.begin());
}

void checkLinks(const Mesh& mesh, Report& report)
{
    for (Index t = 0; t < mesh.size(); ++t)
        for (Index i = 0; i < 4; ++i) {
            const Index opp = mesh.vOpp[t][i];
            if (opp == nowhere)
                continue;
            const Index mirror = mirrorFacet(mesh, t, i);
            if (mirror == 4)
                report.add("the link of tetrahedron ", t, " across facet ", i, " is not mutual");
            else if (sortedFacet(mesh, t, i) != sortedFacet(mesh, opp, mirror))
                report.add("tetrahedron ", t, ": facet ", i,
                           " does not have the vertices of its neighbour's facet");
        }
}

void checkIncidentTets(const Mesh& mesh, Report& report)
{
    std::vector<bool> vInMesh(mesh.vVertices.size(), false);
    for (const auto& vCorners : mesh.vCorners)
        for (const Index v : vCorners)
            vInMesh[v] = true;
    for (Index v = 0; v < mesh.vVertices.size(); ++v) {
        const Tet3* pTet = mesh.vVertices[v]->getOneTet();
        const Index t = pTet ? find(mesh.vTets, pTet) : nowhere;
        if ((t != nowhere) != vInMesh[v] || (pTet && t == nowhere))
            report.add("vertex ", v, " does not know an incident tetrahedron of the mesh");
        else if (pTet && !pTet->hasVertex(mesh.vVertices[v]))
            report.add("vertex ", v, " is no corner of its incident tetrahedron");
    }
}

/// The tetrahedra around each vertex: those of vertex v are vTets[vFirst[v]] to vTets[vFirst[v + 1] - 1].
struct Stars
{
    explicit Stars(const Mesh& mesh) : vFirst(mesh.vVertices.size() + 2, 0), vTets(4 * mesh.size())
    {
        for (const auto& vCorners : mesh.vCorners)
            for (const Index v : vCorners)
                ++vFirst[v + 2];
        std::partial_sum(vFirst.begin(), vFirst.end(), vFirst.begin());
        for (Index t = 0; t < mesh.size(); ++t)
            for (const Index v : mesh.vCorners[t])
                vTets[vFirst[v + 1]++] = t;
    }
    std::vector<Index> vFirst;
    std::vector<Index> vTets;
};

/// Euler's relation for the link of every vertex (a sphere, or a disc on the hull) and for the whole mesh.
void checkEuler(const Mesh& mesh, Report& report)
{
    const Stars stars(mesh);
    std::vector<Index> vLastSeenBy(mesh.vVertices.size(), nowhere);
    std::vector<Index> vNumHullFacets(mesh.vVertices.size(), 0);
    Index numHullFacets = 0, numVertices = 0, numEdgeEnds = 0;
    mesh.forEachHullFacet([&](Index t, Index i) {
        ++numHullFacets;
        for (Index k = 0; k < 3; ++k)
            ++vNumHullFacets[mesh.facetVertex(t, i, k)];
    });
    for (Index v = 0; v < mesh.vVertices.size(); ++v) {
        const Index numTets = stars.vFirst[v + 1] - stars.vFirst[v];
        Index degree = 0;
        for (Index s = stars.vFirst[v]; s < stars.vFirst[v + 1]; ++s)
            for (const Index w : mesh.vCorners[stars.vTets[s]])
                if (w != v && vLastSeenBy[w] != v) {
                    vLastSeenBy[w] = v;
                    ++degree;
                }
        numVertices += numTets > 0;
        numEdgeEnds += degree;
        const Index numLinkEdges = (3 * numTets + vNumHullFacets[v]) / 2;
        if (numTets > 0 && degree + numTets != numLinkEdges + (vNumHullFacets[v] > 0 ? 1 : 2))
            report.add("the link of vertex ", v, " is no sphere or disc");
    }
    const Index numFacets = (4 * mesh.size() + numHullFacets) / 2;
    if (numVertices + numFacets != numEdgeEnds / 2 + mesh.size() + 1)
        report.add("Euler's relation fails: ", numVertices, " - ", numEdgeEnds / 2, " + ", numFacets, " - ",
                   mesh.size());
}

// Geometry.

void checkOrientations(const Mesh& mesh, Report& report)
{
    for (Index t = 0; t < mesh.size(); ++t) {
        const int sign = mesh.side(t, 3, mesh.corner(t, 3));
        if (sign <= 0)
            report.add("tetrahedron ", t, sign == 0 ? " is flat" : " is negatively oriented");
    }
}

int sphereSide(const Mesh& mesh, Index t, Index vertex)
{
    return inSphere(mesh.corner(t, 0), mesh.corner(t, 1), mesh.corner(t, 2), mesh.corner(t, 3),
                    mesh.at(vertex));
}

void checkLocallyDelaunay(const Mesh& mesh, Report& report)
{
    for (Index t = 0; t < mesh.size(); ++t)
        for (Index i = 0; i < 4; ++i) {
            const Index opp = mesh.vOpp[t][i];
            if (opp == nowhere || opp < t)
                continue;
            const Index far = mesh.vCorners[opp][mirrorFacet(mesh, t, i)];
            if (sphereSide(mesh, t, far) > 0)
                report.add("vertex ", far, " is inside the circumsphere of its neighbour, tetrahedron ", t);
        }
}

struct HullEdge
{
    Index source, target, tet, facet, apex;
    std::pair<Index, Index> ends() const { return std::minmax(source, target); }
    bool operator<(const HullEdge& other) const { return ends() < other.ends(); }
};

std::vector<HullEdge> sortedHullEdges(const Mesh& mesh)
{
    std::vector<HullEdge> vEdges;
    mesh.forEachHullFacet([&](Index t, Index i) {
        for (Index k = 0; k < 3; ++k)
            vEdges.push_back({mesh.facetVertex(t, i, k), mesh.facetVertex(t, i, (k + 1) % 3), t, i,
                              mesh.facetVertex(t, i, (k + 2) % 3)});
    });
    std::sort(vEdges.begin(), vEdges.end());
    return vEdges;
}

/// Closed: every edge of the hull belongs to two facets, which run through it in opposite senses. Convex:
/// neither of the two lies beyond the other.
void checkHull(const Mesh& mesh, Report& report)
{
    const std::vector<HullEdge> vEdges = sortedHullEdges(mesh);
    for (auto first = vEdges.begin(); first != vEdges.end();) {
        const auto last = std::upper_bound(first, vEdges.end(), *first);
        if (last - first != 2 || first->source != first[1].target)
            report.add("hull edge ", first->source, "-", first->target, " is in ", last - first,
                       " facets or runs the same way in both");
        else if (mesh.side(first->tet, first->facet, mesh.at(first[1].apex)) < 0)
            report.add("the hull is not convex at the edge ", first->source, "-", first->target);
        first = last;
    }
}

/// With positive orientations and a closed convex hull, one point covered once proves that all are.
void checkCoveredOnce(const Mesh& mesh, Report& report)
{
    for (const Index t : {Index(0), mesh.size() / 2, mesh.size() - 1}) {
        double aCentre[3] = {0, 0, 0};
        for (Index i = 0; i < 4; ++i)
            for (Index k = 0; k < 3; ++k)
                aCentre[k] += mesh.corner(t, i)[k] / 4;
        if (mesh.containment(t, aCentre) <= 0)
            continue;
        for (Index other = 0; other < mesh.size(); ++other)
            if (other != t && mesh.containment(other, aCentre) >= 0)
                report.add("tetrahedron ", other, " overlaps tetrahedron ", t);
    }
}

void checkByBruteForce(const Mesh& mesh, Report& report)
{
    for (Index v = 0; v < mesh.vVertices.size(); ++v) {
        if (!mesh.vVertices[v]->getOneTet())
            continue;
        for (Index t = 0; t < mesh.size(); ++t)
            if (sphereSide(mesh, t, v) > 0)
                report.add("vertex ", v, " is inside the circumsphere of tetrahedron ", t);
        mesh.forEachHullFacet([&](Index t, Index i) {
            if (mesh.side(t, i, mesh.at(v)) < 0)
                report.add("vertex ", v, " is beyond the hull facet ", i, " of tetrahedron ", t);
        });
    }
}

bool hasCoordinates(const Point3& p, const Point3& q)
{
    return p.x() == q.x() && p.y() == q.y() && p.z() == q.z();
}

bool precedes(const Point3& p, const Point3& q)
{
    return std::lexicographical_compare(p.getCoordinates(), p.getCoordinates() + 3, q.getCoordinates(),
                                        q.getCoordinates() + 3);
}

/// The input positions, equal points together and in the order of insertion.
std::vector<Index> groupEqualPoints(const std::vector<Point3>& vInput)
{
    std::vector<Index> vOrder(vInput.size());
    std::iota(vOrder.begin(), vOrder.end(), Index(0));
    std::stable_sort(vOrder.begin(), vOrder.end(),
                     [&](Index i, Index j) { return precedes(vInput[i], vInput[j]); });
    return vOrder;
}

/// The distinct vertices behind the handles; reports where one does not fit its input point.
std::vector<const Point3*> checkHandles(const std::vector<Point3>& vInput,
                                        const std::vector<Point3*>& vHandles, Report& report)
{
    std::vector<const Point3*> vDistinct;
    Index first = nowhere;
    for (const Index i : groupEqualPoints(vInput)) {
        const Point3* pVtx = vHandles[i];
        if (!pVtx || !hasCoordinates(*pVtx, vInput[i])) {
            report.add("the handle of input point ", i, " has other coordinates");
        } else if (first == nowhere || !hasCoordinates(vInput[first], vInput[i])) {
            first = i;
            vDistinct.push_back(pVtx);
            if (pVtx->getCustomIndex() != vInput[i].getCustomIndex())
                report.add("the vertex of input point ", i, " has custom index ", pVtx->getCustomIndex(),
                           ", not ", vInput[i].getCustomIndex());
        } else if (pVtx != vHandles[first]) {
            report.add("the equal input points ", first, " and ", i, " have different vertices");
        }
    }
    std::sort(vDistinct.begin(), vDistinct.end(), std::less<const Point3*>());
    return vDistinct;
}

} // namespace

int exactOrientation(const Point3& a, const Point3& b, const Point3& c, const Point3& d)
{
    return orientation(a.getCoordinates(), b.getCoordinates(), c.getCoordinates(), d.getCoordinates());
}

int exactInSphere(const Point3& a, const Point3& b, const Point3& c, const Point3& d, const Point3& e)
{
    return inSphere(a.getCoordinates(), b.getCoordinates(), c.getCoordinates(), d.getCoordinates(),
                    e.getCoordinates());
}

bool areCoplanar(const std::vector<const Point3*>& vPoints)
{
    std::vector<const double*> vBasis;
    for (const Point3* p : vPoints) {
        const double* q = p->getCoordinates();
        if (vBasis.size() == 3 && orientation(vBasis[0], vBasis[1], vBasis[2], q) != 0)
            return false;
        if (vBasis.empty() || (vBasis.size() == 1 && !std::equal(q, q + 3, vBasis[0])) ||
            (vBasis.size() == 2 && !areCollinear(vBasis[0], vBasis[1], q)))
            vBasis.push_back(q);
    }
    return true;
}

Faults findMeshFaults(const Vorn_3D& dt)
{
    Report report;
    const Mesh mesh = readMesh(dt, report);
    if (report.isEmpty())
        checkLinks(mesh, report);
    if (!report.isEmpty() || mesh.size() == 0)
        return report.get();
    checkIncidentTets(mesh, report);
    checkEuler(mesh, report);
    checkOrientations(mesh, report);
    checkLocallyDelaunay(mesh, report);
    checkHull(mesh, report);
    checkCoveredOnce(mesh, report);
    if (mesh.vVertices.size() <= 40)
        checkByBruteForce(mesh, report);
    return report.get();
}

Faults findVertexFaults(const Vorn_3D& dt, const std::vector<Point3>& vInput,
                        const std::vector<Point3*>& vHandles, const std::set<const Point3*>& vLeftOut)
{
    Report report;
    std::vector<Point3*> vVertices;
    dt.getVertices(vVertices);
    const std::vector<const Point3*> vSorted = sortedCopy(vVertices);
    if (vHandles.size() != vInput.size())
        report.add(vInput.size(), " input points have ", vHandles.size(), " handles");
    else if (checkHandles(vInput, vHandles, report) != vSorted)
        report.add("the ", vSorted.size(), " listed vertices are not the distinct input points, each once");
    if (!dt.is3D() && !areCoplanar(vSorted))
        report.add("not three-dimensional although the points are not coplanar");
    for (const Point3* pVtx : vSorted)
        if ((pVtx->getOneTet() != nullptr) != (dt.is3D() && vLeftOut.count(pVtx) == 0))
            report.add("the vertex with custom index ", pVtx->getCustomIndex(),
                       pVtx->getOneTet() ? " should not be" : " is not", " in the mesh");
    return report.get();
}

Faults findLocateFaults(const Vorn_3D& dt, const Point3& q, const Tet3* pTet)
{
    Report report;
    const Mesh mesh = readMesh(dt, report);
    const bool bVertex = std::any_of(mesh.vVertices.begin(), mesh.vVertices.end(), [&](const Point3* pVtx) {
        return pVtx->getOneTet() && hasCoordinates(*pVtx, q);
    });
    bool bInside = mesh.size() > 0 && std::isfinite(q.x()) && std::isfinite(q.y()) && std::isfinite(q.z());
    mesh.forEachHullFacet(
        [&](Index t, Index i) { bInside = bInside && mesh.side(t, i, q.getCoordinates()) > 0; });
    const Index t = pTet ? find(mesh.vTets, pTet) : nowhere;
    if ((pTet != nullptr) != (bVertex || bInside))
        report.add("locate(", q.x(), ", ", q.y(), ", ", q.z(), ") is", pTet ? " not" : "", " null");
    else if (pTet && t == nowhere)
        report.add("locate() answers with a tetrahedron that is not in the mesh");
    else if (pTet && (mesh.containment(t, q.getCoordinates()) < 0 || (bVertex && !pTet->hasVertex(q))))
        report.add("locate(", q.x(), ", ", q.y(), ", ", q.z(), ") answers with a tetrahedron elsewhere");
    return report.get();
}

} // namespace VORN3D::tests
