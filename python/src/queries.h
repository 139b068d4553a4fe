// Answers for tables of points. All need a Triangulation::Reading.
#pragma once

#include "Triangulation.h"

namespace VORN3D::python
{

/// Points in space, n rows of three coordinates.
struct Points
{
    const double* pCoordinates;
    std::size_t n;

    Point3 operator[](std::size_t i) const
    {
        const double* p = pCoordinates + 3 * i;
        return {p[0], p[1], p[2]};
    }
};

/// Which tetrahedra contain the points, in their interior or on their boundary; -1 outside the hull, for
/// points that are not finite, and where there is no mesh.
Table<Index> findSimplices(const Triangulation& triangulation, const Points& points, const Pulse& pulse);

/// The same, and for each point which kind of face it lies on: a LocationKind3.
struct Locations
{
    Table<Index> simplices;
    Table<std::uint8_t> kinds;
};

/// pStarts holds a tetrahedron for each point, where the walk starts; null, and -1, leave it to the library.
/// Throws std::out_of_range if there is no such tetrahedron.
Locations locate(const Triangulation& triangulation, const Points& points, const Index* pStarts,
                 const Pulse& pulse);

/// The numbers of the k nearest vertices of each point, -1 where there are not as many; see
/// kNearestVertices().
Table<Index> findNearest(const Triangulation& triangulation, const Points& points, std::size_t k,
                         const Pulse& pulse);

} // namespace VORN3D::python
