// Turns bytes into insertions and queries and lets the independent checker judge every step. The points are
// those of a small lattice, some of them moved by one unit in the last place: nearly everything is coplanar
// or cospherical, or misses it by the least that there is.
#include "../TrackedTriangulation.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iostream>

namespace
{

using namespace VORN3D;

class Bytes
{
public:
    Bytes(const std::uint8_t* pData, std::size_t size) : m_pNext(pData), m_pEnd(pData + size) {}

    bool areLeft() const { return m_pNext != m_pEnd; }
    unsigned take() { return areLeft() ? *m_pNext++ : 0u; }

private:
    const std::uint8_t* m_pNext;
    const std::uint8_t* m_pEnd;
};

// Three bits for the lattice, two for the unit in the last place.
double takeCoordinate(unsigned bits)
{
    const double onLattice = bits & 7;
    switch (bits >> 3 & 3) {
    case 1:
        return std::nextafter(onLattice, HUGE_VAL);
    case 2:
        return std::nextafter(onLattice, -HUGE_VAL);
    default:
        return onLattice;
    }
}

Point3 takePoint(Bytes& bytes)
{
    const unsigned bits = bytes.take() | bytes.take() << 8;
    return {takeCoordinate(bits), takeCoordinate(bits >> 5), takeCoordinate(bits >> 10)};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size)
{
    constexpr std::size_t MAX_STEPS = 40;
    Bytes bytes(pData, size);
    tests::TrackedTriangulation triangulation;
    for (std::size_t step = 0; step < MAX_STEPS && bytes.areLeft(); ++step) {
        const unsigned operation = bytes.take();
        std::vector<Point3> vQueries;
        if (operation % 4 == 0) {
            vQueries.push_back(takePoint(bytes));
        } else if (operation % 4 == 1) {
            std::vector<Point3> vBatch;
            for (unsigned num = operation >> 2 & 15; num > 0; --num)
                vBatch.push_back(takePoint(bytes));
            triangulation.insertBatch(vBatch);
        } else {
            triangulation.insertSingle(takePoint(bytes));
        }
        const std::string faults = triangulation.findFaults(vQueries);
        if (!faults.empty()) {
            std::cerr << "step " << step << ": " << faults << std::endl;
            std::abort();
        }
    }
    return 0;
}
