// ScratchList is a growing array for the hot loops. An Appender makes room for a number of elements once; its
// appends are unchecked, work on a register, and can depend on a condition without a branch. Keeps its memory
// when cleared.
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

    class Appender
    {
    public:
        /// For up to `maxNum` elements; the list must not be used otherwise meanwhile.
        Appender(ScratchList& list, std::size_t maxNum) : m_list(list)
        {
            list.reserve(list.size() + maxNum);
            m_pEnd = list.end();
        }
        Appender(const Appender&) = delete;
        Appender& operator=(const Appender&) = delete;
        ~Appender() { m_list.m_size = static_cast<std::size_t>(m_pEnd - m_list.begin()); }

        void append(const T& element) { *m_pEnd++ = element; }

        /// Appends if the condition holds; needs room for the element in either case.
        void appendIf(const T& element, bool bCondition)
        {
            *m_pEnd = element;
            m_pEnd += bCondition;
        }

    private:
        ScratchList& m_list;
        T* m_pEnd;
    };

    void append(const T& element)
    {
        reserve(m_size + 1);
        m_apElement[m_size++] = element;
    }

    /// Makes room for `capacity` elements in all.
    void reserve(std::size_t capacity)
    {
        if (capacity > m_capacity)
            grow(capacity);
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
