// Reads scene files by the grammar of the OOGL format, as far as scenes of points, lines, polygons and
// spheres need it. In one respect it follows the viewer rather than the format's manual: a pair of braces may
// hold several objects.
#pragma once

#include "vorn3d/Point3.h"

#include <map>
#include <string>
#include <vector>

namespace VORN3D::tests
{

/// An object that can be drawn; lists are only seen through what they contain.
struct SceneObject
{
    std::string keyword; ///< OFF, VECT or SPHERE
    std::vector<Point3> vPoints;
    std::vector<std::vector<int>> vParts; ///< the vertices of each face or polyline
    std::vector<std::string> vColors;     ///< of each part that has one, four numbers
    double radius = 0.0;
    std::map<std::string, std::string> appearance; ///< "edge" -> "+", "linewidth" -> "5"; outer ones included
};

/// The objects in the order of the file. Anything against the grammar throws std::runtime_error, which names
/// the line.
std::vector<SceneObject> readScene(const std::string& text);

std::string readFile(const std::string& filename);

} // namespace VORN3D::tests
