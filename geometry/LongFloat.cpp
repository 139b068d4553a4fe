#include "LongFloat.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace VORN3D
{

namespace
{

/// target -= digit * b for numWords words of b and one more of the target; returns the borrow.
unsigned char subtractProduct(Word* pTarget, Word digit, const Word* pB, int numWords)
{
    Word carry = 0;
    unsigned char borrow = 0;
    for (int i = 0; i < numWords; ++i) {
        const DoubleWord product = static_cast<DoubleWord>(digit) * pB[i] + carry;
        carry = static_cast<Word>(product >> WORD_BITS);
        borrow =
            wordArithmetic::subtractWithBorrow(borrow, pTarget[i], static_cast<Word>(product), pTarget[i]);
    }
    return wordArithmetic::subtractWithBorrow(borrow, pTarget[numWords], carry, pTarget[numWords]);
}

/// target += b, for numWords words of b and one more of the target.
void add(Word* pTarget, const Word* pB, int numWords)
{
    unsigned char carry = 0;
    for (int i = 0; i < numWords; ++i)
        carry = wordArithmetic::addWithCarry(carry, pTarget[i], pB[i], pTarget[i]);
    pTarget[numWords] += carry;
}

/// One step of a long division: returns the largest digit for which digit * divisor <= remainder *
/// 2^WORD_BITS and leaves the difference as the remainder. The divisor has numWords > 1 words and a 1 as its
/// first binary digit; the remainder is smaller and has room for a word more. Knuth's algorithm D (The Art of
/// Computer Programming 2, 4.3.1): the digit guessed from the leading words is at most one too large.
Word divideOnce(Word* pRemainder, const Word* pDivisor, int numWords)
{
    std::copy_backward(pRemainder, pRemainder + numWords, pRemainder + numWords + 1);
    pRemainder[0] = 0;
    const Word* const pTop = pRemainder + numWords;
    const Word leading = pDivisor[numWords - 1];
    Word digit = ~Word(0);
    if (pTop[0] < leading) {
        const DoubleWord top = static_cast<DoubleWord>(pTop[0]) << WORD_BITS | pTop[-1];
        digit = static_cast<Word>(top / leading);
        DoubleWord rest = top % leading;
        while (rest >> WORD_BITS == 0 &&
               static_cast<DoubleWord>(digit) * pDivisor[numWords - 2] > (rest << WORD_BITS | pTop[-2])) {
            --digit;
            rest += leading;
        }
    }
    if (subtractProduct(pRemainder, digit, pDivisor, numWords) != 0) {
        add(pRemainder, pDivisor, numWords);
        --digit;
    }
    return digit;
}

std::uint64_t divideFor64Digits(Word* pRemainder, const Word* pDivisor, int numWords)
{
    std::uint64_t digits = 0;
    for (int i = 0; i < 64 / WORD_BITS; ++i) // shifted twice, as a shift by all 64 is undefined
        digits = digits << WORD_BITS / 2 << WORD_BITS / 2 | divideOnce(pRemainder, pDivisor, numWords);
    return digits;
}

auto getMembers(const LongQuotient& quotient)
{
    return std::tie(quotient.exponent, quotient.high, quotient.low, quotient.bMore);
}

} // namespace

bool LongQuotient::operator==(const LongQuotient& other) const
{
    return getMembers(*this) == getMembers(other);
}

bool LongQuotient::operator<(const LongQuotient& other) const
{
    return getMembers(*this) < getMembers(other);
}

double LongQuotient::roundUp() const
{
    // Subnormal numbers have fewer digits than 53.
    const int numDigits = std::min(53, exponent - std::numeric_limits<double>::min_exponent + 53);
    if (numDigits <= 0)
        return std::numeric_limits<double>::denorm_min();
    const bool bAbove = (high << numDigits) != 0 || low != 0 || bMore;
    return std::ldexp(static_cast<double>((high >> (64 - numDigits)) + bAbove), exponent - numDigits);
}

LongFloat::LongFloat(const LongFloat& other) : m_exponent(other.m_exponent), m_numWords(other.m_numWords)
{
    std::copy_n(other.m_aWord, m_numWords, m_aWord);
}

/// Makes the first binary digit a 1 and drops words of zeros at both ends.
void LongFloat::normalize()
{
    while (m_aWord[m_numWords - 1] == 0) {
        --m_numWords;
        m_exponent -= WORD_BITS;
    }
    int numLowZeros = 0;
    while (m_aWord[numLowZeros] == 0)
        ++numLowZeros;
    const int shift = __builtin_clzll(m_aWord[m_numWords - 1]) - (64 - WORD_BITS);
    m_numWords -= numLowZeros;
    m_exponent -= shift;
    Word below = 0;
    for (int i = 0; i < m_numWords; ++i) {
        const Word word = m_aWord[i + numLowZeros];
        m_aWord[i] = word << shift | below;
        below = shift == 0 ? 0 : word >> (WORD_BITS - shift);
    }
}

int compare(const LongFloat& a, const LongFloat& b)
{
    if (a.m_exponent != b.m_exponent)
        return a.m_exponent < b.m_exponent ? -1 : 1;
    for (int i = 0; i < std::max(a.m_numWords, b.m_numWords); ++i)
        if (a.getWordFromTop(i) != b.getWordFromTop(i))
            return a.getWordFromTop(i) < b.getWordFromTop(i) ? -1 : 1;
    return 0;
}

LongFloat operator*(const LongFloat& a, const LongFloat& b)
{
    LongFloat product;
    product.m_exponent = a.m_exponent + b.m_exponent;
    product.m_numWords = a.m_numWords + b.m_numWords;
    std::fill_n(product.m_aWord, product.m_numWords, Word(0));
    for (int i = 0; i < a.m_numWords; ++i) {
        DoubleWord carry = 0;
        for (int j = 0; j < b.m_numWords; ++j) {
            carry += static_cast<DoubleWord>(a.m_aWord[i]) * b.m_aWord[j] + product.m_aWord[i + j];
            product.m_aWord[i + j] = static_cast<Word>(carry);
            carry >>= WORD_BITS;
        }
        product.m_aWord[i + b.m_numWords] = static_cast<Word>(carry);
    }
    product.normalize();
    return product;
}

LongQuotient operator/(const LongFloat& a, const LongFloat& b)
{
    // Both as fractions from 1/2 to below 1, aligned at the top; the dividend is halved if it is not smaller.
    // Two words at least, and one for the digit that halving shifts out.
    const int numWords = std::max(a.m_numWords + 1, std::max(b.m_numWords, 2));
    Word aRemainder[LongFloat::MAX_NUM_WORDS + 2];
    Word aDivisor[LongFloat::MAX_NUM_WORDS + 1];
    for (int i = 0; i < numWords; ++i) {
        aRemainder[numWords - 1 - i] = a.getWordFromTop(i);
        aDivisor[numWords - 1 - i] = b.getWordFromTop(i);
    }
    const bool bHalve = !std::lexicographical_compare(
        std::make_reverse_iterator(aRemainder + numWords), std::make_reverse_iterator(aRemainder),
        std::make_reverse_iterator(aDivisor + numWords), std::make_reverse_iterator(aDivisor));
    if (bHalve)
        for (int i = 0; i < numWords; ++i)
            aRemainder[i] =
                aRemainder[i] >> 1 | (i + 1 < numWords ? aRemainder[i + 1] << (WORD_BITS - 1) : 0);

    LongQuotient quotient;
    quotient.exponent = a.m_exponent - b.m_exponent + bHalve;
    quotient.high = divideFor64Digits(aRemainder, aDivisor, numWords);
    quotient.low = divideFor64Digits(aRemainder, aDivisor, numWords);
    quotient.bMore = std::any_of(aRemainder, aRemainder + numWords, [](Word word) { return word != 0; });
    return quotient;
}

} // namespace VORN3D
