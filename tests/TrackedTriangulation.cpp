#include "TrackedTriangulation.h"

#include "CapturedOutput.h"

#include <algorithm>
#include <sstream>

namespace VORN3D::tests
{
namespace
{

/// The lines that an insertion of finite points may print.
bool isExpectedLine(const std::string& line, bool bBatch)
{
    return line == "Attention: triangulate has got an empty vector" ||
           (bBatch && line.rfind("numPoints=", 0) == 0);
}

void append(Faults& vFaults, const Faults& vMore)
{
    vFaults.insert(vFaults.end(), vMore.begin(), vMore.end());
}

} // namespace

std::string joinFaults(const Faults& vFaults)
{
    std::string text;
    for (const std::string& fault : vFaults)
        text += fault + '\n';
    return text;
}

void TrackedTriangulation::insertBatch(std::vector<Point3> vPoints)
{
    std::vector<Point3*> vHandles;
    m_output = outputOf([&] { m_dt.insert(vPoints, vHandles); });
    m_vInput.insert(m_vInput.end(), vPoints.begin(), vPoints.end());
    m_vHandles.insert(m_vHandles.end(), vHandles.begin(), vHandles.end());
    for (const Point3* pVtx : vHandles)
        m_vLeftOut.erase(pVtx);
    expectOutput(true);
}

Point3* TrackedTriangulation::insertSingle(Point3 p)
{
    const bool bWas3D = m_dt.is3D();
    m_output = outputOf([&] { m_vHandles.push_back(m_dt.insert(p)); });
    m_vInput.push_back(p);
    expectOutput(false);
    if (!bWas3D && m_dt.is3D()) {
        // All but the first tetrahedron.
        m_vLeftOut.insert(m_vHandles.begin(), m_vHandles.end());
        std::vector<Tet3*> vTets;
        m_dt.getTetrahedra(vTets);
        for (int i = 0; i < 4; ++i)
            m_vLeftOut.erase(vTets.at(0)->getCorner(i));
    } else
        m_vLeftOut.erase(m_vHandles.back());
    return m_vHandles.back();
}

void TrackedTriangulation::expectOutput(bool bBatch)
{
    std::istringstream lines(m_output);
    for (std::string line; std::getline(lines, line);)
        if (!isExpectedLine(line, bBatch))
            m_vFaults.push_back("an insertion printed: " + line);
}

std::string TrackedTriangulation::findFaults(const std::vector<Point3>& vQueries)
{
    append(m_vFaults, findMeshFaults(m_dt));
    append(m_vFaults, findVertexFaults(m_dt, m_vInput, m_vHandles, m_vLeftOut));
    // The last answer may be of an earlier call, and outdated.
    for (const Point3& q : vQueries) {
        append(m_vFaults, findLocateFaults(m_dt, q, m_dt.locate(q)));
        m_pLastAnswer = m_dt.locate(q, m_pLastAnswer);
        append(m_vFaults, findLocateFaults(m_dt, q, m_pLastAnswer));
    }
    return joinFaults(m_vFaults);
}

} // namespace VORN3D::tests
