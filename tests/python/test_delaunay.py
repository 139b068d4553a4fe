"""Meshes, and the arrays and answers about them, against exact arithmetic that shares nothing with the library."""

import copy
import pickle

import numpy as np
import pytest
from exact import dot, exact, in_sphere, orientation
from hypothesis import given, settings
from hypothesis import strategies as st
from hypothesis.extra.numpy import arrays
from point_sets import POINT_SETS, lattice

import vorn3d


def rows(array):
    return set(map(tuple, array.tolist()))


def assert_sound(tri):
    """The tetrahedra fill the hull, are linked, positively oriented, and their spheres empty."""
    points, simplices, neighbors = exact(tri.points), tri.simplices, tri.neighbors
    corners = [points[simplices[:, i]] for i in range(4)]
    volumes = orientation(*corners)
    assert (volumes > 0).all()

    outside = []
    for i in range(4):
        inner = np.flatnonzero(neighbors[:, i] >= 0)
        beyond = neighbors[inner, i]
        back = neighbors[beyond] == inner[:, np.newaxis]
        assert (back.sum(axis=1) == 1).all()
        facets = np.delete(simplices, i, axis=1)
        assert (np.sort(facets[inner]) == np.sort(simplices[beyond][~back].reshape(-1, 3))).all()
        opposite = points[simplices[beyond][back]]
        assert (in_sphere(*(c[inner] for c in corners), opposite) <= 0).all()
        outside += map(frozenset, facets[neighbors[:, i] < 0])

    # A closed surface with the volume of the tetrahedra, seen from a point inside or on it.
    hull = tri.convex_hull
    assert {frozenset(facet) for facet in hull.tolist()} == set(outside)
    edges = np.concatenate([hull[:, [0, 1]], hull[:, [1, 2]], hull[:, [2, 0]]])
    assert rows(edges) == rows(edges[:, ::-1]) and len(rows(edges)) == len(edges)
    cones = orientation(*(points[hull[:, i]] for i in (0, 2, 1)), points[:1])
    assert (cones >= 0).all() and cones.sum() == volumes.sum()


def assert_consistent(tri):
    """What tells of points and simplices tells the same."""
    first = np.array([np.flatnonzero((tri.points == p).all(axis=1))[0] for p in tri.points])
    assert (tri.point_to_vertex == first).all()
    assert rows(tri.simplices.reshape(-1, 1)) == rows(first[:, np.newaxis])
    assert (tri.simplices[tri.vertex_to_simplex] == first[:, np.newaxis]).any(axis=1).all()
    indptr, indices = tri.vertex_neighbor_vertices
    edges = {(a, b) for simplex in tri.simplices.tolist() for a in simplex for b in simplex if a != b}
    sources = np.repeat(np.arange(tri.npoints), np.diff(indptr))
    assert len(indices) == len(edges) and rows(np.column_stack([sources, indices])) == edges


@pytest.mark.parametrize("order", ["curve", "canonical"])
def test_meshes_are_delaunay(points, order):
    tri = vorn3d.Delaunay(points, order=order)
    assert tri.status is vorn3d.Status.SOLID and tri.nsimplex == len(tri.simplices)
    assert_sound(tri)
    assert_consistent(tri)
    assert tri.check()


def test_meshes_grow(points):
    tri = vorn3d.Delaunay(points[:3], incremental=True)
    assert tri.simplices.shape == (0, 4) and tri.convex_hull.shape == (0, 3)
    with tri:
        for end in range(3, len(points), 40):
            tri.add_points(points[end : end + 40])
            assert len(tri.vertex_to_simplex) == tri.npoints == min(end + 40, len(points))
    assert_sound(tri)
    assert_consistent(tri)
    with pytest.raises(RuntimeError, match="closed"):
        tri.add_points(points)


def test_canonical_order_is_a_function_of_the_points(points):
    tri = vorn3d.Delaunay(points, order="canonical")
    others = [vorn3d.Delaunay(points, order="canonical"), copy.deepcopy(tri), pickle.loads(pickle.dumps(tri))]
    for other in others:
        assert (other.simplices == tri.simplices).all() and (other.neighbors == tri.neighbors).all()


def test_copies_have_the_same_simplices(points):
    tri = vorn3d.Delaunay(points[:9], incremental=True)
    tri.add_points(points[9:])
    other = pickle.loads(pickle.dumps(tri))
    assert rows(other.simplices) == rows(tri.simplices)
    other.add_points(points)


STATUSES = {"EMPTY": [], "POINT": [[1, 2, 3]] * 5, "LINE": lattice(1, 1, 5), "PLANE": lattice(4, 4, 1) @ np.eye(3)[[2, 1, 0]]}


@pytest.mark.parametrize("name", STATUSES)
def test_flat_points_are_no_error(name):
    tri = vorn3d.Delaunay(np.reshape(STATUSES[name], (-1, 3)), incremental=True)
    assert tri.status is vorn3d.Status[name]
    assert tri.nsimplex == 0 and (tri.vertex_to_simplex == -1).all() and tri.check()
    assert tri.find_simplex([0, 0, 0]) == -1 and tri.transform.shape == (0, 4, 3)
    tri.add_points(np.vstack([np.zeros(3), np.eye(3)]))
    assert tri.status is vorn3d.Status.SOLID
    assert_sound(tri)


coordinates = st.one_of(st.integers(-1, 7), st.floats(-1, 7, width=16), st.sampled_from([np.nan, np.inf, 1e300]))


@settings(max_examples=30, deadline=None)
@given(arrays(float, (20, 3), elements=coordinates), st.sampled_from(["lattice", "uniform", "duplicates"]))
def test_location_is_exact(queries, name):
    tri = vorn3d.Delaunay(POINT_SETS[name])
    found = tri.find_simplex(queries)
    located = tri.locate(queries)
    from_start = tri.locate(queries, start=np.arange(-1, 19))
    assert ((found == -1) == (located.simplex == -1)).all() and (located.kind == from_start.kind).all()
    points, finite = exact(tri.points), np.isfinite(queries).all(axis=1)
    assert (found[~finite] == -1).all()

    def signs(query, facets):
        return np.sign([orientation(*points[facet], query) for facet in facets])

    for query, *simplices, kind in zip(exact(queries[finite]), *(a[finite] for a in (found, *from_start))):
        if kind == vorn3d.LocationKind.OUTSIDE:
            assert simplices == [-1, -1] and max(signs(query, tri.convex_hull)) > 0
            continue
        for simplex in simplices:
            a, b, c, d = tri.simplices[simplex]
            inner = signs(query, [[a, b, c], [a, d, b], [a, c, d], [b, d, c]])
            assert (inner >= 0).all() and (inner > 0).sum() == kind + 1


@settings(max_examples=30, deadline=None)
@given(arrays(float, (9, 3), elements=coordinates.filter(np.isfinite)), st.integers(1, 5))
def test_nearest_is_exact(queries, k):
    points = POINT_SETS["lattice"]
    for query, found in zip(exact(queries), vorn3d.nearest(points, queries, k)):
        differences = exact(points) - query
        order = sorted(range(len(points)), key=lambda i: (dot(differences[i], differences[i]), tuple(points[i])))
        assert found.tolist() == order[:k]


def test_maps_and_spheres(points):
    scaled = points / abs(points).max()
    tri = vorn3d.Delaunay(scaled)
    corners = scaled[tri.simplices]
    good = np.isfinite(tri.transform[:, 0, 0])
    assert good.all() == (np.ptp(scaled, axis=0).min() > 1e-9)
    barycentric = np.einsum("sij,scj->sci", tri.transform[:, :3], corners - tri.transform[:, 3:])
    np.testing.assert_allclose(barycentric[good], np.broadcast_to(np.eye(4)[:, :3], (good.sum(), 4, 3)), atol=1e-9)
    radii = np.linalg.norm(corners - tri.circumcenters[:, np.newaxis], axis=2)
    np.testing.assert_allclose(radii[good], np.repeat(radii[good, :1], 4, axis=1), rtol=1e-9)

    # On the paraboloid points are above the planes of their spheres, and corners on them.
    distances = tri.plane_distance(scaled)[:, good]
    assert distances.max(initial=0) < 1e-9
    assert abs(np.take_along_axis(distances, tri.simplices[good].T, axis=0)).max(initial=0) < 1e-9


def test_reported_to_scipy():
    """Overlapping simplices (16094), and a night without a result for as many points (11133)."""
    tri = vorn3d.Delaunay(lattice(3, 3, 2) * 8)
    assert orientation(*np.moveaxis(exact(tri.points)[tri.simplices], 1, 0)).sum() == 6 * 2048
    assert_sound(tri)
    assert vorn3d.Delaunay(lattice(82, 82, 80)[:537_218]).status is vorn3d.Status.SOLID
