#pragma once

#include "Export.h"
#include "Point3.h"

namespace VORN3D
{

/// A directed line segment; it owns copies of its two end points.
class VORN3D_EXPORT Segment3
{
public:
    /// From src to trg, which may be equal.
    Segment3(const Point3& src, const Point3& trg) : m_src(src), m_trg(trg) {}

    /// The point in which the segment begins.
    Point3 getSrc() const { return m_src; }
    /// The point in which the segment ends.
    Point3 getTrg() const { return m_trg; }

    /// Prints both end points on standard output.
    void debug() const;

private:
    Point3 m_src;
    Point3 m_trg;
};

} // namespace VORN3D
