// Signed integers of a fixed width, for determinants that are evaluated exactly.
//
// The type carries a bound of its value: a WideInteger<Bits> is below 2^Bits in magnitude. The operators
// return the type that holds every result, so no expression written in these integers can overflow.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace VORN3D
{

__extension__ typedef unsigned __int128 DoubleWord;

/// Two's complement, least significant word first.
template <int Bits>
class WideInteger
{
public:
    static constexpr int numWords = Bits / 64 + 1; // room for Bits and the sign

    /// Value not set.
    WideInteger() = default;

    /// mantissa * 2^shift.
    explicit WideInteger(std::int64_t mantissa, int shift = 0)
    {
        const std::uint64_t low = static_cast<std::uint64_t>(mantissa);
        const std::uint64_t high = getSignWord(low);
        const int bit = shift % 64;
        for (int i = 0; i < numWords; ++i)
            m_aWord[i] = i < shift / 64 ? 0 : high;
        m_aWord[shift / 64] = low << bit;
        if (bit != 0 && shift / 64 + 1 < numWords)
            m_aWord[shift / 64 + 1] = (high << bit) | (low >> (64 - bit));
    }

    /// Word i of the number, written with as many words as one likes.
    std::uint64_t getWord(int i) const { return i < numWords ? m_aWord[i] : getFill(); }
    void setWord(int i, std::uint64_t word) { m_aWord[i] = word; }

    /// What fills the words beyond the last: all ones if the number is negative, else zero.
    std::uint64_t getFill() const { return getSignWord(m_aWord[numWords - 1]); }

    /// -1, 0 or 1.
    int getSign() const
    {
        if (getFill() != 0)
            return -1;
        return std::any_of(m_aWord, m_aWord + numWords, [](std::uint64_t word) { return word != 0; });
    }

private:
    static std::uint64_t getSignWord(std::uint64_t top)
    {
        return static_cast<std::uint64_t>(static_cast<std::int64_t>(top) >> 63);
    }

    std::uint64_t m_aWord[static_cast<std::size_t>(numWords)];
};

template <int N, int M>
inline auto operator+(const WideInteger<N>& a, const WideInteger<M>& b)
{
    WideInteger<std::max(N, M) + 1> sum;
    DoubleWord carry = 0;
    for (int i = 0; i < sum.numWords; ++i) {
        carry += static_cast<DoubleWord>(a.getWord(i)) + b.getWord(i);
        sum.setWord(i, static_cast<std::uint64_t>(carry));
        carry >>= 64;
    }
    return sum;
}

template <int N, int M>
inline auto operator-(const WideInteger<N>& a, const WideInteger<M>& b)
{
    WideInteger<std::max(N, M) + 1> difference;
    DoubleWord carry = 1; // a - b = a + ~b + 1
    for (int i = 0; i < difference.numWords; ++i) {
        carry += static_cast<DoubleWord>(a.getWord(i)) + ~b.getWord(i);
        difference.setWord(i, static_cast<std::uint64_t>(carry));
        carry >>= 64;
    }
    return difference;
}

/// target -= (b as unsigned) * 2^(64 offset) if mask is all ones; nothing if it is zero.
template <int N, int M>
inline void subtractMasked(WideInteger<N>& target, const WideInteger<M>& b, int offset, std::uint64_t mask)
{
    DoubleWord carry = 1;
    for (int i = offset; i < target.numWords; ++i) {
        const std::uint64_t word = i - offset < b.numWords ? b.getWord(i - offset) & mask : 0;
        carry += static_cast<DoubleWord>(target.getWord(i)) + ~word;
        target.setWord(i, static_cast<std::uint64_t>(carry));
        carry >>= 64;
    }
}

template <int N, int M>
inline auto operator*(const WideInteger<N>& a, const WideInteger<M>& b)
{
    WideInteger<N + M> product(0);
    constexpr int numWords = product.numWords;
    for (int i = 0; i < a.numWords; ++i) {
        DoubleWord carry = 0;
        for (int j = 0; i + j < numWords; ++j) {
            const std::uint64_t factor = j < b.numWords ? b.getWord(j) : 0;
            carry += static_cast<DoubleWord>(a.getWord(i)) * factor + product.getWord(i + j);
            product.setWord(i + j, static_cast<std::uint64_t>(carry));
            carry >>= 64;
        }
    }
    // So far a negative factor was taken for the factor plus 2^(64 words of it).
    subtractMasked(product, b, a.numWords, a.getFill());
    subtractMasked(product, a, b.numWords, b.getFill());
    return product;
}

} // namespace VORN3D
