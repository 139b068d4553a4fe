// Visualizer3 writes a scene for a 3D viewer: a text file in the OOGL format, made of points, segments,
// polygons, tetrahedra and spheres, each in a colour.
//
// A scene is one LIST. The constructor opens it, close() or the destructor ends it; every writer in between
// adds one or several objects. A colour is the text of four numbers from 0 to 1: red, green, blue and alpha.
#pragma once

#include "scenes/palette.h"
#include "vorn3d/Point3.h"

#include <atomic>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

namespace VORN3D
{

class Tet3;

/// In place of a colour: writePolygon() draws the outline instead of the face.
inline constexpr const char* BOUNDARY = "BOUNDARY";

class Visualizer3 : public std::ofstream
{
public:
    /// Opens the file, whose earlier content is lost, and starts the scene. A file that cannot be opened ends
    /// the process with exit status 1 after a message.
    explicit Visualizer3(const std::string& filename);

    Visualizer3(const Visualizer3&) = delete;
    Visualizer3& operator=(const Visualizer3&) = delete;
    ~Visualizer3() override;

    /// Ends the scene and closes the file. Does nothing if that has been done.
    void close();

    /// Draws points as dots of `linewidth` pixels. No point at all is a warning.
    void writePoints(const std::vector<Point3>& vPoints, int linewidth, const std::string& color);
    void writePoint(const Point3& p, int linewidth, const std::string& color);

    void writeSegment(const Point3& p, const Point3& q, const std::string& color);

    /// Draws a convex polygon of at least three points as a fan of triangles, or for the colour BOUNDARY its
    /// outline in opaque black.
    void writePolygon(const std::vector<Point3>& vPoints, const std::string& color);

    /// Draws the four facets, the one opposite corner 0 first. Null ends the process after a message.
    void writeTet(const Tet3* c, const std::string& color);

    /// Draws a sphere as a net of lines.
    void writeSphere(const Point3& center, double sqRadius);

    /// The colour at the cursor, one of the first 14 of the palette.
    static std::string getColor();

    /// The same, and moves the cursor on; after the 14th colour comes the first one again.
    static std::string getNextColor();

    /// The place in the palette of the next colour. Shared by all scenes of the process, so that consecutive
    /// scenes go on with the cycle; scenes written at once by several threads may share a colour.
    static std::atomic<std::int32_t> colorCursor;

private:
    void writeCoordinates(const Point3& p);
    void writeTriangle(const Point3& p, const Point3& q, const Point3& r, const std::string& color);
};

} // namespace VORN3D
