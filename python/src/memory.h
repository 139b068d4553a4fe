// Memory for tables that may be large.
#pragma once

#include <cstddef>

namespace VORN3D::python
{

/// Memory that is not cleared; throws std::bad_alloc. In large pages, where the system offers them and they
/// pay: the first touch of a hundred megabytes in small ones takes longer than to fill them with numbers.
void* allocate(std::size_t numBytes);

/// Frees what allocate() has given, or nothing.
void release(void* pMemory) noexcept;

} // namespace VORN3D::python
