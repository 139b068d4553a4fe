"""Nearest neighbours."""

from __future__ import annotations

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arguments import as_queries
from ._delaunay import Delaunay

__all__ = ["nearest"]


def nearest(triangulation: Delaunay | ArrayLike, xi: ArrayLike, k: int | None = None) -> NDArray[np.int32]:
    """The points nearest to others, exactly: distances are compared as real numbers.

    Parameters
    ----------
    triangulation : Delaunay or (n, 3) array_like of float
        The points to choose from; an array is triangulated first.
    xi : (..., 3) array_like of float
        The points whose nearest ones are wanted, anywhere in space.
    k : int, optional
        How many are wanted of each, at least 1.

    Returns
    -------
    (...) or (..., k) ndarray of int32
        Indices of points, nearest first; of equally distant ones that with the smaller coordinates, compared
        in turn, first; of equal points the first. -1 where there are not as many, where `xi` is not finite,
        and if the points do not span space.

    Raises
    ------
    ValueError
        If `xi` does not have three coordinates, or k is less than 1.

    Notes
    -----
    Each vertex of a Delaunay triangulation but the nearest has a neighbour that is nearer, so that the search
    is a walk along edges. On well spread points it takes a few steps, and ``k log k`` for further ones.

    Examples
    --------
    >>> import vorn3d
    >>> cube = [[x, y, z] for x in (0, 1) for y in (0, 1) for z in (0, 1)]
    >>> vorn3d.nearest(cube, [0.9, 0.2, -7])
    array(4, dtype=int32)
    >>> vorn3d.nearest(cube, [[0, 0, 0], [9, 9, 9]], k=2)
    array([[0, 1],
           [7, 3]], dtype=int32)
    """
    if not isinstance(triangulation, Delaunay):
        triangulation = Delaunay(triangulation)
    if k is not None and k < 1:
        raise ValueError("k must be at least 1")
    queries, shape = as_queries(xi)
    found = triangulation._core.nearest(queries, 1 if k is None else k)
    return found.reshape(shape if k is None else (*shape, k))
