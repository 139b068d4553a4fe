// EdgeKey names an edge by the addresses of its ends, whatever its direction.
#pragma once

#include "vorn3d/Point3.h"

#include <cstddef>
#include <cstdint>

namespace VORN3D
{

struct EdgeKey
{
    EdgeKey() = default;

    EdgeKey(const Point3* p, const Point3* q)
    {
        const auto u = reinterpret_cast<std::uintptr_t>(p);
        const auto v = reinterpret_cast<std::uintptr_t>(q);
        low = u < v ? u : v;
        high = u < v ? v : u;
    }

    bool operator==(const EdgeKey& other) const { return ((low ^ other.low) | (high ^ other.high)) == 0; }

    const Point3* getLowEnd() const { return reinterpret_cast<const Point3*>(low); }
    const Point3* getHighEnd() const { return reinterpret_cast<const Point3*>(high); }

    /// 32 well mixed bits. Two odd factors without a common pattern spread addresses in regular distances.
    std::size_t getHash() const
    {
        const std::uint64_t hash = low * UINT64_C(0x9E3779B97F4A7C15) + high * UINT64_C(0xC2B2AE3D27D4EB4F);
        return static_cast<std::size_t>(hash >> 32);
    }

    std::uintptr_t low = 0;
    std::uintptr_t high = 0;
};

} // namespace VORN3D
