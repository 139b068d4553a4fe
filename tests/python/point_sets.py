"""Point sets in special and general position."""

import numpy as np


def lattice(*sizes):
    return np.stack(np.meshgrid(*map(np.arange, sizes), indexing="ij"), axis=-1).reshape(-1, 3).astype(float)


def on_sphere(n):
    normals = np.random.default_rng(3).normal(size=(n, 3))
    return normals / np.linalg.norm(normals, axis=1)[:, np.newaxis]


POINT_SETS = {
    "uniform": np.random.default_rng(1).random((300, 3)),
    "lattice": lattice(6, 6, 6),
    "sphere": on_sphere(200),
    "duplicates": np.repeat(lattice(3, 3, 3), 4, axis=0)[::-1],
    "subnormal": lattice(4, 4, 4) * 5e-324,
    "huge": (lattice(4, 4, 4) - 1.5) * 1e307,
    "one off a plane": np.vstack([lattice(7, 7, 1), [[3, 3, 1e-200]]]),
}
