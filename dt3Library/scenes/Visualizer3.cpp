#include "scenes/Visualizer3.h"

#include "nalo_tools/assertion.h"
#include "nalo_tools/endProcess.h"
#include "nalo_tools/log.h"
#include "vorn3d/Tet3.h"

#include <cmath>
#include <cstdlib>
#include <locale>

namespace VORN3D
{

namespace
{

// The later colours are for the callers that name them.
constexpr std::int32_t NUM_CYCLING_COLORS = 14;

} // namespace

std::atomic<std::int32_t> Visualizer3::colorCursor{0};

Visualizer3::Visualizer3(const std::string& filename)
{
    messages() << "Visualizer, writing " << filename << std::endl;
    // Viewers want decimal points, whatever the client's locale.
    imbue(std::locale::classic());
    open(filename);
    if (!is_open()) {
        messages() << filename << " not open" << std::endl;
        endProcess(filename + " not open");
    }
    messages() << "  Writing " << filename << std::endl;
    *this << "LIST\n{\n";
}

Visualizer3::~Visualizer3()
{
    close();
}

void Visualizer3::close()
{
    if (!is_open())
        return;
    *this << "}\n";
    std::ofstream::close();
}

void Visualizer3::writeCoordinates(const Point3& p)
{
    *this << p.x() << ' ' << p.y() << ' ' << p.z() << '\n';
}

// A list of its own, so that the line width is that of these points only. The points are polylines of one
// vertex; a polyline without a colour takes that of the one before it.
void Visualizer3::writePoints(const std::vector<Point3>& vPoints, int linewidth, const std::string& color)
{
    if (vPoints.empty()) {
        logWarning("Visualizer3::writePoints", "vPoints.empty()");
        return;
    }
    const std::size_t n = vPoints.size();
    *this << "LIST\n{\nappearance{linewidth " << linewidth << "}\nVECT\n" << n << " " << n << " 1\n";
    for (std::size_t i = 0; i < n; ++i)
        *this << "1 ";
    *this << "\n1 ";
    for (std::size_t i = 1; i < n; ++i)
        *this << "0 ";
    *this << "\n";
    for (const Point3& p : vPoints)
        writeCoordinates(p);
    *this << color << "\n}\n";
}

void Visualizer3::writePoint(const Point3& p, int linewidth, const std::string& color)
{
    writePoints({p}, linewidth, color);
}

void Visualizer3::writeSegment(const Point3& p, const Point3& q, const std::string& color)
{
    *this << "{\nVECT\n1 2 1\n2\n1\n";
    writeCoordinates(p);
    writeCoordinates(q);
    *this << color << "\n}\n";
}

void Visualizer3::writePolygon(const std::vector<Point3>& vPoints, const std::string& color)
{
    DEBUG_ASSERT_TEXT(vPoints.size() > 2, "vPoints.size()>2");
    const std::size_t n = vPoints.size();
    if (color == BOUNDARY) {
        for (std::size_t i = 0; i < n; ++i)
            writeSegment(vPoints[i], vPoints[(i + 1) % n], "0 0 0 1");
        return;
    }
    for (std::size_t i = 1; i + 1 < n; ++i)
        writeTriangle(vPoints[0], vPoints[i], vPoints[i + 1], color);
}

void Visualizer3::writeTriangle(const Point3& p, const Point3& q, const Point3& r, const std::string& color)
{
    *this << "{\nOFF\n3 1 0\n";
    writeCoordinates(p);
    writeCoordinates(q);
    writeCoordinates(r);
    *this << "3 0 1 2 " << color << "\n}\n";
}

void Visualizer3::writeTet(const Tet3* c, const std::string& color)
{
    if (c == nullptr) {
        logError("Visualizer3:.writeTet()", "c==NULL");
        tellFatal("c==NULL");
        std::abort();
    }
    for (int i = 0; i < 4; ++i) {
        std::vector<Point3> vFacet;
        for (int k = 0; k < 4; ++k)
            if (k != i)
                vFacet.push_back(*c->getCorner(k));
        writePolygon(vFacet, color);
    }
}

void Visualizer3::writeSphere(const Point3& center, double sqRadius)
{
    *this << "{\nappearance { +edge -face }\nSPHERE " << std::sqrt(sqRadius) << " ";
    writeCoordinates(center);
    *this << "}\n";
}

std::string Visualizer3::getColor()
{
    const std::int32_t index = colorCursor.load(std::memory_order_relaxed);
    if (index < NUM_CYCLING_COLORS)
        return colorArray[index];
    messages() << "Attention, returning colorArray[13] which is the last available color" << std::endl;
    return colorArray[NUM_CYCLING_COLORS - 1];
}

std::string Visualizer3::getNextColor()
{
    std::string color = getColor();
    const std::int32_t index = colorCursor.load(std::memory_order_relaxed);
    colorCursor.store((index + 1) % NUM_CYCLING_COLORS, std::memory_order_relaxed);
    return color;
}

} // namespace VORN3D
