// What the package hands to numpy.
#pragma once

#include "memory.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <type_traits>

namespace VORN3D::python
{

/// The numbers of points and simplices, those of scipy.spatial: -1 is none.
using Index = std::int32_t;

/// Throws std::overflow_error if there are more things than an Index can count.
inline void requireIndices(std::size_t num)
{
    if (num > static_cast<std::size_t>(std::numeric_limits<Index>::max()))
        throw std::overflow_error("the arrays can number less than 2**31 points, simplices or neighbours");
}

/// Rows of equal length, one after another, in memory that numpy can take over. Unlike a std::vector's, it is
/// not cleared before it is written.
template <typename T>
class Table
{
    static_assert(std::is_trivial_v<T>);

public:
    Table(std::size_t numRows, std::size_t numColumns)
        : m_pData(static_cast<T*>(allocate(numRows * numColumns * sizeof(T)))), m_numRows(numRows),
          m_numColumns(numColumns)
    {
    }

    T* row(std::size_t i) { return m_pData.get() + i * m_numColumns; }
    T& operator[](std::size_t i) { return m_pData[i]; }
    T* data() { return m_pData.get(); }
    /// The memory, which is then the caller's to release().
    T* release() { return m_pData.release(); }

    std::size_t getNumRows() const { return m_numRows; }
    std::size_t getNumColumns() const { return m_numColumns; }

private:
    struct Release
    {
        void operator()(T* p) const noexcept { python::release(p); }
    };

    std::unique_ptr<T[], Release> m_pData;
    std::size_t m_numRows;
    std::size_t m_numColumns;
};

} // namespace VORN3D::python
