// CurveOrder keeps vertices sorted by their place on the curve: a two-level array of small sorted blocks.
// Look-ups are two binary searches, an insertion moves at most one block, and sorted input is appended block
// by block, all at 16 bytes a vertex. What throws for lack of memory changes nothing.
#pragma once

#include "vorn3d/Point3.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

/// A vertex with its place on the curve.
struct IdxVtx
{
    std::uint32_t hIndex;
    Point3* pVtx;
};

/// Order by key, then by coordinates. A record without a vertex, as made for look-ups, comes first in its
/// key.
inline bool operator<(const IdxVtx& a, const IdxVtx& b)
{
    if (a.hIndex != b.hIndex)
        return a.hIndex < b.hIndex;
    if (a.pVtx == nullptr)
        return true;
    return b.pVtx != nullptr && *a.pVtx < *b.pVtx;
}

class CurveOrder
{
public:
    /// A place in the order; valid until the next insertion.
    struct Position
    {
        std::size_t block;
        std::size_t index;

        bool operator==(const Position& other) const { return block == other.block && index == other.index; }
    };

    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }

    Position getBegin() const { return {0, 0}; }
    Position getEnd() const { return {m_vBlocks.size(), 0}; }
    Position getNext(Position position) const;
    Position getPrevious(Position position) const;
    const IdxVtx& operator[](Position position) const { return m_vBlocks[position.block][position.index]; }

    /// The first record that is not less than `probe`.
    Position findLowerBound(const IdxVtx& probe) const;

    /// Calls visit(const IdxVtx&) for up to `num` records spread evenly over the order.
    template <typename Visitor>
    void forEachOfSample(std::size_t num, Visitor visit) const
    {
        const std::size_t stride = m_vBlocks.size() / (num + 1) + 1;
        for (std::size_t block = stride / 2; block < m_vBlocks.size(); block += stride)
            visit(m_vBlocks[block][m_vBlocks[block].size() / 2]);
    }

    /// Puts `record` in front of `position`, where it belongs; returns its place.
    Position insert(Position position, const IdxVtx& record);

    /// All records in order.
    std::vector<IdxVtx> getAll() const;

    void clear();

    /// Takes over records in order.
    void assign(const std::vector<IdxVtx>& vRecords);

private:
    using Block = std::vector<IdxVtx>;

    Position append(const IdxVtx& record);
    void split(std::size_t block);

    std::vector<Block> m_vBlocks; // none is empty
    std::size_t m_size = 0;
};

} // namespace VORN3D
