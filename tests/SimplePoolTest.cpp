#include "nalo_tools/SimplePool.h"

#include "outcomes.h"

#include <array>
#include <vector>

// Allocations that fail are to return null under a sanitizer too, as they do without.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options()
{
    return "allocator_may_return_null=1";
}
extern "C" const char* __tsan_default_options();
extern "C" const char* __tsan_default_options()
{
    return "allocator_may_return_null=1";
}

namespace VORN3D
{

namespace
{

using Sizes = std::vector<std::size_t>;

/// Of a size whose multiples are no size classes of an allocator, so that a container ends where the
/// addresses stop being consecutive.
using Element = std::array<char, 17>;
using TenMegabytes = std::array<char, 10'000'000>;

/// Takes elements up to the start of container numContainers, and returns the sizes of the containers before
/// it.
template <typename T>
Sizes takeContainers(SimplePool<T>& pool, std::size_t numContainers)
{
    Sizes vSizes;
    std::size_t size = 1;
    for (const T* pLast = pool.newElement(); vSizes.size() < numContainers && size < 5000; ++size) {
        const T* pNext = pool.newElement();
        if (pNext != pLast + 1) {
            vSizes.push_back(size);
            size = 0;
        }
        pLast = pNext;
    }
    return vSizes;
}

template <typename T>
void expectSizes(int initialSize, int increaseLimit, const Sizes& vExpected)
{
    SCOPED_TRACE(testing::Message() << "pool of " << initialSize << ", " << increaseLimit);
    SimplePool<T> pool;
    pool.init(initialSize, increaseLimit);
    EXPECT_EQ(takeContainers(pool, vExpected.size()), vExpected);
}

TEST(SimplePool, ContainerSizes)
{
    expectSizes<Element>(28, -1, {28, 14, 28, 56, 112});
    expectSizes<Element>(4, -7, {4, 2, 4, 8, 16, 32});
    expectSizes<Element>(3, -1, {3, 1, 2, 4});
    expectSizes<Element>(1024, 512, {1024, 512, 512, 512});
    expectSizes<TenMegabytes>(8, -1, {8, 4, 8, 10, 10}); // 100 MB at the most
    expectSizes<TenMegabytes>(11, 12, {11, 12});         // unless asked for
}

TEST(SimplePool, ElementsDoNotOverlapAndStayWhereTheyAre)
{
    SimplePool<std::size_t> pool;
    pool.init(4, -1);
    std::vector<std::size_t*> vElements;
    for (std::size_t i = 0; i < 10'000; ++i) {
        vElements.push_back(pool.newElement());
        *vElements.back() = i;
    }
    for (std::size_t i = 0; i < 10'000; ++i)
        ASSERT_EQ(*vElements[i], i);
}

TEST(SimplePool, ResetGoesBackToTheFirstContainerAndRemembersTheSizes)
{
    for (const bool bGrown : {false, true}) {
        SimplePool<Element> pool;
        pool.init(4, -1);
        const Element* pFirst = pool.newElement();
        if (bGrown)
            takeContainers(pool, 3); // stops in the fourth container, of 8
        pool.reset();
        EXPECT_EQ(pool.newElement(), pFirst);
        pool.reset();
        EXPECT_EQ(takeContainers(pool, 3), bGrown ? (Sizes{4, 16, 32}) : (Sizes{4, 2, 4}));
    }
}

TEST(SimplePool, RewindGoesThroughTheSameContainersAgain)
{
    SimplePool<Element> pool;
    pool.init(4, -1);
    const auto take = [&pool] {
        std::vector<Element*> vElements;
        for (int i = 0; i < 30; ++i)
            vElements.push_back(pool.newElement());
        return vElements;
    };
    const std::vector<Element*> vElements = take();
    for (int i = 0; i < 2; ++i) {
        pool.rewind();
        EXPECT_EQ(pool.getNumElements(), 0u);
        pool.forEachElement([](Element*) { ADD_FAILURE() << "none has been handed out"; });
        EXPECT_EQ(take(), vElements);
        EXPECT_EQ(pool.getNumElements(), 30u);
    }
}

TEST(SimplePool, WarnsOfMoreThanFiftyContainersAndOfSmallOnes)
{
    const auto destroyPool = [](std::size_t numContainers) {
        return outputOf([&] {
            SimplePool<Element> pool;
            pool.init(2, 2);
            takeContainers(pool, numContainers - 1);
        });
    };
    EXPECT_EQ(destroyPool(50), "");
    EXPECT_EQ(destroyPool(51), "SimplePool::~SimplePool: Number of containers to release: 51\n");
    EXPECT_EQ(outputOf([] {
                  expectSizes<Element>(3, 1, {3, 1, 1});
              }),
              "NaloPool::init(..), Warning: increaseLimit=1\n");
}

TEST(SimplePool, WrongUseAndLackOfMemory)
{
    SimplePool<Element> pool;
    expectAbortInDiagnostic([&] { pool.newElement(); }, "initialized");
    expectAbortInDiagnostic([&] { pool.alloc(-1); }, "!vSizes.empty()");
    pool.init(1, -1);
    expectAbortOrExit([&] { pool.init(1, -1); },
                      "SimplePool::init(..), ERROR: This pool is already initialized\n");
    pool.newElement();
    pool.newElement(); // beyond a second container of no elements, half of one
    expectAbortInDiagnostic([&] { pool.newElement(); }, "vSizes.back()>0");
    expectAbortOrExit([] { SimplePool<TenMegabytes>().init(2'000'000'000, -1); },
                      "SimplePool::alloc(..), ERROR: Out of memory, sorry\n");
}

} // namespace

} // namespace VORN3D
