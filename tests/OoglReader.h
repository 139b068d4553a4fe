// Reads scene files by the grammar of the OOGL format, as far as scenes of points, lines, coloured polygons
// and spheres need it. In one respect it follows the viewer rather than the format's manual: a pair of braces
// may hold several objects.
#pragma once

#include "vorn3d/Point3.h"

#include <map>
#include <string>
#include <vector>

namespace VORN3D::tests
{

using Appearance = std::map<std::string, int>; ///< "linewidth" -> 5, "+edge" -> 1; outer ones included

/// An object that can be drawn; lists are only seen through what they contain.
struct SceneObject
{
    std::string keyword; ///< OFF, VECT or SPHERE
    std::vector<Point3> vPoints;
    std::vector<std::string> vColors; ///< of each part that has one, four numbers
    double radius;
    Appearance appearance;
};

/// The objects in the order of the file. Anything against the grammar throws std::runtime_error.
std::vector<SceneObject> readScene(const std::string& text);

} // namespace VORN3D::tests
