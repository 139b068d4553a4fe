// The predicates of the triangulation, for all services.
#pragma once

#include "predicates/NaloTest3.h"

namespace VORN3D
{

inline const NaloTest3& getPredicates()
{
    static const NaloTest3 predicates;
    return predicates;
}

} // namespace VORN3D
