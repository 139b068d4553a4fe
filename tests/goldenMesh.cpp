// The mesh is the same everywhere: whatever compiler, optimisation, configuration, linkage and processor, a
// batch of points yields the same arrays, also where cospherical points leave a choice. A program of its
// own that needs the library alone, so that it can be built and run anywhere; exit status 0 if all meshes are
// as expected.
#include "PointSets.h"

#include "vorn3d/Vorn_3D.h"

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <iterator>
#include <numeric>

namespace VORN3D::tests
{

namespace
{

// FNV-1a over the arrays.
std::uint64_t getHash(const MeshArrays& mesh)
{
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (const auto* pNumbers : {&mesh.vCorners, &mesh.vNeighbors})
        for (const std::uint32_t number : *pNumbers)
            hash = (hash ^ number) * 0x100000001b3u;
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

MeshArrays triangulateAlongCurve(std::vector<Point3> vPoints)
{
    Vorn_3D dt;
    std::vector<Point3*> vHandles;
    dt.insert(vPoints, vHandles);
    return dt.getArrays(vHandles);
}

MeshArrays triangulateInCanonicalOrder(std::vector<Point3> vPoints)
{
    Vorn_3D dt;
    std::vector<Point3> vOrdered = inCanonicalOrder(vPoints);
    std::vector<Point3*> vHandles;
    dt.insertOrdered(vOrdered, vHandles);
    return dt.getArrays(vHandles);
}

using Triangulate = MeshArrays (*)(std::vector<Point3>);

std::uint64_t getHashOfSet(const std::string& name, std::size_t num, Triangulate triangulate)
{
    const auto& vSets = getPointSets();
    const auto set =
        std::find_if(vSets.begin(), vSets.end(), [&](const PointSet& s) { return s.name == name; });
    return getHash(triangulate(makePoints(*set, num)));
}

bool isAsExpected(const std::string& name, std::size_t num, Triangulate triangulate, std::uint64_t expected)
{
    const std::uint64_t hash = getHashOfSet(name, num, triangulate);
    std::cout << name << ": " << hash << ", expected " << expected << std::endl;
    return hash == expected;
}

} // namespace

} // namespace VORN3D::tests

int main()
{
    using namespace VORN3D::tests;
    const bool aSame[] = {
        isAsExpected("UniformCube", 5000, triangulateAlongCurve, 5282348022117606048u),
        isAsExpected("Grid", 3000, triangulateAlongCurve, 9796135922966860162u),
        isAsExpected("RoundedSphere", 2000, triangulateAlongCurve, 10286839544921100384u),
        isAsExpected("UniformCube", 5000, triangulateInCanonicalOrder, 18321427141421550718u),
        isAsExpected("Grid", 3000, triangulateInCanonicalOrder, 5531360727061033938u),
        isAsExpected("LatticeSphere", 2000, triangulateInCanonicalOrder, 9824263037233830418u)};
    return std::all_of(std::begin(aSame), std::end(aSame), [](bool bSame) { return bSame; }) ? 0 : 1;
}
