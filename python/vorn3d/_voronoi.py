"""The Voronoi diagram."""

from __future__ import annotations

from typing import NamedTuple

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arguments import refuse_qhull
from ._delaunay import Delaunay
from ._derived import OnDelaunay
from ._progress import Progress

__all__ = ["Voronoi"]


class Cells(NamedTuple):
    """Convex polyhedra, one for each point: cell i has faces from ``first_faces[i]`` up to, without,
    ``first_faces[i + 1]``, face k the entries from ``first_corners[k]`` on of `face_corners`."""

    corners: NDArray[np.float64]  # those at infinity, from num_finite_corners on, as unit vectors
    num_finite_corners: int
    first_faces: NDArray[np.int64]
    neighbors: NDArray[np.int32]  # for each face the point in the cell beyond
    first_corners: NDArray[np.int64]
    face_corners: NDArray[np.int32]
    volumes: NDArray[np.float64]


class Voronoi(OnDelaunay):
    """The Voronoi diagram of points in space, with exact topology.

    It takes the place of `scipy.spatial.Voronoi` for points with three columns.

    Parameters
    ----------
    points : (n, 3) array_like of float, or Delaunay
        The points, or a triangulation of them.
    furthest_site : bool, optional
        As False only.
    incremental : bool, optional
        Allow `add_points`.
    qhull_options : str, optional
        As None only.
    progress : callable or bool, optional
        See `Delaunay`. New.

    Attributes
    ----------
    tri : Delaunay
        The triangulation, dual to the diagram. New.
    ndim : int
        3.
    furthest_site : bool
        False.

    Raises
    ------
    ValueError, TypeError, MemoryError, KeyboardInterrupt
        See `Delaunay`. The diagram is made of the triangulation when it is first asked for, in a single piece of work
        that Ctrl-C does not end, and that takes some four times as long as triangulating.

    Notes
    -----
    Points on a common sphere with none inside have one Voronoi vertex in common, however many they are. Which these are
    is decided exactly, so that lattices have the diagram that they should. Coordinates of vertices are rounded.

    Points that do not span space (see `Delaunay.status`) have no vertices and no ridges, and empty regions.

    Examples
    --------
    >>> import numpy as np
    >>> import vorn3d
    >>> lattice = np.stack(np.meshgrid(*[np.arange(3.0)] * 3), axis=-1).reshape(-1, 3)
    >>> vor = vorn3d.Voronoi(lattice)
    >>> vor.vertices.shape
    (8, 3)
    >>> middle = vor.regions[vor.point_region[13]]
    >>> np.ptp(vor.vertices[middle], axis=0)
    array([1., 1., 1.])
    """

    furthest_site = False

    def __init__(
        self,
        points: ArrayLike | Delaunay,
        furthest_site: bool = False,
        incremental: bool = False,
        qhull_options: str | None = None,
        *,
        progress: Progress = None,
    ) -> None:
        refuse_qhull(furthest_site=furthest_site)
        super().__init__(points, incremental, qhull_options, progress=progress)

    def _cells(self) -> Cells:
        return self._compute_once("cells", lambda: Cells(*self.tri._core.voronoi_cells()))

    def _ridges(self) -> NDArray[np.intp]:
        """The faces of the cells, each of which there are two, with the smaller point first."""
        cells = self._cells()
        return self._compute_once("ridges", lambda: np.flatnonzero(cells.neighbors > _owners(cells)))

    @property
    def vertices(self) -> NDArray[np.float64]:
        """The Voronoi vertices, shape (nvertices, 3)."""
        cells = self._cells()
        return cells.corners[: cells.num_finite_corners]

    @property
    def ridge_points(self) -> NDArray[np.int32]:
        """The two points between which each ridge lies, shape (nridges, 2)."""
        return self._compute_once("ridge_points", self._compute_ridge_points)

    def _compute_ridge_points(self) -> NDArray[np.int32]:
        cells, ridges = self._cells(), self._ridges()
        return np.column_stack([_owners(cells)[ridges], cells.neighbors[ridges]]).astype(np.int32)

    @property
    def ridge_vertices(self) -> list[list[int]]:
        """The vertices of each ridge, in order around it; a -1 in front stands for infinity."""
        return self._compute_once("ridge_vertices", self._compute_ridge_vertices)

    def _compute_ridge_vertices(self) -> list[list[int]]:
        cells, ridges = self._cells(), self._ridges()
        vertices = _vertices_or_infinity(cells)
        lists = _split(vertices, cells.first_corners[ridges], cells.first_corners[ridges + 1])
        open_faces = np.searchsorted(cells.first_corners, np.flatnonzero(vertices < 0), side="right") - 1
        for ridge in np.flatnonzero(np.isin(ridges, open_faces)).tolist():
            lists[ridge] = _from_infinity(lists[ridge])
        return lists

    @property
    def ridge_dict(self) -> dict[tuple[int, int], list[int]]:
        """The vertices of the ridge between two points."""
        return self._compute_once(
            "ridge_dict", lambda: {(a, b): v for (a, b), v in zip(self.ridge_points.tolist(), self.ridge_vertices)}
        )

    @property
    def regions(self) -> list[list[int]]:
        """The vertices of the regions, one for each point that is not equal to an earlier one; -1 stands for
        infinity."""
        return self._compute_once("regions", self._compute_regions)

    def _compute_regions(self) -> list[list[int]]:
        cells = self._cells()
        owners = np.repeat(_owners(cells), np.diff(cells.first_corners))
        # One number for a region and a vertex of it. Sorted here: numpy.unique takes ten times as long.
        stride = cells.num_finite_corners + 1
        entries = np.sort(owners * stride + (_vertices_or_infinity(cells) + 1))
        entries = entries[np.diff(entries, prepend=-1) > 0]
        bounds = np.searchsorted(entries, np.arange(self.npoints + 1) * stride)
        points = np.unique(self.tri.point_to_vertex)
        return _split(entries % stride - 1, bounds[points], bounds[points + 1])

    @property
    def point_region(self) -> NDArray[np.intp]:
        """For each point the index of its region, shape (npoints,)."""
        return self._compute_once(
            "point_region", lambda: np.unique(self.tri.point_to_vertex, return_inverse=True)[1].reshape(-1)
        )

    @property
    def volumes(self) -> NDArray[np.float64]:
        """The volumes of the points' regions, shape (npoints,): inf for those without end, 0 for a point that is equal
        to an earlier one. Good where products of four coordinate differences neither over- nor underflow. New."""
        return self._cells().volumes


def _owners(cells: Cells) -> NDArray[np.int64]:
    """For each face the point in whose cell it is."""
    return np.repeat(np.arange(len(cells.first_faces) - 1), np.diff(cells.first_faces))


def _vertices_or_infinity(cells: Cells) -> NDArray[np.int32]:
    """The corners of the faces, -1 for all that are at infinity."""
    return np.where(cells.face_corners < cells.num_finite_corners, cells.face_corners, np.int32(-1))


def _split(entries: NDArray[np.integer], begins: NDArray[np.int64], ends: NDArray[np.int64]) -> list[list[int]]:
    numbers = entries.tolist()
    return [numbers[begin:end] for begin, end in zip(begins.tolist(), ends.tolist())]


def _from_infinity(ring: list[int]) -> list[int]:
    """Corners in order around a ridge, those at infinity in one place and in front."""
    start = next(i for i, vertex in enumerate(ring) if ring[i - 1] == -1 != vertex)
    return [-1, *(vertex for vertex in ring[start:] + ring[:start] if vertex != -1)]
