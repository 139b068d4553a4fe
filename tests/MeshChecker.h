// An independent judge of finished triangulations. It reads a mesh through the public interface only,
// evaluates every determinant exactly by its own means (GMP integers behind a floating-point filter) and
// answers with readable messages, at most 20 for a call; no message means no fault.
#pragma once

#include "vorn3d/Vorn_3D.h"

#include <set>
#include <string>
#include <vector>

namespace VORN3D::tests
{

using Faults = std::vector<std::string>;

/// The exact sign of (b - a) x (c - a) . (d - a).
int exactOrientation(const Point3& a, const Point3& b, const Point3& c, const Point3& d);

/// 1 if e lies strictly inside the sphere through the positively oriented a, b, c, d, 0 on it, -1 outside.
int exactInSphere(const Point3& a, const Point3& b, const Point3& c, const Point3& d, const Point3& e);

/// True if all points lie on one plane.
bool areCoplanar(const std::vector<const Point3*>& vPoints);

/// Topology and geometry: links, orientations, empty spheres, hull closed and convex, Euler's relation,
/// nothing covered twice. Meshes of at most 40 vertices are also searched by brute force.
Faults findMeshFaults(const Vorn_3D& dt);

/// The vertices against everything inserted so far, in the order of insertion. `vLeftOut` are the vertices
/// that are stored, but must not be part of the mesh although it is three-dimensional.
Faults findVertexFaults(const Vorn_3D& dt, const std::vector<Point3>& vInput,
                        const std::vector<Point3*>& vHandles, const std::set<const Point3*>& vLeftOut = {});

/// The answer pTet of locate(q) against a search through the whole mesh.
Faults findLocateFaults(const Vorn_3D& dt, const Point3& q, const Tet3* pTet);

} // namespace VORN3D::tests
