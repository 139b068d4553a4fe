"""Checks of arguments, with the errors of `scipy.spatial`."""

from __future__ import annotations

from typing import Any

import numpy as np
from numpy.typing import ArrayLike, NDArray

__all__ = ["as_points", "as_queries", "refuse_qhull"]


def as_doubles(values: ArrayLike) -> NDArray[np.float64]:
    """The values as an array of doubles in C order: itself, if it is one."""
    array = np.asanyarray(values)
    # numpy.ma is imported at its first mention, which takes longer than triangulating a thousand points.
    if type(array) is not np.ndarray and isinstance(array, np.ma.MaskedArray):
        raise ValueError("a masked array has no place for its mask: give its valid rows, or fill it")
    if np.iscomplexobj(array):
        raise TypeError("coordinates must be real numbers")
    return np.require(array, dtype=np.float64, requirements=["C", "A", "E"])


def as_points(points: ArrayLike) -> NDArray[np.float64]:
    """The points as an array of shape (n, 3)."""
    array = as_doubles(points)
    if array.ndim != 2:
        raise ValueError(f"points must have two dimensions, (n, 3); there are {array.ndim}")
    if array.shape[1] != 3:
        raise ValueError(f"points must have three columns; there are {array.shape[1]}")
    return array


def as_queries(xi: ArrayLike) -> tuple[NDArray[np.float64], tuple[int, ...]]:
    """The points as an array of shape (n, 3), and the shape of their answers, (...) for xi of shape (..., 3)."""
    shape = np.shape(xi)
    if shape[-1] != 3:
        raise ValueError(f"xi must have three coordinates in its last dimension; there are {shape[-1]}")
    return as_doubles(xi).reshape(-1, 3), shape[:-1]


def refuse_qhull(**arguments: Any) -> None:
    """Raises ValueError for what only Qhull can do, and has been asked to."""
    for name, value in arguments.items():
        if value is not None and value is not False:
            raise ValueError(f"{name} is an argument of scipy's, for Qhull, and has no meaning here")
