// Positive binary floating-point numbers of any length, for exact fractions: products, comparisons and the
// leading digits of quotients.
#pragma once

#include "predicates/WideInteger.h"

#include <cstdint>

namespace VORN3D
{

/// The leading 128 binary digits of a quotient, and whether there are more. The order of the members is the
/// order of the values: two quotients that differ in a member compare as that member does.
struct LongQuotient
{
    int exponent;       ///< the value is from 2^(exponent - 1) to below 2^exponent
    std::uint64_t high; ///< the digits, the first of which is 1
    std::uint64_t low;
    bool bMore; ///< the value is greater than these digits say, by less than a unit of the last

    bool operator==(const LongQuotient& other) const;
    bool operator<(const LongQuotient& other) const;

    /// The least double that is not below the value; infinity beyond the largest.
    double roundUp() const;
};

/// A positive number, exact: words, the least significant first; the value is from 2^(exponent - 1) to below
/// 2^exponent.
class LongFloat
{
public:
    /// value * 2^exponent, value > 0.
    template <int Bits>
    LongFloat(const WideInteger<Bits>& value, int exponent)
        : m_exponent(exponent + WORD_BITS * WideInteger<Bits>::numWords),
          m_numWords(WideInteger<Bits>::numWords)
    {
        static_assert(WideInteger<Bits>::numWords <= MAX_NUM_WORDS);
        for (int i = 0; i < m_numWords; ++i)
            m_aWord[i] = value[i];
        normalize();
    }

    // Copies the words in use only.
    LongFloat(const LongFloat& other);
    LongFloat& operator=(const LongFloat&) = delete;

    friend LongFloat operator*(const LongFloat& a, const LongFloat& b);
    friend LongQuotient operator/(const LongFloat& a, const LongFloat& b);

    /// -1, 0 or 1 as a is less than b, equal, greater.
    friend int compare(const LongFloat& a, const LongFloat& b);

private:
    /// Products of fourteen differences of doubles, of 2,099 binary digits, and their sums.
    static constexpr int MAX_NUM_WORDS = 14 * 2112 / WORD_BITS;

    LongFloat() = default;
    void normalize();

    /// Word i from the top, zero behind the last.
    Word getWordFromTop(int i) const { return i < m_numWords ? m_aWord[m_numWords - 1 - i] : 0; }

    int m_exponent;
    int m_numWords;
    Word m_aWord[MAX_NUM_WORDS];
};

} // namespace VORN3D
