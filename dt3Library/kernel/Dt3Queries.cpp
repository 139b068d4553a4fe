// Reading the mesh back, as lists, as text and as a scene.
#include "kernel/Dt3.h"
#include "vorn3d/hosting.h"

#include "nalo_tools/AddressSet.h"
#include "nalo_tools/assertion.h"
#include "nalo_tools/log.h"
#include "scenes/Visualizer3.h"

#include <algorithm>
#include <functional>

namespace VORN3D
{

namespace
{

// Appends, in ascending address order, the tetrahedra reached from pStart across the facets k of a
// tetrahedron T for which crosses(T, k). Reads the mesh only.
template <typename Crosses>
void flood(Tet3* pStart, const Crosses& crosses, std::vector<Tet3*>& vTets)
{
    AddressSet<Tet3> seen;
    const std::size_t first = vTets.size();
    const auto reach = [&](Tet3* pTet) {
        if (seen.insert(pTet))
            vTets.push_back(pTet);
    };
    reach(pStart);
    for (std::size_t i = first; i < vTets.size(); ++i)
        for (int k = 0; k < 4; ++k)
            if (Tet3* pNeighbor = vTets[i]->getOppTet(k); pNeighbor != nullptr && crosses(vTets[i], k))
                reach(pNeighbor);
    std::sort(vTets.begin() + static_cast<std::ptrdiff_t>(first), vTets.end(), std::less<>());
}

} // namespace

void Dt3::getAllTetrahedra(std::vector<Tet3*>& vTet) const
{
    VORN_REQUIRE_TEXT(vTet.empty(), "vTet.empty()");
    // The live records are those without the mark. If marks and lists disagree the mesh is damaged, and what
    // hangs together is found by following the links.
    const std::size_t numLive = tets.getNumTets();
    vTet.reserve(numLive);
    tets.forEachRecord([&vTet](Tet3* pTet) {
        if (!pTet->hasBeenVisited)
            vTet.push_back(pTet);
    });
    if (vTet.size() != numLive)
        followLinks(vTet);
    if (vTet.empty())
        messages() << "Dt3::getAllTetrahedra(), oneTet==NULL" << std::endl;
}

// Fills vTet with what hangs together with the first live tetrahedron, whatever its marks.
void Dt3::followLinks(std::vector<Tet3*>& vTet) const
{
    vTet.clear();
    if (Tet3* pStart = findLiveTet())
        flood(
            pStart, [](const Tet3*, int) { return true; }, vTet);
}

void Dt3::getTetsAroundVertex(const Point3* pVtx, std::vector<Tet3*>& vTets) const
{
    if (pVtx == nullptr || pVtx->getOneTet() == nullptr || !hc.owns(pVtx)) {
        logError("Dt3::getTetsAroundVertex()", "pVtx does not belong to the triangulation");
        return;
    }
    flood(
        pVtx->getOneTet(), [pVtx](const Tet3* pTet, int k) { return pTet->getIntraTetIndex(pVtx) != k; },
        vTets);
}

// The tetrahedron of the first vertex in curve order that has one without the mark.
Tet3* Dt3::findLiveTet() const
{
    std::vector<Point3*> vVertices;
    hc.getVertices(vVertices);
    for (const Point3* pVtx : vVertices)
        if (Tet3* pTet = pVtx->getOneTet(); pTet != nullptr && !pTet->hasBeenVisited)
            return pTet;
    return nullptr;
}

void Dt3::getVertices(std::vector<Point3*>& v) const
{
    hc.getVertices(v);
}

void Dt3::print(const std::string& name) const
{
    std::vector<Tet3*> vTets;
    getAllTetrahedra(vTets);
    messages() << "\n\n**** Dt3::print(" << name << "), numTets=" << vTets.size() << "\n";
    for (const Tet3* pTet : vTets)
        messages() << *pTet << "\n\n";
    messages().flush();
}

void Dt3::show(const std::string& filename, const Point3* pVtx) const
{
    std::vector<Tet3*> vTets;
    getAllTetrahedra(vTets);
    messages() << "  Dt3::show(): vTets.size()=" << vTets.size() << std::endl;
    Visualizer3 scene(filename);
    for (const Tet3* pTet : vTets) {
        scene.writeTet(pTet, scene.getNextColor());
        for (const Point3* pCorner : pTet->aVertexPointer)
            scene.writePoint(*pCorner, 5, GREEN);
    }
    if (pVtx != nullptr)
        scene.writePoint(*pVtx, 10, RED);
    scene.close();
}

} // namespace VORN3D
