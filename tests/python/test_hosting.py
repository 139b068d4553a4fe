"""The library as a guest: bad input, interruptions, memory, threads, and nothing on stdout."""

import os
import subprocess
import sys
import threading

import numpy as np
import pytest
from point_sets import POINT_SETS, lattice

import vorn3d

UNIFORM = POINT_SETS["uniform"]
LARGE = np.random.default_rng(5).random((60_000, 3))


@pytest.fixture(autouse=True)
def nothing_on_stdout(capfd):
    yield
    assert capfd.readouterr().out == ""


class Stop(Exception):
    pass


def stop_at(share):
    """A progress callback that raises once that share is done, and checks what it is told."""
    told = [(0, None)]

    def progress(done, total):
        assert told[-1][0] <= done <= total and told[-1][1] in (None, total)
        told.append((done, total))
        if done >= share * total:
            raise Stop

    return progress


def same_mesh(tri, other):
    def sorted_simplices(t):
        simplices = np.sort(t.simplices)
        return simplices[np.lexsort(simplices.T)]

    return np.array_equal(sorted_simplices(tri), sorted_simplices(other))


FORMS = {
    "list": UNIFORM.tolist(),
    "Fortran": np.asfortranarray(UNIFORM),
    "slice": np.repeat(np.pad(UNIFORM, ((0, 0), (1, 2))), 2, axis=0)[::2, 1:4],
    "big-endian": UNIFORM.astype(">f8"),
    "object": UNIFORM.astype(object),
    "unaligned": np.frombuffer(b"x" + UNIFORM.tobytes(), np.float64, offset=1).reshape(-1, 3),
}


@pytest.mark.parametrize("form", FORMS)
def test_array_like_points_are_taken(form):
    assert same_mesh(vorn3d.Delaunay(FORMS[form]), vorn3d.Delaunay(UNIFORM))


@pytest.mark.parametrize("dtype", ["f4", "i1", "u8", "?"])
def test_other_numbers_are_converted(dtype):
    points = lattice(2, 2, 2).astype(dtype)
    assert vorn3d.Delaunay(points).points.dtype == np.float64
    assert (vorn3d.Delaunay(points).find_simplex(points) >= 0).all()


def test_contiguous_doubles_are_not_copied():
    read_only = UNIFORM.copy()
    read_only.flags.writeable = False
    tri = vorn3d.Delaunay(read_only)
    assert tri.points is read_only
    assert tri.simplices is tri.simplices and tri.simplices.flags.writeable and tri.simplices.flags.c_contiguous
    corners = tri.simplices.copy()
    tri.simplices[:] = 0  # the user's own copy
    assert (tri.convex_hull > 0).any() and tri.check()
    simplices, neighbors = tri.simplices, tri.neighbors
    del tri  # the arrays live on
    assert not simplices.any() and neighbors.shape == corners.shape


BAD_ARGUMENTS = [
    (ValueError, "points\\[7\\]", lambda: vorn3d.Delaunay(np.where(np.arange(30) == 23, np.nan, 1.0).reshape(10, 3))),
    (ValueError, "finite", lambda: vorn3d.Delaunay([[0, 0, np.inf]])),
    (ValueError, "two dimensions", lambda: vorn3d.Delaunay([])),
    (ValueError, "two dimensions", lambda: vorn3d.Delaunay(np.zeros((4, 10, 3)))),
    (ValueError, "three columns", lambda: vorn3d.Delaunay(np.zeros((5, 4)))),
    (ValueError, "masked", lambda: vorn3d.Delaunay(np.ma.masked_all((5, 3)))),
    (TypeError, "real", lambda: vorn3d.Delaunay(np.zeros((5, 3), complex))),
    (ValueError, "string", lambda: vorn3d.Delaunay([["a", "b", "c"]])),
    (ValueError, "inhomogeneous|sequence", lambda: vorn3d.Delaunay([[1, 2, 3], [1, 2]])),
    (TypeError, "progress", lambda: vorn3d.Delaunay(UNIFORM, progress=3)),
    (ValueError, "furthest_site", lambda: vorn3d.Delaunay(UNIFORM, furthest_site=True)),
    (ValueError, "qhull_options", lambda: vorn3d.Delaunay(UNIFORM, qhull_options="QJ")),
    (ValueError, "order", lambda: vorn3d.Delaunay(UNIFORM, order="hilbert")),
    (ValueError, "tol", lambda: vorn3d.Delaunay(UNIFORM).find_simplex([0, 0, 0], tol=1e-9)),
    (ValueError, "three coordinates", lambda: vorn3d.Delaunay(UNIFORM).find_simplex([0, 0])),
    (IndexError, "range", lambda: vorn3d.Delaunay(UNIFORM).find_simplex(1)),
    (IndexError, "simplex 123456", lambda: vorn3d.Delaunay(UNIFORM).locate([0, 0, 0], start=123456)),
    (ValueError, "broadcast", lambda: vorn3d.Delaunay(UNIFORM).locate(np.zeros((4, 3)), start=[1, 2])),
    (ValueError, "k must", lambda: vorn3d.nearest(UNIFORM, [0, 0, 0], k=0)),
    (RuntimeError, "incremental", lambda: vorn3d.Delaunay(UNIFORM).add_points(UNIFORM)),
]


@pytest.mark.parametrize("error, text, call", BAD_ARGUMENTS)
def test_bad_arguments_are_refused(error, text, call):
    with pytest.raises(error, match=text):
        call()


def test_bad_points_change_nothing():
    tri = vorn3d.Delaunay(UNIFORM, incremental=True)
    simplices = tri.simplices.copy()
    with pytest.raises(ValueError, match="points\\[0\\]"):
        tri.add_points([[0, np.nan, 0]])
    assert tri.npoints == len(UNIFORM) and (tri.simplices == simplices).all()


@pytest.mark.parametrize("order", ["curve", "canonical"])
@pytest.mark.parametrize("num_before", [0, 3, 1000])
def test_interrupted_insertions_are_completed(order, num_before):
    tri = vorn3d.Delaunay(LARGE[:num_before], incremental=True, order=order)
    with pytest.raises(Stop):
        tri.add_points(LARGE[num_before:], progress=stop_at(0.3))
    assert tri.npoints == len(LARGE) and tri.check()
    inserted = tri.vertex_to_simplex >= 0
    assert 0 < inserted.sum() < len(LARGE) and (np.unique(tri.simplices) == np.flatnonzero(inserted)).all()
    tri.add_points(np.empty((0, 3)))
    assert same_mesh(tri, vorn3d.Delaunay(LARGE))
    with pytest.raises(Stop):
        tri.check(progress=stop_at(0.5))
    assert tri.check(progress=lambda done, total: None)


def run(code):
    """Runs code in an interpreter of its own: no limit, signal or callback reaches it from the other tests."""
    done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=False)
    assert (done.returncode, done.stdout, done.stderr) == (0, "", "")


def test_control_c_interrupts():
    run("""if True:
        import os, signal, threading, time
        import numpy as np
        import vorn3d
        points = np.random.default_rng(5).random((60_000, 3))
        tri = vorn3d.Delaunay(points[:9], incremental=True)
        lines = np.zeros((12_000, 3))
        lines[::2, 0] = lines[1::2, 1] = np.linspace(0, 1, 6000)
        lines[1::2, 2] = 1
        for long_call in (
            lambda: tri.add_points(points),
            lambda: tri.find_simplex(np.tile(points, (60, 1))),
            lambda: vorn3d.Delaunay(lines),
        ):
            begin = time.process_time()  # other processes do not count
            timer = threading.Timer(0.06, os.kill, (os.getpid(), signal.SIGINT))
            timer.start()
            try:
                long_call()
                time.sleep(9)
                raise AssertionError("was not interrupted")
            except KeyboardInterrupt:
                pass
            timer.join()
            assert time.process_time() - begin < 1
        assert tri.check()
        """)


@pytest.mark.parametrize("order", ["curve", "canonical"])
def test_memory_that_runs_out_is_an_error(order):
    run(f"""if True:
        import resource
        import numpy as np
        import vorn3d
        points = np.random.default_rng(1).random((400_000, 3))
        tri = vorn3d.Delaunay(points[:10], incremental=True, order={order!r})
        size = int(open("/proc/self/statm").read().split()[0]) * resource.getpagesize()
        num_errors = 0
        for megabytes in (10, 40, 160, 320, 10_000):
            resource.setrlimit(resource.RLIMIT_AS, (size + megabytes * 2**20, -1))
            try:
                tri.add_points(points[10:] if tri.npoints == 10 else points[:0])
            except MemoryError:
                num_errors += 1
        assert num_errors >= 2, num_errors
        assert tri.check() and (tri.vertex_to_simplex >= 0).all() and tri.npoints == len(points)
        """)


def test_progress_bars_go_to_stderr(monkeypatch, capfd):
    for absent in ({}, {"tqdm": None, "tqdm.auto": None}):
        with monkeypatch.context() as context:
            for name, module in absent.items():
                context.setitem(sys.modules, name, module)
            vorn3d.Delaunay(LARGE, progress=True)
        captured = capfd.readouterr()
        assert captured.out == "" and "Delaunay" in captured.err


def test_threads_work_side_by_side():
    tri = vorn3d.Delaunay(LARGE[:2000], incremental=True)
    expected, wrong = tri.find_simplex(LARGE), []

    def read():
        if (tri.find_simplex(LARGE) != expected).any():
            wrong.append("location")

    def build():
        if not same_mesh(vorn3d.Delaunay(LARGE[:2000]), tri):
            wrong.append("mesh")

    threads = [threading.Thread(target=target) for target in (read, build) * 3]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not wrong


def test_an_object_in_use_says_so():
    tri = vorn3d.Delaunay(LARGE[:2000], incremental=True)
    uses = [tri.check, lambda: tri.nsimplex, lambda: tri.find_simplex([0, 0, 0]), lambda: tri.add_points(UNIFORM)]

    def use(done, total):
        for call in uses:
            with pytest.raises(RuntimeError, match="under way|being read"):
                call()

    tri.add_points(LARGE, progress=use)
    assert tri.check() and tri.npoints == len(LARGE) + 2000


def test_forks_have_their_own():
    tri = vorn3d.Delaunay(UNIFORM, incremental=True)
    child = os.fork()
    if child == 0:
        tri.add_points(LARGE[:1000])
        os._exit(0 if tri.check() else 1)
    assert os.waitpid(child, 0)[1] == 0
    assert tri.npoints == len(UNIFORM) and tri.check()


def test_equal_points_are_one():
    tri = vorn3d.Delaunay(np.ones((1_000_000, 3)))
    assert tri.status is vorn3d.Status.POINT and not tri.point_to_vertex.any()
