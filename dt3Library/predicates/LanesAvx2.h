// Four doubles at a time in one register, where the processor has AVX2. Members as in Lanes.h.
//
// For one source file alone, which is compiled for such processors. Without a name outside of that file, so
// that no other part of the program can come to use code for a processor that it may not run on.
#pragma once

#include "predicates/Lanes.h"

#include <immintrin.h>

namespace VORN3D
{

namespace
{

struct LanesAvx2
{
    __m256d all;

    static LanesAvx2 broadcast(double value) { return {_mm256_set1_pd(value)}; }

    static void loadTransposed(const double* p0, const double* p1, const double* p2, const double* p3,
                               LanesAvx2& first, LanesAvx2& second, LanesAvx2& third)
    {
        const __m256d of02 = join(_mm_loadu_pd(p0), _mm_loadu_pd(p2));
        const __m256d of13 = join(_mm_loadu_pd(p1), _mm_loadu_pd(p3));
        first = {_mm256_unpacklo_pd(of02, of13)};
        second = {_mm256_unpackhi_pd(of02, of13)};
        third = {join(_mm_loadh_pd(_mm_load_sd(p0 + 2), p1 + 2), _mm_loadh_pd(_mm_load_sd(p2 + 2), p3 + 2))};
    }

    LanesAvx2 operator+(const LanesAvx2& other) const { return {_mm256_add_pd(all, other.all)}; }
    LanesAvx2 operator-(const LanesAvx2& other) const { return {_mm256_sub_pd(all, other.all)}; }
    LanesAvx2 operator*(const LanesAvx2& other) const { return {_mm256_mul_pd(all, other.all)}; }

    LanesAvx2 turned() const { return {_mm256_permute4x64_pd(all, _MM_SHUFFLE(0, 3, 2, 1))}; }
    LanesAvx2 turnedTwice() const { return {_mm256_permute2f128_pd(all, all, 1)}; }

    LanesAvx2 max(const LanesAvx2& other) const { return {_mm256_max_pd(all, other.all)}; }

    double getMax() const
    {
        const __m128d larger = _mm_max_pd(_mm256_castpd256_pd128(all), _mm256_extractf128_pd(all, 1));
        return _mm_cvtsd_f64(_mm_max_sd(larger, _mm_unpackhi_pd(larger, larger)));
    }

    LaneMask getNegative() const { return static_cast<LaneMask>(_mm256_movemask_pd(all)); }

    LaneMask getGreater(const LanesAvx2& other) const
    {
        return static_cast<LaneMask>(_mm256_movemask_pd(_mm256_cmp_pd(all, other.all, _CMP_GT_OQ)));
    }

private:
    static __m256d join(__m128d lo, __m128d hi)
    {
        return _mm256_insertf128_pd(_mm256_castpd128_pd256(lo), hi, 1);
    }
};

} // namespace

} // namespace VORN3D
