#include "vorn3d/Triangle3.h"

#include "nalo_tools/assertion.h"
#include "vorn3d/hosting.h"

#include <iostream>

namespace VORN3D
{

namespace
{

constexpr int invalidIndex = -999;

void checkIndex(int i)
{
    VORN_REQUIRE_TEXT(i > -1 && i < 3, "i>-1 && i<3");
}

} // namespace

Triangle3::Triangle3(Point3* p0, Point3* p1, Point3* p2)
    : m_aCorner{p0, p1, p2}, m_aNeighbor{nullptr, nullptr, nullptr}
{
}

Point3* Triangle3::getCorner(int i) const
{
    checkIndex(i);
    return m_aCorner[i];
}

Triangle3* Triangle3::getNeig(int i) const
{
    checkIndex(i);
    return m_aNeighbor[i];
}

void Triangle3::setNeig(int i, Triangle3* pNeighbor)
{
    checkIndex(i);
    m_aNeighbor[i] = pNeighbor;
}

int Triangle3::getIntraTriangleIndex(const Point3* p) const
{
    for (int i = 0; i < 3; ++i)
        if (m_aCorner[i] == p)
            return i;
    std::cerr << "Triangle3::getIntraTriangleIndex(): invalid (p)" << std::endl;
    return invalidIndex;
}

int Triangle3::getIntraTriangleIndex(const Point3* p1, const Point3* p2) const
{
    for (int i = 0; i < 3; ++i) {
        const Point3* pSource = m_aCorner[(i + 1) % 3];
        const Point3* pTarget = m_aCorner[(i + 2) % 3];
        if ((pSource == p1 && pTarget == p2) || (pSource == p2 && pTarget == p1))
            return i;
    }
    std::cerr << "Triangle3::getIntraTriangleIndex(): invalid (p1,p2)" << std::endl;
    messages() << "Have searched for " << static_cast<const void*>(p1) << " and "
               << static_cast<const void*>(p2) << " in " << *this << std::endl;
    return invalidIndex;
}

Point3 Triangle3::getBarycenter() const
{
    const Point3& a = *m_aCorner[0];
    const Point3& b = *m_aCorner[1];
    const Point3& c = *m_aCorner[2];
    return {(a.x() + b.x() + c.x()) / 3, (a.y() + b.y() + c.y()) / 3, (a.z() + b.z() + c.z()) / 3};
}

std::ostream& operator<<(std::ostream& os, const Triangle3& triangle)
{
    os << "Triangle (";
    for (int i = 0; i < 3; ++i)
        os << (i == 0 ? "" : ", ") << static_cast<const void*>(triangle.getCorner(i));
    return os << ")";
}

} // namespace VORN3D
