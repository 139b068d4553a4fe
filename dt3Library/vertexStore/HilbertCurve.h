// HilbertCurve numbers the eighths of a cube, of its eighths, and so on, along a three-dimensional Hilbert
// curve.
//
// Source of the curve as a state machine: C. Hamilton, Compact Hilbert Indices, Dalhousie University 2006.
#pragma once

#include <cstdint>

namespace VORN3D
{

class HilbertCurve
{
public:
    /// Goes on in an eighth of the current cube: number 4 * bx + 2 * by + bz, where a bit tells the upper
    /// half of its axis. Returns its place on the curve through the eight.
    std::uint32_t enter(unsigned octant)
    {
        const std::uint32_t digit = DIGIT[octant][m_state];
        m_state = NEXT[octant][m_state];
        return digit;
    }

private:
    // Row = octant, column = state.
    static constexpr std::uint8_t DIGIT[8][12] = {
        {0, 0, 0, 2, 4, 6, 4, 6, 2, 2, 4, 6}, {1, 7, 3, 3, 3, 5, 7, 7, 5, 1, 5, 1},
        {3, 1, 7, 1, 5, 1, 3, 5, 3, 5, 7, 7}, {2, 6, 4, 0, 2, 2, 0, 4, 4, 6, 6, 0},
        {7, 3, 1, 5, 7, 7, 5, 1, 1, 3, 3, 5}, {6, 4, 2, 4, 0, 4, 6, 0, 6, 0, 2, 2},
        {4, 2, 6, 6, 6, 0, 2, 2, 0, 4, 0, 4}, {5, 5, 5, 7, 1, 3, 1, 3, 7, 7, 1, 3}};
    static constexpr std::uint8_t NEXT[8][12] = {
        {1, 2, 0, 6, 11, 4, 5, 6, 10, 4, 7, 10}, {2, 6, 9, 0, 11, 4, 7, 1, 3, 4, 2, 3},
        {3, 0, 10, 6, 0, 8, 5, 6, 1, 8, 11, 2},  {2, 7, 9, 11, 7, 8, 3, 10, 1, 8, 2, 6},
        {4, 8, 1, 9, 5, 0, 1, 9, 10, 2, 7, 10},  {5, 8, 1, 0, 9, 6, 1, 4, 3, 7, 5, 3},
        {3, 0, 11, 9, 0, 10, 11, 9, 5, 2, 8, 4}, {5, 7, 11, 8, 7, 6, 11, 10, 9, 3, 5, 4}};

    unsigned m_state = 0;
};

} // namespace VORN3D
