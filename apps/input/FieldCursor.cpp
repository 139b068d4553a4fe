#include "input/FieldCursor.h"

#include "printable.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <cmath>

namespace VORN3D::program
{

namespace
{

constexpr std::size_t maxDescription = 40;

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool endsField(char c)
{
    return isBlank(c) || c == ',' || c == ';' || c == '#';
}

} // namespace

FieldCursor::FieldCursor(std::string_view line) : m_p(line.data()), m_pEnd(line.data() + line.size())
{
    skipBlanks();
}

FieldStatus FieldCursor::readNumber(double& value)
{
    if (atEnd())
        return FieldStatus::missing;
    // The parser does not take a plus sign, which people write.
    const bool bPlus = *m_p == '+' && m_p + 1 != m_pEnd && m_p[1] != '-';
    const auto [pNumberEnd, error] = fast_float::from_chars(m_p + bPlus, m_pEnd, value);
    if (error == std::errc::invalid_argument || (pNumberEnd != m_pEnd && !endsField(*pNumberEnd)))
        return FieldStatus::notANumber;
    if (!std::isfinite(value))
        return FieldStatus::notFinite;
    moveTo(pNumberEnd);
    return FieldStatus::number;
}

void FieldCursor::skipField()
{
    moveTo(findFieldEnd());
}

std::string FieldCursor::describeField() const
{
    return "'" + makePrintable(std::string(getField()), maxDescription) + "'";
}

const char* FieldCursor::findFieldEnd() const
{
    return std::find_if(m_p, m_pEnd, endsField);
}

/// Goes on behind a field that ends at p, over the separator.
void FieldCursor::moveTo(const char* p)
{
    m_p = p;
    skipBlanks();
    if (m_p != m_pEnd && (*m_p == ',' || *m_p == ';')) {
        ++m_p;
        skipBlanks();
    }
}

void FieldCursor::skipBlanks()
{
    while (m_p != m_pEnd && isBlank(*m_p))
        ++m_p;
}

} // namespace VORN3D::program
