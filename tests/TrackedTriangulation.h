// A triangulation with its history: all points inserted, the handles returned, the text printed, and a model
// of which vertices the mesh must contain.
#pragma once

#include "MeshChecker.h"

namespace VORN3D::tests
{

std::string joinFaults(const Faults& vFaults);

class TrackedTriangulation
{
public:
    void insertBatch(std::vector<Point3> vPoints);
    Point3* insertSingle(Point3 p);

    /// Everything wrong with the triangulation, with what its insertions printed and with locate() at the
    /// points of vQueries; empty if nothing is.
    std::string findFaults(const std::vector<Point3>& vQueries = {});

    Vorn_3D& get() { return m_dt; }
    const std::vector<Point3*>& getHandles() const { return m_vHandles; }
    const std::set<const Point3*>& getLeftOut() const { return m_vLeftOut; }
    const std::string& getLastOutput() const { return m_output; }

private:
    void expectOutput(bool bBatch);

    Vorn_3D m_dt;
    std::vector<Point3> m_vInput;
    std::vector<Point3*> m_vHandles;
    std::set<const Point3*> m_vLeftOut;
    std::string m_output;
    Faults m_vFaults;
    Tet3* m_pLastAnswer = nullptr;
};

} // namespace VORN3D::tests
