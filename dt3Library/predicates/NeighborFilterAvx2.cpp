// The one file that is compiled for processors with AVX2.
#include "predicates/NeighborFilter.h"

#ifdef __AVX2__
#include "predicates/LanesAvx2.h"
#endif

namespace VORN3D
{

NeighborFilter getAvx2NeighborFilter()
{
#ifdef __AVX2__
    return getNeighborVerdicts<LanesAvx2>;
#else
    return nullptr;
#endif
}

} // namespace VORN3D
