// The validity checker: what must be true of every tetrahedron and of every facet between two of them. That
// these local conditions hold everywhere makes the whole a Delaunay tetrahedralization (B. Delaunay, Sur la
// sphere vide, 1934).
#include "kernel/Dt3.h"
#include "vorn3d/hosting.h"

#include "mesh/indexTables.h"
#include "nalo_tools/assertion.h"
#include "nalo_tools/log.h"
#include "scenes/Visualizer3.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <functional>
#include <iomanip>
#include <locale>
#include <sstream>

namespace VORN3D
{

namespace
{

// So many tetrahedra are checked from one call of the progress observer to the next.
constexpr std::size_t OBSERVED_TETS = 4096;

// Thrown where the observer asks to stop, caught at the end of the check.
struct Stop
{
};

// The files of all triangulations of the process are numbered in a row, so that none overwrites another.
std::string makeDumpFilename(const std::string& baseName)
{
    static std::atomic<int> lastNumber{-1};
    std::ostringstream os;
    os.imbue(std::locale::classic());
    os << std::setw(5) << std::setfill('0') << lastNumber.fetch_add(1, std::memory_order_relaxed) + 1 << "_"
       << baseName;
    return os.str();
}

void printHeader(const std::string& name, std::size_t numTets, bool bCheckSphereInc)
{
    messages() << "\n\n** CheckValidity at [ " << name << "]: Number of tetrahedra: " << numTets << "\n"
               << "   with --checkvisited\n"
               << (bCheckSphereInc ? "   with" : "   without") << " --checkSphereInc\n"
               << "   vTets.size()=" << numTets << std::endl;
}

void printBanner(const std::string& message)
{
    constexpr std::size_t MARGIN = 18;
    const std::string row(message.size() + 2 * MARGIN, '*');
    messages() << "\n" << row << "\n" << std::string(MARGIN, ' ') << message << "\n" << row << "\n\n";
}

const char* getSideText(Orientation3 side)
{
    return side == ORIENTATION3_POSITIVE   ? "positive"
           : side == ORIENTATION3_NEGATIVE ? "negative"
                                           : "coplanar";
}

void writeSphereScene(const Tet3* pTet, const Point3* pVtx)
{
    Visualizer3 scene(makeDumpFilename("sphereIncBug.list"));
    scene.writeTet(pTet, RED);
    scene.writePoint(*pVtx, 8, WHITE);
    const Point3 center = pTet->getCircumcenter();
    const Vector3 radius = *pTet->getCorner(0) - center;
    const double sqRadius = dotProduct(radius, radius);
    // A flat tetrahedron has no sphere, and a viewer refuses a scene with infinite numbers altogether.
    if (std::isfinite(sqRadius))
        scene.writeSphere(center, sqRadius);
    scene.close();
}

} // namespace

bool Dt3::checkValidity(const std::string& name, bool /*bCheckVisited*/, bool bCheckSphereInc) const
try {
    std::vector<Tet3*> vTets;
    getAllTetrahedra(vTets);
    printHeader(name, vTets.size(), bCheckSphereInc);
    if (!areAllFlawless(vTets, bCheckSphereInc))
        for (std::size_t n = 0; n < vTets.size(); ++n) {
            if (n % OBSERVED_TETS == 0 && !isToGoOn(n, vTets.size()))
                throw Stop();
            if (!checkTet(vTets[n], name, bCheckSphereInc))
                return false;
        }
    isToGoOn(vTets.size(), vTets.size());
    messages() << "** CheckValidity at (" << name << ") has been finished, seems OK\n" << std::endl;
    return true;
} catch (const Stop&) {
    messages() << "** CheckValidity at (" << name << ") has been stopped\n" << std::endl;
    return false;
}

bool Dt3::areAllFlawless(const std::vector<Tet3*>& vTets, bool bCheckSphereInc) const
{
    // Neighbours lie anywhere in memory: most of the time would go into waiting for them.
    constexpr std::size_t NUM_AHEAD = 12;
    for (std::size_t n = 0; n < vTets.size(); ++n) {
        if (n % OBSERVED_TETS == 0 && !isToGoOn(n, vTets.size()))
            throw Stop();
        const Tet3* pComing = vTets[std::min(n + NUM_AHEAD, vTets.size() - 1)];
        for (int i = 0; i < 4; ++i) {
            __builtin_prefetch(pComing->aOppTet[i]);
            __builtin_prefetch(pComing->aVertexPointer[i]);
        }
        if (!isFlawless(vTets[n], bCheckSphereInc))
            return false;
    }
    return true;
}

// If all tetrahedra are flawless, checkTet() finds no fault in any of them; this is the quicker way to see
// it. Where two tetrahedra have the same facet, seen in opposite senses, the far vertex of one is beyond the
// facet exactly if that one is positively oriented; and the sphere tests from both sides have the same
// determinant. So one orientation serves for four facets, and one sphere test for both sides of a facet.
bool Dt3::isFlawless(const Tet3* pTet, bool bCheckSphereInc) const
{
    const auto& aCorner = pTet->aVertexPointer;
    if (pTet->hasBeenVisited ||
        predicates.getOrientation3(aCorner[0], aCorner[1], aCorner[2], aCorner[3]) != ORIENTATION3_POSITIVE)
        return false;
    const Point3* aFarVtx[4];
    int numFarVtx = 0;
    for (int i = 0; i < 4; ++i) {
        const Tet3* pNeighbor = pTet->aOppTet[i];
        if (pNeighbor == nullptr)
            continue;
        const int k = findIndexInNeighbor(pTet, i);
        if (k < 0 || pNeighbor->hasBeenVisited)
            return false;
        aFarVtx[numFarVtx] = pNeighbor->aVertexPointer[k];
        numFarVtx += std::less<>()(pTet, pNeighbor);
    }
    return !bCheckSphereInc || std::all_of(aFarVtx, aFarVtx + numFarVtx, [&](const Point3* pFarVtx) {
        return predicates.sphereInclusionTest(pTet, pFarVtx) != SIC_INSIDE;
    });
}

// The index of the facet that neighbour ici has in common with pTet; -1 unless it links back, once, across a
// facet that has the same vertices and sees them in the opposite sense. Without unpredictable branches.
int Dt3::findIndexInNeighbor(const Tet3* pTet, int ici)
{
    const auto find = [](const auto& array, const auto* p) {
        return (array[1] == p) + 2 * (array[2] == p) + 3 * (array[3] == p);
    };
    const Tet3* pNeighbor = pTet->aOppTet[ici];
    const auto& aOpp = pNeighbor->aOppTet;
    const auto& aFarCorner = pNeighbor->aVertexPointer;
    const int numLinks = (aOpp[0] == pTet) + (aOpp[1] == pTet) + (aOpp[2] == pTet) + (aOpp[3] == pTet);
    if (numLinks != 1)
        return -1;
    const int k = find(aOpp, pTet);
    const int(&facet)[3] = INWARD_FACET[ici];
    const auto corner = [&](int n) { return pTet->aVertexPointer[facet[n]]; };
    const int j = find(aFarCorner, corner(0)) & 3;
    const bool bReversed = j != k && aFarCorner[j] == corner(0) &&
                           aFarCorner[EDGE_SOURCE[k][j]] == corner(1) &&
                           aFarCorner[EDGE_TARGET[k][j]] == corner(2);
    return bReversed ? k : -1;
}

// Says whether pTet is without fault; the first fault is described.
bool Dt3::checkTet(const Tet3* pTet, const std::string& name, bool bCheckSphereInc) const
{
    checkUnvisited(pTet);
    for (int i = 0; i < 4; ++i) {
        // A neighbour that does not point back ends the process here.
        const Point3* pFarVtx = pTet->getOppVtxInOppTet(i, true);
        if (pFarVtx == nullptr)
            continue;
        if (!checkNegativeSide(pTet, i, pFarVtx, name))
            return false;
        if (bCheckSphereInc && !checkEmptySphere(pTet, pFarVtx))
            return false;
    }
    return true;
}

// Only dead records carry the mark between two insertions.
void Dt3::checkUnvisited(const Tet3* pTet)
{
    if (!pTet->hasBeenVisited)
        return;
    logError("Dt3::CheckValidity()", "pcurrentTet->hasBeenvisited=true");
    messages() << *pTet << "\n";
    VORN_ASSERT_TEXT(false, "false");
}

// Neighbours lie on different sides of their facet: the far vertex of one is beyond the facet for the other.
bool Dt3::checkNegativeSide(const Tet3* pTet, int ici, const Point3* pFarVtx, const std::string& name) const
{
    const Orientation3 side = predicates.getOrientation3(pTet, ici, pFarVtx);
    if (side == ORIENTATION3_NEGATIVE)
        return true;
    const void* const address = pFarVtx;
    printBanner("ERROR: checkValidity at [" + name + "]");
    messages() << "Dt3::checkValidity, HUH, vertex " << address << " should be on the negative side, tet=\n"
               << *pTet << "oppIndex=" << ici << ", Vertex=" << address << "=" << *pFarVtx << "\n"
               << "checkValidity: " << getSideText(side) << std::endl;
    show(makeDumpFilename("negSideBug.list"), pFarVtx);
    return false;
}

// No far vertex lies strictly inside the circumscribed sphere; one on the sphere is no fault.
bool Dt3::checkEmptySphere(const Tet3* pTet, const Point3* pFarVtx) const
{
    if (predicates.sphereInclusionTest(pTet, pFarVtx) != SIC_INSIDE)
        return true;
    printBanner("checkValidity: ERROR ERROR ERROR");
    messages() << "Dt3::checkValidity, HUH - sphereIncTest failed: \n"
               << *pTet << ", Vertex=" << static_cast<const void*>(pFarVtx) << "=" << *pFarVtx << std::endl;
    writeSphereScene(pTet, pFarVtx);
    return false;
}

} // namespace VORN3D
