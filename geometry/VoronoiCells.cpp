#include "vorn3d/geometry/VoronoiCells.h"

#include "CellBounds.h"
#include "ConvexCell.h"
#include "Groups.h"
#include "VoronoiDual.h"
#include "nalo_tools/assertion.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

namespace VORN3D
{

namespace
{

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double NONE = std::numeric_limits<double>::quiet_NaN();

/// The length, of ordinary vectors in a fraction of the time of std::hypot().
double getSafeLength(const Vec& v)
{
    const double square = dot(v, v);
    return square > 1e-280 && square < 1e280 ? std::sqrt(square) : std::hypot(v.x, v.y, v.z);
}

Vec divide(const Vec& v, double divisor)
{
    return {v.x / divisor, v.y / divisor, v.z / divisor};
}

/// A polygon, and the pyramid that it makes with the origin.
struct PolygonMeasures
{
    double area = 0.0;
    double volume = 0.0;
    Vec moment; ///< the volume times its centroid
};

/// For corners counter-clockwise as seen from where the unit normal points, in a plane at this distance.
template <class GetCorner>
PolygonMeasures measurePolygon(std::size_t numCorners, const GetCorner& getCorner, const Vec& normal,
                               double distance)
{
    PolygonMeasures polygon;
    const Vec first = getCorner(0);
    Vec before = getCorner(1);
    Vec fourfoldMoment;
    for (std::size_t i = 2; i < numCorners; ++i) {
        const Vec corner = getCorner(i);
        const double doubleArea = dot(cross(before - first, corner - first), normal);
        polygon.area += doubleArea;
        fourfoldMoment = fourfoldMoment + doubleArea * (first + before + corner);
        before = corner;
    }
    polygon.area /= 2.0;
    polygon.volume = polygon.area * distance / 3.0;
    polygon.moment = (distance / 24.0) * fourfoldMoment;
    return polygon;
}

/// Sums over the faces of each cell, as its site sees them.
class MeasureSums
{
public:
    explicit MeasureSums(std::size_t numCells) : m_vSums(numCells) {}

    void add(std::uint32_t cell, const PolygonMeasures& polygon)
    {
        PolygonMeasures& sum = m_vSums[cell];
        sum.area += polygon.area;
        sum.volume += polygon.volume;
        sum.moment = sum.moment + polygon.moment;
    }

    void setUnbounded(std::uint32_t cell) { m_vSums[cell] = {INFINITE, INFINITE, {}}; }
    void clear(std::uint32_t cell) { m_vSums[cell] = {}; }

    VoronoiMeasures finish(const std::vector<Point3*>& vHandles) const
    {
        VoronoiMeasures measures;
        for (std::size_t i = 0; i < m_vSums.size(); ++i) {
            const auto& [area, volume, moment] = m_vSums[i];
            measures.vVolumes.push_back(volume);
            measures.vAreas.push_back(area);
            const Point3& site = *vHandles[i];
            if (volume > 0.0 && volume < INFINITE)
                measures.vCentroids.push_back({site.x() + moment.x / volume, site.y() + moment.y / volume,
                                               site.z() + moment.z / volume});
            else
                measures.vCentroids.push_back({NONE, NONE, NONE});
        }
        return measures;
    }

private:
    std::vector<PolygonMeasures> m_vSums;
};

/// The faces of the whole cells, each once.
struct Faces
{
    std::vector<std::array<std::uint32_t, 2>> vSites;
    std::vector<double> vAreas;
    std::vector<std::size_t> vFirstCorner = {0};
    std::vector<std::uint32_t> vCorners; ///< as VoronoiFace has them
};

/// Makes the cells of one mesh: whole cells from the faces of the dual, others by cutting.
class CellMaker
{
public:
    /// No bounds if they are null.
    CellMaker(const Vorn_3D& dt, const std::vector<Point3*>& vHandles, const CellBounds* pBounds)
        : m_vHandles(vHandles), m_dual(dt, vHandles), m_pBounds(pBounds), m_sums(vHandles.size()),
          m_vStates(vHandles.size(), State::WHOLE)
    {
        findOutsideCorners();
    }

    VoronoiMeasures measure()
    {
        m_dual.forEachFace([this](const VoronoiFace& face) {
            addToSums(face);
            if (m_pBounds != nullptr)
                m_faces.vSites.push_back({face.first, face.second});
        });
        const Groups<std::uint32_t> faceSides =
            groupFaceSides([this](std::uint32_t cell) { return isCut(cell); });
        forEachCell([&](std::uint32_t cell) {
            if (isCut(cell))
                cutOut(cell, faceSides);
        });
        return finishMeasures();
    }

    VoronoiCells make()
    {
        m_dual.forEachFace([this](const VoronoiFace& face) {
            m_faces.vAreas.push_back(addToSums(face));
            m_faces.vSites.push_back({face.first, face.second});
            m_faces.vCorners.insert(m_faces.vCorners.end(), face.vCorners.begin(), face.vCorners.end());
            m_faces.vFirstCorner.push_back(m_faces.vCorners.size());
        });
        const Groups<std::uint32_t> faceSides = groupFaceSides([](std::uint32_t) { return true; });
        addDualCorners();
        m_cells.vFirstFace.push_back(0);
        m_cells.vFirstCorner.push_back(0);
        forEachCell([&](std::uint32_t cell) {
            if (isCut(cell))
                addCutCell(cell, cutOut(cell, faceSides));
            else
                addWholeCell(cell, faceSides);
            m_cells.vFirstFace.push_back(m_cells.vNeighbors.size());
        });
        if (m_pBounds != nullptr)
            m_cells.numFiniteCorners = static_cast<std::uint32_t>(m_cells.vCorners.size());
        m_cells.measures = finishMeasures();
        return std::move(m_cells);
    }

private:
    enum class State : std::uint8_t { WHOLE, UNBOUNDED, CUT };

    bool isCut(std::uint32_t cell) const { return m_vStates[cell] == State::CUT; }

    template <class Use>
    void forEachCell(const Use& use) const
    {
        for (std::uint32_t cell = 0; cell < m_vHandles.size(); ++cell)
            use(cell);
    }

    VoronoiMeasures finishMeasures()
    {
        forEachCell([this](std::uint32_t cell) {
            if (m_vStates[cell] == State::UNBOUNDED)
                m_sums.setUnbounded(cell);
        });
        return m_sums.finish(m_vHandles);
    }

    void findOutsideCorners()
    {
        m_vOutside.resize(m_dual.getNumFiniteCorners() + m_dual.getDirections().size(), 1);
        for (std::uint32_t corner = 0; corner < m_dual.getNumFiniteCorners(); ++corner)
            m_vOutside[corner] = m_pBounds != nullptr &&
                                 !m_pBounds->contains(m_dual.getPosition(corner), m_dual.getAnchor(corner));
    }

    /// Counts a face for both of its cells and returns its area, infinite if it extends beyond the region.
    double addToSums(const VoronoiFace& face)
    {
        const auto isOutside = [this](std::uint32_t corner) { return m_vOutside[corner] != 0; };
        if (std::any_of(face.vCorners.begin(), face.vCorners.end(), isOutside)) {
            const State state = m_pBounds == nullptr ? State::UNBOUNDED : State::CUT;
            m_vStates[face.first] = m_vStates[face.second] = state;
            return INFINITE;
        }
        const Vec difference = m_dual.getDifference(face.first, face.second);
        const double distance = getSafeLength(difference);
        PolygonMeasures polygon = measurePolygon(
            face.vCorners.size(),
            [&](std::size_t i) { return m_dual.getVector(face.first, face.vCorners[i]); },
            divide(difference, distance), distance / 2.0);
        m_sums.add(face.first, polygon);
        // As the second site sees it.
        polygon.moment = polygon.moment - (0.75 * polygon.volume) * difference;
        m_sums.add(face.second, polygon);
        return polygon.area;
    }

    /// For each wanted cell its faces, twice their number, plus one if it is the second site.
    template <class IsWanted>
    Groups<std::uint32_t> groupFaceSides(const IsWanted& isWanted) const
    {
        return Groups<std::uint32_t>(m_vHandles.size(), [&](const auto& use) {
            std::uint32_t side = 0;
            for (const auto& sites : m_faces.vSites)
                for (const std::uint32_t site : sites) {
                    if (isWanted(site))
                        use(site, side);
                    ++side;
                }
        });
    }

    /// What is beyond a face from one of its sides.
    std::uint32_t getNeighbor(std::uint32_t side) const { return m_faces.vSites[side / 2][1 - side % 2]; }

    /// Cuts the region by the planes between a site and its neighbours, and measures the rest.
    ConvexCell cutOut(std::uint32_t site, const Groups<std::uint32_t>& faceSides)
    {
        struct Neighbor
        {
            Vec direction;
            double distance;
            std::uint32_t number;
        };
        std::vector<Neighbor> vNeighbors;
        std::for_each(faceSides.begin(site), faceSides.end(site), [&](std::uint32_t side) {
            const std::uint32_t number = getNeighbor(side);
            const Vec d = m_dual.getDifference(site, number);
            const double distance = getSafeLength(d);
            vNeighbors.push_back({divide(d, distance), distance, number});
        });
        // Later cuts have less to do.
        std::sort(vNeighbors.begin(), vNeighbors.end(), [](const Neighbor& a, const Neighbor& b) {
            return a.distance != b.distance ? a.distance < b.distance : a.number < b.number;
        });
        ConvexCell cell = m_pBounds->makeBox(*m_vHandles[site], vNeighbors.front().distance);
        for (const auto& [direction, distance, number] : vNeighbors)
            cell.cut({direction, distance / 2.0}, number);
        m_pBounds->finish(cell, *m_vHandles[site]);

        m_sums.clear(site);
        for (const ConvexCell::Face& face : cell.getFaces())
            m_sums.add(site, measureFace(cell, face));
        return cell;
    }

    static PolygonMeasures measureFace(const ConvexCell& cell, const ConvexCell::Face& face)
    {
        return measurePolygon(
            face.vCorners.size(), [&](std::size_t i) { return cell.getCorners()[face.vCorners[i]]; },
            face.halfSpace.normal, face.halfSpace.offset);
    }

    void addDualCorners()
    {
        m_cells.numFiniteCorners = m_dual.getNumFiniteCorners();
        for (std::uint32_t corner = 0; corner < m_dual.getNumFiniteCorners(); ++corner)
            m_cells.vCorners.push_back(m_dual.getPosition(corner));
        if (m_pBounds == nullptr)
            m_cells.vCorners.insert(m_cells.vCorners.end(), m_dual.getDirections().begin(),
                                    m_dual.getDirections().end());
    }

    void addWholeCell(std::uint32_t cell, const Groups<std::uint32_t>& faceSides)
    {
        std::for_each(faceSides.begin(cell), faceSides.end(cell), [&](std::uint32_t side) {
            const auto begin = m_faces.vCorners.begin();
            const auto first = begin + static_cast<std::ptrdiff_t>(m_faces.vFirstCorner[side / 2]);
            const auto last = begin + static_cast<std::ptrdiff_t>(m_faces.vFirstCorner[side / 2 + 1]);
            std::vector<std::uint32_t>& vCorners = m_cells.vFaceCorners;
            if (side % 2 == 0)
                vCorners.insert(vCorners.end(), first, last);
            else
                vCorners.insert(vCorners.end(), std::make_reverse_iterator(last),
                                std::make_reverse_iterator(first));
            finishFace(getNeighbor(side), m_faces.vAreas[side / 2]);
        });
    }

    void addCutCell(std::uint32_t site, const ConvexCell& cell)
    {
        const auto firstCorner = static_cast<std::uint32_t>(m_cells.vCorners.size());
        const Point3& p = *m_vHandles[site];
        for (const Vec& v : cell.getCorners())
            m_cells.vCorners.push_back({p.x() + v.x, p.y() + v.y, p.z() + v.z});
        for (const ConvexCell::Face& face : cell.getFaces()) {
            for (const std::uint32_t corner : face.vCorners)
                m_cells.vFaceCorners.push_back(firstCorner + corner);
            finishFace(face.label, measureFace(cell, face).area);
        }
    }

    void finishFace(std::uint32_t neighbor, double area)
    {
        m_cells.vNeighbors.push_back(neighbor);
        m_cells.vFaceAreas.push_back(area);
        m_cells.vFirstCorner.push_back(m_cells.vFaceCorners.size());
    }

    const std::vector<Point3*>& m_vHandles;
    const VoronoiDual m_dual;
    const CellBounds* const m_pBounds;
    MeasureSums m_sums;
    std::vector<State> m_vStates;         // by cell
    std::vector<std::uint8_t> m_vOutside; // by corner: at infinity, or outside the bounds
    Faces m_faces;
    VoronoiCells m_cells;
};

/// Calls use(CellMaker) with the bounds of the region.
///@{
template <class Use>
auto withRegion(const Vorn_3D& dt, const std::vector<Point3*>& vHandles, VoronoiClip3 clip, const Use& use)
{
    if (clip == VoronoiClip3::NONE)
        return use(CellMaker(dt, vHandles, nullptr));
    const HullBounds bounds(dt, vHandles);
    return use(CellMaker(dt, vHandles, &bounds));
}

template <class Use>
auto withRegion(const Vorn_3D& dt, const std::vector<Point3*>& vHandles, const Bbox3& box, const Use& use)
{
    const auto isRange = [](double min, double max) { return min < max && max - min < INFINITE; };
    VORN_REQUIRE_TEXT(isRange(box.getMinX(), box.getMaxX()) && isRange(box.getMinY(), box.getMaxY()) &&
                          isRange(box.getMinZ(), box.getMaxZ()),
                      "a box with an inside");
    const BoxBounds bounds(box);
    return use(CellMaker(dt, vHandles, &bounds));
}
///@}

} // namespace

VoronoiCells makeVoronoiCells(const Vorn_3D& dt, const std::vector<Point3*>& vUserHandles, VoronoiClip3 clip)
{
    return withRegion(dt, vUserHandles, clip, [](CellMaker maker) { return maker.make(); });
}

VoronoiCells makeVoronoiCells(const Vorn_3D& dt, const std::vector<Point3*>& vUserHandles, const Bbox3& box)
{
    return withRegion(dt, vUserHandles, box, [](CellMaker maker) { return maker.make(); });
}

VoronoiMeasures measureVoronoiCells(const Vorn_3D& dt, const std::vector<Point3*>& vUserHandles,
                                    VoronoiClip3 clip)
{
    return withRegion(dt, vUserHandles, clip, [](CellMaker maker) { return maker.measure(); });
}

VoronoiMeasures measureVoronoiCells(const Vorn_3D& dt, const std::vector<Point3*>& vUserHandles,
                                    const Bbox3& box)
{
    return withRegion(dt, vUserHandles, box, [](CellMaker maker) { return maker.measure(); });
}

} // namespace VORN3D
