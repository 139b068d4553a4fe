"""The cases of scipy's own test suite that have three columns, with our classes in the place of scipy's."""

import types

import numpy as np
import pytest
from scipy.spatial.tests import test_qhull as suite

import vorn3d

CLASSES = ["ConvexHull", "Delaunay", "Voronoi"]
BATCHES = [f"random-3d-chunk-{size}" for size in (1, 4, 16)]
CASES = [
    (suite.TestUtilities, "test_more_barycentric_transforms", {}),
    (suite.TestDelaunay, "test_nd_simplex", {}),
    *((suite.TestDelaunay, "test_incremental", {"name": name}) for name in BATCHES),
    (suite.TestUtilities, "test_volume_area", {}),
    (suite.TestUtilities, "test_random_volume_area", {}),
    (suite.TestUtilities, "test_incremental_volume_area_random_input", {}),
    (suite.TestConvexHull, "test_hull_consistency_tri", {"name": "random-3d"}),
    *((suite.TestConvexHull, "test_incremental", {"name": name}) for name in BATCHES),
    (suite.TestConvexHull, "test_volume_area", {}),
    (suite.TestVoronoi, "test_ridges", {"name": "random-3d"}),
    *((suite.TestVoronoi, "test_incremental", {"name": name}) for name in BATCHES),
    (suite, "test_gh_20623", {"diagram_type": "Delaunay"}),
    (suite, "test_gh_20623", {"diagram_type": "Voronoi"}),
]


@pytest.fixture
def calls(monkeypatch):
    """Puts our classes in the place of scipy's where there are three columns; counts their calls."""
    made = []

    def stand_in(ours, theirs):
        def make(points, *args, **kwargs):
            if np.shape(points)[-1] != 3:
                return theirs(points, *args, **kwargs)
            made.append(ours)
            return ours(points, *args, **kwargs)

        return make

    classes = {name: stand_in(getattr(vorn3d, name), getattr(suite.qhull, name)) for name in CLASSES}
    monkeypatch.setattr(suite, "qhull", types.SimpleNamespace(**{**vars(suite.qhull), **classes}))
    monkeypatch.setattr(suite, "Voronoi", suite.qhull.Voronoi)
    return made


@pytest.mark.parametrize("group, name, arguments", CASES)
def test_scipy_case(group, name, arguments, calls):
    owner = group() if isinstance(group, type) else group
    arguments = {key: getattr(suite.qhull, value, value) for key, value in arguments.items()}
    getattr(owner, name)(**arguments)
    assert calls
