"""Reads mesh files of the program back with meshio and compares them with the input and the program's report.

    vtuTest.py PROGRAM
"""
import json
import subprocess
import sys
import tempfile
from pathlib import Path

import meshio
import numpy


def run(*arguments):
    return subprocess.run(arguments, check=True, capture_output=True).stdout


def check(program, directory, extension):
    points_file = str(directory / "points.bin")
    mesh_file = str(directory / ("mesh" + extension))
    run(program, "generate", "-n", "3000", "--shape", "ball", "-o", points_file)
    report = json.loads(run(program, "triangulate", points_file, "--stats", "--json", "-o", mesh_file))
    mesh = meshio.read(mesh_file)
    tets = mesh.get_cells_type("tetra")

    points = numpy.fromfile(points_file, dtype="<f8").reshape(-1, 3)
    assert mesh.points.dtype.itemsize == 8
    assert numpy.array_equal(mesh.points, points)
    assert numpy.array_equal(mesh.point_data["inputIndex"], numpy.arange(len(points)))
    assert len(tets) == report["tetrahedra"]

    a, b, c, d = (mesh.points[tets[:, i]] for i in range(4))
    volumes = numpy.einsum("ij,ij->i", numpy.cross(b - a, c - a), d - a) / 6
    assert (volumes > 0).all()
    assert abs(volumes.sum() - report["hull_volume"]) < 1e-12 * report["hull_volume"]

    # The hull consists of the facets that only one tetrahedron has.
    facets = numpy.sort(numpy.concatenate([numpy.delete(tets, i, axis=1) for i in range(4)]), axis=1)
    facets, numbers = numpy.unique(facets, axis=0, return_counts=True)
    hull = facets[numbers == 1]
    assert len(hull) == report["hull_facets"]
    assert numpy.array_equal(numpy.flatnonzero(mesh.point_data["onHull"]), numpy.unique(hull))


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as name:
        for mesh_extension in (".vtu", ".vtk"):
            check(sys.argv[1], Path(name), mesh_extension)
