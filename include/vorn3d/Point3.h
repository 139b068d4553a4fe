#pragma once

#include "Export.h"
#include "Vector3.h"

#include <cfloat>
#include <iosfwd>

namespace VORN3D
{

class StarNumbers;
class Tet3;

/// A point, and as a vertex of a triangulation also a handle into the mesh: it knows one incident
/// tetrahedron.
///
/// Coordinates are in whatever unit the client has; the library neither scales nor rounds them. A
/// triangulation takes all finite doubles, subnormal ones and those close to DBL_MAX included.
///
/// The custom index is free for the user and never interpreted. A triangulation creates its own vertices: the
/// one made for an input point carries that point's custom index.
class VORN3D_EXPORT Point3
{
public:
    /// All coordinates -DBL_MAX, no tetrahedron, custom index -1.
    Point3() : Point3(-DBL_MAX, -DBL_MAX, -DBL_MAX) {}

    /// No tetrahedron, custom index -1.
    Point3(double x, double y, double z)
        : m_aCoordinate{x, y, z}, m_pOneTet(nullptr), m_customIndex(-1), m_starNumber(-1)
    {
    }

    /// Copies coordinates and custom index; a copy is not linked into a mesh.
    Point3(const Point3& other)
        : m_aCoordinate{other.x(), other.y(), other.z()}, m_pOneTet(nullptr),
          m_customIndex(other.m_customIndex), m_starNumber(-1)
    {
    }

    /// Copies everything, the link to the incident tetrahedron included (unlike the copy constructor).
    Point3& operator=(const Point3& other) = default;

    ~Point3() = default;

    /// Takes over the coordinates of `other` and clears the link to the mesh; the custom index stays.
    void init(const Point3& other)
    {
        exchange(other.x(), other.y(), other.z());
        m_pOneTet = nullptr;
    }

    /// Overwrites the coordinates only.
    void exchange(double x, double y, double z)
    {
        m_aCoordinate[0] = x;
        m_aCoordinate[1] = y;
        m_aCoordinate[2] = z;
    }

    /// A coordinate.
    ///@{
    double x() const { return m_aCoordinate[0]; }
    double y() const { return m_aCoordinate[1]; }
    double z() const { return m_aCoordinate[2]; }
    ///@}

    /// All three coordinates at once.
    void xyz(double& x, double& y, double& z) const
    {
        x = m_aCoordinate[0];
        y = m_aCoordinate[1];
        z = m_aCoordinate[2];
    }

    /// The three coordinates in a row; valid as long as the point.
    const double* getCoordinates() const { return m_aCoordinate; }

    /// One tetrahedron that has this vertex as a corner, or null while the point is not part of a mesh.
    /// Valid until the next insertion into the triangulation.
    Tet3* getOneTet() const { return m_pOneTet; }

    /// Kept up to date by the triangulation; clients have no reason to call it.
    void setOneTet(Tet3* pTet) { m_pOneTet = pTet; }

    /// The client's own number for this point; -1 unless set.
    int getCustomIndex() const { return m_customIndex; }
    /// Sets the client's own number, which may be any.
    void setCustomIndex(int index) { m_customIndex = index; }

    /// Exact comparison of the coordinates, 0 and -0 being equal; mesh link and custom index play no role.
    bool operator==(const Point3& other) const
    {
        return x() == other.x() && y() == other.y() && z() == other.z();
    }
    /// The opposite of ==.
    bool operator!=(const Point3& other) const { return !(*this == other); }

    /// Lexicographic order by x, then y, then z.
    bool operator<(const Point3& other) const
    {
        if (x() < other.x() || x() > other.x())
            return x() < other.x();
        if (y() < other.y() || y() > other.y())
            return y() < other.y();
        return z() < other.z();
    }

    /// The point moved by v; not linked into a mesh, custom index -1.
    Point3 operator+(const Vector3& v) const;

    /// The vector from `other` to this point.
    Vector3 operator-(const Point3& other) const;

    /// Prints the coordinates on standard output.
    void debug() const;

private:
    friend class StarNumbers;

    double m_aCoordinate[3];
    Tet3* m_pOneTet;
    int m_customIndex;
    int m_starNumber; // -1 but within an insertion
};

static_assert(sizeof(void*) != 8 || sizeof(Point3) == 40, "the record of the vertex pool");

/// The point's address, a tab and its coordinates.
VORN3D_EXPORT std::ostream& operator<<(std::ostream& os, const Point3& p);

/// The centre of the sphere through four points, in floating-point arithmetic, computed relative to the first
/// one, so that it stays accurate far from the origin. Four coplanar points have none: the result is then not
/// finite, or far away where rounding hides that they are coplanar.
VORN3D_EXPORT Point3 getCircumcenter(const Point3& p0, const Point3& p1, const Point3& p2, const Point3& p3);

} // namespace VORN3D
