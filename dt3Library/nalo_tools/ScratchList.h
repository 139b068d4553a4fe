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
        : m_apElement(makeElements(capacity)), m_pEnd(m_apElement.get()), m_pLimit(m_pEnd + capacity)
    {
    }

    class Appender
    {
    public:
        /// For up to `maxNum` elements; the list must not be used otherwise meanwhile.
        Appender(ScratchList& list, std::size_t maxNum) : m_list(list)
        {
            list.makeRoomFor(maxNum);
            m_pEnd = list.m_pEnd;
        }
        Appender(const Appender&) = delete;
        Appender& operator=(const Appender&) = delete;
        ~Appender() { m_list.m_pEnd = m_pEnd; }

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
        makeRoomFor(1);
        *m_pEnd++ = element;
    }

    /// Makes room for `num` more elements.
    void makeRoomFor(std::size_t num)
    {
        if (static_cast<std::size_t>(m_pLimit - m_pEnd) < num)
            grow(num);
    }

    T takeLast() { return *--m_pEnd; }

    void clear() { m_pEnd = begin(); }
    bool empty() const { return m_pEnd == m_apElement.get(); }
    std::size_t size() const { return static_cast<std::size_t>(m_pEnd - m_apElement.get()); }
    T& operator[](std::size_t i) { return m_apElement[i]; }
    const T& operator[](std::size_t i) const { return m_apElement[i]; }
    T* begin() { return m_apElement.get(); }
    T* end() { return m_pEnd; }

    void swap(ScratchList& other)
    {
        std::swap(m_apElement, other.m_apElement);
        std::swap(m_pEnd, other.m_pEnd);
        std::swap(m_pLimit, other.m_pLimit);
    }

private:
    // Uninitialised: a list for small sets is gone before most of it was used.
    static std::unique_ptr<T[]> makeElements(std::size_t num) { return std::unique_ptr<T[]>(new T[num]); }

    void grow(std::size_t num)
    {
        const std::size_t capacity = std::max(size() + num, 2 * static_cast<std::size_t>(m_pLimit - begin()));
        auto apLarger = makeElements(capacity);
        m_pEnd = std::copy(begin(), end(), apLarger.get());
        m_apElement = std::move(apLarger);
        m_pLimit = begin() + capacity;
    }

    std::unique_ptr<T[]> m_apElement;
    T* m_pEnd;
    T* m_pLimit;
};

} // namespace VORN3D
