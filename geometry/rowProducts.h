// Products of rows of any number type, integers of growing width among them.
#pragma once

#include "predicates/Determinants.h"

#include <type_traits>

namespace VORN3D
{

template <class T, class U>
[[gnu::always_inline]] inline auto dot(const Row<T>& p, const Row<U>& q)
{
    return p.x * q.x + p.y * q.y + p.z * q.z;
}

template <class T>
[[gnu::always_inline]] inline auto cross(const Row<T>& p, const Row<T>& q)
{
    const auto x = p.y * q.z - q.y * p.z;
    return Row<std::decay_t<decltype(x)>>{x, p.z * q.x - q.z * p.x, p.x * q.y - q.x * p.y};
}

} // namespace VORN3D
