// The validity checker: what must be true of every tetrahedron and of every facet between two of them. That
// these local conditions hold everywhere makes the whole a Delaunay tetrahedralization (B. Delaunay, Sur la
// sphere vide, 1934).
#include "Dt3.h"

#include "Visualizer3.h"
#include "nalo_tools/assertion.h"
#include "nalo_tools/log.h"

#include <atomic>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <locale>
#include <sstream>

namespace VORN3D
{

namespace
{

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
    std::cout << "\n\n** CheckValidity at [ " << name << "]: Number of tetrahedra: " << numTets << "\n"
              << "   with --checkvisited\n"
              << (bCheckSphereInc ? "   with" : "   without") << " --checkSphereInc\n"
              << "   vTets.size()=" << numTets << std::endl;
}

void printBanner(const std::string& message)
{
    constexpr std::size_t MARGIN = 18;
    const std::string row(message.size() + 2 * MARGIN, '*');
    std::cout << "\n" << row << "\n" << std::string(MARGIN, ' ') << message << "\n" << row << "\n\n";
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
{
    std::vector<Tet3*> vTets;
    getAllTetrahedra(vTets);
    printHeader(name, vTets.size(), bCheckSphereInc);
    for (const Tet3* pTet : vTets) {
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
    }
    std::cout << "** CheckValidity at (" << name << ") has been finished, seems OK\n" << std::endl;
    return true;
}

// Only dead records carry the mark between two insertions.
void Dt3::checkUnvisited(const Tet3* pTet)
{
    if (!pTet->hasBeenVisited)
        return;
    logError("Dt3::CheckValidity()", "pcurrentTet->hasBeenvisited=true");
    std::cout << *pTet << "\n";
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
    std::cout << "Dt3::checkValidity, HUH, vertex " << address << " should be on the negative side, tet=\n"
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
    std::cout << "Dt3::checkValidity, HUH - sphereIncTest failed: \n"
              << *pTet << ", Vertex=" << static_cast<const void*>(pFarVtx) << "=" << *pFarVtx << std::endl;
    writeSphereScene(pTet, pFarVtx);
    return false;
}

} // namespace VORN3D
