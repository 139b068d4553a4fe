// The order of simplices by the exact squared radii of their smallest circumscribed spheres.
#pragma once

#include "squaredRadius.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace VORN3D
{

/// The places of simplices in that order.
struct RadiusRanks
{
    /// For each simplex its rank, from 1 on: equal for equal radii, greater for greater ones.
    std::vector<std::uint32_t> vRanks;

    /// For each rank the squared radius, rounded up to a double; 0 for rank 0.
    std::vector<double> vValues;
};

/// Ranks num simplices, of which getPoints(i) gives the vertices. Takes the time to sort, and for simplices
/// of equal radius one exact comparison each.
RadiusRanks rankByRadius(std::size_t num, const std::function<SimplexPoints(std::size_t)>& getPoints);

} // namespace VORN3D
