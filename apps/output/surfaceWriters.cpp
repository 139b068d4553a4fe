#include "output/surfaceWriters.h"

#include "littleEndian.h"
#include "output/TextOutput.h"

#include "vorn3d/Point3.h"
#include "vorn3d/Vector3.h"

#include <algorithm>
#include <cmath>

namespace VORN3D::program
{

namespace
{

/// use(number of corners, their beginning) for every face.
template <typename Use>
void forEachFace(const Surface& surface, const Use& use)
{
    std::size_t first = 0;
    for (const std::size_t end : surface.vEnds) {
        use(end - first, surface.vCorners.begin() + static_cast<std::ptrdiff_t>(first));
        first = end;
    }
}

std::size_t getMaxNumCorners(const Surface& surface)
{
    std::size_t maxNum = 0;
    forEachFace(surface, [&](std::size_t num, auto) { maxNum = std::max(maxNum, num); });
    return maxNum;
}

/// Vertices and faces as lines of numbers, which the formats begin in different ways.
void writeLines(const Surface& surface, const std::string& header, OutputFile& file)
{
    TextOutput text(file, surface.vVertices.size() + surface.vEnds.size());
    text.write(header);
    for (const Point3* pVtx : surface.vVertices) {
        text.writeCoordinates(*pVtx);
        text.endLine();
    }
    forEachFace(surface, [&](std::size_t num, auto corner) {
        text.writeNumber(num);
        for (std::size_t i = 0; i < num; ++i)
            text.writeNumber(*corner++);
        text.endLine();
    });
    text.finish();
}

void writeObjSurface(const Surface& surface, OutputFile& file)
{
    TextOutput text(file, surface.vVertices.size() + surface.vEnds.size());
    for (const Point3* pVtx : surface.vVertices) {
        text.write("v ");
        text.writeCoordinates(*pVtx);
        text.endLine();
    }
    forEachFace(surface, [&](std::size_t num, auto corner) {
        text.write("f ");
        for (std::size_t i = 0; i < num; ++i)
            text.writeNumber(*corner++ + 1); // counted from 1
        text.endLine();
    });
    text.finish();
}

void appendFloats(std::string& bytes, double x, double y, double z)
{
    for (const double value : {x, y, z}) {
        const FloatBytes encoded = encodeLittleEndian(static_cast<float>(value));
        bytes.append(encoded.data(), encoded.size());
    }
}

/// The unit normal, as far as it can be computed; readers make their own where it is zero.
Vector3 getNormal(const Point3& a, const Point3& b, const Point3& c)
{
    const Vector3 normal = crossProduct(b - a, c - a);
    const double length = std::sqrt(dotProduct(normal, normal));
    return std::isnormal(length) ? normal / length : Vector3(0, 0, 0);
}

void writeStlSurface(const Surface& surface, OutputFile& file)
{
    constexpr std::size_t headerSize = 80;
    std::string bytes = "binary STL, by vorn3d";
    bytes.resize(headerSize, ' ');
    const std::size_t numTriangles = surface.vCorners.size() - 2 * surface.vEnds.size();
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(numTriangles >> (8 * i) & 0xff);
    forEachFace(surface, [&](std::size_t num, auto corner) {
        const auto getPoint = [&](std::size_t i) -> const Point3& {
            return *surface.vVertices[static_cast<std::size_t>(corner[static_cast<std::ptrdiff_t>(i)])];
        };
        for (std::size_t i = 1; i + 1 < num; ++i) {
            const Vector3 normal = getNormal(getPoint(0), getPoint(i), getPoint(i + 1));
            appendFloats(bytes, normal.x(), normal.y(), normal.z());
            for (const std::size_t k : {std::size_t{0}, i, i + 1})
                appendFloats(bytes, getPoint(k).x(), getPoint(k).y(), getPoint(k).z());
            bytes.append(2, '\0');
        }
    });
    file.write(bytes);
}

} // namespace

Surface makeSurface(const std::vector<const Point3*>& vPoints, const std::vector<std::uint32_t>& vCorners,
                    std::vector<std::size_t> vEnds)
{
    constexpr int unused = -1;
    constexpr int used = 0;
    std::vector<int> vNumbers(vPoints.size(), unused);
    for (const std::uint32_t corner : vCorners)
        vNumbers[corner] = used;
    Surface surface;
    for (std::size_t i = 0; i < vPoints.size(); ++i)
        if (vNumbers[i] == used) {
            vNumbers[i] = static_cast<int>(surface.vVertices.size());
            surface.vVertices.push_back(vPoints[i]);
        }
    for (const std::uint32_t corner : vCorners)
        surface.vCorners.push_back(vNumbers[corner]);
    surface.vEnds = std::move(vEnds);
    return surface;
}

Surface makeSurface(const std::vector<const Point3*>& vPoints,
                    const std::vector<std::array<std::uint32_t, 3>>& vTriangles)
{
    std::vector<std::uint32_t> vCorners;
    std::vector<std::size_t> vEnds;
    for (const auto& triangle : vTriangles) {
        vCorners.insert(vCorners.end(), triangle.begin(), triangle.end());
        vEnds.push_back(vCorners.size());
    }
    return makeSurface(vPoints, vCorners, std::move(vEnds));
}

void writePlySurface(const Surface& surface, OutputFile& file)
{
    const std::string type = getMaxNumCorners(surface) < 256 ? "uchar" : "uint";
    writeLines(surface,
               "ply\nformat ascii 1.0\nelement vertex " + std::to_string(surface.vVertices.size()) +
                   "\nproperty double x\nproperty double y\nproperty double z\nelement face " +
                   std::to_string(surface.vEnds.size()) + "\nproperty list " + type +
                   " int vertex_indices\nend_header\n",
               file);
}

void writeOffSurface(const Surface& surface, OutputFile& file)
{
    writeLines(surface,
               "OFF\n" + std::to_string(surface.vVertices.size()) + " " +
                   std::to_string(surface.vEnds.size()) + " 0\n",
               file);
}

const FileFormats<WriteSurfaceFunction>& getSurfaceFormats()
{
    static const FileFormats<WriteSurfaceFunction> vFormats{
        {"ply", {".ply"}, "text, in double precision", writePlySurface},
        {"off", {".off"}, "text, in double precision", writeOffSurface},
        {"obj", {".obj"}, "text, in double precision", writeObjSurface},
        {"stl", {".stl"}, "binary, in single precision, as triangles", writeStlSurface},
    };
    return vFormats;
}

} // namespace VORN3D::program
