#include "vertexStore/CurveOrder.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace VORN3D
{

namespace
{

// Appended blocks stay half full, so that later insertions find room.
constexpr std::size_t MAX_BLOCK_SIZE = 256;
constexpr std::size_t APPENDED_BLOCK_SIZE = MAX_BLOCK_SIZE / 2;

} // namespace

CurveOrder::Position CurveOrder::getNext(Position position) const
{
    if (position.index + 1 < m_vBlocks[position.block].size())
        return {position.block, position.index + 1};
    return {position.block + 1, 0};
}

CurveOrder::Position CurveOrder::getPrevious(Position position) const
{
    if (position.index > 0)
        return {position.block, position.index - 1};
    return {position.block - 1, m_vBlocks[position.block - 1].size() - 1};
}

CurveOrder::Position CurveOrder::findLowerBound(const IdxVtx& probe) const
{
    if (empty() || m_vBlocks.back().back() < probe)
        return getEnd();
    const auto block = std::partition_point(m_vBlocks.begin(), m_vBlocks.end(),
                                            [&probe](const Block& b) { return b.back() < probe; });
    const auto record = std::lower_bound(block->begin(), block->end(), probe);
    return {static_cast<std::size_t>(block - m_vBlocks.begin()),
            static_cast<std::size_t>(record - block->begin())};
}

CurveOrder::Position CurveOrder::insert(Position position, const IdxVtx& record)
{
    if (position == getEnd())
        return append(record);
    if (m_vBlocks[position.block].size() == MAX_BLOCK_SIZE) {
        split(position.block);
        const std::size_t numKept = m_vBlocks[position.block].size();
        if (position.index > numKept)
            position = {position.block + 1, position.index - numKept};
    }
    Block& block = m_vBlocks[position.block];
    block.insert(block.begin() + static_cast<std::ptrdiff_t>(position.index), record);
    ++m_size;
    return position;
}

CurveOrder::Position CurveOrder::append(const IdxVtx& record)
{
    if (m_vBlocks.empty() || m_vBlocks.back().size() >= APPENDED_BLOCK_SIZE) {
        Block block;
        block.reserve(APPENDED_BLOCK_SIZE);
        m_vBlocks.push_back(std::move(block));
    }
    m_vBlocks.back().push_back(record);
    ++m_size;
    return {m_vBlocks.size() - 1, m_vBlocks.back().size() - 1};
}

void CurveOrder::split(std::size_t block)
{
    const Block& full = m_vBlocks[block];
    const std::size_t numKept = full.size() / 2;
    Block upper(full.begin() + static_cast<std::ptrdiff_t>(numKept), full.end());
    m_vBlocks.insert(m_vBlocks.begin() + static_cast<std::ptrdiff_t>(block) + 1, std::move(upper));
    m_vBlocks[block].resize(numKept);
}

std::vector<IdxVtx> CurveOrder::getAll() const
{
    std::vector<IdxVtx> vRecords;
    vRecords.reserve(m_size);
    for (const Block& block : m_vBlocks)
        vRecords.insert(vRecords.end(), block.begin(), block.end());
    return vRecords;
}

void CurveOrder::clear()
{
    m_vBlocks.clear();
    m_size = 0;
}

void CurveOrder::assign(const std::vector<IdxVtx>& vRecords)
{
    CurveOrder order;
    for (const IdxVtx& record : vRecords)
        order.append(record);
    *this = std::move(order);
}

} // namespace VORN3D
