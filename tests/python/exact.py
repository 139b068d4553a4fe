"""Arithmetic of its own for the tests: doubles as fractions, in arrays of objects."""

from fractions import Fraction

import numpy as np


def exact(values):
    """The doubles as fractions."""
    return np.vectorize(Fraction, otypes=[object])(values) if np.size(values) else np.empty(np.shape(values), object)


def cross(a, b):
    return np.stack([a[..., i - 2] * b[..., i - 1] - a[..., i - 1] * b[..., i - 2] for i in range(3)], axis=-1)


def dot(a, b):
    return (a * b).sum(axis=-1)


def orientation(a, b, c, d):
    """Six times the signed volume of tetrahedra, positive if a, b, c are counter-clockwise from d."""
    return dot(cross(b - a, c - a), d - a)


def in_sphere(a, b, c, d, e):
    """Positive if e is inside the sphere through the positively oriented a, b, c, d; 0 on it."""
    a, b, c, d = (p - e for p in (a, b, c, d))
    zero = np.zeros_like(a)
    return sum(
        sign * dot(p, p) * orientation(zero, *others)
        for sign, p, others in [(1, a, (b, c, d)), (-1, b, (a, c, d)), (1, c, (a, b, d)), (-1, d, (a, b, c))]
    )
