// vorn3d._core: takes arrays and gives arrays. Checks of arguments, defaults and documentation are in the
// package's Python files.
//
// All work runs without the interpreter's lock, which is taken back for moments: to see whether a signal has
// arrived, and to tell progress.
#include "Triangulation.h"
#include "meshTables.h"
#include "queries.h"

#include <nanobind/nanobind.h>
#include <nanobind/ndarray.h>
#include <nanobind/stl/optional.h>
#include <nanobind/stl/pair.h>
#include <nanobind/stl/tuple.h>

#include <vorn3d/geometry/AlphaComplex.h>
#include <vorn3d/geometry/HullSurface.h>
#include <vorn3d/geometry/VoronoiCells.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <stdexcept>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

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

// An array that takes over the vector's memory. Its numbers may be seen as others of the same size: unsigned
// ones as signed, NO_INDEX as -1, and rows as what they consist of.
template <class NumpyArray, typename Entry>
NumpyArray toNumpy(std::vector<Entry>&& vEntries, std::initializer_list<std::size_t> shape)
{
    using Scalar = typename NumpyArray::Scalar;
    static_assert(std::is_trivially_copyable_v<Entry> && sizeof(Entry) % sizeof(Scalar) == 0);
    auto pOwned = std::make_unique<std::vector<Entry>>(std::move(vEntries));
    const nb::capsule owner(pOwned.get(),
                            [](void* p) noexcept { delete static_cast<std::vector<Entry>*>(p); });
    return NumpyArray(reinterpret_cast<Scalar*>(pOwned.release()->data()), shape, owner);
}

template <typename T, typename Entry>
Array<T> toArray(std::vector<Entry>&& vEntries)
{
    const std::size_t size = vEntries.size();
    return toNumpy<Array<T>>(std::move(vEntries), {size});
}

template <typename T, nb::ssize_t NUM_COLUMNS, typename Entry>
Matrix<T, NUM_COLUMNS> toMatrix(std::vector<Entry>&& vEntries)
{
    constexpr std::size_t numColumns = NUM_COLUMNS;
    const std::size_t numRows = vEntries.size() * sizeof(Entry) / sizeof(T) / numColumns;
    return toNumpy<Matrix<T, NUM_COLUMNS>>(std::move(vEntries), {numRows, numColumns});
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

std::tuple<Matrix<Index, 4>, Matrix<Index, 4>, Array<Index>, Array<Index>>
bindArrays(const Triangulation& triangulation)
{
    MeshArrays mesh = read(triangulation, [](const Triangulation& t) { return t.getArrays(); });
    return {toMatrix<Index, 4>(std::move(mesh.vCorners)), toMatrix<Index, 4>(std::move(mesh.vNeighbors)),
            toArray<Index>(std::move(mesh.vVertices)), toArray<Index>(std::move(mesh.vTets))};
}

std::pair<Array<Index>, Array<Index>> bindVertexNeighbors(const Triangulation& triangulation)
{
    const Pulse pulse = makePulse();
    VertexNeighbors neighbors =
        read(triangulation, [&pulse](const Triangulation& t) { return makeVertexNeighbors(t, pulse); });
    return {toArray<Index>(std::move(neighbors.vStarts)), toArray<Index>(std::move(neighbors.vVertices))};
}

HullSurface readHullSurface(const Triangulation& triangulation)
{
    return makeHullSurface(triangulation.getMesh(), triangulation.getHandles());
}

std::tuple<Array<std::int64_t>, Array<Index>, double, double>
bindHullPolygons(const Triangulation& triangulation)
{
    auto [polygons, area, volume] = read(triangulation, [](const Triangulation& t) {
        const HullSurface surface = readHullSurface(t);
        return std::tuple(mergeCoplanarTriangles(surface, t.getHandles()), surface.area, surface.volume);
    });
    return {toArray<std::int64_t>(std::move(polygons.vFirst)), toArray<Index>(std::move(polygons.vCorners)),
            area, volume};
}

Matrix<Index, 3> bindHullTriangles(const Triangulation& triangulation)
{
    return toMatrix<Index, 3>(std::move(read(triangulation, readHullSurface).vTriangles));
}

// Corners, the number of finite ones, first faces, neighbours, first corners, corners of faces, and volumes.
std::tuple<Matrix<double, 3>, std::uint32_t, Array<std::int64_t>, Array<Index>, Array<std::int64_t>,
           Array<Index>, Array<double>>
bindVoronoiCells(const Triangulation& triangulation)
{
    VoronoiCells cells = read(
        triangulation, [](const Triangulation& t) { return makeVoronoiCells(t.getMesh(), t.getHandles()); });
    cells.measures.vVolumes.resize(triangulation.getNumPoints(), 0.0);
    return {
        toMatrix<double, 3>(std::move(cells.vCorners)),       cells.numFiniteCorners,
        toArray<std::int64_t>(std::move(cells.vFirstFace)),   toArray<Index>(std::move(cells.vNeighbors)),
        toArray<std::int64_t>(std::move(cells.vFirstCorner)), toArray<Index>(std::move(cells.vFaceCorners)),
        toArray<double>(std::move(cells.measures.vVolumes))};
}

AlphaComplex bindAlphaComplex(const Triangulation& triangulation)
{
    return read(triangulation,
                [](const Triangulation& t) { return AlphaComplex(t.getMesh(), t.getHandles()); });
}

template <class Make>
auto withoutLock(const Make& make)
{
    const nb::gil_scoped_release unlocked;
    return make();
}

AlphaVoids3 toVoids(bool bFilled)
{
    return bFilled ? AlphaVoids3::FILLED : AlphaVoids3::OPEN;
}

std::pair<Matrix<Index, 3>, std::size_t> bindAlphaSurface(const AlphaComplex& complex, double alpha,
                                                          bool bFilled)
{
    AlphaSurface surface = withoutLock([&] { return complex.surface(alpha, toVoids(bFilled)); });
    return {toMatrix<Index, 3>(std::move(surface.vTriangles)), surface.numRegular};
}

std::pair<std::uint32_t, Array<Index>> bindAlphaComponents(const AlphaComplex& complex, double alpha,
                                                           bool bFilled)
{
    AlphaComponents components = withoutLock([&] { return complex.components(alpha, toVoids(bFilled)); });
    return {components.num, toArray<Index>(std::move(components.vComponents))};
}

std::pair<Matrix<Index, -1>, Array<Index>> bindAlphaFaces(const AlphaComplex& complex, int dimension)
{
    const std::size_t num = complex.getNumSimplices(dimension);
    return {toNumpy<Matrix<Index, -1>>(std::vector(complex.getCorners(dimension)),
                                       {num, static_cast<std::size_t>(dimension) + 1}),
            toArray<Index>(std::vector(complex.getRanks(dimension)))};
}

template <class NumpyMatrix>
Rows toRows(const NumpyMatrix& matrix)
{
    return {matrix.data(), matrix.shape(0), matrix.shape(1)};
}

Array<Index> bindFindSimplices(const Triangulation& triangulation, const PointMatrix& points)
{
    const Pulse pulse = makePulse();
    return toArray<Index>(
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
    return {toArray<Index>(std::move(locations.vSimplices)),
            toArray<std::uint8_t>(std::move(locations.vKinds))};
}

Matrix<Index, -1> bindNearest(const Triangulation& triangulation, const PointMatrix& points, std::size_t k)
{
    const Pulse pulse = makePulse();
    return toNumpy<Matrix<Index, -1>>(
        read(triangulation, [&](const Triangulation& t) { return findNearest(t, toRows(points), k, pulse); }),
        {points.shape(0), k});
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
    return {toNumpy<Matrix<double, -1>>(std::move(interpolated.vValues), {points.shape(0), values.shape(1)}),
            toArray<bool>(std::move(interpolated.vFound))};
}

std::tuple<Array<std::int64_t>, Array<Index>, Array<double>>
bindWeights(const Triangulation& triangulation, InterpolationMethod3 method, OutsideHull3 outside,
            double tolerance, const PointMatrix& points)
{
    const Pulse pulse = makePulse();
    Weights weights = read(triangulation, [&](const Triangulation& t) {
        return makeWeights(t, {method, outside, tolerance}, toRows(points), pulse);
    });
    return {toArray<std::int64_t>(std::move(weights.vStarts)), toArray<Index>(std::move(weights.vColumns)),
            toArray<double>(std::move(weights.vWeights))};
}

void bindEnums(nb::module_& m)
{
    nb::enum_<VORN3D::InterpolationMethod3>(m, "Method")
        .value("LINEAR", VORN3D::InterpolationMethod3::LINEAR)
        .value("NATURAL", VORN3D::InterpolationMethod3::NATURAL);
    nb::enum_<VORN3D::OutsideHull3>(m, "Outside")
        .value("NOTHING", VORN3D::OutsideHull3::NOTHING)
        .value("NEAREST", VORN3D::OutsideHull3::NEAREST)
        .value("CLAMP", VORN3D::OutsideHull3::CLAMP);
}

void bindAlpha(nb::module_& m)
{
    const auto unlocked = nb::call_guard<nb::gil_scoped_release>();
    nb::class_<AlphaComplex>(m, "AlphaComplex")
        .def("surface", &bindAlphaSurface, "alpha"_a, "filled"_a)
        .def("components", &bindAlphaComponents, "alpha"_a, "filled"_a)
        .def(
            "volume", [](const AlphaComplex& c, double alpha, bool b) { return c.volume(alpha, toVoids(b)); },
            "alpha"_a, "filled"_a, unlocked)
        .def("critical_alpha", &AlphaComplex::criticalAlpha, "num_components"_a, unlocked)
        .def("enclosing_alpha", &AlphaComplex::enclosingAlpha, unlocked)
        .def("faces", &bindAlphaFaces, "dimension"_a)
        .def("values", [](const AlphaComplex& c) { return toArray<double>(std::vector(c.getValues())); });
}

void bindTriangulation(nb::module_& m)
{
    using Self = const Triangulation&;
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
        .def("dimension", [](Self t) { return read(t, [](Self u) { return u.getMesh().getDimension(); }); })
        .def("arrays", &bindArrays)
        .def("hull_triangles", &bindHullTriangles)
        .def("hull_polygons", &bindHullPolygons)
        .def("voronoi_cells", &bindVoronoiCells)
        .def("alpha_complex", &bindAlphaComplex)
        .def("vertex_neighbors", &bindVertexNeighbors)
        .def("circumspheres", [](Self t) { return toMatrix<double, 4>(read(t, makeCircumspheres)); })
        .def("find_simplices", &bindFindSimplices, "points"_a)
        .def("locate", &bindLocate, "points"_a, "starts"_a.none())
        .def("nearest", &bindNearest, "points"_a, "k"_a)
        .def("interpolate", &bindInterpolate, "method"_a, "outside"_a, "tolerance"_a, "points"_a, "values"_a)
        .def("weights", &bindWeights, "method"_a, "outside"_a, "tolerance"_a, "points"_a);
}

} // namespace

static void bindModule(nb::module_& m)
{
    setUpLibrary();
    bindEnums(m);
    bindAlpha(m);
    bindTriangulation(m);
}

} // namespace VORN3D::python

NB_MODULE(_core, m)
{
    VORN3D::python::bindModule(m);
}
