import pytest
from point_sets import POINT_SETS


@pytest.fixture(params=POINT_SETS.values(), ids=POINT_SETS)
def points(request):
    return request.param
