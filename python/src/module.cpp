// vorn3d._core: takes arrays and gives arrays. Checks of arguments, defaults and documentation are in the
// package's Python files.
//
// All work runs without the interpreter's lock, which is taken back for moments: to see whether a signal has
// arrived, and to tell progress.
#include "Table.h"
#include "Triangulation.h"
#include "memory.h"
#include "meshTables.h"
#include "queries.h"

#include <nanobind/nanobind.h>
#include <nanobind/ndarray.h>
#include <nanobind/stl/optional.h>
#include <nanobind/stl/pair.h>
#include <nanobind/stl/tuple.h>

#include <chrono>
#include <optional>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace nb = nanobind;
using namespace nb::literals;

namespace VORN3D::python
{

namespace
{

// The shape (..., 3) of points and the like, and arrays of one dimension.
template <typename T, nb::ssize_t NUM_COLUMNS>
using Matrix = nb::ndarray<nb::numpy, T, nb::shape<-1, NUM_COLUMNS>, nb::c_contig>;
template <typename T>
using Array = nb::ndarray<nb::numpy, T, nb::shape<-1>, nb::c_contig>;
using PointMatrix = nb::ndarray<const double, nb::shape<-1, 3>, nb::c_contig, nb::device::cpu>;
using ValueMatrix = nb::ndarray<const double, nb::shape<-1, -1>, nb::c_contig, nb::device::cpu>;
using StartArray = nb::ndarray<const Index, nb::shape<-1>, nb::c_contig, nb::device::cpu>;

template <typename T>
nb::capsule makeOwner(Table<T>& table)
{
    return nb::capsule(table.data(), &release);
}

// The arrays take over the tables' memory.
template <nb::ssize_t NUM_COLUMNS, typename T>
Matrix<T, NUM_COLUMNS> toMatrix(Table<T>&& table)
{
    const nb::capsule owner = makeOwner(table);
    const std::size_t numRows = table.getNumRows(), numColumns = table.getNumColumns();
    return Matrix<T, NUM_COLUMNS>(table.release(), {numRows, numColumns}, owner);
}

template <typename T>
Array<T> toArray(Table<T>&& table)
{
    const nb::capsule owner = makeOwner(table);
    const std::size_t numRows = table.getNumRows();
    return Array<T>(table.release(), {numRows}, owner);
}

// A Pulse that lets Python's signal handlers run, and calls `progress` if that is not None, with the numbers
// of what is done and what there is: at the start, at the end, and about twenty times a second.
class PythonPulse
{
public:
    explicit PythonPulse(nb::handle progress) : m_progress(progress) {}

    void operator()(std::size_t numDone, std::size_t numTotal)
    {
        const bool bTelling = !m_progress.is_none();
        const bool bDue = Clock::now() - m_last > PERIOD;
        if (!bDue && !(bTelling && (numDone == 0 || numDone == numTotal)))
            return;
        const nb::gil_scoped_acquire locked;
        if (PyErr_CheckSignals() != 0)
            throw nb::python_error();
        if (bTelling)
            m_progress(numDone, numTotal);
        m_last = Clock::now();
    }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds PERIOD{50};

    nb::handle m_progress;
    Clock::time_point m_last = Clock::now();
};

Pulse makePulse(nb::handle progress = nb::none())
{
    return PythonPulse(progress);
}

// make(triangulation) as a reader, without the interpreter's lock.
template <class Make>
auto read(const Triangulation& triangulation, const Make& make)
{
    const nb::gil_scoped_release unlocked;
    const Triangulation::Reading reading(triangulation);
    return make(triangulation);
}

void bindInsert(Triangulation& triangulation, const PointMatrix& points, nb::handle progress)
{
    const Pulse pulse = makePulse(progress);
    const nb::gil_scoped_release unlocked;
    triangulation.insert(points.data(), points.shape(0), pulse);
}

bool bindCheck(Triangulation& triangulation, nb::handle progress)
{
    const Pulse pulse = makePulse(progress);
    const nb::gil_scoped_release unlocked;
    return triangulation.check(pulse);
}

std::pair<Matrix<Index, 4>, Matrix<Index, 4>> bindMesh(const Triangulation& triangulation)
{
    MeshTables tables = read(triangulation, makeMeshTables);
    return {toMatrix<4>(std::move(tables.simplices)), toMatrix<4>(std::move(tables.neighbors))};
}

std::pair<Array<Index>, Array<Index>> bindVertexNeighbors(const Triangulation& triangulation)
{
    const Pulse pulse = makePulse();
    VertexNeighbors neighbors =
        read(triangulation, [&pulse](const Triangulation& t) { return makeVertexNeighbors(t, pulse); });
    return {toArray(std::move(neighbors.starts)), toArray(std::move(neighbors.vertices))};
}

template <class NumpyMatrix>
Rows toRows(const NumpyMatrix& matrix)
{
    return {matrix.data(), matrix.shape(0), matrix.shape(1)};
}

Array<Index> bindFindSimplices(const Triangulation& triangulation, const PointMatrix& points)
{
    const Pulse pulse = makePulse();
    return toArray(
        read(triangulation, [&](const Triangulation& t) { return findSimplices(t, toRows(points), pulse); }));
}

std::pair<Array<Index>, Array<std::uint8_t>> bindLocate(const Triangulation& triangulation,
                                                        const PointMatrix& points,
                                                        const std::optional<StartArray>& starts)
{
    const Pulse pulse = makePulse();
    if (starts && starts->shape(0) != points.shape(0))
        throw std::invalid_argument("there must be as many starts as points");
    Locations locations = read(triangulation, [&](const Triangulation& t) {
        return locate(t, toRows(points), starts ? starts->data() : nullptr, pulse);
    });
    return {toArray(std::move(locations.simplices)), toArray(std::move(locations.kinds))};
}

Matrix<Index, -1> bindNearest(const Triangulation& triangulation, const PointMatrix& points, std::size_t k)
{
    const Pulse pulse = makePulse();
    return toMatrix<-1>(read(
        triangulation, [&](const Triangulation& t) { return findNearest(t, toRows(points), k, pulse); }));
}

std::pair<Matrix<double, -1>, Array<bool>> bindInterpolate(const Triangulation& triangulation,
                                                           InterpolationMethod3 method, OutsideHull3 outside,
                                                           double tolerance, const PointMatrix& points,
                                                           const ValueMatrix& values)
{
    const Pulse pulse = makePulse();
    InterpolatedValues interpolated = read(triangulation, [&](const Triangulation& t) {
        return interpolate(t, {method, outside, tolerance}, toRows(points), toRows(values), pulse);
    });
    return {toMatrix<-1>(std::move(interpolated.values)), toArray(std::move(interpolated.found))};
}

std::tuple<Array<std::int64_t>, Array<Index>, Array<double>>
bindWeights(const Triangulation& triangulation, InterpolationMethod3 method, OutsideHull3 outside,
            double tolerance, const PointMatrix& points)
{
    const Pulse pulse = makePulse();
    Weights weights = read(triangulation, [&](const Triangulation& t) {
        return makeWeights(t, {method, outside, tolerance}, toRows(points), pulse);
    });
    return {toArray(std::move(weights.starts)), toArray(std::move(weights.columns)),
            toArray(std::move(weights.weights))};
}

} // namespace

} // namespace VORN3D::python

NB_MODULE(_core, m)
{
    using namespace VORN3D::python;
    using Self = const Triangulation&;
    setUpLibrary();

    nb::enum_<VORN3D::InterpolationMethod3>(m, "Method")
        .value("LINEAR", VORN3D::InterpolationMethod3::LINEAR)
        .value("NATURAL", VORN3D::InterpolationMethod3::NATURAL);
    nb::enum_<VORN3D::OutsideHull3>(m, "Outside")
        .value("NOTHING", VORN3D::OutsideHull3::NOTHING)
        .value("NEAREST", VORN3D::OutsideHull3::NEAREST)
        .value("CLAMP", VORN3D::OutsideHull3::CLAMP);

    nb::class_<Triangulation>(m, "Triangulation")
        .def(
            "__init__",
            [](Triangulation* p, bool bCanonical) {
                new (p)
                    Triangulation(bCanonical ? Triangulation::Order::CANONICAL : Triangulation::Order::CURVE);
            },
            "canonical"_a)
        .def("insert", &bindInsert, "points"_a, "progress"_a.none())
        .def("check", &bindCheck, "progress"_a.none())
        .def("num_points", [](Self t) { return read(t, [](Self u) { return u.getNumPoints(); }); })
        .def("num_simplices", [](Self t) { return read(t, [](Self u) { return u.getTets().size(); }); })
        .def("dimension", [](Self t) { return read(t, [](Self u) { return u.getMesh().getDimension(); }); })
        .def("mesh", &bindMesh)
        .def("hull_facets", [](Self t) { return toMatrix<3>(read(t, makeHullFacets)); })
        .def("point_to_vertex", [](Self t) { return toArray(read(t, makePointToVertex)); })
        .def("vertex_to_simplex", [](Self t) { return toArray(read(t, makeVertexToSimplex)); })
        .def("vertex_neighbors", &bindVertexNeighbors)
        .def("circumspheres", [](Self t) { return toMatrix<4>(read(t, makeCircumspheres)); })
        .def("find_simplices", &bindFindSimplices, "points"_a)
        .def("locate", &bindLocate, "points"_a, "starts"_a.none())
        .def("nearest", &bindNearest, "points"_a, "k"_a)
        .def("interpolate", &bindInterpolate, "method"_a, "outside"_a, "tolerance"_a, "points"_a, "values"_a)
        .def("weights", &bindWeights, "method"_a, "outside"_a, "tolerance"_a, "points"_a);
}
