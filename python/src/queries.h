// Answers for tables of points. All need a Triangulation::Reading.
#pragma once

#include "Triangulation.h"

#include <vorn3d/geometry/interpolate.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D::python
{

/// Rows of doubles that numpy owns.
struct Rows
{
    const double* pData;
    std::size_t numRows;
    std::size_t numColumns;

    const double* operator[](std::size_t i) const { return pData + i * numColumns; }
};

/// Which tetrahedra contain the points, in their interior or on their boundary, and on which kind of face
/// they lie, a LocationKind3. Tetrahedra are -1 outside the hull, for points that are not finite, and where
/// there is no mesh.
struct Locations
{
    std::vector<Index> vSimplices;
    std::vector<std::uint8_t> vKinds;
};

/// pStarts holds a tetrahedron for each point, where the walk starts; if it is null, and for -1, the walk
/// starts at the last answer. Throws std::out_of_range if there is no such tetrahedron.
Locations locate(const Triangulation& triangulation, const Rows& points, const Index* pStarts,
                 const Pulse& pulse);

/// The same without kinds.
std::vector<Index> findSimplices(const Triangulation& triangulation, const Rows& points, const Pulse& pulse);

/// The numbers of the k nearest vertices of each point, -1 where there are not as many; see
/// kNearestVertices().
std::vector<Index> findNearest(const Triangulation& triangulation, const Rows& points, std::size_t k,
                               const Pulse& pulse);

/// How values at vertices are to be interpolated; see makeInterpolationMatrix(). Points that are outside by
/// no more than the tolerance, in each coordinate, have the weights of the nearest place in the hull.
struct Interpolation
{
    InterpolationMethod3 method;
    OutsideHull3 outside;
    double tolerance;
};

/// The values at the points, a row for each, and whether there is one: those without are not numbers.
/// `values` has a row for each point of the triangulation.
struct InterpolatedValues
{
    std::vector<double> vValues;
    std::vector<std::uint8_t> vFound;
};

InterpolatedValues interpolate(const Triangulation& triangulation, const Interpolation& interpolation,
                               const Rows& points, const Rows& values, const Pulse& pulse);

/// The weights in compressed rows: those of point i are vWeights[vStarts[i]] up to, without,
/// vWeights[vStarts[i
/// + 1]], and belong to the vertices with the numbers at the same places of vColumns.
struct Weights
{
    std::vector<std::int64_t> vStarts;
    std::vector<Index> vColumns;
    std::vector<double> vWeights;
};

Weights makeWeights(const Triangulation& triangulation, const Interpolation& interpolation,
                    const Rows& points, const Pulse& pulse);

} // namespace VORN3D::python
