"""What the convex hull and the Voronoi diagram share: they are read off a triangulation."""

from __future__ import annotations

from collections.abc import Callable
from typing import TYPE_CHECKING, TypeVar

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arguments import refuse_qhull
from ._delaunay import Delaunay
from ._progress import Progress

if TYPE_CHECKING:
    from typing_extensions import Self

__all__ = ["OnDelaunay"]

T = TypeVar("T")


class OnDelaunay:
    """Has a triangulation of its points, `tri`, which keeps what was computed from it until points are added."""

    ndim = 3

    def __init__(
        self,
        points: ArrayLike | Delaunay,
        incremental: bool = False,
        qhull_options: str | None = None,
        *,
        progress: Progress = None,
    ) -> None:
        refuse_qhull(qhull_options=qhull_options)
        if isinstance(points, Delaunay):
            if incremental:
                raise ValueError("whether points can be added was decided when the triangulation was made")
            self.tri = points
        else:
            self.tri = Delaunay(points, incremental=incremental, progress=progress)

    def _compute_once(self, name: str, compute: Callable[[], T]) -> T:
        return self.tri._compute_once(f"{type(self).__name__} {name}", compute)

    def __enter__(self) -> Self:
        return self

    def __exit__(self, *args: object) -> None:
        self.close()

    def close(self) -> None:
        """End incremental processing; see `Delaunay.close`."""
        self.tri.close()

    def add_points(self, points: ArrayLike, restart: bool = False, *, progress: Progress = None) -> None:
        """Insert more points, into `tri`; see `Delaunay.add_points`."""
        self.tri.add_points(points, restart, progress=progress)

    @property
    def points(self) -> NDArray[np.float64]:
        """The points, shape (npoints, 3)."""
        return self.tri.points

    @property
    def npoints(self) -> int:
        """The number of points."""
        return self.tri.npoints

    @property
    def min_bound(self) -> NDArray[np.float64]:
        """The least coordinates, shape (3,)."""
        return self.tri.min_bound

    @property
    def max_bound(self) -> NDArray[np.float64]:
        """The largest coordinates, shape (3,)."""
        return self.tri.max_bound
