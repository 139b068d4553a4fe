// WalkStarts says where to start the walk to each vertex of a batch.
//
// Usually that is where the last insertion ended, a step or two away on the curve. But the curve's cells have
// the proportions of the box of all points: a far outlier leaves a whole cluster in one cell, and in a long
// thin box what is near on the curve is far in space. Where walks turn out long, each vertex gets a start of
// its own: the nearest of the vertices inserted before it on a second curve, made of cubes and refined until
// cells hold few points.
#pragma once

#include "vorn3d/Point3.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VORN3D
{

class WalkStarts
{
public:
    /// The walks are judged after so many insertions each time.
    static constexpr std::size_t SAMPLE_SIZE = 1024;

    /// For the vertices at the given positions, inserted in that order. The arguments must stay.
    WalkStarts(const std::vector<Point3*>& vVertices, const std::vector<std::uint32_t>& vOrder)
        : m_vVertices(vVertices), m_vOrder(vOrder)
    {
    }

    /// Takes note of the number of facet tests in the last sample of walks. O(n log n) when they turn out
    /// long, once.
    void judge(std::size_t numWalkTests)
    {
        if (m_vNearEarlier.empty() && numWalkTests > LONG_WALK * SAMPLE_SIZE)
            findNearEarlierVertices();
    }

    /// Where to start the walk to the vertex that is number `k` in the order; pLastTet is where the last one
    /// ended.
    Tet3* getStart(std::size_t k, Tet3* pLastTet) const
    {
        return m_vNearEarlier.empty() ? pLastTet : getStartNearEarlier(k, pLastTet);
    }

private:
    // Well above the 6 to 13 tests of a walk along a good curve.
    static constexpr std::size_t LONG_WALK = 32;

    void findNearEarlierVertices();
    Tet3* getStartNearEarlier(std::size_t k, Tet3* pLastTet) const;

    const std::vector<Point3*>& m_vVertices;
    const std::vector<std::uint32_t>& m_vOrder;
    // By position: the position of the vertex to start from. Empty while walks are short.
    std::vector<std::uint32_t> m_vNearEarlier;
};

} // namespace VORN3D
