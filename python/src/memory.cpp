#include "memory.h"

#include <cstdlib>
#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace VORN3D::python
{

namespace
{

constexpr std::size_t LARGE_PAGE = std::size_t(1) << 21;

}

void* allocate(std::size_t numBytes)
{
#ifdef __linux__
    if (numBytes >= 2 * LARGE_PAGE) {
        const std::size_t numRounded = (numBytes + LARGE_PAGE - 1) / LARGE_PAGE * LARGE_PAGE;
        void* pMemory = std::aligned_alloc(LARGE_PAGE, numRounded);
        if (pMemory == nullptr)
            throw std::bad_alloc();
        madvise(pMemory, numRounded, MADV_HUGEPAGE); // advice: its failure costs time alone
        return pMemory;
    }
#endif
    void* pMemory = std::malloc(numBytes > 0 ? numBytes : 1);
    if (pMemory == nullptr)
        throw std::bad_alloc();
    return pMemory;
}

void release(void* pMemory) noexcept
{
    std::free(pMemory);
}

} // namespace VORN3D::python
