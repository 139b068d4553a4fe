"""The triangulation."""

from __future__ import annotations

import enum
from collections.abc import Callable
from typing import TYPE_CHECKING, Any, Literal, NamedTuple, TypeVar

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import _core
from ._arguments import as_points, as_queries, refuse_qhull
from ._progress import Progress, observing

if TYPE_CHECKING:
    import meshio
    import pyvista
    from typing_extensions import Self

__all__ = ["Delaunay", "Location", "LocationKind", "Status"]

T = TypeVar("T")
Order = Literal["curve", "canonical"]

# Matrices whose condition number is above it scipy takes for singular.
_LARGEST_CONDITION = 1 / (1000 * np.finfo(np.float64).eps)

# So many simplices are computed with at a time: few enough for the cache, and for Ctrl-C.
_BLOCK = 1 << 14


class Status(enum.IntEnum):
    """What the points span, as its dimension; only a solid has simplices."""

    EMPTY = -1
    POINT = 0
    LINE = 1
    PLANE = 2
    SOLID = 3


class LocationKind(enum.IntEnum):
    """The kinds of faces of the mesh, of which every point of the hull lies in the relative interior of one."""

    VERTEX = 0
    EDGE = 1
    FACET = 2
    CELL = 3
    OUTSIDE = 4


class Location(NamedTuple):
    """Where points lie.

    Attributes
    ----------
    simplex : (...) ndarray of int32
        A simplex that contains the point; -1 outside the hull.
    kind : (...) ndarray of uint8
        The `LocationKind` of the face on which it lies.
    """

    simplex: NDArray[np.int32]
    kind: NDArray[np.uint8]


class Delaunay:
    """The Delaunay tetrahedralization of points in space.

    The tetrahedra fill the convex hull of the points, every point is a corner of some, and no point lies inside
    the circumscribed sphere of any. All decisions are exact, whatever the points are.

    It takes the place of `scipy.spatial.Delaunay` for points with three columns, with its attributes and methods;
    those that it does not have are marked as new.

    Parameters
    ----------
    points : (n, 3) array_like of float
        The points, finite and less than 2**31. Contiguous doubles are read where they are. There may be none,
        they may be equal, or lie on a line or in a plane: see `status`.
    furthest_site : bool, optional
        As False only.
    incremental : bool, optional
        Allow `add_points`.
    qhull_options : str, optional
        As None only.
    order : {"curve", "canonical"}, optional
        The order of insertion, which decides between the triangulations that points in special position have.
        "curve" is the fastest. "canonical" makes the simplices, their order in the arrays included, a function
        of the points and batches alone, the same on every computer; it takes some 40 % longer. New.
    progress : callable or bool, optional
        Called as ``progress(done, total)``, about twenty times a second, with the numbers of points; what it
        raises ends the call. True shows a bar, of tqdm if it is there, on stderr. New.

    Attributes
    ----------
    ndim : int
        3.
    coplanar : (0, 3) ndarray of int32
        Points left out: none. Those equal to an earlier one have its vertex: see `point_to_vertex`.
    furthest_site : bool
        False.
    paraboloid_scale, paraboloid_shift : float
        1 and 0: the fourth coordinate of a lifted point is its squared length.

    Raises
    ------
    ValueError
        If `points` does not have the right shape, or a coordinate that is not finite, whose row is named; for
        arguments that only Qhull understands.
    TypeError
        If `points` are not real numbers.
    MemoryError
        If the memory does not suffice.
    KeyboardInterrupt
        Within a moment after Ctrl-C. This call has then made no object; others leave theirs valid.

    Notes
    -----
    On well spread points there are 6.75 simplices a point; their time and memory, 600 bytes a point, are in
    proportion. At worst, for points on two skew lines for instance, the number grows with the square.

    Several threads may read one object, or each make their own; Python's lock is free meanwhile. Changing an
    object while it is in use raises RuntimeError.

    A copy, or an object that was pickled, is made anew from the points, and has the same simplices, in the same
    order if that is canonical.

    Examples
    --------
    >>> import numpy as np
    >>> import vorn3d
    >>> points = np.array([[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1], [2, 2, 2]])
    >>> tri = vorn3d.Delaunay(points)
    >>> tri.nsimplex
    2
    >>> points[tri.simplices].shape
    (2, 4, 3)
    >>> tri.find_simplex([[0.1, 0.1, 0.1], [5, 5, 5]]) >= 0
    array([ True, False])
    """

    ndim = 3
    furthest_site = False
    paraboloid_scale = 1.0
    paraboloid_shift = 0.0

    def __init__(
        self,
        points: ArrayLike,
        furthest_site: bool = False,
        incremental: bool = False,
        qhull_options: str | None = None,
        *,
        order: Order = "curve",
        progress: Progress = None,
    ) -> None:
        refuse_qhull(furthest_site=furthest_site, qhull_options=qhull_options)
        if order not in ("curve", "canonical"):
            raise ValueError(f"order must be 'curve' or 'canonical', not {order!r}")
        self._order = order
        self._incremental = bool(incremental)
        self._start_with([as_points(points)], progress)

    def _start_with(self, batches: list[NDArray[np.float64]], progress: Progress) -> None:
        core = _core.Triangulation(self._order == "canonical")
        with observing(progress, "Delaunay") as observer:
            for batch in batches:
                core.insert(batch, observer)
        self._core = core
        self._batches = batches
        self._forget()

    def _forget(self) -> None:
        """What was computed from the mesh is void."""
        self._computed: dict[str, Any] = {}

    def _compute_once(self, name: str, compute: Callable[[], T]) -> T:
        computed = self._computed
        if name not in computed:
            computed.setdefault(name, compute())
        result: T = computed[name]
        return result

    def __reduce__(self) -> tuple[Any, ...]:
        return _rebuild, (type(self), self._batches, self._order, self._incremental)

    def __repr__(self) -> str:
        return f"<{type(self).__name__}: {self.npoints} points, {self.nsimplex} simplices, {self.status.name}>"

    def __enter__(self) -> Self:
        return self

    def __exit__(self, *args: object) -> None:
        self.close()

    def close(self) -> None:
        """End incremental processing: `add_points` is an error from now on. Everything can still be read."""
        self._incremental = False

    def add_points(self, points: ArrayLike, restart: bool = False, *, progress: Progress = None) -> None:
        """Insert more points.

        Parameters
        ----------
        points : (m, 3) array_like of float
            The points, which get the next indices.
        restart : bool, optional
            Triangulate all points anew, in one batch.
        progress : callable or bool, optional
            See `Delaunay`.

        Raises
        ------
        RuntimeError
            Without ``incremental=True``, after `close`, and while another call uses this object.
        Exception
            What else the class raises. If the call was interrupted, or memory ran out, the triangulation is
            valid and all points are counted; those not inserted have a `vertex_to_simplex` of -1. The next call,
            be it with no points, inserts them.
        """
        if not self._incremental:
            raise RuntimeError("incremental mode not enabled or already closed")
        batch = as_points(points)
        if restart:
            self._start_with([np.concatenate([*self._batches, batch])], progress)
            return
        try:
            with observing(progress, "Delaunay") as observer:
                self._core.insert(batch, observer)
        finally:
            if self._core.num_points() > self.npoints:
                self._batches = [*self._batches, batch]
            self._forget()

    @property
    def points(self) -> NDArray[np.float64]:
        """The points, shape (npoints, 3)."""
        if len(self._batches) == 1:
            return self._batches[0]
        return self._compute_once("points", lambda: np.concatenate(self._batches))

    @property
    def npoints(self) -> int:
        """The number of points."""
        return sum(len(batch) for batch in self._batches)

    @property
    def min_bound(self) -> NDArray[np.float64]:
        """The least coordinates, shape (3,); inf without points."""
        bound: NDArray[np.float64] = np.min(self.points, axis=0, initial=np.inf)
        return bound

    @property
    def max_bound(self) -> NDArray[np.float64]:
        """The largest coordinates, shape (3,); -inf without points."""
        bound: NDArray[np.float64] = np.max(self.points, axis=0, initial=-np.inf)
        return bound

    @property
    def status(self) -> Status:
        """What the points span. There are simplices if it is `Status.SOLID`; otherwise all arrays of them are
        empty. New."""
        return Status(self._core.dimension())

    @property
    def nsimplex(self) -> int:
        """The number of simplices."""
        return len(self.simplices)

    def _arrays(self) -> tuple[NDArray[np.int32], NDArray[np.int32], NDArray[np.int32], NDArray[np.int32]]:
        return self._compute_once("arrays", self._core.arrays)

    @property
    def simplices(self) -> NDArray[np.int32]:
        """The corners of the simplices as indices of points, shape (nsimplex, 4): of equal points the first.

        All are positively oriented: from corner 3, corners 0, 1 and 2 appear counter-clockwise.
        """
        return self._arrays()[0]

    @property
    def neighbors(self) -> NDArray[np.int32]:
        """The neighbours of the simplices, shape (nsimplex, 4): number k is opposite corner k, -1 on the hull."""
        return self._arrays()[1]

    @property
    def good(self) -> NDArray[np.int32]:
        """One for each simplex, shape (nsimplex,)."""
        return np.ones(self.nsimplex, dtype=np.int32)

    @property
    def coplanar(self) -> NDArray[np.int32]:
        return np.empty((0, 3), dtype=np.int32)

    @property
    def convex_hull(self) -> NDArray[np.int32]:
        """The facets of the hull as indices of points, shape (nfacets, 3), counter-clockwise from outside."""
        return self._compute_once("convex_hull", self._core.hull_triangles)

    @property
    def vertex_to_simplex(self) -> NDArray[np.int32]:
        """For each point a simplex of which it is a corner, shape (npoints,); -1 if there is none."""
        return self._arrays()[3]

    @property
    def point_to_vertex(self) -> NDArray[np.int32]:
        """For each point the first one equal to it, by which the other arrays call it, shape (npoints,). New."""
        return self._arrays()[2]

    @property
    def vertex_neighbor_vertices(self) -> tuple[NDArray[np.int32], NDArray[np.int32]]:
        """The points joined to each point by an edge, as (indptr, indices) of compressed rows.

        Those of point k are ``indices[indptr[k]:indptr[k + 1]]``; none for one that is equal to an earlier one.
        """
        return self._compute_once("vertex_neighbor_vertices", self._core.vertex_neighbors)

    @property
    def circumcenters(self) -> NDArray[np.float64]:
        """The centres of the circumscribed spheres, shape (nsimplex, 3), rounded. New.

        Very flat simplices have centres far away, perhaps at infinity.
        """
        return self._compute_once("circumspheres", self._core.circumspheres)[:, :3]

    @property
    def transform(self) -> NDArray[np.float64]:
        """The maps to barycentric coordinates, shape (nsimplex, 4, 3).

        With ``A, r = transform[i, :3], transform[i, 3]``, the first three coordinates of x in simplex i are
        ``A @ (x - r)``, and the fourth is what they lack to 1. All NaN where the condition of the map, in the
        1-norm, is beyond 4.5e12, as in scipy.
        """
        return self._compute_once("transform", self._compute_transform)

    def _compute_transform(self) -> NDArray[np.float64]:
        transform = np.empty((self.nsimplex, 4, 3))
        for begin in range(0, self.nsimplex, _BLOCK):
            block = slice(begin, begin + _BLOCK)
            _fill_transform(transform[block], self.points[self.simplices[block]])
        return transform

    @property
    def equations(self) -> NDArray[np.float64]:
        """The hyperplanes through the lifted simplices, [normal, offset], shape (nsimplex, 5).

        The normals have length 1 and point away from the hull of the lifted points; see `lift_points`.
        """
        return self._compute_once("equations", self._compute_equations)

    def _compute_equations(self) -> NDArray[np.float64]:
        spheres = self._compute_once("circumspheres", self._core.circumspheres)
        centers = spheres[:, :3]
        equations = np.empty((len(spheres), 5))
        equations[:, :3] = 2 * centers
        equations[:, 3] = -1
        with np.errstate(all="ignore"):  # flat simplices have centres at infinity
            equations[:, 4] = spheres[:, 3] - np.einsum("ij,ij->i", centers, centers)
            equations /= np.linalg.norm(equations[:, :4], axis=1)[:, np.newaxis]
        return equations

    def lift_points(self, x: ArrayLike) -> NDArray[np.float64]:
        """Lift points to the paraboloid, where simplices are facets of a convex hull.

        Parameters
        ----------
        x : (..., 3) array_like of float
            Points.

        Returns
        -------
        (..., 4) ndarray of float64
            The points with their squared lengths as fourth coordinates.
        """
        points, shape = as_queries(x)
        lifted = np.column_stack([points, np.einsum("ij,ij->i", points, points)])
        return lifted.reshape(*shape, 4)

    def plane_distance(self, xi: ArrayLike) -> NDArray[np.float64]:
        """The distances of a lifted point from the hyperplanes of all simplices.

        Parameters
        ----------
        xi : (..., 3) array_like of float
            Points.

        Returns
        -------
        (..., nsimplex) ndarray of float64
            Positive if the point is inside the circumscribed sphere.
        """
        distances: NDArray[np.float64] = self.lift_points(xi) @ self.equations[:, :4].T + self.equations[:, 4]
        return distances

    def find_simplex(self, xi: ArrayLike, bruteforce: bool = False, tol: float | None = None) -> NDArray[np.int32]:
        """Find the simplices that contain points, exactly.

        Parameters
        ----------
        xi : (..., 3) array_like of float
            Points.
        bruteforce : bool, optional
            Makes no difference.
        tol : float, optional
            As None or 0 only: there is nothing to tolerate.

        Returns
        -------
        (...) ndarray of int32
            For each point a simplex that contains it, in its interior or on its boundary; -1 if it is outside
            the hull or not finite.

        Raises
        ------
        ValueError
            If `xi` does not have three coordinates, or for another `tol`.

        Notes
        -----
        A walk from tetrahedron to tetrahedron [1]_ that starts at the last answer; the points are visited along
        a curve.

        References
        ----------
        .. [1] O. Devillers, S. Pion, M. Teillaud, "Walking in a triangulation", 2002.
        """
        queries, shape = as_queries(xi)
        if tol is not None and tol != 0:
            raise ValueError("tol is for scipy's rounding errors; location is exact here, so it must be None or 0")
        return self._core.find_simplices(queries).reshape(shape)

    def locate(self, xi: ArrayLike, start: ArrayLike | None = None) -> Location:
        """Find out where points lie: inside a simplex, on a facet, on an edge, or at a vertex. New.

        Parameters
        ----------
        xi : (..., 3) array_like of float
            Points.
        start : int or (...) array_like of int, optional
            Simplices close to the points, where the search starts; -1 is none.

        Returns
        -------
        Location
            Arrays `simplex` and `kind`, of shape (...).

        Raises
        ------
        ValueError
            If `xi` does not have three coordinates, or the shape of `start` does not fit.
        IndexError
            If there is no such simplex as `start`.

        Examples
        --------
        >>> import vorn3d
        >>> tri = vorn3d.Delaunay([[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1]])
        >>> tri.locate([[0, 0, 0], [0, 0, 0.5], [0.2, 0.2, 0.2], [2, 0, 0]])
        Location(simplex=array([ 0,  0,  0, -1], dtype=int32), kind=array([0, 1, 3, 4], dtype=uint8))
        """
        queries, shape = as_queries(xi)
        starts = None
        if start is not None:
            starts = np.ascontiguousarray(np.broadcast_to(np.asarray(start, dtype=np.int32), shape)).reshape(-1)
        simplex, kind = self._core.locate(queries, starts)
        return Location(simplex.reshape(shape), kind.reshape(shape))

    def check(self, *, progress: Progress = None) -> bool:
        """Check the mesh, exactly: neighbours, orientations and empty spheres. New.

        Parameters
        ----------
        progress : callable or bool, optional
            As for `Delaunay`, with the numbers of simplices.

        Returns
        -------
        bool
            True; anything else would be a fault of the library, or of the computer.
        """
        with observing(progress, "check") as observer:
            return self._core.check(observer)

    def meshio(self) -> meshio.Mesh:
        """The points and simplices as a `meshio.Mesh`, which writes many file formats. New."""
        import meshio

        return meshio.Mesh(self.points, [("tetra", self.simplices)])

    def pyvista(self) -> pyvista.UnstructuredGrid:
        """The points and simplices as a `pyvista.UnstructuredGrid`. New."""
        import pyvista

        return pyvista.UnstructuredGrid({pyvista.CellType.TETRA: self.simplices}, self.points)


def _fill_transform(transform: NDArray[np.float64], corners: NDArray[np.float64]) -> None:
    origin = corners[:, 3]
    edges = corners[:, :3] - origin[:, np.newaxis]
    inverse = transform[:, :3]
    transform[:, 3] = origin
    with np.errstate(all="ignore"):
        for i in range(3):
            inverse[:, i] = np.cross(edges[:, i - 2], edges[:, i - 1])
        inverse /= np.einsum("ij,ij->i", edges[:, 0], inverse[:, 0])[:, np.newaxis, np.newaxis]
        condition = abs(edges).sum(axis=2).max(axis=1) * abs(inverse).sum(axis=1).max(axis=1)
        transform[~(condition < _LARGEST_CONDITION)] = np.nan


def _rebuild(
    kind: type[Delaunay], batches: list[NDArray[np.float64]], order: Order, incremental: bool
) -> Delaunay:
    triangulation = kind.__new__(kind)
    triangulation._order = order
    triangulation._incremental = incremental
    triangulation._start_with(batches, None)
    return triangulation
