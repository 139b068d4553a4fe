#pragma once

#include "../Vorn_3D.h"

#include <vector>

namespace VORN3D
{

/// The density of points, or of mass, at every vertex by the Delaunay tessellation field estimator (DTFE):
///
///     density of vertex i = 4 * mass of i / volume of the tetrahedra around i.
///
/// Interpolated linearly (makeInterpolationMatrix() and its apply()), this is a continuous field whose
/// integral over the hull is the sum of all masses: each tetrahedron contributes its volume times the mean of
/// its four corners.
///
/// Result and masses are indexed by the custom indices of the vertices, as for interpolation. The result has
/// one entry more than the largest of these; where no vertex of the mesh has an index, it is not a number,
/// and everywhere if there is no mesh. Without masses each vertex has the mass 1. Equal points share a vertex
/// with the index of the first, so who wants all their masses to count adds them up there. Negative indices,
/// and a list with too few masses, throw VornException.
///
/// Vertices on the hull have only the tetrahedra on one side of them: the density there is that of the hull
/// cut off from what may be beyond. Volumes have a relative error below 10^-12; a density beyond the range of
/// doubles is infinite. Takes time linear in the size of the mesh.
///
/// Source: W. Schaap, R. van de Weygaert, Continuous fields and discrete samples: reconstruction through
/// Delaunay tessellations, Astronomy and Astrophysics 363 (2000).
VORN3D_GEOMETRY_EXPORT std::vector<double> pointDensity(const Vorn_3D& dt,
                                                        const std::vector<double>& vMasses = {});

} // namespace VORN3D
