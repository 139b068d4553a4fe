#pragma once

#include "Report.h"

#include <array>
#include <cstddef>

namespace VORN3D
{
class Vorn_3D;
}

namespace VORN3D::program
{

/// What a mesh measures, in floating-point arithmetic.
struct Statistics
{
    /// Upper ends of the histogram's intervals; the first begins at 1, one without an end follows.
    static constexpr std::array<double, 7> edgeRatioLimits{1.5, 2, 3, 5, 10, 30, 100};

    double hullArea = 0.0;
    double hullVolume = 0.0; ///< from the hull's facets alone
    double sumOfVolumes = 0.0;
    double leastAngle = 180.0;
    double greatestAngle = 0.0;
    std::array<std::size_t, edgeRatioLimits.size() + 1> aNumOfEdgeRatio{};
    std::size_t numFlat = 0;

    void addTo(Report& report) const;
};

/// Measures a mesh, which must exist.
Statistics makeStatistics(const Vorn_3D& triangulation);

} // namespace VORN3D::program
