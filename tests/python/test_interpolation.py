"""Interpolation beside scipy's, and where scipy's fails."""

import numpy as np
import pytest
import scipy.interpolate
from point_sets import POINT_SETS

import vorn3d

RNG = np.random.default_rng(8)
UNIFORM = POINT_SETS["uniform"]
BOTH = [vorn3d.LinearNDInterpolator, vorn3d.NaturalNeighborInterpolator]
QUERIES = RNG.random((4, 50, 3)) * 1.4 - 0.2

CALLS = {
    "points": (QUERIES,),
    "one point": (QUERIES[0, 0],),
    "three arrays": (0.5, QUERIES[..., 1], QUERIES[..., 2]),
    "a tuple": ((QUERIES[..., 0], 0.5, 0.5),),
}


@pytest.mark.parametrize("call", CALLS)
@pytest.mark.parametrize("values", [RNG.random(300), RNG.random((300, 2, 3)), RNG.random((300, 2)) * (1 + 2j)])
@pytest.mark.parametrize("options", [{}, {"fill_value": -7.0}, {"rescale": True}])
def test_linear_values_are_scipys(call, values, options):
    points = UNIFORM * [1, 1000, 1] if options.get("rescale") else UNIFORM
    ours, theirs = (m.LinearNDInterpolator(points, values, **options) for m in (vorn3d, scipy.interpolate))
    found, expected = ours(*CALLS[call]), theirs(*CALLS[call])
    assert found.dtype == expected.dtype
    # Simplices may differ on the hull where all of it is rescaled.
    np.testing.assert_allclose(found, expected, rtol=1e-8, atol=1e-10)


@pytest.mark.parametrize("kind", BOTH)
def test_points_have_their_values_and_linear_functions_are_kept(kind, points):
    scaled = points / abs(points).max()
    values = scaled @ [1.0, -2.0, 3.0] + 4
    f = kind(vorn3d.Delaunay(scaled), values)
    assert (f(scaled) == values).all()
    a, b = scaled[f.tri.convex_hull[:, 0]], scaled[f.tri.convex_hull[:, 1]]
    for inside in (scaled[f.tri.simplices].mean(axis=1), (a + b) / 2):
        np.testing.assert_allclose(f(inside), inside @ [1.0, -2.0, 3.0] + 4, rtol=1e-11, atol=1e-11)
    assert np.isnan(f([f.tri.min_bound - 1e-12, f.tri.max_bound + 1e-12])).all()


@pytest.mark.parametrize("kind", BOTH)
def test_weights_can_be_used_again(kind):
    values = RNG.random((300, 2))
    f = kind(UNIFORM, values, fill_value=0)
    matrix = f.interpolation_matrix(QUERIES)
    np.testing.assert_allclose((matrix @ values).reshape(4, 50, 2), f(QUERIES), rtol=1e-12)


@pytest.mark.parametrize("kind", BOTH)
def test_points_outside_get_what_was_asked_for(kind):
    values = UNIFORM @ [1.0, 1.0, 1.0]
    outside = np.array([[-9.0, 0.5, 0.5], [2.0, 2.0, 2.0]])
    assert np.isnan(kind(UNIFORM, values)(outside)).all()
    assert (kind(UNIFORM, values, outside="nearest")(outside) == values[vorn3d.nearest(UNIFORM, outside)]).all()
    hull = UNIFORM[vorn3d.Delaunay(UNIFORM).convex_hull]
    clamped = kind(UNIFORM, UNIFORM, outside="clamp")(outside)  # the places themselves
    distances = np.linalg.norm(clamped - outside, axis=1)
    samples = np.einsum("wi,fij->wfj", RNG.dirichlet(np.ones(3), 2000), hull).reshape(-1, 3)
    sampled = np.linalg.norm(samples[:, np.newaxis] - outside, axis=2).min(axis=0)
    assert (distances <= sampled).all() and (distances > sampled - 0.01).all()


def test_natural_neighbors_are_those_of_an_inserted_point():
    for query in QUERIES.reshape(-1, 3)[:40]:
        row = vorn3d.NaturalNeighborInterpolator(UNIFORM, UNIFORM).interpolation_matrix(query)
        tri = vorn3d.Delaunay(np.vstack([UNIFORM, query]))
        indptr, indices = tri.vertex_neighbor_vertices
        if len(row.indices):
            assert set(row.indices) == set(indices[indptr[300] :])


@pytest.mark.parametrize("kind", BOTH)
def test_bad_arguments_are_refused(kind):
    for arguments, options in [
        ((UNIFORM, np.zeros(7)), {}),
        ((UNIFORM, 0.0), {}),
        ((vorn3d.Delaunay(UNIFORM), UNIFORM), {"rescale": True}),
        ((UNIFORM, UNIFORM), {"outside": "nan"}),
    ]:
        with pytest.raises(ValueError):
            kind(*arguments, **options)
    with pytest.raises(ValueError, match="three"):
        kind(UNIFORM, UNIFORM)(np.zeros((4, 2)))
    assert np.isnan(kind(np.zeros((5, 3)), np.zeros(5))([0, 0, 0])).all()
