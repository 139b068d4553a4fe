"""Convex hulls, Voronoi diagrams and alpha shapes against exact arithmetic."""

import copy
import itertools
import pickle
from fractions import Fraction

import numpy as np
import pytest
from exact import cross, dot, exact, orientation
from point_sets import POINT_SETS, on_sphere

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


def centers(a, b, c, d):
    """The exact centres of spheres through four points."""
    b, c, d = b - a, c - a, d - a
    sums = sum(dot(p, p)[:, np.newaxis] * cross(q, r) for p, q, r in [(b, c, d), (c, d, b), (d, b, c)])
    return a + sums / (2 * dot(b, cross(c, d)))[:, np.newaxis]


def test_diagrams_are_exact(points):
    vor = vorn3d.Voronoi(points)
    simplices, corners = vor.tri.simplices, exact(points)
    on_sphere, around = {}, {}  # points by centres, centres by edges
    for center, simplex in zip(centers(*np.moveaxis(corners[simplices], 1, 0)).tolist(), simplices.tolist()):
        on_sphere.setdefault(tuple(center), set()).update(simplex)
        for edge in itertools.combinations(sorted(simplex), 2):
            around.setdefault(edge, set()).add(tuple(center))

    found = [set() for _ in vor.vertices]
    for point in np.unique(vor.tri.point_to_vertex).tolist():
        for vertex in vor.regions[vor.point_region[point]]:
            if vertex >= 0:
                found[vertex].add(point)
    center_of = {frozenset(members): center for center, members in on_sphere.items()}
    centers_found = [center_of[frozenset(members)] for members in found]
    assert len(set(centers_found)) == len(on_sphere) == len(found)
    expected = np.array(centers_found, dtype=float)
    tolerance = 1e-9 * np.maximum(abs(points).max(), abs(expected).max(axis=1)) + 5e-324
    assert (abs(vor.vertices - expected).max(axis=1) <= tolerance).all()

    beside = {}  # by edges of the hull, the third corners of the triangles there
    for facet in vor.tri.convex_hull.tolist():
        for k in range(3):
            beside.setdefault(tuple(sorted((facet[k - 2], facet[k - 1]))), []).append(facet[k])
    num_planes = {edge: 1 + (orientation(*corners[[*edge, *apexes]]) != 0) for edge, apexes in beside.items()}
    ridges = {tuple(sorted(pair)): ridge for pair, ridge in vor.ridge_dict.items()}
    assert ridges.keys() == {edge for edge, c in around.items() if len(c) + num_planes.get(edge, 0) >= 3}
    assert len(vor.ridge_points) == len(vor.ridge_vertices) == len(ridges)
    for edge, ridge in ridges.items():
        is_open = ridge[0] == -1
        chain = ridge[1:] if is_open else ridge
        assert is_open == (edge in beside) and -1 not in chain
        assert sorted(centers_found[v] for v in chain) == sorted(around[edge])
        # Neighbours have the three points of an edge of the diagram in common.
        following = chain[1:] if is_open else chain[1:] + chain[:1]
        assert all(len(found[v] & found[w]) >= 3 for v, w in zip(chain, following))


def test_regions_have_their_volumes():
    vor = vorn3d.Voronoi(POINT_SETS["uniform"])
    for region, volume in zip(vor.regions, vor.volumes):
        assert (-1 in region) == np.isinf(volume)
        if -1 not in region:
            assert vorn3d.ConvexHull(vor.vertices[region]).volume == pytest.approx(volume, rel=1e-9)
    flat = vorn3d.Voronoi(np.eye(3))
    assert flat.regions == [[], [], []] and len(flat.vertices) == len(flat.ridge_vertices) == 0


def test_alpha_shapes_are_exact(points):
    shape = vorn3d.AlphaShape(points, alpha=np.inf)
    tri, corners = shape.tri, exact(points)
    simplices, radii = shape.faces(3)
    assert (simplices == tri.simplices).all()
    expected = dot(*[centers(*np.moveaxis(corners[simplices], 1, 0)) - corners[simplices[:, 0]]] * 2)
    finite = np.isfinite(radii)
    assert (finite == (expected <= Fraction(np.finfo(float).max))).all()
    assert (exact(radii[finite]) >= expected[finite]).all()
    assert (exact(np.nextafter(radii[finite], 0)) < expected[finite]).all()
    volumes = orientation(*np.moveaxis(corners[simplices], 1, 0))

    for alpha in [0.0, *np.sort(radii)[:: max(1, len(radii) // 4)], np.inf]:
        shape = vorn3d.AlphaShape(tri, alpha)
        solid = radii <= alpha
        assert ((shape.components >= 0) == solid).all()
        assert shape.num_components == len(set(shape.components[solid].tolist()))
        beside = np.where(tri.neighbors >= 0, shape.components[tri.neighbors], -1)[solid]
        assert ((beside == -1) | (beside == shape.components[solid][:, np.newaxis])).all()
        # The surface is the boundary of the solid, and encloses its volume.
        assert len(shape.simplices) == (beside == -1).sum()
        cones = orientation(*(corners[shape.simplices[:, i]] for i in (0, 2, 1)), corners[:1])
        assert cones.sum() == volumes[solid].sum()


def test_scanned_surfaces_are_found():
    shell = on_sphere(500)
    shape = vorn3d.AlphaShape(shell, filled=True)
    assert shape.alpha == shape.enclosing_alpha and shape.num_components == 1
    hull = vorn3d.ConvexHull(shape.tri)
    assert shape.volume == pytest.approx(hull.volume, rel=0.05) and len(shape.simplices) >= len(hull.simplices)
    assert vorn3d.AlphaShape(shape.tri, shape.alpha).volume < 0.5 * shape.volume
    assert shape.critical_alpha(1) >= shape.critical_alpha(1000)
    copied = pickle.loads(pickle.dumps(shape))
    assert (copied.alpha, copied.filled, copied.volume) == (shape.alpha, True, shape.volume)
    for call in (
        lambda: vorn3d.AlphaShape(shell, -1.0),
        lambda: vorn3d.AlphaShape(shell, np.nan),
        lambda: shape.faces(4),
        lambda: shape.critical_alpha(0),
    ):
        with pytest.raises(ValueError):
            call()
    flat = vorn3d.AlphaShape(np.eye(3))
    assert flat.alpha == np.inf and flat.volume == 0 and len(flat.simplices) == len(flat.components) == 0
