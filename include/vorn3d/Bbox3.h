#pragma once

#include "Export.h"
#include "Point3.h"

#include <vector>

namespace VORN3D
{

/// An axis-aligned box, closed, that grows with what is added to it.
///
/// The empty box has all minima at DBL_MAX and all maxima at -DBL_MAX, so that the union with it changes
/// nothing. Coordinates, ranges and points of an empty box are those sentinels or made from them.
class VORN3D_EXPORT Bbox3
{
public:
    /// The empty box.
    Bbox3() = default;

    /// The smallest box that contains all the points.
    Bbox3(const std::vector<Point3>& vPoints);

    /// False for the empty box.
    bool isValid() const { return m_minX < DBL_MAX; }

    /// Makes the box contain p; true if that changed the box.
    bool add(const Point3& p);

    /// Makes the box contain all the points; true if that changed the box. No points change nothing.
    bool add(const std::vector<Point3>& vPoints);

    /// Multiplies the range of each axis by 1 + f about its middle: 0.1 makes the box a tenth longer, a
    /// negative f shrinks it. The box must not be empty.
    void enlargeBounds(double f);

    /// Widens this box to contain the other one too, and returns a copy of it.
    Bbox3 operator+(const Bbox3& other);

    /// The corner with the smallest coordinates.
    Point3 getMinPoint() const { return {m_minX, m_minY, m_minZ}; }
    /// The corner with the largest coordinates.
    Point3 getMaxPoint() const { return {m_maxX, m_maxY, m_maxZ}; }

    /// The smallest of the three minima.
    double getMinCoord() const;
    /// The largest of the three maxima.
    double getMaxCoord() const;

    /// Maximum less minimum of an axis.
    ///@{
    double getRangeX() const;
    double getRangeY() const;
    double getRangeZ() const;
    ///@}
    /// The largest of the three ranges.
    double getMaxRange() const;

    /// A minimum or maximum of an axis.
    ///@{
    double getMinX() const { return m_minX; }
    double getMinY() const { return m_minY; }
    double getMinZ() const { return m_minZ; }
    double getMaxX() const { return m_maxX; }
    double getMaxY() const { return m_maxY; }
    double getMaxZ() const { return m_maxZ; }
    ///@}

    /// Prints the two extreme corners on standard output.
    void debug() const;

protected:
    /// Widens a box that is known not to be empty.
    void treatPointForValidBox(const Point3& p);

private:
    void setToPoint(const Point3& p);

    double m_minX = DBL_MAX;
    double m_minY = DBL_MAX;
    double m_minZ = DBL_MAX;
    double m_maxX = -DBL_MAX;
    double m_maxY = -DBL_MAX;
    double m_maxZ = -DBL_MAX;
};

} // namespace VORN3D
