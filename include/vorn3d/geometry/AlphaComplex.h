#pragma once

#include "../Vorn_3D.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

/// What the solid at some alpha is: the tetrahedra of the complex, or these and what the complex encloses,
/// the tetrahedra from which no way leads out of the hull but through triangles of the complex.
enum class AlphaVoids3 { OPEN, FILLED };

/// Where a triangle of the mesh is at some alpha.
enum class AlphaPlace3 : std::uint8_t {
    OUTSIDE,  ///< neither in the complex nor in the solid
    SINGULAR, ///< in the complex, with none of its tetrahedra in the solid
    REGULAR,  ///< with one tetrahedron in the solid: on its boundary
    INTERIOR  ///< with a tetrahedron of the solid on either side
};

/// A simplex of the mesh with its place in the filtration.
struct AlphaSimplex3
{
    int dimension;        ///< 0 to 3
    std::uint32_t number; ///< among those of its dimension
    std::uint32_t rank;   ///< of its value among all
};

/// The triangles of the complex at some alpha that are not inside the solid.
struct AlphaSurface
{
    /// For each triangle the numbers of its corners, those of regular ones counter-clockwise from outside the
    /// solid: first the regular ones, then the singular ones.
    std::vector<std::array<std::uint32_t, 3>> vTriangles;
    std::size_t numRegular = 0; ///< how many of them are regular

    /// For each regular triangle the tetrahedron of the solid that has it as a facet.
    std::vector<std::uint32_t> vTets;
};

/// A void of the complex, a part of space that it encloses: a class of its homology in dimension 2.
struct AlphaVoid3
{
    std::uint32_t birth; ///< the rank of the triangle that closes it
    std::uint32_t death; ///< the rank of the last tetrahedron that fills it
};

/// The solid as facet-connected components.
struct AlphaComponents
{
    std::uint32_t num = 0; ///< how many there are

    /// For each tetrahedron its component, numbered by their first tetrahedra; NO_INDEX for one that is not
    /// in the solid.
    std::vector<std::uint32_t> vComponents;
};

/// The alpha complexes of all alpha (Edelsbrunner and Muecke 1994).
///
/// The value of an edge, a triangle or a tetrahedron of the mesh is the squared radius of the smallest sphere
/// through its vertices that has no vertex inside; that of a vertex is 0. The complex at alpha has the
/// simplices whose values are at most alpha: alpha is a squared length here.
///
/// Values are compared exactly: ranks are equal if and only if values are, whatever the coordinates. As
/// doubles they are rounded up, so that a double alpha is at least a value if and only if it is at least the
/// value as a double; beyond the range of doubles this is infinity. At alpha 0 the complex is the distinct
/// points, at infinity the whole mesh. Where several vertices lie on one sphere, faces inside have the values
/// of the tetrahedra around, however the mesh divides them. Without a mesh, since all points are in one
/// plane, the complexes have no simplices but the points.
///
/// The object keeps no reference to the triangulation. All members may be called in several threads at once.
/// Members that take an alpha throw VornException if it is negative or not a number.
class VORN3D_GEOMETRY_EXPORT AlphaComplex
{
public:
    /// Points and tetrahedra are numbered as by Vorn_3D::getArrays(); a corner that has no handle in
    /// vUserHandles throws VornException. Takes time in proportion to m log m for a mesh of size m.
    AlphaComplex(const Vorn_3D& dt, const std::vector<Point3*>& vUserHandles);

    /// How many simplices of a dimension, 0 to 3, the mesh has.
    std::size_t getNumSimplices(int dimension) const;

    /// The points of the simplices of a dimension, dimension + 1 each: tetrahedra as in MeshArrays::vCorners;
    /// triangles counter-clockwise from outside their first tetrahedron, by which they are sorted; edges
    /// sorted by their ends, the smaller first; vertices ascending, of equal points the first.
    const std::vector<std::uint32_t>& getCorners(int dimension) const;

    /// The ranks of the simplices of a dimension in the order of values; 0 for vertices.
    const std::vector<std::uint32_t>& getRanks(int dimension) const;

    /// For each rank the value.
    const std::vector<double>& getValues() const { return m_vValues; }

    /// All simplices in an order in which each prefix that ends with a rank is a complex, and faces come
    /// before what they are faces of: by rank, then dimension, then number. Takes linear time.
    std::vector<AlphaSimplex3> filtration() const;

    /// For each triangle its place at alpha.
    std::vector<AlphaPlace3> classifyTriangles(double alpha, AlphaVoids3 voids = AlphaVoids3::OPEN) const;

    /// The surface at alpha. That of the solid is closed: at each edge there are as many regular triangles
    /// that go one way as the other.
    AlphaSurface surface(double alpha, AlphaVoids3 voids = AlphaVoids3::OPEN) const;

    /// The volume of the solid at alpha, as good as doubles are.
    double volume(double alpha, AlphaVoids3 voids = AlphaVoids3::OPEN) const;

    /// The components of the solid at alpha.
    AlphaComponents components(double alpha, AlphaVoids3 voids = AlphaVoids3::OPEN) const;

    /// The least alpha at which all points are in or on the tetrahedra of the complex and these have at most
    /// numComponents components, one at least; infinity if there is no mesh. Greater alphas may have more
    /// components.
    double criticalAlpha(std::size_t numComponents = 1) const;

    /// All voids with birth < death, by their deaths, latest first (persistent homology in dimension 2:
    /// Edelsbrunner, Letscher and Zomorodian 2002).
    std::vector<AlphaVoid3> voids() const;

    /// An alpha for points that were scanned from surfaces: the least at which the complex has closed around
    /// all lasting voids, so that the surface of the filled solid is what was scanned. Infinity if there are
    /// none.
    ///
    /// How long a void lasts is told by the logarithm of its death by its birth. The longest one is lasting
    /// if that ratio is at least 4, the ratio of radii 2, and with it all that last at least half as long and
    /// have such a ratio, too. That is a rule of thumb: points that fill space evenly have no such voids,
    /// those on a surface have one within it, unless the surface is nearer to itself than the points are to
    /// each other.
    double enclosingAlpha() const;

private:
    /// The number of ranks whose values are at most alpha.
    std::uint32_t getNumRanks(double alpha) const;

    /// For each tetrahedron, and in the end for what is beyond the hull, whether it is in the solid.
    std::vector<char> getSolid(double alpha, AlphaVoids3 voids) const;

    /// For the complex of the first numRanks ranks and its solid.
    std::vector<AlphaPlace3> classifyTriangles(std::uint32_t numRanks, AlphaVoids3 voids,
                                               const std::vector<char>& vSolid) const;

    /// The tetrahedra on the two sides of a triangle; beyond the hull the number of tetrahedra.
    std::array<std::uint32_t, 2> getSides(std::size_t triangle) const;

    std::vector<std::array<double, 3>> m_vPoints;
    std::vector<std::uint32_t> m_vNeighbors;
    std::vector<std::size_t> m_vFacetOfTriangle;
    std::array<std::vector<std::uint32_t>, 4> m_avCorners;
    std::array<std::vector<std::uint32_t>, 4> m_avRanks;
    std::vector<double> m_vValues;
};

} // namespace VORN3D
