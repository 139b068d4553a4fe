// Signed integers of a fixed width, for determinants that are evaluated exactly.
//
// The type carries a bound of its value: a WideInteger<Bits> is below 2^Bits in magnitude. The operators
// return the type that holds every result, so no expression written in these integers can overflow.
#pragma once

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#if defined(__x86_64__)
#include <x86intrin.h>
#endif

namespace VORN3D
{

// The widest words of which the compiler knows the products.
#if defined(__SIZEOF_INT128__)
using Word = unsigned long long;
__extension__ typedef unsigned __int128 DoubleWord;
__extension__ typedef __int128 SignedDoubleWord;
#else
using Word = std::uint32_t;
using DoubleWord = std::uint64_t;
using SignedDoubleWord = std::int64_t;
#endif
using SignedWord = std::make_signed_t<Word>;
constexpr int WORD_BITS = static_cast<int>(sizeof(Word)) * CHAR_BIT;

/// Two's complement, least significant word first.
template <int Bits>
class WideInteger
{
public:
    static constexpr int numWords = Bits / WORD_BITS + 1; // room for Bits and the sign

    /// Value not set.
    WideInteger() = default;

    /// A value that two words hold and that is known to be below 2^Bits.
    [[gnu::always_inline]] explicit WideInteger(SignedDoubleWord value)
    {
        m_aWord[0] = static_cast<Word>(value);
        for (int i = 1; i < numWords; ++i)
            m_aWord[i] = static_cast<Word>(value >> (i == 1 ? WORD_BITS : 2 * WORD_BITS - 1));
    }

    /// The lowest two words, for a number that has no more.
    [[gnu::always_inline]] SignedDoubleWord getDoubleWord() const
    {
        if constexpr (numWords == 1)
            return static_cast<SignedWord>(m_aWord[0]);
        else
            return static_cast<SignedDoubleWord>((static_cast<DoubleWord>(m_aWord[1]) << WORD_BITS) |
                                                 m_aWord[0]);
    }

    Word operator[](int i) const { return m_aWord[i]; }
    Word& operator[](int i) { return m_aWord[i]; }

    /// Word i of the number written with as many words as one likes.
    Word getWord(int i) const { return i < numWords ? m_aWord[i] : getFill(); }

    /// What fills the words beyond the last: all ones if the number is negative, else zero.
    Word getFill() const
    {
        return static_cast<Word>(static_cast<SignedWord>(m_aWord[numWords - 1]) >> (WORD_BITS - 1));
    }

    /// -1, 0 or 1.
    int getSign() const
    {
        if (getFill() != 0)
            return -1;
        return std::any_of(m_aWord, m_aWord + numWords, [](Word word) { return word != 0; });
    }

    /// value * 2^shift, which must be below 2^Bits.
    static WideInteger shifted(long long value, int shift)
    {
        const WideInteger<64> source(value);
        const int bit = shift % WORD_BITS;
        WideInteger result;
        for (int i = 0; i < numWords; ++i) {
            const int from = i - shift / WORD_BITS;
            const Word high = from < 0 ? 0 : source.getWord(from);
            const Word low = from < 1 ? 0 : source.getWord(from - 1);
            result[i] = bit == 0 ? high : (high << bit) | (low >> (WORD_BITS - bit));
        }
        return result;
    }

private:
    Word m_aWord[static_cast<std::size_t>(numWords)];
};

namespace wordArithmetic
{

/// sum = a + b + carry; returns the carry out. The intrinsics spare the compiler from finding the carry
/// chain.
[[gnu::always_inline]] inline unsigned char addWithCarry(unsigned char carry, Word a, Word b, Word& sum)
{
#if defined(__x86_64__)
    return _addcarry_u64(carry, a, b, &sum);
#else
    const DoubleWord wide = static_cast<DoubleWord>(a) + b + carry;
    sum = static_cast<Word>(wide);
    return static_cast<unsigned char>(wide >> WORD_BITS);
#endif
}

/// difference = a - b - borrow; returns the borrow out.
[[gnu::always_inline]] inline unsigned char subtractWithBorrow(unsigned char borrow, Word a, Word b,
                                                               Word& difference)
{
#if defined(__x86_64__)
    return _subborrow_u64(borrow, a, b, &difference);
#else
    const DoubleWord wide = static_cast<DoubleWord>(a) - b - borrow;
    difference = static_cast<Word>(wide);
    return static_cast<unsigned char>(wide >> WORD_BITS) & 1;
#endif
}

/// target -= (b as unsigned) * 2^(WORD_BITS offset) if the mask is all ones; nothing if it is zero.
template <int N, int M>
[[gnu::always_inline]] inline void subtractMasked(WideInteger<N>& target, const WideInteger<M>& b, int offset,
                                                  Word mask)
{
    unsigned char borrow = 0;
    for (int i = offset; i < WideInteger<N>::numWords; ++i) {
        const Word word = i - offset < WideInteger<M>::numWords ? b[i - offset] & mask : 0;
        borrow = subtractWithBorrow(borrow, target[i], word, target[i]);
    }
}

template <int N, int M>
[[gnu::always_inline]] inline WideInteger<N + M> multiplyWords(const WideInteger<N>& a,
                                                               const WideInteger<M>& b)
{
    constexpr int numWords = WideInteger<N + M>::numWords;
    constexpr int numWordsOfA = WideInteger<N>::numWords;
    constexpr int numWordsOfB = WideInteger<M>::numWords;
    WideInteger<N + M> product(0);
    for (int i = 0; i < numWordsOfA; ++i) {
        DoubleWord carry = 0;
        for (int j = 0; j < numWordsOfB && i + j < numWords; ++j) {
            carry += static_cast<DoubleWord>(a[i]) * b[j] + product[i + j];
            product[i + j] = static_cast<Word>(carry);
            carry >>= WORD_BITS;
        }
        if (i + numWordsOfB < numWords)
            product[i + numWordsOfB] = static_cast<Word>(carry);
    }
    // So far a negative factor was taken for the factor plus 2^(WORD_BITS words of it).
    subtractMasked(product, b, numWordsOfA, a.getFill());
    subtractMasked(product, a, numWordsOfB, b.getFill());
    return product;
}

/// The same as a function of its own, for long factors: inlined, these products would be half of the library.
template <int N, int M>
[[gnu::noinline]] WideInteger<N + M> multiplyManyWords(const WideInteger<N>& a, const WideInteger<M>& b)
{
    return multiplyWords(a, b);
}

} // namespace wordArithmetic

template <int N, int M>
[[gnu::always_inline]] inline auto operator+(const WideInteger<N>& a, const WideInteger<M>& b)
{
    using Sum = WideInteger<std::max(N, M) + 1>;
    if constexpr (Sum::numWords <= 2)
        return Sum(a.getDoubleWord() + b.getDoubleWord());
    Sum sum;
    unsigned char carry = 0;
    for (int i = 0; i < Sum::numWords; ++i)
        carry = wordArithmetic::addWithCarry(carry, a.getWord(i), b.getWord(i), sum[i]);
    return sum;
}

template <int N, int M>
[[gnu::always_inline]] inline auto operator-(const WideInteger<N>& a, const WideInteger<M>& b)
{
    using Difference = WideInteger<std::max(N, M) + 1>;
    if constexpr (Difference::numWords <= 2)
        return Difference(a.getDoubleWord() - b.getDoubleWord());
    Difference difference;
    unsigned char borrow = 0;
    for (int i = 0; i < Difference::numWords; ++i)
        borrow = wordArithmetic::subtractWithBorrow(borrow, a.getWord(i), b.getWord(i), difference[i]);
    return difference;
}

template <int N, int M>
[[gnu::always_inline]] inline auto operator*(const WideInteger<N>& a, const WideInteger<M>& b)
{
    using Product = WideInteger<N + M>;
    if constexpr (Product::numWords <= 2)
        return Product(a.getDoubleWord() * b.getDoubleWord());
    else if constexpr (Product::numWords <= 5)
        return wordArithmetic::multiplyWords(a, b);
    else
        return wordArithmetic::multiplyManyWords(a, b);
}

} // namespace VORN3D
