#include "predicates/Expansion.h"

namespace VORN3D
{

namespace
{

/// Writes components one behind the other and leaves zeros out.
class ComponentWriter
{
public:
    explicit ComponentWriter(double* h) : m_h(h) {}

    void append(double component)
    {
        m_h[m_size] = component;
        m_size += component != 0.0;
    }

    /// The most significant component: kept, though zero, when it is the only one. Returns the length.
    int finish(double component)
    {
        if (component != 0.0 || m_size == 0)
            m_h[m_size++] = component;
        return m_size;
    }

private:
    double* m_h;
    int m_size = 0;
};

} // namespace

int scaleExpansion(int elen, const double* e, double b, double* h, double splitter)
{
    const SplitFactor factor(b, splitter);
    ComponentWriter writer(h);
    double carry = 0.0;
    for (int i = 0; i < elen; ++i) {
        const HeadTail product = twoProduct(SplitFactor(e[i], splitter), factor);
        const HeadTail low = twoSum(carry, product.tail);
        const HeadTail high = fastTwoSum(product.head, low.head);
        writer.append(low.tail);
        writer.append(high.tail);
        carry = high.head;
    }
    return writer.finish(carry);
}

int sumExpansions(int elen, const double* e, int flen, const double* f, double* h)
{
    ComponentWriter writer(h);
    double carry = 0.0;
    for (int i = 0, j = 0; i + j < elen + flen;) {
        const bool bFromE = j == flen || (i < elen && std::fabs(e[i]) < std::fabs(f[j]));
        const HeadTail sum = twoSum(carry, bFromE ? e[i++] : f[j++]);
        writer.append(sum.tail);
        carry = sum.head;
    }
    return writer.finish(carry);
}

} // namespace VORN3D
