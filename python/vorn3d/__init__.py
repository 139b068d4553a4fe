"""Exact Delaunay tetrahedralization of points in space, in the shape of `scipy.spatial`.

`Delaunay` takes the place of `scipy.spatial.Delaunay` for points with three coordinates: lattices, coplanar and
cospherical points, duplicates and coordinates of any size are no trouble, and it is an order of magnitude faster.
The page ``docs/python.md`` of the project is the introduction.
"""

from ._alpha_shape import AlphaShape
from ._convex_hull import ConvexHull
from ._delaunay import Delaunay, Location, LocationKind, Status
from ._interpolation import LinearNDInterpolator, NaturalNeighborInterpolator
from ._nearest import nearest
from ._voronoi import Voronoi

__all__ = [
    "AlphaShape",
    "ConvexHull",
    "Delaunay",
    "LinearNDInterpolator",
    "Location",
    "LocationKind",
    "NaturalNeighborInterpolator",
    "Status",
    "Voronoi",
    "nearest",
]
