// The program `vorn3d`: the library from the command line.
#include "InputError.h"
#include "Interruption.h"
#include "commands.h"
#include "platform/platform.h"

#include "vorn3d/VornException.h"
#include "vorn3d/version.h"

#include <iostream>
#include <new>

namespace VORN3D::program
{

namespace
{

const char* const description =
    "vorn3d computes Delaunay tetrahedralizations of points in space, exactly for any input.";

const char* const notes = R"(Each command has its own help, for instance vorn3d triangulate --help

Exit status:
  0    done
  1    the work failed: output that cannot be written, memory exhausted, a fault found by --check,
       an internal error
  2    the command line or an input file cannot be used
  3    all points lie in one plane: there is no tetrahedron
  130  interrupted
)";

ExitStatus fail(ExitStatus status, const char* message)
{
    std::cerr << message << std::endl;
    return status;
}

/// "a, b or c".
std::string listCommands(const CLI::App& app)
{
    std::string names;
    const auto vCommands = app.get_subcommands([](const CLI::App*) { return true; });
    for (std::size_t i = 0; i < vCommands.size(); ++i)
        names += (i == 0 ? "" : i + 1 < vCommands.size() ? ", " : " or ") + vCommands[i]->get_name();
    return names;
}

ExitStatus parseAndRun(int argc, char** argv)
{
    ExitStatus status = exitSuccess;
    CLI::App app(description, "vorn3d");
    app.set_version_flag("--version", getVorn3DVersion());
    app.allow_windows_style_options(false); // a path may begin with a slash
    app.require_subcommand(0, 1);
    app.footer(notes);
    for (AddCommand* pAddCommand : getCommands())
        pAddCommand(app, status);
    try {
        app.parse(argc, argv);
        if (app.get_subcommands().empty())
            throw CLI::RequiredError("A command, " + listCommands(app) + ",");
        return status;
    } catch (const CLI::ParseError& error) {
        // Help and version come this way too, with the exit code 0.
        return app.exit(error) == 0 ? exitSuccess : exitBadInput;
    }
}

/// Turns every exception into a message and an exit status.
ExitStatus run(int argc, char** argv)
{
    try {
        return parseAndRun(argc, argv);
    } catch (const InputError& error) {
        return fail(exitBadInput, error.what());
    } catch (const Interrupted& interruption) {
        return fail(exitInterrupted, interruption.what());
    } catch (const std::bad_alloc&) {
        return fail(exitFailure, "vorn3d: memory exhausted");
    } catch (const std::exception& error) {
        return fail(exitFailure, error.what());
    }
}

} // namespace

} // namespace VORN3D::program

int main(int argc, char** argv)
{
    VORN3D::program::setStandardStreamsBinary();
    return VORN3D::program::run(argc, argv);
}
