#!/usr/bin/env python3
"""Measures the Python package beside others: whole calls, from numpy arrays to numpy arrays.

Called by `scripts/bench --rows python`. Every run is a process of its own; within a row the libraries take turns. A
library that takes too long is spared the larger rows. Results: python.json and python.md in the output directory.
"""
import argparse
import json
import os
import resource
import statistics
import subprocess
import sys
import time
from pathlib import Path

SCAN = Path("data/spot/spot.xyz")
NUM_QUERIES = 1_000_000


# Each input: a function of the number of points.
def make_uniform(n):
    import numpy as np

    return np.random.default_rng(1).random((n, 3))


def make_lattice(n):
    import numpy as np

    axis = np.arange(round(n ** (1 / 3)), dtype=float)
    return np.stack(np.meshgrid(axis, axis, axis), axis=-1).reshape(-1, 3)


def make_scan(n):
    """Points of the scan, with some noise."""
    import numpy as np

    rng = np.random.default_rng(1)
    scan = np.loadtxt(SCAN)
    return scan[rng.integers(len(scan), size=n)] + rng.normal(scale=1e-3, size=(n, 3))


# Each job: a function that prepares and returns the call to measure, which answers with a number of things made.
def triangulate_by_vorn3d(points):
    import vorn3d

    def call():
        tri = vorn3d.Delaunay(points)
        assert len(tri.simplices) == len(tri.neighbors)
        return len(tri.simplices)

    return call


def triangulate_by_scipy(points):
    from scipy.spatial import Delaunay

    return lambda: len(Delaunay(points).simplices)


def triangulate_by_pyvista(points):
    import pyvista

    return lambda: pyvista.PolyData(points).delaunay_3d().n_cells


def triangulate_by_gudhi(points):
    """The Delaunay triangulation as a simplex tree, with the faces of all dimensions."""
    import gudhi

    return lambda: gudhi.AlphaComplex(points=points).create_simplex_tree(default_filtration_value=True).num_simplices()


def interpolate(make_interpolator, points):
    import numpy as np

    queries = np.random.default_rng(2).random((NUM_QUERIES, 3))
    interpolator = make_interpolator(points, points.sum(axis=1))
    return lambda: int(np.isfinite(interpolator(queries)).sum())


def interpolate_by_vorn3d(points):
    import vorn3d

    return interpolate(vorn3d.LinearNDInterpolator, points)


def interpolate_by_scipy(points):
    from scipy.interpolate import LinearNDInterpolator

    return interpolate(LinearNDInterpolator, points)


JOBS = {
    "triangulate": {"vorn3d": triangulate_by_vorn3d, "scipy": triangulate_by_scipy,
                    "pyvista": triangulate_by_pyvista, "gudhi": triangulate_by_gudhi},
    "interpolate": {"vorn3d": interpolate_by_vorn3d, "scipy": interpolate_by_scipy},
}
INPUTS = {"uniform": make_uniform, "lattice": make_lattice, "scan": make_scan}
SIZES = [1_000, 10_000, 100_000, 1_000_000]
ROWS = [("triangulate", name, size) for name in INPUTS for size in SIZES] + [
    ("interpolate", "uniform", size) for size in SIZES[1:]]


def run_job(job, library, name, size):
    """In a process of its own: prints seconds, things made, and the kilobytes that the call added to the peak."""
    points = INPUTS[name](size)
    call = JOBS[job][library](points)
    before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
    start = time.perf_counter()
    made = call()
    seconds = time.perf_counter() - start
    added = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - before
    print(json.dumps({"seconds": seconds, "made": made, "addedKb": added, "points": len(points)}))


def run_insertion(program, size):
    """The insertion alone, in C++: seconds, or None."""
    if not program.exists():
        return None
    done = subprocess.run([program, "uniform", str(size)], capture_output=True, text=True, check=True)
    report = next(line for line in done.stdout.splitlines() if line.startswith("{"))
    return json.loads(report)["seconds"]


def seconds_of(*command):
    start = time.perf_counter()
    subprocess.run([sys.executable, *command], check=True)
    return time.perf_counter() - start


def measure(options):
    runs, given_up = [], set()
    for job, name, size in ROWS:
        if options.quick and size > 100_000:
            continue
        for _ in range(options.repetitions):
            for library in JOBS[job]:
                if (job, name, library) in given_up:
                    continue
                run = {"row": f"{job} {name}", "size": size, "library": library}
                try:
                    done = subprocess.run([sys.executable, __file__, "--job", job, library, name, str(size)],
                                          capture_output=True, text=True, timeout=options.timeout, check=True)
                    run.update(json.loads(done.stdout.splitlines()[-1]))
                except (subprocess.TimeoutExpired, subprocess.CalledProcessError) as error:
                    run["status"] = type(error).__name__
                    given_up.add((job, name, library))
                runs.append(run)
                print(run, file=sys.stderr)
            if (job, name) == ("triangulate", "uniform"):
                seconds = run_insertion(options.program, size)
                if seconds is not None:
                    runs.append({"row": f"{job} {name}", "size": size, "library": "C++", "seconds": seconds})
    imports = {code: statistics.median(seconds_of("-c", code) for _ in range(5))
               for code in ("import numpy", "import vorn3d")}
    return {"runs": runs, "imports": imports, "load": os.getloadavg()[0]}


def make_report(measured):
    libraries = list(dict.fromkeys(run["library"] for run in measured["runs"]))

    def median(row, library, key):
        values = [run[key] for run in measured["runs"]
                  if (run["row"], run["size"]) == row and run["library"] == library and key in run]
        return statistics.median(values) if values else None

    def table(title, key, unit):
        lines = [f"### {title}", "", "| " + " | ".join(["row", "points", *libraries, "scipy / vorn3d"]) + " |",
                 "|---|" + "---:|" * (len(libraries) + 2)]
        for row in dict.fromkeys((run["row"], run["size"]) for run in measured["runs"]):
            values = [median(row, library, key) for library in libraries]
            ours, scipys = (median(row, library, key) for library in ("vorn3d", "scipy"))
            cells = ["" if value is None else f"{value * unit:.3g}" for value in values]
            ratio = f"{scipys / ours:.1f}" if ours and scipys else ""
            lines.append("| " + " | ".join([row[0], f"{row[1]:,}", *cells, ratio]) + " |")
        return "\n".join(lines) + "\n"

    numpy, ours = measured["imports"].values()
    return "\n".join([table("Seconds", "seconds", 1), table("Peak memory added, MB", "addedKb", 1e-3),
                      f"`import vorn3d` takes {1000 * (ours - numpy):.0f} ms beyond numpy's."])


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench --rows python", description=__doc__.splitlines()[0])
    parser.add_argument("--quick", action="store_true", help="rows up to 100,000 points")
    parser.add_argument("--repetitions", type=int, default=3, metavar="N", help="runs of each row (default 3)")
    parser.add_argument("--timeout", type=float, default=120, metavar="SECONDS", help="of a run (default 120)")
    parser.add_argument("--out", type=Path, default=Path("build/bench"), help="where results go")
    parser.add_argument("--program", type=Path, default=Path("build/bench-release/benchmarks/run_vorn3d"),
                        help=argparse.SUPPRESS)
    parser.add_argument("--job", nargs=4, help=argparse.SUPPRESS)
    options = parser.parse_args()
    if options.job:
        job, library, name, size = options.job
        run_job(job, library, name, int(size))
        return
    options.out.mkdir(parents=True, exist_ok=True)
    measured = measure(options)
    (options.out / "python.json").write_text(json.dumps(measured, indent=1))
    report = make_report(measured)
    (options.out / "python.md").write_text(report + "\n")
    print(report)


if __name__ == "__main__":
    main()
