"""A program for scipy, with the imports changed: values on a lattice, interpolated along one of its edges."""

# from scipy.interpolate import LinearNDInterpolator
# from scipy.spatial import Delaunay
import numpy as np

from vorn3d import Delaunay, LinearNDInterpolator

axis = np.arange(11.0)
points = np.stack(np.meshgrid(axis, axis, axis), axis=-1).reshape(-1, 3)
tri = Delaunay(points)
corners = points[tri.simplices]
volumes = np.einsum(
    "ij,ij->i", np.cross(corners[:, 1] - corners[:, 0], corners[:, 2] - corners[:, 0]), corners[:, 3] - corners[:, 0]
)
print("they fill the cube:", volumes.sum() / 6)
print("flat simplices:", (volumes <= 0).sum())

edge = np.column_stack([np.linspace(0, 10, 6), np.zeros(6), np.full(6, 10.0)])
interpolator = LinearNDInterpolator(tri, np.linalg.norm(points, axis=1))
print("along an edge of the hull:", interpolator(edge).round(3).tolist())
print("outside:", interpolator([[11, 5, 5]])[0], tri.find_simplex([11, 5, 5]))
