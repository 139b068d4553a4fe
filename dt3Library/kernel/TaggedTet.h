// A tetrahedron and four bits in one word: the records are aligned so that the low bits of their addresses
// are free. The lists of the hot loops are of these.
#pragma once

#include "vorn3d/Tet3.h"

#include <cstdint>

namespace VORN3D
{

class TaggedTet
{
public:
    TaggedTet() = default;

    /// tag < 16.
    TaggedTet(const Tet3* pTet, unsigned tag) : m_word(reinterpret_cast<std::uintptr_t>(pTet) | tag) {}

    Tet3* getTet() const { return reinterpret_cast<Tet3*>(m_word & ~MASK); }
    unsigned getTag() const { return static_cast<unsigned>(m_word & MASK); }

private:
    static constexpr std::uintptr_t MASK = 15;
    static_assert(alignof(Tet3) > MASK, "the low bits are free");

    std::uintptr_t m_word = 0;
};

} // namespace VORN3D
