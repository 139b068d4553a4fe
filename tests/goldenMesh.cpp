// The mesh is the same everywhere: whatever compiler, optimisation, configuration, linkage and processor, a
// batch of points yields the same tetrahedra, also where cospherical points leave a choice. A program of its
// own that needs the library alone, so that it can be built and run anywhere; exit status 0 if all meshes are
// as expected.
#include "PointSets.h"

#include "vorn3d/Vorn_3D.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iostream>
#include <iterator>
#include <numeric>

namespace VORN3D::tests
{

namespace
{

// A tetrahedron by input indices: its corners in ascending order, each followed by the vertex across the
// facet opposite it, -1 on the hull.
std::array<int, 8> describe(const Tet3* pTet)
{
    std::array<std::pair<int, int>, 4> corners;
    for (int i = 0; i < 4; ++i) {
        const Point3* pAcross = pTet->getOppVtxInOppTet(i, true);
        corners[static_cast<std::size_t>(i)] = {pTet->getCorner(i)->getCustomIndex(),
                                                pAcross == nullptr ? -1 : pAcross->getCustomIndex()};
    }
    std::sort(corners.begin(), corners.end());
    return {corners[0].first, corners[0].second, corners[1].first, corners[1].second,
            corners[2].first, corners[2].second, corners[3].first, corners[3].second};
}

// FNV-1a over the descriptions in ascending order.
std::uint64_t getHash(const Vorn_3D& dt)
{
    std::vector<Tet3*> vTets;
    dt.getTetrahedra(vTets);
    std::vector<std::array<int, 8>> vDescriptions(vTets.size());
    std::transform(vTets.begin(), vTets.end(), vDescriptions.begin(), describe);
    std::sort(vDescriptions.begin(), vDescriptions.end());
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (const auto& description : vDescriptions)
        for (const int index : description)
            hash = (hash ^ static_cast<std::uint32_t>(index)) * 0x100000001b3u;
    return hash;
}

std::vector<Point3> inCanonicalOrder(const std::vector<Point3>& vPoints)
{
    std::vector<std::uint64_t> vIndices(vPoints.size());
    std::iota(vIndices.begin(), vIndices.end(), std::uint64_t{0});
    std::vector<Point3> vOrdered;
    for (const std::size_t position : getCanonicalOrder(vPoints, vIndices, Bbox3(vPoints)))
        vOrdered.push_back(vPoints[position]);
    return vOrdered;
}

void insertAlongCurve(Vorn_3D& dt, std::vector<Point3> vPoints)
{
    dt.insert(vPoints);
}

void insertInCanonicalOrder(Vorn_3D& dt, std::vector<Point3> vPoints)
{
    std::vector<Point3> vOrdered = inCanonicalOrder(vPoints);
    std::vector<Point3*> vHandles;
    dt.insertOrdered(vOrdered, vHandles);
}

using Insertion = void (*)(Vorn_3D&, std::vector<Point3>);

std::uint64_t getHashOfSet(const std::string& name, std::size_t num, Insertion insert)
{
    const auto& vSets = getPointSets();
    const auto set =
        std::find_if(vSets.begin(), vSets.end(), [&](const PointSet& s) { return s.name == name; });
    Vorn_3D dt;
    insert(dt, makePoints(*set, num));
    return getHash(dt);
}

bool isAsExpected(const std::string& name, std::size_t num, Insertion insert, std::uint64_t expected)
{
    const std::uint64_t hash = getHashOfSet(name, num, insert);
    std::cout << name << ": " << hash << ", expected " << expected << std::endl;
    return hash == expected;
}

} // namespace

} // namespace VORN3D::tests

int main()
{
    using namespace VORN3D::tests;
    const bool aSame[] = {isAsExpected("UniformCube", 5000, insertAlongCurve, 3095987487718199781u),
                          isAsExpected("Grid", 3000, insertAlongCurve, 8267784413546751409u),
                          isAsExpected("RoundedSphere", 2000, insertAlongCurve, 8075639460702718698u),
                          isAsExpected("UniformCube", 5000, insertInCanonicalOrder, 3095987487718199781u),
                          isAsExpected("Grid", 3000, insertInCanonicalOrder, 7765875101834669015u),
                          isAsExpected("LatticeSphere", 2000, insertInCanonicalOrder, 1881378717269860648u)};
    return std::all_of(std::begin(aSame), std::end(aSame), [](bool bSame) { return bSame; }) ? 0 : 1;
}
