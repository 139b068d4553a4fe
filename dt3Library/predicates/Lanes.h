// Four doubles at a time, in two pairs, which is what the vector units of all current processors hold.
//
// Turning the lanes by one is two shuffles, by two it is free.
#pragma once

#include <cmath>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace VORN3D
{

/// Two lanes.
typedef double LanePair __attribute__((vector_size(16)));

/// A bit for each lane.
using LaneMask = unsigned;

struct Lanes
{
    LanePair lo;
    LanePair hi;

    static Lanes broadcast(double value) { return {LanePair{value, value}, LanePair{value, value}}; }

    /// Three numbers from each of four places: the first ones, second ones and third ones.
    static void loadTransposed(const double* p0, const double* p1, const double* p2, const double* p3,
                               Lanes& first, Lanes& second, Lanes& third)
    {
        first = {LanePair{p0[0], p1[0]}, LanePair{p2[0], p3[0]}};
        second = {LanePair{p0[1], p1[1]}, LanePair{p2[1], p3[1]}};
        third = {LanePair{p0[2], p1[2]}, LanePair{p2[2], p3[2]}};
    }

    Lanes operator+(const Lanes& other) const { return {lo + other.lo, hi + other.hi}; }
    Lanes operator-(const Lanes& other) const { return {lo - other.lo, hi - other.hi}; }
    Lanes operator*(const Lanes& other) const { return {lo * other.lo, hi * other.hi}; }

    /// Lane i gets what lane i + 1 (modulo 4) held.
    Lanes turned() const { return {LanePair{lo[1], hi[0]}, LanePair{hi[1], lo[0]}}; }

    /// Lane i gets what lane i + 2 (modulo 4) held.
    Lanes turnedTwice() const { return {hi, lo}; }

    Lanes max(const Lanes& other) const
    {
        return {lo > other.lo ? lo : other.lo, hi > other.hi ? hi : other.hi};
    }

    double getMax() const
    {
        const LanePair larger = lo > hi ? lo : hi;
        return larger[0] > larger[1] ? larger[0] : larger[1];
    }

    /// The lanes whose sign bit is set.
    LaneMask getNegative() const
    {
#ifdef __SSE2__
        return static_cast<LaneMask>(_mm_movemask_pd(lo) | _mm_movemask_pd(hi) << 2);
#else
        return LaneMask{std::signbit(lo[0])} | LaneMask{std::signbit(lo[1])} << 1 |
               LaneMask{std::signbit(hi[0])} << 2 | LaneMask{std::signbit(hi[1])} << 3;
#endif
    }

    /// The lanes that are greater than those of `other`; a lane that is not a number is not.
    LaneMask getGreater(const Lanes& other) const
    {
#ifdef __SSE2__
        return static_cast<LaneMask>(_mm_movemask_pd(_mm_cmpgt_pd(lo, other.lo)) |
                                     _mm_movemask_pd(_mm_cmpgt_pd(hi, other.hi)) << 2);
#else
        return LaneMask{lo[0] > other.lo[0]} | LaneMask{lo[1] > other.lo[1]} << 1 |
               LaneMask{hi[0] > other.hi[0]} << 2 | LaneMask{hi[1] > other.hi[1]} << 3;
#endif
    }
};

} // namespace VORN3D
