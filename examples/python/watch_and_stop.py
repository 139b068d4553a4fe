"""Long work: watched by a function, stopped by it on the way, gone on with, and shared by threads."""

from concurrent.futures import ThreadPoolExecutor

import numpy as np

import vorn3d


class EnoughError(Exception):
    pass


def stop_on_the_way(done: int, total: int) -> None:
    if done > total / 4:
        raise EnoughError


points = np.random.default_rng(1).random((400_000, 3))
tri = vorn3d.Delaunay(np.empty((0, 3)), incremental=True)
try:
    tri.add_points(points, progress=stop_on_the_way)
except EnoughError:
    missing = int((tri.vertex_to_simplex < 0).sum())
    print("stopped on the way:", 0 < missing < 300_000, "and sound:", tri.check())

tri.add_points(np.empty((0, 3)))  # goes on with what is missing
print("complete:", bool((tri.vertex_to_simplex >= 0).all()), tri.status.name)

with ThreadPoolExecutor() as pool:
    found = list(pool.map(tri.find_simplex, np.array_split(points, 4)))
print("every point is in the mesh:", bool((np.concatenate(found) >= 0).all()))
