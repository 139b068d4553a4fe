// SimplePool hands out uninitialised records from large raw blocks ("containers").
//
// A record never moves, and none is freed alone: rewind() and reset() go back to the first container, the
// destructor releases everything, one block a container. The pool runs no constructor and no destructor;
// whoever takes a record fills it. The first container holds initialSize records, every further one
// increaseLimit; a negative increaseLimit selects automatic growth: half the first container, then always
// double the last, up to 100 MB.
#pragma once

#include "nalo_tools/assertion.h"
#include "nalo_tools/endProcess.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace VORN3D
{

template <typename T>
class SimplePool
{
    static_assert(std::is_trivially_destructible_v<T>, "records are abandoned, never destroyed");

public:
    SimplePool() = default;
    SimplePool(const SimplePool&) = delete;
    SimplePool& operator=(const SimplePool&) = delete;

    ~SimplePool()
    {
        if (vContainers.size() > 50)
            messages() << "SimplePool::~SimplePool: Number of containers to release: " << vContainers.size()
                       << "\n";
        freeContainersFrom(0);
    }

    /// To be called exactly once, before the first newElement().
    void init(int initialSizeWanted, int increaseLimitWanted)
    {
        if (initialized) {
            messages() << "SimplePool::init(..), ERROR: This pool is already initialized" << std::endl;
            DEBUG_ASSERT_TEXT(false, "false");
            endProcess("SimplePool::init(..): already initialized");
        }
        if (increaseLimitWanted == 1)
            messages() << "NaloPool::init(..), Warning: increaseLimit=1" << std::endl;
        maxContainerSize = static_cast<std::int32_t>(MAX_CONTAINER_BYTES / sizeof(T));
        initialSize = initialSizeWanted;
        increaseLimit = increaseLimitWanted;
        alloc(initialSize);
        initialized = true;
    }

    /// The next free record, uninitialised; never null. Running out of memory ends the process, unless the
    /// fatal handler throws; then the pool is as before.
    T* newElement()
    {
        DEBUG_ASSERT(initialized);
        if (currentIndex + 1 >= currentSize)
            goOn();
        return pCurrentContainer + ++currentIndex;
    }

    /// Adds a container of numElements records, or of the next automatic size if numElements is negative.
    void alloc(int numElements)
    {
        const std::int32_t size = numElements < 0 ? getNextAutomaticSize() : numElements;
        vSizes.reserve(vSizes.size() + 1);
        vContainers.reserve(vContainers.size() + 1);
        const Container container{allocateRecords(static_cast<std::size_t>(size)), size};
        vSizes.push_back(size);
        vContainers.insert(vContainers.begin() + static_cast<std::ptrdiff_t>(numContainersInUse), container);
        startContainer(numContainersInUse);
    }

    /// Goes back to the first container and keeps the others for what comes. Every record handed out before
    /// is void.
    void rewind()
    {
        numInFullContainers = 0;
        startContainer(0);
    }

    /// The same, but frees the others. The sizes reached are remembered: automatic growth goes on from the
    /// largest.
    void reset()
    {
        rewind();
        freeContainersFrom(1);
        vContainers.resize(1);
    }

    /// The number of records handed out since the start or the last reset().
    std::size_t getNumElements() const
    {
        return numInFullContainers + static_cast<std::size_t>(currentIndex + 1);
    }

    /// Calls visit(T*) for every record handed out, in ascending order of the addresses.
    template <typename Visitor>
    void forEachElement(Visitor visit) const
    {
        std::vector<std::pair<T*, std::size_t>> vBlocks;
        forEachBlock([&vBlocks](T* pFirst, std::size_t size) { vBlocks.emplace_back(pFirst, size); });
        std::sort(vBlocks.begin(), vBlocks.end());
        for (const auto& [pFirst, size] : vBlocks)
            for (std::size_t i = 0; i < size; ++i)
                visit(pFirst + i);
    }

    /// Calls visit(T*, std::size_t), with the first of them and their number, for the records handed out from
    /// each container, in the order in which they were.
    template <typename BlockVisitor>
    void forEachBlock(BlockVisitor visit) const
    {
        // They are filled one after another, so that all but the last are full.
        for (std::size_t i = 0; i < numContainersInUse; ++i) {
            const bool bLast = i + 1 == numContainersInUse;
            visit(vContainers[i].pRecords,
                  static_cast<std::size_t>(bLast ? currentIndex + 1 : vContainers[i].size));
        }
    }

private:
    static constexpr std::size_t MAX_CONTAINER_BYTES = 100'000'000;
    static constexpr std::align_val_t ALIGNMENT{alignof(T)};

    struct Container
    {
        T* pRecords;
        std::int32_t size;
    };

    void goOn()
    {
        const auto numInLast = static_cast<std::size_t>(currentSize);
        if (numContainersInUse < vContainers.size())
            startContainer(numContainersInUse);
        else
            alloc(increaseLimit);
        numInFullContainers += numInLast;
    }

    void startContainer(std::size_t i)
    {
        pCurrentContainer = vContainers[i].pRecords;
        currentSize = vContainers[i].size;
        currentIndex = -1;
        numContainersInUse = i + 1;
    }

    std::int32_t getNextAutomaticSize() const
    {
        DEBUG_ASSERT_TEXT(!vSizes.empty(), "!vSizes.empty()");
        DEBUG_ASSERT_TEXT(vSizes.back() > 0, "vSizes.back()>0");
        const std::int64_t size = vSizes.size() == 1 ? vSizes.back() / 2 : std::int64_t(2) * vSizes.back();
        return static_cast<std::int32_t>(size < maxContainerSize ? size : maxContainerSize);
    }

    static T* allocateRecords(std::size_t numRecords)
    {
        void* pMemory = ::operator new(numRecords * sizeof(T), ALIGNMENT, std::nothrow);
        if (pMemory == nullptr && numRecords > 0) {
            static constexpr char MESSAGE[] = "SimplePool::alloc(..), ERROR: Out of memory, sorry";
            messages() << MESSAGE << std::endl;
            tellFatal(MESSAGE);
            DEBUG_ASSERT_TEXT(false, "false");
            endProcess(MESSAGE);
        }
        return static_cast<T*>(pMemory);
    }

    void freeContainersFrom(std::size_t first)
    {
        for (std::size_t i = first; i < vContainers.size(); ++i)
            ::operator delete(vContainers[i].pRecords, ALIGNMENT);
    }

    std::vector<Container> vContainers;
    std::vector<std::int32_t> vSizes;
    T* pCurrentContainer = nullptr;
    std::size_t numContainersInUse = 0; // the first ones
    std::size_t numInFullContainers = 0;
    std::int32_t currentIndex = -1;
    std::int32_t currentSize = 0;
    std::int32_t initialSize = 0;
    std::int32_t increaseLimit = 0;
    bool initialized = false;
    std::int32_t maxContainerSize = 0;
};

} // namespace VORN3D
