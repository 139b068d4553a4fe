#include "radiusOrder.h"

#include "nalo_tools/assertion.h"

#include <algorithm>
#include <limits>

namespace VORN3D
{

namespace
{

class RadiusSorter
{
public:
    explicit RadiusSorter(const std::function<SimplexPoints(std::size_t)>& getPoints) : m_getPoints(getPoints)
    {
    }

    RadiusRanks sort(std::size_t num)
    {
        VORN_REQUIRE_TEXT(num < std::numeric_limits<std::uint32_t>::max(), "fewer than 2^32 - 1 simplices");
        std::vector<Rounded> vSimplices(num);
        for (std::size_t i = 0; i < num; ++i)
            vSimplices[i] = {getSquaredRadius(m_getPoints(i)).roundUp(), static_cast<std::uint32_t>(i)};
        std::sort(vSimplices.begin(), vSimplices.end());
        m_ranks.vRanks.resize(num);
        m_ranks.vValues.push_back(0.0);
        forEachRun(vSimplices.begin(), vSimplices.end(), [this](auto first, auto end) {
            m_value = first->value;
            if (end - first == 1)
                assignRank(first, end);
            else
                sortRounded(first, end);
        });
        return std::move(m_ranks);
    }

private:
    /// A simplex and its squared radius as a double.
    struct Rounded
    {
        double value;
        std::uint32_t simplex;

        bool operator<(const Rounded& other) const { return value < other.value; }
    };

    /// The same with more digits.
    struct Divided
    {
        LongQuotient value;
        std::uint32_t simplex;
        int order; // before, at or behind the pivot of a partition

        bool operator<(const Divided& other) const { return value < other.value; }
    };

    template <class Iterator, class Use>
    void forEachRun(Iterator first, Iterator end, const Use& use)
    {
        while (first != end) {
            Iterator next = first;
            while (++next != end && !(*first < *next)) {
            }
            use(first, next);
            first = next;
        }
    }

    /// Gives the next rank to simplices of equal radius.
    template <class Iterator>
    void assignRank(Iterator first, Iterator end)
    {
        for (; first != end; ++first)
            m_ranks.vRanks[first->simplex] = static_cast<std::uint32_t>(m_ranks.vValues.size());
        m_ranks.vValues.push_back(m_value);
    }

    template <class Iterator>
    void sortRounded(Iterator first, Iterator end)
    {
        std::vector<Divided> vDivided;
        for (; first != end; ++first)
            vDivided.push_back({getSquaredRadius(m_getPoints(first->simplex)), first->simplex, 0});
        std::sort(vDivided.begin(), vDivided.end());
        forEachRun(vDivided.begin(), vDivided.end(), [this](auto firstDivided, auto endDivided) {
            this->sortDivided(firstDivided, endDivided);
        });
    }

    /// Quotients without further digits are equal. Otherwise most often all simplices have the radius of any
    /// of them, and one partition finds that out.
    template <class Iterator>
    void sortDivided(Iterator first, Iterator end)
    {
        if (end - first == 1 || !first->value.bMore) {
            assignRank(first, end);
            return;
        }
        const SimplexPoints pivot = m_getPoints((first + (end - first) / 2)->simplex);
        for (Iterator it = first; it != end; ++it)
            it->order = compareSquaredRadii(m_getPoints(it->simplex), pivot);
        const Iterator endLess =
            std::partition(first, end, [](const Divided& simplex) { return simplex.order < 0; });
        const Iterator endEqual =
            std::partition(endLess, end, [](const Divided& simplex) { return simplex.order == 0; });
        if (first != endLess)
            sortDivided(first, endLess);
        assignRank(endLess, endEqual);
        if (endEqual != end)
            sortDivided(endEqual, end);
    }

    const std::function<SimplexPoints(std::size_t)>& m_getPoints;
    RadiusRanks m_ranks;
    double m_value = 0.0;
};

} // namespace

RadiusRanks rankByRadius(std::size_t num, const std::function<SimplexPoints(std::size_t)>& getPoints)
{
    return RadiusSorter(getPoints).sort(num);
}

} // namespace VORN3D
