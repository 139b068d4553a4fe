#include "vertexStore/FineCurve.h"

#include "nalo_tools/assertion.h"
#include "vertexStore/HilbertGrid.h"
#include "vorn3d/Bbox3.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

namespace VORN3D
{

namespace
{

constexpr int KEY_BITS = 30;

// Sorts entries along the curve: each has the position of a point in its lower half and takes its key of the
// current cube in the upper one.
class FineSort
{
public:
    FineSort(const Point3* const* ppPoints, std::size_t num) : m_ppPoints(ppPoints), m_vScratch(num) {}

    void sort(std::uint64_t* pEntries, std::size_t num)
    {
        const HilbertGrid cube = getCube(pEntries, num);
        if (!std::isfinite(cube.rangeX))
            return;
        for (std::uint64_t* p = pEntries; p != pEntries + num; ++p) {
            const auto position = static_cast<std::uint32_t>(*p);
            *p = std::uint64_t{cube.getKey(*m_ppPoints[position], KEY_BITS)} << 32 | position;
        }
        sortByUpperHalf(pEntries, num, m_vScratch.data());
        refineRuns(pEntries, num);
    }

private:
    // The smallest cube at the lower corner of the points' box that holds them.
    HilbertGrid getCube(const std::uint64_t* pEntries, std::size_t num) const
    {
        Bbox3 box;
        for (const std::uint64_t* p = pEntries; p != pEntries + num; ++p)
            box.add(*m_ppPoints[static_cast<std::uint32_t>(*p)]);
        const double extent = box.getMaxRange();
        return {box.getMinX(), box.getMinY(), box.getMinZ(), extent, extent, extent};
    }

    // A cube that was of no use, as for equal points, has no finer ones. Otherwise each is smaller than the
    // one around it by 2^10, so that recursion ends within the range of the doubles.
    void refineRuns(std::uint64_t* pEntries, std::size_t num)
    {
        std::uint64_t* const pEnd = pEntries + num;
        for (std::uint64_t* pRun = pEntries; pRun != pEnd;) {
            std::uint64_t* const pRunEnd =
                std::find_if(pRun, pEnd, [pRun](std::uint64_t entry) { return entry >> 32 != *pRun >> 32; });
            const auto size = static_cast<std::size_t>(pRunEnd - pRun);
            if (size > MAX_RUN && size < num)
                sort(pRun, size);
            pRun = pRunEnd;
        }
    }

    const Point3* const* m_ppPoints;
    std::vector<std::uint64_t> m_vScratch;
};

} // namespace

// Least significant digit first.
void sortByUpperHalf(std::uint64_t* pNumbers, std::size_t num, std::uint64_t* pScratch)
{
    constexpr unsigned DIGIT_BITS = 11;
    constexpr std::size_t NUM_DIGITS = std::size_t{1} << DIGIT_BITS;
    if (num < NUM_DIGITS / 4) {
        std::stable_sort(pNumbers, pNumbers + num,
                         [](std::uint64_t a, std::uint64_t b) { return a >> 32 < b >> 32; });
        return;
    }
    std::uint64_t* pFrom = pNumbers;
    std::uint64_t* pTo = pScratch;
    for (unsigned shift = 32; shift < 64; shift += DIGIT_BITS) {
        const auto getDigit = [shift](std::uint64_t number) { return (number >> shift) & (NUM_DIGITS - 1); };
        std::size_t aEnd[NUM_DIGITS + 1] = {};
        for (const std::uint64_t* p = pFrom; p != pFrom + num; ++p)
            ++aEnd[getDigit(*p) + 1];
        std::partial_sum(std::begin(aEnd), std::end(aEnd), std::begin(aEnd));
        for (const std::uint64_t* p = pFrom; p != pFrom + num; ++p)
            pTo[aEnd[getDigit(*p)]++] = *p;
        std::swap(pFrom, pTo);
    }
    if (pFrom != pNumbers)
        std::copy_n(pFrom, num, pNumbers);
}

std::vector<std::uint32_t> getFineOrder(const Point3* const* ppPoints, std::size_t num)
{
    VORN_ASSERT(num <= UINT32_MAX);
    std::vector<std::uint64_t> vEntries(num);
    std::iota(vEntries.begin(), vEntries.end(), std::uint64_t{0});
    FineSort(ppPoints, num).sort(vEntries.data(), num);
    std::vector<std::uint32_t> vPositions(num);
    std::transform(vEntries.begin(), vEntries.end(), vPositions.begin(),
                   [](std::uint64_t entry) { return static_cast<std::uint32_t>(entry); });
    return vPositions;
}

} // namespace VORN3D
