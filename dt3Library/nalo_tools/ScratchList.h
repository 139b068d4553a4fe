// ScratchList is a growing array for the hot loops: room is reserved once for several appends, which are then
// unchecked, and an append can depend on a condition without a branch. Keeps its memory when cleared.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace VORN3D
{

template <typename T>
class ScratchList
{
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

public:
    explicit ScratchList(std::size_t capacity = 512)
        : m_apElement(std::make_unique<T[]>(capacity)), m_capacity(capacity)
    {
    }

    /// Makes room for `num` unchecked appends.
    void reserveFor(std::size_t num)
    {
        if (m_size + num > m_capacity)
            grow(m_size + num);
    }

    void append(const T& element) { m_apElement[m_size++] = element; }

    /// Appends if the condition holds; needs room for the element in either case.
    void appendIf(const T& element, bool bCondition)
    {
        m_apElement[m_size] = element;
        m_size += bCondition;
    }

    T takeLast() { return m_apElement[--m_size]; }

    void clear() { m_size = 0; }
    bool empty() const { return m_size == 0; }
    std::size_t size() const { return m_size; }
    T& operator[](std::size_t i) { return m_apElement[i]; }
    const T& operator[](std::size_t i) const { return m_apElement[i]; }
    T* begin() { return m_apElement.get(); }
    T* end() { return m_apElement.get() + m_size; }

    void swap(ScratchList& other)
    {
        std::swap(m_apElement, other.m_apElement);
        std::swap(m_size, other.m_size);
        std::swap(m_capacity, other.m_capacity);
    }

private:
    void grow(std::size_t needed)
    {
        m_capacity = std::max(needed, 2 * m_capacity);
        auto apLarger = std::make_unique<T[]>(m_capacity);
        std::copy(begin(), end(), apLarger.get());
        m_apElement = std::move(apLarger);
    }

    std::unique_ptr<T[]> m_apElement;
    std::size_t m_size = 0;
    std::size_t m_capacity;
};

} // namespace VORN3D
