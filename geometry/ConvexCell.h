// A convex polyhedron that is cut by planes, in doubles.
#pragma once

#include "vectors.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace VORN3D
{

/// The points x with dot(normal, x) <= offset; the normal has length 1.
struct HalfSpace
{
    Vec normal;
    double offset;
};

/// A closed polyhedron around the origin or elsewhere, whose faces have labels. A corner that is within
/// rounding of a cutting plane, by its distance from the origin or a length that is given, counts as on it,
/// and what has no extent beside it is left out: a cut by a plane that only touches changes nothing.
class ConvexCell
{
public:
    struct Face
    {
        HalfSpace halfSpace;
        std::uint32_t label;
        std::vector<std::uint32_t> vCorners; ///< counter-clockwise from outside
    };

    /// The box between two corners. Its six faces have the label. Nothing much smaller than `scale` is
    /// wanted around the origin.
    ConvexCell(const Vec& min, const Vec& max, std::uint32_t label, double scale);

    /// Cuts off what is outside the half-space. The new face has the label. False if that is nothing.
    bool cut(const HalfSpace& halfSpace, std::uint32_t label);

    bool isEmpty() const { return m_vFaces.empty(); }
    const std::vector<Face>& getFaces() const { return m_vFaces; }
    const std::vector<Vec>& getCorners() const { return m_vCorners; }

private:
    enum class Side : std::uint8_t { INSIDE, ON, OUTSIDE };

    /// Where a face crosses the cutting plane: it leaves at one corner and comes back at the other.
    struct Crossing
    {
        std::uint32_t leaving;
        std::uint32_t coming;
    };

    /// A new corner on an edge that is cut; ends in the order of their numbers, and a face at the edge.
    struct CutEdge
    {
        std::pair<std::uint32_t, std::uint32_t> ends;
        std::uint32_t corner;
        HalfSpace face;
    };

    void classify(const HalfSpace& halfSpace, double relativeTolerance);
    bool isConsistent() const;
    std::uint32_t cutEdge(const HalfSpace& halfSpace, std::uint32_t inside, std::uint32_t outside,
                          const HalfSpace& face);
    void cutFace(const HalfSpace& halfSpace, Face& face);
    void addFaces(const HalfSpace& halfSpace, std::uint32_t label);
    void dropUnusedCorners();

    double m_scale;
    std::vector<Vec> m_vCorners;
    std::vector<Face> m_vFaces;

    // Of the cut under way.
    std::vector<double> m_vDistances;
    std::vector<Side> m_vSides;
    std::vector<CutEdge> m_vCutEdges;
    std::vector<Crossing> m_vCrossings;
    std::vector<std::uint32_t> m_vLoop;
};

} // namespace VORN3D
