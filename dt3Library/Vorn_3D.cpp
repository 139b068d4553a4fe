#include "vorn3d/Vorn_3D.h"

#include "kernel/Dt3.h"

#include <utility>

namespace VORN3D
{

Vorn_3D::Vorn_3D() : m_pDt(std::make_unique<Dt3>()) {}

Vorn_3D::~Vorn_3D() = default;

void Vorn_3D::clear()
{
    m_pDt->clear();
}

Point3* Vorn_3D::insert(Point3& p)
{
    return m_pDt->insert(p);
}

void Vorn_3D::insert(std::vector<Point3>& vInputPoints)
{
    std::vector<Point3*> vHandles;
    m_pDt->insert(vInputPoints, vHandles, Dt3::Order::ALONG_CURVE);
}

void Vorn_3D::insert(std::vector<Point3>& vInputPoints, std::vector<Point3*>& vUserHandles)
{
    m_pDt->insert(vInputPoints, vUserHandles, Dt3::Order::ALONG_CURVE);
}

void Vorn_3D::insertOrdered(std::vector<Point3>& vInputPoints, std::vector<Point3*>& vUserHandles)
{
    m_pDt->insert(vInputPoints, vUserHandles, Dt3::Order::AS_GIVEN);
}

void Vorn_3D::setProgressObserver(ProgressObserver observer)
{
    m_pDt->setProgressObserver(std::move(observer));
}

Tet3* Vorn_3D::locate(const Point3& p)
{
    return locate(p, nullptr);
}

Tet3* Vorn_3D::locate(const Point3& p, Tet3* pStart)
{
    return m_pDt->locate(p, pStart);
}

Tet3* Vorn_3D::locateClosed(const Point3& p, Tet3* pStart, int& seenFacet) const
{
    return m_pDt->locateClosed(p, pStart, seenFacet);
}

void Vorn_3D::getVertices(std::vector<Point3*>& vVertices) const
{
    m_pDt->getVertices(vVertices);
}

void Vorn_3D::getTetrahedra(std::vector<Tet3*>& vTets) const
{
    m_pDt->getAllTetrahedra(vTets);
}

void Vorn_3D::getTetsAroundVertex(Point3* pVtx, std::vector<Tet3*>& vTets)
{
    m_pDt->getTetsAroundVertex(pVtx, vTets);
}

MeshArrays Vorn_3D::getArrays(const std::vector<Point3*>& vUserHandles) const
{
    return m_pDt->getArrays(vUserHandles);
}

std::vector<Tet3*> Vorn_3D::getNumberedTetrahedra() const
{
    return m_pDt->getNumberedTetrahedra();
}

bool Vorn_3D::checkValidity(const std::string& name, bool bPrintInfo)
{
    return m_pDt->checkValidity(name, true, bPrintInfo);
}

void Vorn_3D::show(const std::string& filename, Point3* pVtx)
{
    m_pDt->show(filename, pVtx);
}

void Vorn_3D::print(const std::string& name)
{
    m_pDt->print(name);
}

bool Vorn_3D::is3D() const
{
    return m_pDt->is3D();
}

int Vorn_3D::getDimension() const
{
    return m_pDt->getDimension();
}

void Vorn_3D::setVerbosity(bool b)
{
    m_pDt->setVerbosity(b);
}

} // namespace VORN3D
