// Points as rows of doubles: their differences against the last one, rounded.
#pragma once

#include "predicates/ExactSign.h"
#include "predicates/FloatFilter.h"

#include <algorithm>

namespace VORN3D
{

template <std::size_t N>
std::array<Row<double>, N - 1> getDifferences(const PointArray<N>& points)
{
    std::array<Row<double>, N - 1> rows;
    for (std::size_t i = 0; i + 1 < N; ++i)
        rows[i] = difference(points[i], points[N - 1]);
    return rows;
}

/// The largest difference of two coordinates.
template <std::size_t N>
double getExtent(const std::array<Row<double>, N>& rows)
{
    double extent = 0.0;
    for (const Row<double>& row : rows)
        extent = std::max(extent, maxAbs(row.x, row.y, row.z));
    return extent;
}

} // namespace VORN3D
