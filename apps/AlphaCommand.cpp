#include "SurfaceJob.h"
#include "commands.h"
#include "output/unstoppableWork.h"

#include "vorn3d/geometry/AlphaComplex.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

namespace VORN3D::program
{

namespace
{

struct AlphaOptions : SurfaceOptions
{
    std::string alpha = "auto";
    bool bFill = false;
    bool bSingular = false;
};

/// An alpha, and what is solid there.
struct Choice
{
    double alpha;
    AlphaVoids3 voids;
};

bool isWord(const std::string& alpha)
{
    return alpha == "auto" || alpha == "solid";
}

/// The number that the text is, NaN if it is none.
double parseNumber(const std::string& text)
{
    double value = 0.0;
    return CLI::detail::lexical_cast(text, value) ? value : std::nan("");
}

std::string checkAlpha(const std::string& text)
{
    return isWord(text) || parseNumber(text) >= 0.0 ? "" : "not auto, solid or a number from 0 on: " + text;
}

Choice chooseAlpha(const AlphaOptions& options, const AlphaComplex& complex)
{
    const AlphaVoids3 voids = options.bFill ? AlphaVoids3::FILLED : AlphaVoids3::OPEN;
    if (!isWord(options.alpha))
        return {parseNumber(options.alpha), voids};
    const double enclosing = options.alpha == "auto" ? complex.enclosingAlpha() : HUGE_VAL;
    return enclosing < HUGE_VAL ? Choice{enclosing, AlphaVoids3::FILLED}
                                : Choice{complex.criticalAlpha(), voids};
}

double getArea(const Surface& surface)
{
    double area = 0.0;
    for (std::size_t i = 0; i < surface.vCorners.size(); i += 3) {
        const auto getPoint = [&](std::size_t k) -> const Point3& {
            return *surface.vVertices[static_cast<std::size_t>(surface.vCorners[i + k])];
        };
        const Vector3 normal = crossProduct(getPoint(1) - getPoint(0), getPoint(2) - getPoint(0));
        area += std::sqrt(dotProduct(normal, normal)) / 2.0;
    }
    return area;
}

ExitStatus work(const AlphaOptions& options, MeshJob& job)
{
    const Stopwatch ranking;
    std::optional<AlphaComplex> ranked;
    doUnstoppableWork("ranking", [&] { ranked.emplace(job.triangulation, job.vHandles); });
    const AlphaComplex& complex = *ranked;
    job.report.add("ranking", ranking.getSeconds(), "s");
    const auto [alpha, voids] = chooseAlpha(options, complex);
    AlphaSurface alphaSurface = complex.surface(alpha, voids);
    const std::size_t numSingular = alphaSurface.vTriangles.size() - alphaSurface.numRegular;
    if (!options.bSingular)
        alphaSurface.vTriangles.resize(alphaSurface.numRegular);
    const Surface surface = makeSurface(getConstHandles(job), alphaSurface.vTriangles);
    job.report.add("alpha", alpha);
    job.report.add("radius", std::sqrt(alpha));
    job.report.add("filled", voids == AlphaVoids3::FILLED);
    job.report.add("solids", complex.components(alpha, voids).num);
    job.report.add("triangles", alphaSurface.numRegular);
    job.report.add("singular triangles", numSingular);
    job.report.add("points on the surface", surface.vVertices.size());
    job.report.add("area", getArea(surface));
    job.report.add("volume", complex.volume(alpha, voids));
    writeSurface(options, job, surface);
    return exitSuccess;
}

const char* const alphaDescription = "Find the surface of the points of a file, by alpha shapes";

const char* const alphaNotes = R"(

A ball of radius r that no point may be in rolls through space, and what it cannot reach is left:
with a small radius nothing but the points, with a great one their convex hull. Alpha is r * r. What
is left is made of tetrahedra, triangles and edges of the mesh; it is decided exactly.

--alpha says which:
  auto     for points that were scanned from surfaces: the least alpha at which what is left encloses
           a space that a much larger ball would have room in, and this space is filled. For points
           that enclose nothing, such as those that fill a body, it is the same as solid
  solid    the least alpha at which the tetrahedra are one piece and have all points as corners
  NUMBER   this alpha; 0 leaves the points alone, inf the hull

The surface is that of the tetrahedra, or of the solid if it is filled: triangles counter-clockwise from
outside, closed. Triangles that bound no solid are called singular, and are written with --singular
only. A file appears under its name when it is complete. In the picture the points are on the left.

Points that all lie in one plane have no surface: the exit status is 3 then. All exit statuses are
listed by vorn3d --help.

Examples:
  vorn3d alpha scan.xyz -o surface.ply --picture surface.png
  vorn3d alpha atoms.csv --alpha 1.96 -o molecule.stl
  vorn3d alpha scan.xyz --alpha 0.25 --fill --json
)";

} // namespace

void addAlphaCommand(CLI::App& app, ExitStatus& status)
{
    const auto pOptions = std::make_shared<AlphaOptions>();
    CLI::App* pCommand = app.add_subcommand("alpha", alphaDescription);
    addSurfaceOptions(*pCommand, *pOptions);
    pCommand->add_option("--alpha", pOptions->alpha, "The square of a radius, or auto, or solid")
        ->capture_default_str()
        ->check(CLI::Validator(checkAlpha, "ALPHA"));
    pCommand->add_flag("--fill", pOptions->bFill, "Count what is enclosed as solid");
    pCommand->add_flag("--singular", pOptions->bSingular, "Write triangles that bound no solid, too");
    pCommand->footer(describeSurfaceFormats() + alphaNotes);
    pCommand->callback([pOptions, &status] {
        status = runSurfaceJob(*pOptions, [&](MeshJob& job) { return work(*pOptions, job); });
    });
}

} // namespace VORN3D::program
