"""Alpha shapes."""

from __future__ import annotations

import functools
from typing import TYPE_CHECKING, Any

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._delaunay import Delaunay
from ._progress import Progress

if TYPE_CHECKING:
    from . import _core

__all__ = ["AlphaShape"]


class AlphaShape:
    """The shape of points in space at a scale: what is left of their triangulation where large spheres are hollow.

    The value of a simplex of the triangulation, be it an edge, a triangle or a tetrahedron, is the squared radius of
    the smallest sphere through its corners with no point inside. The alpha complex has the simplices whose values are
    at most alpha [1]_, and its tetrahedra make up a solid with a closed surface. Values are compared exactly.

    Parameters
    ----------
    points : (n, 3) array_like of float, or Delaunay
        The points, or a triangulation of them, which keeps what is needed for further values of alpha.
    alpha : float, optional
        A squared radius, from 0 to inf; `enclosing_alpha` if not given.
    filled : bool, optional
        Count what the complex encloses to the solid.
    progress : callable or bool, optional
        See `Delaunay`.

    Attributes
    ----------
    tri : Delaunay
        The triangulation. Points that are added to it later count for copies only.
    alpha : float
        The squared radius.
    filled : bool
        Whether the solid is filled.

    Raises
    ------
    ValueError
        If `alpha` is negative or not a number.
    TypeError, MemoryError, KeyboardInterrupt
        See `Delaunay`. The complex is made in a single piece of work that Ctrl-C does not end.

    Notes
    -----
    Points that were scanned from a surface and not from a solid have it as ``AlphaShape(points, filled=True)``.

    References
    ----------
    .. [1] H. Edelsbrunner, E. P. Muecke, "Three-dimensional alpha shapes", 1994.

    Examples
    --------
    >>> import numpy as np
    >>> import vorn3d
    >>> lattice = np.stack(np.meshgrid(*[np.arange(5.0)] * 3), axis=-1).reshape(-1, 3)
    >>> hollow = lattice[(lattice != 2).any(axis=1)]
    >>> shape = vorn3d.AlphaShape(hollow, alpha=0.75)
    >>> round(shape.volume, 3), shape.num_components
    (62.667, 1)
    >>> vorn3d.AlphaShape(shape.tri, alpha=0.75, filled=True).volume
    64.0
    """

    def __init__(
        self,
        points: ArrayLike | Delaunay,
        alpha: float | None = None,
        *,
        filled: bool = False,
        progress: Progress = None,
    ) -> None:
        self.tri = points if isinstance(points, Delaunay) else Delaunay(points, progress=progress)
        self._complex: _core.AlphaComplex = self.tri._compute_once("AlphaComplex", self.tri._core.alpha_complex)
        self.alpha = self.enclosing_alpha if alpha is None else float(alpha)
        self.filled = filled
        if not self.alpha >= 0:
            raise ValueError(f"alpha must be a squared radius from 0 to inf, not {alpha}")
        self._triangles, self._num_regular = self._complex.surface(self.alpha, filled)
        self._num_components, self._components = self._complex.components(self.alpha, filled)

    def __reduce__(self) -> tuple[Any, ...]:
        return functools.partial(type(self), filled=self.filled), (self.tri, self.alpha)

    @property
    def simplices(self) -> NDArray[np.int32]:
        """The surface of the solid, triangles as indices of points, shape (n, 3), counter-clockwise from outside.

        At each edge as many triangles go one way as the other.
        """
        return self._triangles[: self._num_regular]

    @property
    def singular(self) -> NDArray[np.int32]:
        """The triangles of the complex with the solid on neither side, shape (n, 3)."""
        return self._triangles[self._num_regular :]

    @property
    def components(self) -> NDArray[np.int32]:
        """For each simplex of `tri` the number of the part of the solid that it belongs to, shape (nsimplex,): parts
        hang together by facets. -1 where the solid is not."""
        return self._components

    @property
    def num_components(self) -> int:
        """The number of parts of the solid."""
        return self._num_components

    @property
    def volume(self) -> float:
        """The volume of the solid."""
        return self._complex.volume(self.alpha, self.filled)

    @property
    def enclosing_alpha(self) -> float:
        """An alpha for points that were scanned from surfaces: the least at which the complex has closed around all
        voids that last long; inf if there are none.

        How long a void lasts is told by the ratio of the values at which it is filled and closed: the longest must
        have one of 4 at least, others half of its logarithm, too. A rule of thumb.
        """
        return self._complex.enclosing_alpha()

    def critical_alpha(self, num_components: int = 1) -> float:
        """The least alpha whose solid, not filled, contains all points and has at most so many parts.

        Parameters
        ----------
        num_components : int, optional
            At least 1.

        Returns
        -------
        float
            The squared radius; inf if there are no simplices.
        """
        if num_components < 1:
            raise ValueError("num_components must be at least 1")
        return self._complex.critical_alpha(num_components)

    def faces(self, dimension: int) -> tuple[NDArray[np.int32], NDArray[np.float64]]:
        """The simplices of a dimension, whatever alpha is, and their values.

        Parameters
        ----------
        dimension : int
            0 to 3.

        Returns
        -------
        simplices : (n, dimension + 1) ndarray of int32
            Indices of points; those of dimension 3 are the simplices of `tri`.
        values : (n,) ndarray of float64
            Squared radii, rounded up: they are at most alpha where the simplices are in the complex.
        """
        if dimension not in range(4):
            raise ValueError(f"dimension must be 0, 1, 2 or 3, not {dimension}")
        simplices, ranks = self._complex.faces(dimension)
        return simplices, self._complex.values()[ranks]
