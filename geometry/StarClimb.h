// A look for a nearer vertex that meets only a part of the tetrahedra around one.
//
// Let v be a vertex and p a point. A neighbour u of v is nearer to p than v iff 2 (p - v) . (u - v) > |u -
// v|^2, that is f(u) = (p - v) . (u - v) / |u - v|^2 > 1/2. The points (u - v) / |u - v|^2, inverted at a
// sphere around v, are the corners of a convex polytope, whose edges are those of the link of v; it is dual
// to the Voronoi cell. (If v is on the hull, v itself, where f is zero, is one more corner.) f is a linear
// function on it, so a corner that is above all corners which an edge joins with it, and above zero, is the
// highest. Climbing from corner to corner thus finds a nearer neighbour, or the certainty that there is none,
// like the simplex method.
//
// f(a) < f(b) is decided by the sign of (p - v) . (a - v) |b - v|^2 - (p - v) . (b - v) |a - v|^2. Let e =
// 2^-53. Differences have relative errors of e. So (p - v) . (a - v) has an error of at most 5e times the sum
// of its terms' magnitudes, a square one of 5e, their product one of 11e, and the difference of two such
// products one of 12e times the sum of both with magnitudes for terms, up to terms of second order. 16e and a
// number that exceeds what underflows cover that and the roundings of the bound itself. What this does not
// decide is left open.
#pragma once

#include "distanceOrder.h"

namespace VORN3D
{

/// What is known about the neighbours of a vertex.
enum class ClimbResult { NEARER_FOUND, NONE_NEARER, UNDECIDED };

/// Looks for a neighbour that comes before `nearest`, starting at a tetrahedron around it. If one is found,
/// replaces `nearest` by it and the tetrahedron by one around it.
ClimbResult climbNearer(const DistanceOrder& order, Distant& nearest, const Tet3*& pTet);

} // namespace VORN3D
