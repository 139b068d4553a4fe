#include "Interruption.h"
#include "PointGenerator.h"
#include "Progress.h"
#include "commands.h"
#include "output/OutputFile.h"
#include "output/pointWriters.h"

#include <memory>

namespace VORN3D::program
{

namespace
{

constexpr std::size_t blockSize = std::size_t(1) << 16;

/// Bounds the loop that looks for a grid's side, far beyond what a disk can hold.
constexpr std::uint64_t maxPoints = 1'000'000'000'000;

struct GenerateOptions
{
    std::string shape = "cube";
    std::uint64_t numPoints = 0;
    std::uint64_t seed = 1;
    std::string output;
    std::string outputFormat;
};

/// Writes the generated points in blocks; an interruption is noticed after each.
void writePoints(const GenerateOptions& options, AppendFunction* pAppend, OutputFile& file)
{
    PointGenerator generator(options.shape, options.numPoints, options.seed);
    Progress progress("generating", options.numPoints);
    std::string block;
    for (std::uint64_t i = 1; i <= options.numPoints; ++i) {
        pAppend(block, generator.next());
        if (block.size() < blockSize && i < options.numPoints)
            continue;
        file.write(block);
        block.clear();
        progress.update(i);
    }
}

ExitStatus generate(const GenerateOptions& options)
{
    AppendFunction* pAppend = chooseFormat(getPointWriters(), options.output, options.outputFormat).pFunction;
    const InterruptionWatch watch;
    OutputFile file(options.output);
    writePoints(options, pAppend, file);
    file.commit();
    return exitSuccess;
}

const char* const generatorDescription = "Write test data, the same for the same arguments on every platform";

const char* const generatorNotes = R"(

The file appears under its name when it is complete; after an error or Ctrl-C there is none.

Examples:
  vorn3d generate -n 1000000 -o million.bin
  vorn3d generate --shape sphere -n 1000 --seed 7 -o - | vorn3d triangulate -
)";

} // namespace

void addGenerateCommand(CLI::App& app, ExitStatus& status)
{
    const auto pOptions = std::make_shared<GenerateOptions>();
    CLI::App* pCommand = app.add_subcommand("generate", generatorDescription);
    pCommand->add_option("--shape", pOptions->shape, "The shape")
        ->capture_default_str()
        ->check(CLI::IsMember(PointGenerator::getShapeNames()));
    pCommand->add_option("-n,--number", pOptions->numPoints, "How many points")
        ->required()
        ->check(CLI::Range(std::uint64_t(1), maxPoints));
    pCommand->add_option("--seed", pOptions->seed, "Another seed gives other points of the same shape")
        ->capture_default_str()
        ->check(CLI::NonNegativeNumber);
    pCommand->add_option("-o,--output", pOptions->output, "The file to write; - is standard output, as text")
        ->required();
    pCommand
        ->add_option("--format", pOptions->outputFormat, "Write this format, whatever the file's extension")
        ->check(CLI::IsMember(getFormatNames(getPointWriters())));
    pCommand->footer("Shapes:" + PointGenerator::describeShapes() +
                     "\n\nFormats, chosen by the file's extension:" + describeFormats(getPointWriters()) +
                     generatorNotes);
    pCommand->callback([pOptions, &status] { status = generate(*pOptions); });
}

} // namespace VORN3D::program
