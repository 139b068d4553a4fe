#include "vorn3d/Bbox3.h"

#include "vorn3d/hosting.h"

#include <algorithm>

namespace VORN3D
{

namespace
{

void widen(double& min, double& max, double coordinate)
{
    if (min > coordinate)
        min = coordinate;
    else if (coordinate > max)
        max = coordinate;
}

void enlarge(double& min, double& max, double f)
{
    const double d = (max - min) * f * 0.5;
    min -= d;
    max += d;
}

} // namespace

Bbox3::Bbox3(const std::vector<Point3>& vPoints)
{
    add(vPoints);
}

bool Bbox3::add(const Point3& p)
{
    if (!isValid()) {
        setToPoint(p);
        return true;
    }
    const Bbox3 before(*this);
    treatPointForValidBox(p);
    return getMinPoint() != before.getMinPoint() || getMaxPoint() != before.getMaxPoint();
}

bool Bbox3::add(const std::vector<Point3>& vPoints)
{
    if (vPoints.empty())
        return false;
    const bool bWasValid = isValid();
    if (!bWasValid)
        setToPoint(vPoints.front());
    const Bbox3 before(*this);
    for (const Point3& p : vPoints)
        treatPointForValidBox(p);
    return !bWasValid || getMinPoint() != before.getMinPoint() || getMaxPoint() != before.getMaxPoint();
}

void Bbox3::enlargeBounds(double f)
{
    enlarge(m_minX, m_maxX, f);
    enlarge(m_minY, m_maxY, f);
    enlarge(m_minZ, m_maxZ, f);
}

Bbox3 Bbox3::operator+(const Bbox3& other)
{
    m_minX = std::min(m_minX, other.m_minX);
    m_minY = std::min(m_minY, other.m_minY);
    m_minZ = std::min(m_minZ, other.m_minZ);
    m_maxX = std::max(m_maxX, other.m_maxX);
    m_maxY = std::max(m_maxY, other.m_maxY);
    m_maxZ = std::max(m_maxZ, other.m_maxZ);
    return *this;
}

double Bbox3::getMinCoord() const
{
    return std::min({m_minX, m_minY, m_minZ});
}

double Bbox3::getMaxCoord() const
{
    return std::max({m_maxX, m_maxY, m_maxZ});
}

double Bbox3::getRangeX() const
{
    return m_maxX - m_minX;
}

double Bbox3::getRangeY() const
{
    return m_maxY - m_minY;
}

double Bbox3::getRangeZ() const
{
    return m_maxZ - m_minZ;
}

double Bbox3::getMaxRange() const
{
    return std::max({getRangeX(), getRangeY(), getRangeZ()});
}

void Bbox3::debug() const
{
    messages() << "Bbox3: (" << m_minX << "," << m_minY << "," << m_minZ << ") -> (" << m_maxX << ","
               << m_maxY << "," << m_maxZ << ")" << std::endl;
}

void Bbox3::treatPointForValidBox(const Point3& p)
{
    widen(m_minX, m_maxX, p.x());
    widen(m_minY, m_maxY, p.y());
    widen(m_minZ, m_maxZ, p.z());
}

void Bbox3::setToPoint(const Point3& p)
{
    p.xyz(m_minX, m_minY, m_minZ);
    p.xyz(m_maxX, m_maxY, m_maxZ);
}

} // namespace VORN3D
