"""The convex hull."""

from __future__ import annotations

import numpy as np
from numpy.typing import NDArray

from ._derived import OnDelaunay

__all__ = ["ConvexHull"]


class ConvexHull(OnDelaunay):
    """The convex hull of points in space, with exact facets.

    It takes the place of `scipy.spatial.ConvexHull` for points with three columns.

    Parameters
    ----------
    points : (n, 3) array_like of float, or Delaunay
        The points, or a triangulation of them.
    incremental : bool, optional
        Allow `add_points`.
    qhull_options : str, optional
        As None only.
    progress : callable or bool, optional
        See `Delaunay`. New.

    Attributes
    ----------
    tri : Delaunay
        The triangulation. New.
    ndim : int
        3.
    good : None
        A matter of Qhull's options.

    Raises
    ------
    ValueError, TypeError, MemoryError, KeyboardInterrupt
        See `Delaunay`.

    Notes
    -----
    Which points are corners, and which triangles lie in one facet, is exact; equations, area and volume are rounded.
    Points that do not span space (see `Delaunay.status`) have a hull without facets.

    All points are triangulated first, so that scipy's, which leaves out those inside, is ten times as fast where few
    are on the hull.

    Examples
    --------
    >>> import numpy as np
    >>> import vorn3d
    >>> lattice = np.stack(np.meshgrid(*[np.arange(5.0)] * 3), axis=-1).reshape(-1, 3)
    >>> hull = vorn3d.ConvexHull(lattice)
    >>> len(hull.vertices), len(hull.simplices), hull.volume, hull.area
    (8, 12, 64.0, 96.0)
    >>> [len(facet) for facet in hull.facets]
    [4, 4, 4, 4, 4, 4]
    """

    good = None

    def _polygons(self) -> tuple[NDArray[np.int64], NDArray[np.int32], float, float]:
        return self._compute_once("polygons", self.tri._core.hull_polygons)

    @property
    def facets(self) -> list[NDArray[np.int32]]:
        """The facets, maximal flat polygons: their corners, counter-clockwise from outside. New."""
        starts, corners, _, _ = self._polygons()
        return np.split(corners, starts[1:-1]) if len(corners) else []

    @property
    def vertices(self) -> NDArray[np.int32]:
        """The corners of the hull, ascending, shape (nvertices,). Points within facets and edges are none."""
        return self._compute_once("vertices", lambda: np.unique(self._polygons()[1]))

    def _triangles(self) -> tuple[NDArray[np.int32], NDArray[np.intp]]:
        """The triangles, and for each its facet."""
        return self._compute_once("triangles", self._compute_triangles)

    def _compute_triangles(self) -> tuple[NDArray[np.int32], NDArray[np.intp]]:
        starts, corners, _, _ = self._polygons()
        # A fan for each facet: the first corner and two consecutive others.
        facet = np.repeat(np.arange(len(starts) - 1), np.diff(starts) - 2)
        second = np.arange(len(facet)) + 2 * facet + 1
        return np.column_stack([corners[starts[facet]], corners[second], corners[second + 1]]), facet

    @property
    def simplices(self) -> NDArray[np.int32]:
        """Triangles that make up the facets, shape (nfacet, 3), counter-clockwise from outside."""
        return self._triangles()[0]

    @property
    def nsimplex(self) -> int:
        """The number of triangles."""
        return len(self.simplices)

    @property
    def neighbors(self) -> NDArray[np.int32]:
        """For each triangle those across its edges, shape (nfacet, 3): number k is opposite corner k."""
        return self._compute_once("neighbors", self._compute_neighbors)

    def _compute_neighbors(self) -> NDArray[np.int32]:
        simplices = self.simplices.astype(np.int64)
        sources, targets = np.roll(simplices, -1, axis=1).ravel(), np.roll(simplices, -2, axis=1).ravel()
        edges, twins = sources * self.npoints + targets, targets * self.npoints + sources
        order = np.argsort(edges)
        across = order[np.searchsorted(edges, twins, sorter=order)] // 3
        return across.astype(np.int32).reshape(-1, 3)

    @property
    def equations(self) -> NDArray[np.float64]:
        """The planes of the triangles, [normal, offset], shape (nfacet, 4): the normals have length 1 and point
        outwards. Those of one facet are equal."""
        return self._compute_once("equations", self._compute_equations)

    def _compute_equations(self) -> NDArray[np.float64]:
        simplices, facet = self._triangles()
        # Of the size of 1, so that products neither over- nor underflow.
        exponent = np.frexp(abs(self.points).max(initial=0.0))[1]
        a, b, c = np.moveaxis(np.ldexp(self.points[simplices], -exponent), 1, 0)
        crosses = np.cross(b - a, c - a)
        normals = np.stack([np.bincount(facet, weights=crosses[:, k]) for k in range(3)], axis=-1)
        normals = (normals / np.linalg.norm(normals, axis=1)[:, np.newaxis])[facet]
        first = self.points[simplices[np.searchsorted(facet, facet), 0]]
        return np.column_stack([normals, -np.einsum("ij,ij->i", normals, first)])

    @property
    def coplanar(self) -> NDArray[np.int32]:
        """Points left out by rounding, shape (0, 3): none."""
        return np.empty((0, 3), dtype=np.int32)

    @property
    def area(self) -> float:
        """The area of the surface; good where products of three coordinate differences neither over- nor
        underflow, as is `volume`."""
        return self._polygons()[2]

    @property
    def volume(self) -> float:
        """The volume."""
        return self._polygons()[3]
