// What a process that hosts the library may decide for it: where its text goes, and what happens in place of
// an end of the process.
#pragma once

#include "vorn3d/Export.h"

#include <ostream>
#include <string>

namespace VORN3D
{

/// Sets where all the library's text goes, from all threads: by default `std::cout`; null: nowhere. The
/// stream must stay until another is set. Returns the one before. While several threads work with the
/// library, the stream must take output from all of them, as `std::cout` does, and lines may mix.
VORN3D_EXPORT std::ostream* setMessageStream(std::ostream* pStream);

/// Is told in a line why the process is about to end.
using FatalHandler = void (*)(const char* message);

/// Sets what is called in place of ending the process, and returns the one before. By default there is none,
/// null: the process ends, with exit status 1 or by a signal, after a message
///   - when the memory of a pool of vertices or tetrahedra is exhausted (all other memory that runs out is
///     reported by `std::bad_alloc`),
///   - when the mesh is corrupted, or an object is used in a way that its assertions exclude,
///   - when a scene file cannot be opened.
///
/// A handler may throw. Of the triangulation that was at work nothing may then be used but its destructor,
/// with one exception: when memory was exhausted, as with `std::bad_alloc`, it is valid, holds the points
/// brought in so far, and the same call completes it. If the handler returns, the process ends.
VORN3D_EXPORT FatalHandler setFatalHandler(FatalHandler handler);

/// What libraries on top of this one write to: the stream that is set, or one that takes all and shows
/// nothing.
VORN3D_EXPORT std::ostream& messages();

/// What they call before they end the process: the handler that is set, if there is one.
VORN3D_EXPORT void tellFatal(const std::string& message);

} // namespace VORN3D
