#include "ConvexCell.h"

#include <algorithm>
#include <cmath>

namespace VORN3D
{

namespace
{

// Of a corner's distance from a plane, relative to their distances from the origin. Rounding leaves some
// 2^-50.
constexpr double TOLERANCE = 0x1p-44;

// Of the volume that three unit normals span: with less their planes are nearly parallel to a line.
constexpr double LEAST_DETERMINANT = 0x1p-20;

constexpr std::uint32_t NO_CORNER = 0xffffffff;

double getDistance(const HalfSpace& halfSpace, const Vec& p)
{
    return dot(halfSpace.normal, p) - halfSpace.offset;
}

/// A point near the intersection of three planes moved there by a step of Newton's method. Interpolation on
/// an edge leaves an error as large as the edge is long; this one is as large as the point is far.
Vec moveToPlanes(const Vec& p, const HalfSpace& a, const HalfSpace& b, const HalfSpace& c)
{
    const Vec bc = cross(b.normal, c.normal);
    const double determinant = dot(a.normal, bc);
    if (std::fabs(determinant) < LEAST_DETERMINANT)
        return p;
    const Vec step = getDistance(a, p) * bc + getDistance(b, p) * cross(c.normal, a.normal) +
                     getDistance(c, p) * cross(a.normal, b.normal);
    return p - (1.0 / determinant) * step;
}

} // namespace

ConvexCell::ConvexCell(const Vec& min, const Vec& max, std::uint32_t label, double scale) : m_scale(scale)
{
    // Corner i has the maximum of axis k if bit k of i is set.
    for (unsigned i = 0; i < 8; ++i)
        m_vCorners.push_back(
            {(i & 1U) != 0 ? max.x : min.x, (i & 2U) != 0 ? max.y : min.y, (i & 4U) != 0 ? max.z : min.z});
    m_vFaces = {{{{-1, 0, 0}, -min.x}, label, {0, 4, 6, 2}}, {{{1, 0, 0}, max.x}, label, {1, 3, 7, 5}},
                {{{0, -1, 0}, -min.y}, label, {0, 1, 5, 4}}, {{{0, 1, 0}, max.y}, label, {2, 6, 7, 3}},
                {{{0, 0, -1}, -min.z}, label, {0, 2, 3, 1}}, {{{0, 0, 1}, max.z}, label, {4, 5, 7, 6}}};
}

bool ConvexCell::cut(const HalfSpace& halfSpace, std::uint32_t label)
{
    double tolerance = TOLERANCE;
    do {
        classify(halfSpace, tolerance);
        tolerance *= 16.0;
    } while (!isConsistent());
    if (std::count(m_vSides.begin(), m_vSides.end(), Side::OUTSIDE) == 0)
        return false;
    if (std::count(m_vSides.begin(), m_vSides.end(), Side::INSIDE) == 0) {
        m_vFaces.clear();
        m_vCorners.clear();
        return true;
    }
    m_vCutEdges.clear();
    m_vCrossings.clear();
    for (Face& face : m_vFaces)
        cutFace(halfSpace, face);
    m_vFaces.erase(std::remove_if(m_vFaces.begin(), m_vFaces.end(),
                                  [](const Face& face) { return face.vCorners.size() < 3; }),
                   m_vFaces.end());
    addFaces(halfSpace, label);
    dropUnusedCorners();
    return true;
}

void ConvexCell::classify(const HalfSpace& halfSpace, double relativeTolerance)
{
    m_vDistances.clear();
    m_vSides.clear();
    for (const Vec& corner : m_vCorners) {
        const double distance = getDistance(halfSpace, corner);
        const double tolerance =
            relativeTolerance * (getExtent(corner) + std::fabs(halfSpace.offset) + m_scale);
        m_vDistances.push_back(distance);
        m_vSides.push_back(distance > tolerance    ? Side::OUTSIDE
                           : distance < -tolerance ? Side::INSIDE
                                                   : Side::ON);
    }
}

/// Whether the corners outside are consecutive in each face, as they are but for rounding. They are so at
/// last when the tolerance is so large that all corners are on the plane.
bool ConvexCell::isConsistent() const
{
    return std::all_of(m_vFaces.begin(), m_vFaces.end(), [this](const Face& face) {
        int numChanges = 0;
        bool bBefore = m_vSides[face.vCorners.back()] == Side::OUTSIDE;
        for (const std::uint32_t corner : face.vCorners) {
            const bool bOutside = m_vSides[corner] == Side::OUTSIDE;
            numChanges += bOutside != bBefore ? 1 : 0;
            bBefore = bOutside;
        }
        return numChanges <= 2;
    });
}

/// The corner where the plane crosses an edge of a face.
std::uint32_t ConvexCell::cutEdge(const HalfSpace& halfSpace, std::uint32_t inside, std::uint32_t outside,
                                  const HalfSpace& face)
{
    const std::pair<std::uint32_t, std::uint32_t> ends = std::minmax(inside, outside);
    for (const CutEdge& edge : m_vCutEdges)
        if (edge.ends == ends) {
            // The second face at the edge: all three planes of the corner are known.
            Vec& corner = m_vCorners[edge.corner];
            corner = moveToPlanes(corner, halfSpace, edge.face, face);
            return edge.corner;
        }
    const double share = m_vDistances[inside] / (m_vDistances[inside] - m_vDistances[outside]);
    const auto number = static_cast<std::uint32_t>(m_vCorners.size());
    m_vCorners.push_back(m_vCorners[inside] + share * (m_vCorners[outside] - m_vCorners[inside]));
    m_vCutEdges.push_back({ends, number, face});
    return number;
}

/// Leaves of a face what is inside, and notes where it crosses the plane.
void ConvexCell::cutFace(const HalfSpace& halfSpace, Face& face)
{
    m_vLoop.clear();
    const std::vector<std::uint32_t>& vOld = face.vCorners;
    std::uint32_t leaving = NO_CORNER;
    std::uint32_t coming = NO_CORNER;
    for (std::size_t i = 0; i < vOld.size(); ++i) {
        const std::uint32_t from = vOld[i], to = vOld[(i + 1) % vOld.size()];
        const bool bFromOutside = m_vSides[from] == Side::OUTSIDE;
        const bool bToOutside = m_vSides[to] == Side::OUTSIDE;
        if (!bFromOutside)
            m_vLoop.push_back(from);
        if (bFromOutside == bToOutside)
            continue;
        const std::uint32_t kept = bFromOutside ? to : from;
        const std::uint32_t corner = m_vSides[kept] == Side::ON
                                         ? kept
                                         : cutEdge(halfSpace, kept, bFromOutside ? from : to, face.halfSpace);
        if (corner != kept)
            m_vLoop.push_back(corner);
        (bToOutside ? leaving : coming) = corner;
    }
    if (leaving != coming)
        m_vCrossings.push_back({leaving, coming});
    face.vCorners = m_vLoop;
}

/// Closes the polyhedron by the face whose border the crossings are: one, but for rounding.
void ConvexCell::addFaces(const HalfSpace& halfSpace, std::uint32_t label)
{
    while (!m_vCrossings.empty()) {
        Face face{halfSpace, label, {m_vCrossings.back().coming}};
        std::uint32_t next = m_vCrossings.back().leaving;
        m_vCrossings.pop_back();
        while (next != face.vCorners.front()) {
            face.vCorners.push_back(next);
            const auto it = std::find_if(m_vCrossings.begin(), m_vCrossings.end(),
                                         [&](const Crossing& crossing) { return crossing.coming == next; });
            if (it == m_vCrossings.end())
                break;
            next = it->leaving;
            m_vCrossings.erase(it);
        }
        if (face.vCorners.size() >= 3)
            m_vFaces.push_back(std::move(face));
    }
}

void ConvexCell::dropUnusedCorners()
{
    std::vector<std::uint32_t> vNewNumbers(m_vCorners.size(), NO_CORNER);
    std::vector<Vec> vKept;
    for (Face& face : m_vFaces)
        for (std::uint32_t& corner : face.vCorners) {
            if (vNewNumbers[corner] == NO_CORNER) {
                vNewNumbers[corner] = static_cast<std::uint32_t>(vKept.size());
                vKept.push_back(m_vCorners[corner]);
            }
            corner = vNewNumbers[corner];
        }
    m_vCorners = std::move(vKept);
}

} // namespace VORN3D
