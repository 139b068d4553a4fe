// Values grouped by keys from 0 on, by counting: linear time, and in each group the order in which they came.
#pragma once

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

namespace VORN3D
{

template <class Value>
class Groups
{
public:
    /// Calls forEach(use) twice, which must call use(key, value) for each of the same entries.
    template <class ForEach>
    Groups(std::size_t numKeys, const ForEach& forEach) : m_vFirst(numKeys + 1, 0)
    {
        forEach([this](std::uint32_t key, const Value&) { ++m_vFirst[key + 1]; });
        std::partial_sum(m_vFirst.begin(), m_vFirst.end(), m_vFirst.begin());
        m_vValues.resize(m_vFirst.back());
        std::vector<std::size_t> vNext = m_vFirst;
        forEach([&](std::uint32_t key, const Value& value) { m_vValues[vNext[key]++] = value; });
    }

    std::size_t getSize(std::uint32_t key) const { return m_vFirst[key + 1] - m_vFirst[key]; }
    const Value* begin(std::uint32_t key) const { return m_vValues.data() + m_vFirst[key]; }
    const Value* end(std::uint32_t key) const { return m_vValues.data() + m_vFirst[key + 1]; }
    Value* begin(std::uint32_t key) { return m_vValues.data() + m_vFirst[key]; }
    Value* end(std::uint32_t key) { return m_vValues.data() + m_vFirst[key + 1]; }

    /// All values, group by group.
    std::vector<Value> takeAll() && { return std::move(m_vValues); }

private:
    std::vector<std::size_t> m_vFirst;
    std::vector<Value> m_vValues;
};

} // namespace VORN3D
