// The exact squared radius of the smallest sphere through the vertices of an edge, a triangle or a
// tetrahedron.
//
// It is a fraction of integers: the points' differences are taken as multiples of a power of two, with 62
// bits where they span no more, otherwise with as many as it takes, up to all 2,098 of finite doubles.
#pragma once

#include "LongFloat.h"
#include "predicates/ExactSign.h"

namespace VORN3D
{

/// An edge, a triangle or a tetrahedron, not degenerate, by the coordinates of its vertices in any order.
struct SimplexPoints
{
    PointArray<4> apPoint; ///< the first numPoints
    int numPoints;         ///< 2 to 4
};

/// The leading digits of the squared radius, and so nearly always its order among others.
LongQuotient getSquaredRadius(const SimplexPoints& simplex);

/// -1, 0 or 1: the squared radius of a is less than that of b, equal, greater.
int compareSquaredRadii(const SimplexPoints& a, const SimplexPoints& b);

} // namespace VORN3D
