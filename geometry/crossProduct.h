// The cross product for any number type, integers of growing width among them.
#pragma once

#include "predicates/Determinants.h"

#include <type_traits>

namespace VORN3D
{

template <class T>
auto getCrossProduct(const Row<T>& a, const Row<T>& b)
{
    const auto x = a.y * b.z - a.z * b.y;
    const auto y = a.z * b.x - a.x * b.z;
    const auto z = a.x * b.y - a.y * b.x;
    return Row<std::remove_const_t<decltype(x)>>{x, y, z};
}

} // namespace VORN3D
