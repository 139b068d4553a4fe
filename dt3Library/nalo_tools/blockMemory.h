// Memory for the containers of the pools.
#pragma once

#include <cstddef>

namespace VORN3D
{

/// Raw memory, to be returned with free(); null if there is none. Large blocks are set on large pages where
/// the system offers them: that saves most of the page faults of a growing mesh and of the address
/// translations of a large one.
void* allocateBlock(std::size_t numBytes);

} // namespace VORN3D
