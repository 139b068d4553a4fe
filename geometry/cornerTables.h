// Which corners of a positively oriented tetrahedron its facets have.
#pragma once

#include <array>
#include <cstddef>

namespace VORN3D
{

/// The corners of the facet opposite each corner, counter-clockwise from outside.
inline constexpr std::array<std::array<std::size_t, 3>, 4> FACET_CORNERS = {
    {{1, 2, 3}, {0, 3, 2}, {0, 1, 3}, {0, 2, 1}}};

} // namespace VORN3D
