"""Convex hulls and Voronoi diagrams against exact arithmetic."""

import copy
import pickle

import numpy as np
import pytest
from exact import exact, orientation

import vorn3d


def test_hulls_are_exact(points):
    hull = vorn3d.ConvexHull(points)
    corners = exact(points)
    sides = np.sign([orientation(*corners[triangle], corners) for triangle in hull.simplices])
    assert (sides <= 0).all()
    planes = np.unique(sides == 0, axis=0)
    extreme = planes.sum(axis=0) >= 3
    assert hull.vertices.tolist() == sorted(set(hull.tri.point_to_vertex[extreme].tolist()))
    assert len(hull.facets) == len(planes) and len(hull.simplices) == 2 * len(hull.vertices) - 4
    for k in range(3):
        shared = (hull.simplices[:, :, np.newaxis] == hull.simplices[hull.neighbors[:, k], np.newaxis]).any(axis=2)
        assert (shared == (np.arange(3) != k)).all()

    normals, offsets = np.split(hull.equations, [3], axis=1)
    distances = (normals @ points.T + offsets) / abs(points).max()
    assert distances.max() < 1e-14 and abs(distances[sides == 0]).max() < 1e-14
    np.testing.assert_allclose(np.linalg.norm(normals, axis=1), 1, rtol=1e-14)


def test_hulls_follow_their_points():
    tri = vorn3d.Delaunay(np.eye(3), incremental=True)
    hulls = [vorn3d.ConvexHull(tri), vorn3d.ConvexHull(np.eye(3), incremental=True)]
    hulls += [copy.deepcopy(hulls[1]), pickle.loads(pickle.dumps(hulls[1]))]
    for hull in hulls:
        assert hull.facets == [] and hull.volume == 0 and hull.equations.shape == (0, 4)
        hull.add_points(-np.eye(3))
        assert len(hull.facets) == 8 and hull.volume == pytest.approx(4 / 3)
        with hull:
            pass
        with pytest.raises(RuntimeError, match="closed"):
            hull.add_points(np.eye(3))
    for options in ({"incremental": True}, {"qhull_options": "QJ"}):
        with pytest.raises(ValueError):
            vorn3d.ConvexHull(tri, **options)
