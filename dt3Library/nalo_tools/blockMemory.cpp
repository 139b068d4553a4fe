#include "nalo_tools/blockMemory.h"

#include <cstdlib>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace VORN3D
{

void* allocateBlock(std::size_t numBytes)
{
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    constexpr std::size_t LARGE_PAGE = std::size_t{1} << 21;
    if (numBytes >= 2 * LARGE_PAGE) {
        const std::size_t numWhole = numBytes / LARGE_PAGE * LARGE_PAGE;
        void* pBlock =
            std::aligned_alloc(LARGE_PAGE, numWhole == numBytes ? numBytes : numWhole + LARGE_PAGE);
        // Advice only: it may be refused, and then nothing changes but the speed.
        if (pBlock != nullptr)
            madvise(pBlock, numWhole, MADV_HUGEPAGE);
        return pBlock;
    }
#endif
    return std::malloc(numBytes);
}

} // namespace VORN3D
