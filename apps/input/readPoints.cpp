#include "input/readPoints.h"

#include "input/pointFormats.h"

#include <climits>

namespace VORN3D::program
{

namespace
{

void numberPoints(const std::string& fileName, std::vector<Point3>& vPoints)
{
    if (vPoints.empty())
        throw InputError(fileName, "holds no points");
    if (vPoints.size() > INT_MAX)
        throw InputError(fileName, "holds more than " + std::to_string(INT_MAX) + " points");
    int index = 0;
    for (Point3& point : vPoints)
        point.setCustomIndex(index++);
}

} // namespace

const FileFormats<ReadFunction>& getPointFormats()
{
    static const FileFormats<ReadFunction> vFormats{
        {"text",
         {".xyz", ".txt", ".csv"},
         "x y z on each line, between them blanks, tabs, a comma or a semicolon",
         readText},
        {"pts", {".pts"}, "the same after an optional line with the number of points", readPts},
        {"node", {".node"}, "TetGen's nodes, numbered from 0 or 1", readNode},
        {"bin", {".bin"}, "three little-endian doubles for each point", readBinary},
        {"ply", {".ply"}, "the vertices of a surface or a cloud, as text or binary", readPly},
        {"obj", {".obj"}, "the vertices of a surface, rounded to single precision", readObj, true},
        {"stl", {".stl"}, "the same, equal ones merged", readStl, true},
        {"vtp", {".vtp"}, "the points of VTK's polygons, in the file's own precision", readVtp, true},
        {"vtu", {".vtu"}, "those of VTK's unstructured grid", readVtu, true},
        {"vtk", {".vtk"}, "those of either in VTK's older format", readVtk, true},
    };
    return vFormats;
}

std::vector<Point3> readPoints(const std::string& path, const std::string& formatName)
{
    const auto& format = chooseFormat(getPointFormats(), path, formatName);
    ByteSource source(path);
    std::vector<Point3> vPoints = format.pFunction(source);
    numberPoints(source.getName(), vPoints);
    return vPoints;
}

const FileFormats<ReadTableFunction>& getTableFormats()
{
    static const FileFormats<ReadTableFunction> vFormats{
        {"text",
         {".xyz", ".txt", ".csv"},
         "x y z and values on each line, between them blanks, tabs, a comma or a semicolon",
         readTextTable},
    };
    return vFormats;
}

PointTable readPointTable(const std::string& path, const std::string& formatName)
{
    const auto& format = chooseFormat(getTableFormats(), path, formatName);
    ByteSource source(path);
    PointTable table = format.pFunction(source);
    numberPoints(source.getName(), table.vPoints);
    if (table.numColumns == 0)
        throw InputError(source.getName(), "holds no values: they stand in the columns after x, y and z");
    return table;
}

} // namespace VORN3D::program
