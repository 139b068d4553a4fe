#pragma once

namespace VORN3D::program
{

/// What the program tells the shell. Numbers and meanings are printed by --help; scripts rely on them.
enum ExitStatus {
    exitSuccess = 0,
    exitFailure = 1,  ///< the work failed: output that cannot be written, memory exhausted, an internal error
    exitBadInput = 2, ///< the command line or an input file cannot be used
    exitCoplanar = 3, ///< all points lie in one plane: there is no tetrahedron
    exitInterrupted = 130 ///< stopped by Ctrl-C, as shells report it
};

} // namespace VORN3D::program
