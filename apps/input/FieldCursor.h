#pragma once

#include <string>
#include <string_view>

namespace VORN3D::program
{

enum class FieldStatus {
    number,
    missing,
    notANumber,
    notFinite ///< NaN, an infinity, or a number beyond the range of double
};

/// Steps through the fields of one line. Fields are separated by blanks and tabs, or by one comma or
/// semicolon with or without blanks around it; a # ends the line.
class FieldCursor
{
public:
    explicit FieldCursor(std::string_view line);

    /// True if nothing but blanks and a comment are left.
    bool atEnd() const { return m_p == m_pEnd || *m_p == '#'; }

    /// Reads the next field as the double nearest to it. If it is not a finite number, value is not to be
    /// used and the cursor stays before the field.
    FieldStatus readNumber(double& value);

    /// Steps over the next field, whatever it holds.
    void skipField();

    /// The next field as it is.
    std::string_view getField() const { return {m_p, static_cast<std::size_t>(findFieldEnd() - m_p)}; }

    /// The next field, made fit for a message: shortened, without control characters.
    std::string describeField() const;

private:
    const char* findFieldEnd() const;
    void moveTo(const char* p);
    void skipBlanks();

    const char* m_p;
    const char* m_pEnd;
};

} // namespace VORN3D::program
