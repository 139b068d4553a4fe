#!/usr/bin/env python3
"""Runs the benchmark programs and tells how the libraries compare.

Called by scripts/bench, which builds the programs. Every run is a process of its own; within a row the libraries
take turns. What was measured goes to results.json in the output directory, the tables to tables.md.
"""
import argparse
import fnmatch
import json
import os
import platform
import statistics
import subprocess
import sys
import time
from pathlib import Path

OURS, YARDSTICK = "Vorn3D", "CGAL"
DIAGNOSTIC = "diagnostic"

# The sizes of each input. A family with several shows how the cost grows.
SIZES = {
    "uniform": [10_000, 100_000, 1_000_000, 4_000_000, 10_000_000],
    "clusters": [100_000, 1_000_000],
    "deepClusters": [100_000, 1_000_000],
    "helix": [100_000, 1_000_000],
    "snapped": [100_000, 1_000_000],
    "grid": [97_336, 1_000_000],
    "sphere": [100_000, 1_000_000],
    "plane": [50_000, 200_000],
    "segments": [500, 3_000],
    "outlier": [100_000, 1_000_000],
    "farOutlier": [100_000, 1_000_000],
    "georeferenced": [100_000, 1_000_000],
    "georeferencedOrigin": [100_000, 1_000_000],
    "cylinder": [25_000, 100_000, 300_000],
    "cubeSurface": [25_000, 100_000],
    "planeGrid": [40_000, 160_000],
    "nearPlane": [25_000, 100_000],
    "helixCurve": [500, 2_000],
    "momentCurve": [500, 3_000],
    "needles": [30_000, 100_000, 300_000],
    "duplicates": [100_000, 1_000_000],
    "flat": [50_000, 200_000],
    "line": [50_000, 200_000],
}
# Growth is relative to the smallest size of a family, but for uniform to one that the caches do not hold.
GROWTH_BASE = "uniform/100000"
QUICK_SIZE, QUICK_TIMEOUT = 100_000, 20
DOCUMENT = Path("docs/performance.md")
DIAGNOSTIC_ROWS = [("uniform", 100_000), ("uniform", 1_000_000)]
LOOP_SECONDS = 0.2
# What is timed inside the process, by programs of these names.
IN_PROCESS = ["loops", "services"]
# The filtrations of alpha complexes, and whether the mesh, and so the filtration, is the only one.
ALPHA_ROWS = {("scan", 11_533): True, ("torus", 20_000): True, ("torus", 125_000): True, ("grid", 125_000): False}


def parse_arguments():
    parser = argparse.ArgumentParser(
        prog="scripts/bench", description="Builds and runs the benchmarks: Vorn3D beside its peers.")
    parser.add_argument("--quick", action="store_true",
                        help=f"rows up to {QUICK_SIZE} points, {QUICK_TIMEOUT} s a run")
    parser.add_argument("--rows", metavar="PATTERN", action="append",
                        help="rows to run, such as 'uniform/*', 'grid/1000000', 'alpha', 'loops' or 'services' "
                             "(repeatable)")
    parser.add_argument("--libraries", metavar="NAMES",
                        help=f"comma-separated choice of {OURS},{DIAGNOSTIC},{YARDSTICK},TetGen,Qhull,nanoflann,"
                             "'CGAL Fast_location','CGAL fast',GUDHI,'GUDHI fast'")
    parser.add_argument("--repetitions", type=int, default=3, metavar="N", help="runs of each row (default 3)")
    parser.add_argument("--timeout", type=float, default=120, metavar="SECONDS",
                        help="a run that takes longer is given up, with the larger rows of its input (default 120)")
    parser.add_argument("--clock", choices=["cpu", "wall"], default="cpu",
                        help="what the tables show; the JSON has both (default cpu)")
    parser.add_argument("--list", action="store_true", help="list the rows and stop")
    parser.add_argument("--tables-only", action="store_true", help="print the tables of the last results again")
    parser.add_argument("--document", action="store_true", help=f"put tables and plot into {DOCUMENT.parent}/")
    parser.add_argument("--release", type=Path, default=Path("build/bench-release/benchmarks"), help=argparse.SUPPRESS)
    parser.add_argument("--diagnostic", type=Path, default=Path("build/bench-diagnostic/benchmarks"),
                        help=argparse.SUPPRESS)
    parser.add_argument("--out", type=Path, default=Path("build/bench"), metavar="DIR",
                        help="where results go (default build/bench)")
    options = parser.parse_args()
    if options.quick:
        options.timeout = min(options.timeout, QUICK_TIMEOUT)
    return options


def select_rows(options):
    def chosen(family, size):
        patterns = options.rows or ["*"]
        return any(fnmatch.fnmatch(f"{family}/{size}", pattern) for pattern in patterns)

    return [(family, size) for family, sizes in SIZES.items() for size in sizes
            if chosen(family, size) and not (options.quick and size > QUICK_SIZE)]


def find_programs(options, kind):
    """The programs that were built, ours first: {library: path}."""
    programs = {
        OURS: options.release / f"{kind}_vorn3d",
        DIAGNOSTIC: options.diagnostic / f"{kind}_vorn3d",
        "CGAL": options.release / f"{kind}_cgal",
        "TetGen": options.release / f"{kind}_tetgen",
        "Qhull": options.release / f"{kind}_qhull",
        "nanoflann": options.release / f"{kind}_nanoflann",
        "CGAL Fast_location": options.release / f"{kind}_cgal_fast_location",
        "CGAL fast": options.release / f"{kind}_cgal_fast",
        "GUDHI": options.release / f"{kind}_gudhi",
        "GUDHI fast": options.release / f"{kind}_gudhi_fast",
    }
    wanted = options.libraries.split(",") if options.libraries else list(programs)
    return {library: path for library, path in programs.items() if library in wanted and path.exists()}


def describe_machine():
    def output_of(*command):
        return subprocess.run(command, capture_output=True, text=True, check=False).stdout.strip()

    models = [line.split(":")[1].strip() for line in open("/proc/cpuinfo") if line.startswith("model name")]
    return {
        "processor": models[0] if models else platform.processor(),
        "processors": os.cpu_count(),
        "system": f"{platform.system()} {platform.release()}",
        "compiler": output_of("c++", "--version").split("\n")[0],
        "revision": output_of("git", "describe", "--always", "--dirty"),
        "date": time.strftime("%Y-%m-%d"),
    }


def run_once(program, family, size, timeout):
    """The program's own report, or {"status": why there is none}."""
    command = [str(program), family, str(size)]
    try:
        done = subprocess.run(command, capture_output=True, text=True, timeout=timeout, check=False)
    except subprocess.TimeoutExpired:
        return {"status": f"> {timeout:g}"}
    if done.returncode != 0:
        return {"status": "failed", "stderr": done.stderr[-500:]}
    # Libraries may have their own to say, before the report and when they clean up.
    report = next(line for line in done.stdout.splitlines() if line.startswith("{"))
    return {"status": "ok", **json.loads(report)}


def run_rows(options, kind, rows, runs):
    """Appends to runs. A library that failed or took too long is spared the rest of the family."""
    programs = find_programs(options, kind)
    given_up = set()
    for family, size in rows:
        for repetition in range(options.repetitions):
            for library, program in programs.items():
                if library == DIAGNOSTIC and (family, size) not in DIAGNOSTIC_ROWS or (library, family) in given_up:
                    continue
                result = run_once(program, family, size, options.timeout)
                runs.append({"run": library, "row": f"{family}/{size}", "repetition": repetition,
                             "load": os.getloadavg()[0], **result})
                if result["status"] != "ok":
                    given_up.add((library, family))
                print(f"{family}/{size} {library}: {result.get('cpuSeconds', result['status'])}", file=sys.stderr)


def run_in_process(options, kind, entries):
    """Appends the entries of Google Benchmark's reports, each with the library's name; the kind is loops or services."""
    programs = find_programs(options, kind)
    programs.pop(DIAGNOSTIC, None)
    report = options.out / f"{kind}.json"
    for _ in range(options.repetitions):
        for library, program in programs.items():
            command = [str(program), f"--benchmark_out={report}", "--benchmark_out_format=json",
                       f"--benchmark_min_time={LOOP_SECONDS}"]
            if options.quick:
                command.append("--benchmark_filter=/10{4,5}(/|$)")
            print(f"{kind} {library}", file=sys.stderr)
            with open(options.out / f"{kind}.log", "w") as log:
                subprocess.run(command, stdout=log, stderr=log, check=True)
            entries += [{"run": library, "load": os.getloadavg()[0], **entry} for entry in json.loads(report.read_text())["benchmarks"]]


class Results:
    """What was measured, summed up: a median for each row and library."""

    def __init__(self, measured, clock):
        self.measured = measured
        self.seconds_key = {"cpu": "cpuSeconds", "wall": "seconds"}[clock]
        self.runs = {}
        for run in measured["runs"]:
            self.runs.setdefault(run["row"], {}).setdefault(run["run"], []).append(run)

    def rows(self):
        return list(self.runs)

    def libraries(self):
        return list(dict.fromkeys(run["run"] for run in self.measured["runs"] if run["run"] != DIAGNOSTIC))

    def finished(self, row, library):
        return [run for run in self.runs[row].get(library, []) if run["status"] == "ok"]

    def median(self, row, library, key):
        finished = self.finished(row, library)
        return statistics.median(run[key] for run in finished) if finished else None

    def seconds(self, row, library):
        return self.median(row, library, self.seconds_key)

    def bytes_per_point(self, row, library):
        added, points = self.median(row, library, "addedKb"), self.median(row, library, "points")
        return added * 1024 / points if points else None

    def ratio(self, row, library=OURS, to=YARDSTICK):
        numerator, denominator = self.seconds(row, library), self.seconds(row, to)
        return numerator / denominator if numerator and denominator else None

    def sizes(self, row):
        """Points and tetrahedra, by the first library that finished."""
        for library in self.runs[row]:
            for run in self.finished(row, library):
                return run["points"], run["tetrahedra"]
        return None, None

    def failures(self):
        """Peers may fail; we may not."""
        return [f"{run['row']}: {run['run']} {run['status']}" for run in self.measured["runs"]
                if run["run"] in (OURS, DIAGNOSTIC) and run["status"] != "ok"]

    def disagreements(self):
        """(faults, remarks): different meshes where there is only one, by exact libraries and by others."""
        faults, remarks = [], []
        for row, runs in self.runs.items():
            counts = {library: (run["tetrahedra"], run["exact"]) for library in runs
                      for run in self.finished(row, library) if run["unique"]}
            exact = {count for count, is_exact in counts.values() if is_exact}
            text = ", ".join(f"{library} {count:,}" for library, (count, _) in counts.items())
            if len(exact) > 1:
                faults.append(f"{row}: the libraries disagree on the number of tetrahedra: {text}")
            elif len({count for count, _ in counts.values()}) > 1:
                remarks.append(f"{row}: floating point found another mesh: {text}")
        return faults, remarks


def show(value, pattern="{:.3g}"):
    return "" if value is None else pattern.format(value)


def make_table(title, header, lines):
    rule = ["---"] + ["---:"] * (len(header) - 1)
    body = ["| " + " | ".join(cells) + " |" for cells in [header, rule, *lines]]
    return "\n".join([f"### {title}", "", *body, ""]) if lines else ""


def time_table(results):
    def cell(row, library):
        seconds = results.seconds(row, library)
        runs = results.runs[row].get(library, [])
        return show(seconds) if seconds is not None else runs[0]["status"] if runs else ""

    libraries = results.libraries()
    lines = []
    for row in results.rows():
        points, tetrahedra = results.sizes(row)
        lines.append([row.split("/")[0], show(points, "{:,}"), show(tetrahedra, "{:,}"),
                      *(cell(row, library) for library in libraries), show(results.ratio(row), "{:.2f}")])
    return make_table("Insertion, seconds", ["input", "points", "tetrahedra", *libraries, f"{OURS} / {YARDSTICK}"],
                      lines)


def memory_table(results):
    libraries = results.libraries()
    lines = [[row.replace("/", " "), *(show(results.bytes_per_point(row, library), "{:.0f}") for library in libraries)]
             for row in results.rows()]
    return make_table("Peak memory above the input, bytes per point", ["input", *libraries], lines)


def growth_table(results):
    """Ours only: what a point costs, and what a piece of output costs, as the input grows."""
    families = {}
    for row in results.rows():
        if results.seconds(row, OURS) is not None:
            families.setdefault(row.split("/")[0], []).append(row)
    lines = []
    for family, rows in families.items():
        per_point, per_item = {}, {}
        for row in rows:
            points, tetrahedra = results.sizes(row)
            per_point[row] = 1e6 * results.seconds(row, OURS) / points
            per_item[row] = 1e9 * results.seconds(row, OURS) / (points + tetrahedra)
        base = GROWTH_BASE if GROWTH_BASE in rows else rows[0]
        if len(rows) > 1:
            lines += [[family, show(results.sizes(row)[0], "{:,}"), show(per_point[row]), show(per_item[row], "{:.0f}"),
                       f"{per_point[row] / per_point[base]:.2f}", f"{per_item[row] / per_item[base]:.2f}"]
                      for row in rows]
    return make_table(f"Growth, {OURS}", ["input", "points", "us per point", "ns per point or tetrahedron",
                                          "growth per point", "growth per output"], lines)


def diagnostic_table(results):
    lines = [[row.replace("/", " "), show(results.seconds(row, OURS)), show(results.seconds(row, DIAGNOSTIC)),
              show(results.ratio(row, DIAGNOSTIC, OURS), "{:.2f}")]
             for row in results.rows() if results.finished(row, DIAGNOSTIC)]
    return make_table("Diagnostic build, seconds", ["input", "release", "diagnostic", "ratio"], lines)


def item_times(entries, clock):
    """Medians of the nanoseconds for each item: {name/points: {library: nanoseconds}}."""
    nanoseconds = {}
    scale = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
    for entry in entries:
        items = entry["items_per_second"] * entry["cpu_time"] * scale[entry["time_unit"]] / 1e9
        time_of_items = entry[{"cpu": "cpu_time", "wall": "real_time"}[clock]] * scale[entry["time_unit"]]
        name = "/".join(entry["name"].split("/")[:2])
        nanoseconds.setdefault(name, {}).setdefault(entry["run"], []).append(time_of_items / items)
    return {name: {library: statistics.median(times) for library, times in libraries.items()}
            for name, libraries in nanoseconds.items()}


def items_table(title, kind, entries, clock, unit_in_nanoseconds):
    """What each item costs, ours by the quickest peer's. kind says what the names of the rows are."""
    times = item_times(entries, clock)
    libraries = list(dict.fromkeys(library for row in times.values() for library in row))
    lines = []
    for name, row in times.items():
        what, points = name.split("/")
        peers = [time for library, time in row.items() if library != OURS]
        ratio = row[OURS] / min(peers) if OURS in row and peers else None
        lines.append([what, f"{int(points):,}",
                      *(show(row[library] / unit_in_nanoseconds if library in row else None) for library in libraries),
                      show(ratio, "{:.2f}")])
    return make_table(title, [kind, "points", *libraries, f"{OURS} / quickest peer"], lines)


def alpha_table(results):
    """Seconds for mesh and filtration, and for a surface of those who make one."""
    libraries = results.libraries()

    def line(row, what, key):
        simplices = sum(results.finished(row, OURS)[0]["counts"][-1])
        times = {library: results.median(row, library, key) for library in libraries}
        # Who makes no surface tells of -1 triangles.
        times = {library: time for library, time in times.items() if time is not None
                 and (what == "filtration" or results.finished(row, library)[0]["triangles"] >= 0)}
        peers = [time for library, time in times.items() if library != OURS]
        status = {library: runs[0]["status"] for library, runs in results.runs[row].items() if what == "filtration"}
        cells = [show(times[library]) if library in times else status.get(library, "") for library in libraries]
        return [f"{row.split('/')[0]}, {what}", show(results.median(row, OURS, "points"), "{:,}"),
                f"{simplices:,}", *cells, show(times[OURS] / min(peers) if peers else None, "{:.2f}")]

    rows = [row for row in results.rows() if results.finished(row, OURS)]
    lines = [line(row, "filtration", results.seconds_key) for row in rows]
    lines += [line(row, "surface", "surfaceCpuSeconds" if results.seconds_key == "cpuSeconds" else "surfaceSeconds")
              for row in rows]
    return make_table("Alpha complexes, seconds",
                      ["input", "points", "simplices", *libraries, f"{OURS} / quickest peer"], lines)


def alpha_disagreements(results):
    """What libraries with exact comparisons count differently, at the alphas of benchmarks/Alpha.h."""
    faults = []
    for (family, size), is_unique in ALPHA_ROWS.items():
        row = f"{family}/{size}"
        runs = [run for library in results.runs.get(row, []) for run in results.finished(row, library)
                if run["exact"]]
        triangles = {run["triangles"] for run in runs if run["triangles"] >= 0}
        if is_unique and (len({str(run["counts"]) for run in runs}) > 1 or len(triangles) > 1):
            faults.append(f"alpha {row}: the libraries disagree on the simplices at some alpha")
    return faults


def describe_measurement(measured, clock):
    machine = ", ".join(f"{key} {value}" for key, value in measured["machine"].items())
    entries = measured["runs"] + measured["services"] + measured["alpha"]
    load = statistics.median([entry["load"] for entry in entries] or [0.0])
    return f"Medians of {clock} time; {machine}, median load {load:.1f}."


def make_report(results, clock):
    """(the tables of the rows and loops, faults)."""
    faults, remarks = results.disagreements()
    faults += results.failures()
    tables = [time_table(results), memory_table(results), growth_table(results), diagnostic_table(results),
              items_table("Loops, nanoseconds per item", "loop", results.measured["loops"], clock, 1.0)]
    notes = [f"- {note}" for note in faults + remarks]
    return "\n".join([*filter(None, tables), *notes]), faults


def put_into_document(kind, report):
    """Replaces what stands between the marks of that kind of tables."""
    begin, end = (f"<!-- {kind}: {mark} -->\n" for mark in ("begin", "end"))
    before, rest = DOCUMENT.read_text().split(begin)
    after = rest.split(end)[1]
    DOCUMENT.write_text(f"{before}{begin}\n{report}\n{end}{after}")


def main():
    options = parse_arguments()
    rows = select_rows(options)
    if options.list:
        print("\n".join([*(f"{family}/{size}" for family, size in rows), "alpha", *IN_PROCESS]))
        return 0
    options.out.mkdir(parents=True, exist_ok=True)
    results_file = options.out / "results.json"
    if not options.tables_only:
        measured = {"machine": describe_machine(), "runs": [], "alpha": [], **{kind: [] for kind in IN_PROCESS}}

        def is_wanted(kind):
            return any(fnmatch.fnmatch(kind, pattern) for pattern in options.rows or ["*"])

        try:
            run_rows(options, "run", rows, measured["runs"])
            if is_wanted("alpha"):
                run_rows(options, "alpha", ALPHA_ROWS, measured["alpha"])
            for kind in IN_PROCESS:
                if is_wanted(kind):
                    run_in_process(options, kind, measured[kind])
        finally:
            results_file.write_text(json.dumps(measured, indent=1))
    measured = json.loads(results_file.read_text())
    report, faults = make_report(Results(measured, options.clock), options.clock)
    alpha = Results({"runs": measured["alpha"]}, options.clock)
    faults += alpha.failures() + alpha_disagreements(alpha)
    services = items_table("Services, microseconds per query", "service", measured.get("services", []), options.clock,
                           1e3)
    reports = {"tables": report, "services": services, "alpha": alpha_table(alpha)}
    heading = describe_measurement(measured, options.clock)
    text = "\n".join([heading, "", *filter(None, reports.values())])
    (options.out / "tables.md").write_text(text + "\n")
    print(text)
    if options.document:
        for kind, tables in reports.items():
            if tables:
                put_into_document(kind, f"{heading}\n\n{tables}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
