#!/usr/bin/env python3
"""Draws results.json as plot.svg beside it: cost per point as the input grows, and the ratio to the yardstick.

Takes the options of bench.py.
"""
import json
import shutil
import sys

import bench

try:
    import matplotlib
except ImportError:
    sys.exit("no plot: python3-matplotlib is not installed")
matplotlib.use("svg")
matplotlib.rcParams["svg.fonttype"] = "none"
from matplotlib import pyplot


def draw_scaling(axes, results):
    for library in results.libraries():
        rows = [row for row in results.rows() if row.startswith("uniform/") and results.seconds(row, library)]
        sizes = [results.sizes(row)[0] for row in rows]
        costs = [1e6 * results.seconds(row, library) / size for row, size in zip(rows, sizes)]
        axes.loglog(sizes, costs, marker="o", label=library)
    axes.yaxis.set_major_formatter("{x:g}")
    axes.yaxis.set_minor_formatter("{x:g}")
    axes.set_xlabel("points, uniform in a cube")
    axes.set_ylabel("microseconds per point")
    axes.legend()
    axes.grid(True, which="both", alpha=0.3)


def draw_ratios(axes, results):
    """The largest row of each input that both finished, the first on top."""
    largest = {row.split("/")[0]: row for row in results.rows() if results.ratio(row)}
    families = list(reversed(largest))
    axes.barh(families, [results.ratio(largest[family]) for family in families])
    axes.axvline(1.0, color="black", linewidth=1)
    axes.set_xlabel(f"seconds of {bench.OURS} / seconds of {bench.YARDSTICK}, largest size")


def main():
    options = bench.parse_arguments()
    results = bench.Results(json.loads((options.out / "results.json").read_text()), options.clock)
    figure, (left, right) = pyplot.subplots(1, 2, figsize=(11, 4.5))
    draw_scaling(left, results)
    draw_ratios(right, results)
    figure.tight_layout()
    plot = options.out / "plot.svg"
    figure.savefig(plot)
    print(f"plot: {plot}")
    if options.document:
        shutil.copy(plot, bench.DOCUMENT.with_suffix(".svg"))


if __name__ == "__main__":
    main()
