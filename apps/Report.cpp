#include "Report.h"

#include <algorithm>
#include <iomanip>
#include <ostream>
#include <sstream>

namespace VORN3D::program
{

namespace
{

std::string getNumberText(double number, const std::string& unit)
{
    std::ostringstream text;
    if (unit == "s")
        text << std::fixed << std::setprecision(3);
    text << number;
    return text.str();
}

std::string getText(const Report::Value& value, const std::string& unit)
{
    if (value.is_boolean())
        return value.get<bool>() ? "yes" : "no";
    if (value.is_string())
        return value.get<std::string>();
    return value.is_number_float() ? getNumberText(value.get<double>(), unit) : value.dump();
}

void printLine(std::ostream& os, const std::string& name, const Report::Value& value, const std::string& unit)
{
    constexpr int columnWidth = 26;
    os << std::left << std::setw(columnWidth) << name + ":" << std::right << getText(value, unit)
       << (unit.empty() ? "" : " ") << unit << '\n';
}

std::string makeKey(const std::string& name, const std::string& unit)
{
    std::string key = unit.empty() ? name : name + " " + unit;
    std::replace(key.begin(), key.end(), ' ', '_');
    return key;
}

} // namespace

void Report::add(const std::string& name, Value value, const std::string& unit)
{
    m_vEntries.push_back({name, std::move(value), unit});
}

void Report::printText(std::ostream& os) const
{
    for (const Entry& entry : m_vEntries) {
        if (!entry.value.is_object())
            printLine(os, entry.name, entry.value, entry.unit);
        else
            for (const auto& [key, value] : entry.value.items())
                printLine(os, entry.name + " " + key, value, entry.unit);
    }
}

void Report::printJson(std::ostream& os) const
{
    Value object = Value::object();
    for (const Entry& entry : m_vEntries)
        object[makeKey(entry.name, entry.unit)] = entry.value;
    os << object.dump(2, ' ', false, Value::error_handler_t::replace) << '\n';
}

} // namespace VORN3D::program
