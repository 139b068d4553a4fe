// What scene files must hold, byte for byte.
#pragma once

#include "vorn3d/Tet3.h"

#include <sstream>
#include <string>

namespace VORN3D::tests
{

inline std::string coordinates(const Point3& p)
{
    std::ostringstream text;
    text << p.x() << ' ' << p.y() << ' ' << p.z() << '\n';
    return text.str();
}

inline std::string point(const Point3& p, int linewidth, const std::string& color)
{
    return "LIST\n{\nappearance{linewidth " + std::to_string(linewidth) + "}\nVECT\n1 1 1\n1 \n1 \n" +
           coordinates(p) + color + "\n}\n";
}

inline std::string segment(const Point3& p, const Point3& q, const std::string& color)
{
    return "{\nVECT\n1 2 1\n2\n1\n" + coordinates(p) + coordinates(q) + color + "\n}\n";
}

inline std::string triangle(const Point3& p, const Point3& q, const Point3& r, const std::string& color)
{
    return "{\nOFF\n3 1 0\n" + coordinates(p) + coordinates(q) + coordinates(r) + "3 0 1 2 " + color +
           "\n}\n";
}

inline std::string tetrahedron(const Tet3& tet, const std::string& color)
{
    const Point3 &p = *tet.getCorner(0), &q = *tet.getCorner(1), &r = *tet.getCorner(2),
                 &s = *tet.getCorner(3);
    return triangle(q, r, s, color) + triangle(p, r, s, color) + triangle(p, q, s, color) +
           triangle(p, q, r, color);
}

inline std::string scene(const std::string& objects)
{
    return "LIST\n{\n" + objects + "}\n";
}

} // namespace VORN3D::tests
