#pragma once

#include <nlohmann/json.hpp>

#include <iosfwd>
#include <string>
#include <vector>

namespace VORN3D::program
{

/// Named results in the order in which they were added, to be printed for people or for machines.
class Report
{
public:
    using Value = nlohmann::ordered_json;

    /// A value is a number, a truth value, a text, or an object of such values, whose keys go on the name.
    void add(const std::string& name, Value value, const std::string& unit = "");

    /// One "name: value unit" line for each value.
    void printText(std::ostream& os) const;

    /// One object. Keys are the names and units with an underscore for each blank, as "reading_s". A number
    /// that is not finite becomes null.
    void printJson(std::ostream& os) const;

private:
    struct Entry
    {
        std::string name;
        Value value;
        std::string unit;
    };

    std::vector<Entry> m_vEntries;
};

} // namespace VORN3D::program
