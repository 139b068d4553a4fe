// Takes the time of an insertion with the named timer, and counts events under names.
#include <vorn3d/Vorn_3D.h>

#include <iostream>

int main()
{
    std::vector<VORN3D::Point3> vPoints;
    VORN3D::generateRandomPoints(30000, -1, 1, vPoints, 7);

    // The first call with a name starts the timer, the second one stops it; both say so.
    VORN3D::Vorn_3D triangulation;
    VORN3D::timer("insertion");
    triangulation.insert(vPoints);
    const double seconds = VORN3D::timer("insertion");
    std::cout << static_cast<double>(vPoints.size()) / seconds << " points a second\n";

    std::vector<VORN3D::Tet3*> vTets;
    triangulation.getTetrahedra(vTets);
    std::string hullFacets = "hull facets";
    for (const VORN3D::Tet3* pTet : vTets)
        for (int i = 0; i < 4; ++i)
            if (pTet->getOppTet(i) == nullptr)
                benchCounter(hullFacets);
    std::string print = "GETCOUNTERS";
    benchCounter(print);
}
