// PoolOrder tells the place of a record in the order in which its pool hands records out, from its address.
//
// A pool has dozens of blocks, and records that are near each other in the mesh lie in several of them, so
// that a search among the blocks would be mispredicted time and again. A table tells instead, for each page
// of memory that is in one block alone, how addresses and places differ there. It covers the stretch of
// memory that has most of the records; the heap may have put smaller blocks far away.
#pragma once

#include "nalo_tools/SimplePool.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <vector>

namespace VORN3D
{

/// Of the records that a pool has handed out by now. The pool must stay.
template <typename T>
class PoolOrder
{
public:
    explicit PoolOrder(const SimplePool<T>& pool) : m_numElements(pool.getNumElements())
    {
        std::size_t first = 0;
        pool.forEachBlock([&](const T* pFirst, std::size_t size) {
            if (size > 0)
                m_vBlocks.push_back(
                    {getAddress(pFirst), getAddress(pFirst + size), first * sizeof(T) - getAddress(pFirst)});
            first += size;
        });
        std::sort(m_vBlocks.begin(), m_vBlocks.end(),
                  [](const Block& a, const Block& b) { return a.begin < b.begin; });
        fillTable();
    }

    std::size_t getNumElements() const { return m_numElements; }

    /// From 0; for a record that the pool has handed out.
    std::size_t getPlace(const T* pRecord) const
    {
        const std::uintptr_t address = getAddress(pRecord);
        const std::uintptr_t shift = getShift(address);
        return (address + (shift == NONE ? findBlock(address)->shift : shift)) / sizeof(T);
    }

    /// Whether the pool has handed it out.
    bool owns(const T* pRecord) const
    {
        const std::uintptr_t address = getAddress(pRecord);
        if (getShift(address) != NONE)
            return true;
        const auto block = findBlock(address);
        return block != m_vBlocks.end() && address >= block->begin;
    }

private:
    struct Block
    {
        std::uintptr_t begin;
        std::uintptr_t end;
        std::uintptr_t shift; // from addresses to numbers of bytes before them in the pool
    };
    using Blocks = std::vector<Block>;

    static constexpr int PAGE_BITS = 14;
    static constexpr std::uintptr_t NONE = UINTPTR_MAX; // never a shift, as records are aligned

    static std::uintptr_t getAddress(const T* pRecord) { return reinterpret_cast<std::uintptr_t>(pRecord); }

    // What the table tells of the page.
    std::uintptr_t getShift(std::uintptr_t address) const
    {
        const std::uintptr_t page = (address >> PAGE_BITS) - m_firstPage;
        return page < m_vShifts.size() ? m_vShifts[page] : NONE;
    }

    typename Blocks::const_iterator findBlock(std::uintptr_t address) const
    {
        return std::upper_bound(m_vBlocks.begin(), m_vBlocks.end(), address,
                                [](std::uintptr_t a, const Block& block) { return a < block.end; });
    }

    // Gaps larger than all blocks together end a stretch.
    void fillTable()
    {
        std::uintptr_t numBytesOfBest = 0, numBytes = 0;
        auto first = m_vBlocks.begin();
        for (auto block = first; block != m_vBlocks.end(); ++block) {
            numBytes += block->end - block->begin;
            const auto next = std::next(block);
            if (next != m_vBlocks.end() && next->begin - block->end <= m_numElements * sizeof(T))
                continue;
            if (numBytes > numBytesOfBest) {
                numBytesOfBest = numBytes;
                cover(first, next);
            }
            first = next;
            numBytes = 0;
        }
    }

    void cover(typename Blocks::const_iterator first, typename Blocks::const_iterator last)
    {
        const std::uintptr_t pageSize = std::uintptr_t{1} << PAGE_BITS;
        m_firstPage = first->begin >> PAGE_BITS;
        m_vShifts.assign((std::prev(last)->end >> PAGE_BITS) + 1 - m_firstPage, NONE);
        for (auto block = first; block != last; ++block) {
            const std::uintptr_t end = block->end >> PAGE_BITS;
            for (std::uintptr_t page = (block->begin + pageSize - 1) >> PAGE_BITS; page < end; ++page)
                m_vShifts[page - m_firstPage] = block->shift;
        }
    }

    std::size_t m_numElements;
    Blocks m_vBlocks; // in ascending order of addresses
    std::uintptr_t m_firstPage = 0;
    std::vector<std::uintptr_t> m_vShifts; // by page from there on
};

} // namespace VORN3D
