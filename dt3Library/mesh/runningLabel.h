// The running label of tetrahedra: one counter for all triangulations and threads, starting at 1000.
#pragma once

#include <atomic>
#include <cstdint>

namespace VORN3D
{

// Unsigned, so that it wraps without undefined behaviour after 2^32 tetrahedra.
inline std::atomic<std::uint32_t> runningLabel{1000};

/// Reserves `num` consecutive labels and returns the first. Labels past 2^31 - 1 come out negative.
inline std::int32_t takeRunningLabels(std::uint32_t num)
{
    return static_cast<std::int32_t>(runningLabel.fetch_add(num, std::memory_order_relaxed));
}

} // namespace VORN3D
