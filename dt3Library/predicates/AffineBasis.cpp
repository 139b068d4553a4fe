#include "predicates/AffineBasis.h"

#include <algorithm>
#include <iterator>

namespace VORN3D
{

bool AffineBasis::tryAdd(Point3* pVtx)
{
    if (isFullDimensional() || !isIndependent(pVtx))
        return false;
    m_vVertices.push_back(pVtx);
    return true;
}

bool AffineBasis::isIndependent(const Point3* pVtx) const
{
    switch (m_vVertices.size()) {
    case 0:
        return true;
    case 1:
        return *pVtx != *m_vVertices[0];
    case 2:
        return !isCollinear(pVtx);
    default:
        return m_predicates.getOrientation3(m_vVertices[0], m_vVertices[1], m_vVertices[2], pVtx) !=
               ORIENTATION3_COPLANAR;
    }
}

// Three points are collinear exactly if they are coplanar with each of four points that span space.
bool AffineBasis::isCollinear(const Point3* pVtx) const
{
    static const Point3 PROBES[4] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    return std::all_of(std::begin(PROBES), std::end(PROBES), [&](const Point3& probe) {
        return m_predicates.getOrientation3(m_vVertices[0], m_vVertices[1], pVtx, &probe) ==
               ORIENTATION3_COPLANAR;
    });
}

} // namespace VORN3D
