# %% [markdown]
# # A scan, in pictures
#
# The points are a scanned cow's. Run this file as a whole, or cell by cell in an editor that knows `# %%`; pictures go to
# the working directory.

# %%
import os
from pathlib import Path

import matplotlib.pyplot as plt
import numpy as np
from mpl_toolkits.mplot3d.art3d import Poly3DCollection

import vorn3d

SCAN = Path(os.environ.get("VORN3D_DATA", "data")) / "spot" / "spot.xyz"
points = np.loadtxt(SCAN)
tri = vorn3d.Delaunay(points)
print(tri)

# %% [markdown]
# ## The body
#
# The simplices fill the convex hull. Those of the body have smaller circumscribed spheres than most of those beside it.

# %%
corners = points[tri.simplices]
radii = np.linalg.norm(tri.circumcenters - corners[:, 0], axis=1)
body = radii < 0.42
print(f"{body.sum()} of {tri.nsimplex} simplices are the body")

# One half of it, and the facets at its surface.
kept = body & (corners.mean(axis=1)[:, 0] < 0)
neighbor_kept = np.where(tri.neighbors >= 0, kept[tri.neighbors], False)
simplex, opposite = np.nonzero(kept[:, np.newaxis] & ~neighbor_kept)
facets = np.array([np.delete(tri.simplices[s], k) for s, k in zip(simplex, opposite)])

fig = plt.figure(figsize=(9, 4))
axes = fig.add_subplot(1, 2, 1, projection="3d")
colors = plt.get_cmap("viridis")(np.clip(radii[simplex] / 0.42, 0, 1))
axes.add_collection3d(Poly3DCollection(points[facets][:, :, [2, 0, 1]], facecolors=colors, edgecolors="k", linewidths=0.1))
axes.set(xlim=(-0.7, 1.1), ylim=(-0.9, 0.9), zlim=(-0.75, 1.05), title="Cut open, by radius of the spheres")
axes.set_box_aspect((1, 1, 1), zoom=1.6)
axes.view_init(elev=12, azim=55)
axes.set_axis_off()

# %% [markdown]
# ## Values between the points
#
# A value at each point, here the height, is carried into the space between them by natural neighbours.

# %%
values = np.sin(9 * points[:, 1]) + points[:, 2]
interpolator = vorn3d.NaturalNeighborInterpolator(tri, values)
z, y = np.meshgrid(np.linspace(-0.7, 1.1, 180), np.linspace(-0.8, 1.0, 180))
plane = interpolator(0.0, y, z)
where = tri.find_simplex(np.stack([np.zeros_like(y), y, z], axis=-1))
plane[~np.where(where >= 0, body[where], False)] = np.nan
print(f"{np.isfinite(plane).mean():.0%} of the plane are in the body")

axes2 = fig.add_subplot(1, 2, 2)
axes2.pcolormesh(z, y, plane, shading="auto")
axes2.set(aspect="equal", title="Natural neighbours, in the plane of symmetry")
axes2.set_axis_off()
fig.tight_layout()
fig.savefig("scan.png", dpi=100)
