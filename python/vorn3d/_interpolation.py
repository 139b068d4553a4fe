"""Interpolation of values given at points."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Literal

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import _core
from ._arguments import as_doubles, as_points, as_queries
from ._delaunay import Delaunay

if TYPE_CHECKING:
    import scipy.sparse

__all__ = ["LinearNDInterpolator", "NaturalNeighborInterpolator"]

Outside = Literal["fill", "nearest", "clamp"]

_OUTSIDE = {"fill": _core.Outside.NOTHING, "nearest": _core.Outside.NEAREST, "clamp": _core.Outside.CLAMP}


class _Interpolator:
    """What the two have in common; they differ in `_method`, the weights."""

    _method: _core.Method

    def __init__(
        self,
        points: ArrayLike | Delaunay,
        values: ArrayLike,
        fill_value: complex = np.nan,
        rescale: bool = False,
        *,
        outside: Outside = "fill",
    ) -> None:
        if outside not in _OUTSIDE:
            raise ValueError(f"outside must be 'fill', 'nearest' or 'clamp', not {outside!r}")
        self._outside = _OUTSIDE[outside]
        self._scale: NDArray[np.float64] | None = None
        if isinstance(points, Delaunay):
            if rescale:
                raise ValueError("rescale needs the points, not a triangulation of them")
            self.tri = points
        else:
            array = as_points(points)
            if rescale and len(array):
                self._origin, extent = array.mean(axis=0), np.ptp(array, axis=0)
                self._scale = np.where(extent > 0, extent, 1.0)
                array = (array - self._origin) / self._scale
            self.tri = Delaunay(array)
        self.values = np.asarray(values)
        if self.values.shape[:1] != (self.tri.npoints,):
            raise ValueError(f"there are {self.tri.npoints} points; values of shape {self.values.shape} do not fit")
        self.fill_value = fill_value

    def _queries(self, args: tuple[ArrayLike, ...]) -> tuple[NDArray[np.float64], tuple[int, ...]]:
        coordinates = args[0] if len(args) == 1 else args
        if isinstance(coordinates, tuple):
            xi = np.stack(np.broadcast_arrays(*coordinates), axis=-1)
        else:
            xi = np.asanyarray(coordinates)
        queries, shape = as_queries(xi.reshape(-1, 3) if xi.ndim == 1 and xi.size % 3 == 0 else xi)
        return (queries if self._scale is None else (queries - self._origin) / self._scale), shape

    def _tolerance(self) -> float:
        """What rounding may do to a point of the hull."""
        return float(8 * np.finfo(np.float64).eps * abs(self.tri.points).max(initial=0.0))

    def __call__(self, *args: ArrayLike) -> NDArray[Any]:
        """Interpolate.

        Parameters
        ----------
        xi : (..., 3) array_like of float, or x, y, z : array_like of float
            Points, in one array, or three that can be broadcast together.

        Returns
        -------
        (..., *values.shape[1:]) ndarray of float64 or complex128
            The interpolated values. A single point, of shape (3,), counts as one of shape (1, 3).
        """
        queries, shape = self._queries(args)
        complex_ = np.iscomplexobj(self.values)
        values = np.ascontiguousarray(self.values, dtype=np.complex128 if complex_ else np.float64)
        rows: NDArray[np.float64] = values.reshape(len(values), -1).view(np.float64)
        found, exists = self.tri._core.interpolate(self._method, self._outside, self._tolerance(), queries, rows)
        result: NDArray[Any] = found.view(np.complex128) if complex_ else found
        result[~exists] = self.fill_value
        return result.reshape(shape + self.values.shape[1:])

    def interpolation_matrix(self, *args: ArrayLike) -> scipy.sparse.csr_matrix:
        """The weights of the values, to be used again for others. Needs scipy.

        Parameters
        ----------
        xi : (..., 3) array_like of float, or x, y, z : array_like of float
            Points, m in all.

        Returns
        -------
        (m, npoints) scipy.sparse.csr_matrix of float64
            ``matrix @ values`` are the interpolated values. Rows sum to 1, but for those of points to be filled,
            which are empty.
        """
        import scipy.sparse

        queries, _ = self._queries(args)
        starts, columns, weights = self.tri._core.weights(self._method, self._outside, self._tolerance(), queries)
        return scipy.sparse.csr_matrix((weights, columns, starts), shape=(len(queries), self.tri.npoints))


class LinearNDInterpolator(_Interpolator):
    """Piecewise linear interpolation: in each simplex the linear function with the values at its corners.

    It takes the place of `scipy.interpolate.LinearNDInterpolator` for points with three columns.

    Parameters
    ----------
    points : (n, 3) array_like of float, or Delaunay
        Where values are given.
    values : (n, ...) array_like of float or complex
        The values; of equal points the first counts.
    fill_value : float, optional
        The value of points outside the convex hull, with ``outside="fill"``.
    rescale : bool, optional
        Scale the points to the unit cube first.
    outside : {"fill", "nearest", "clamp"}, optional
        What points outside the hull get: `fill_value`, the value of the nearest point, or that of the nearest place
        in the hull. New.

    Attributes
    ----------
    tri : Delaunay
        The triangulation, of the rescaled points.
    values : ndarray
        The values.

    Raises
    ------
    ValueError
        If shapes do not fit.

    Notes
    -----
    In which simplex a point is, and whether it is in the hull at all, is decided exactly; one that is beyond it by
    rounding, at most 8 units in the last place of the largest coordinate, counts as on it. The points themselves get
    their values exactly; linear functions are reproduced to 1e-12. If the points do not span space all places are
    outside.

    Examples
    --------
    >>> import numpy as np
    >>> import vorn3d
    >>> points = np.random.default_rng(0).random((100, 3))
    >>> values = points @ [1, 2, 3]
    >>> f = vorn3d.LinearNDInterpolator(points, values)
    >>> np.round(f([0.5, 0.5, 0.5]), 12)
    array([3.])
    >>> f([2, 0, 0])
    array([nan])
    >>> f.interpolation_matrix(points[:2]).toarray().argmax(axis=1)
    array([0, 1])
    """

    _method = _core.Method.LINEAR


class NaturalNeighborInterpolator(_Interpolator):
    """Sibson's natural neighbour interpolation, smooth but at the points.

    If a point were inserted, its Voronoi cell would take volume from the cells around it; the value is the mean of
    theirs, weighted by what each gives.

    Parameters
    ----------
    points, values, fill_value, rescale, outside
        See `LinearNDInterpolator`.

    Notes
    -----
    The choice of the neighbours is exact, the volumes are rounded. Inside the hull the function is continuous, and
    differentiable but at the points [1]_. On the boundary of the hull it is that of `LinearNDInterpolator`.

    References
    ----------
    .. [1] R. Sibson, "A vector identity for the Dirichlet tessellation", 1980.

    Examples
    --------
    >>> import numpy as np
    >>> import vorn3d
    >>> points = np.random.default_rng(0).random((100, 3))
    >>> f = vorn3d.NaturalNeighborInterpolator(points, points @ [1, 2, 3])
    >>> np.round(f(0.5, 0.5, [0.4, 0.5, 0.6]), 12)
    array([2.7, 3. , 3.3])
    """

    _method = _core.Method.NATURAL
