// A client of the library, compiled twice: with and without NDEBUG.
#include "clientProbe.h"

#include "vorn3d/Vorn_3D.h"

#ifdef NDEBUG
#define PROBE probeWithNdebug
#else
#define PROBE probeWithAssertions
#endif

using namespace VORN3D;

ClientView PROBE()
{
    Vorn_3D dt;
    std::vector<Point3> vPoints;
    for (int i = 0; i < 343; ++i)
        vPoints.emplace_back(i % 7, i / 7 % 7, i / 49);
    dt.insert(vPoints);
    std::vector<Tet3*> vTets;
    dt.getTetrahedra(vTets);
    ClientView view{{sizeof(Vorn_3D), sizeof(Tet3), sizeof(Point3), sizeof(Facet3), sizeof(Edge3),
                     sizeof(TetAroundEdgeIterator), sizeof(Vector3)},
                    false,
                    vTets.size()};
    try {
        dt.getTetrahedra(vTets); // not empty
    } catch (const VornException&) {
        view.bReportsWrongUse = true;
    }
    return view;
}
