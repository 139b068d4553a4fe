// The vertices of PLY files (G. Turk, The PLY polygon file format, 1994): a header in text lists the elements
// and their properties; the values follow as text or binary. VTK's reader is not used because it rounds to
// single precision and does not survive a file that ends early.
#include "InputError.h"
#include "Progress.h"
#include "input/FieldCursor.h"
#include "input/coordinates.h"
#include "input/pointFormats.h"
#include "printable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <sstream>

namespace VORN3D::program
{

namespace
{

/// How a number is stored in a binary file.
struct NumberType
{
    std::size_t size;
    double (*pDecode)(const char* pBytes); ///< from bytes in the order of this machine
};

template <typename Number>
NumberType makeNumberType()
{
    return {sizeof(Number), [](const char* pBytes) {
                Number number;
                std::memcpy(&number, pBytes, sizeof number);
                return static_cast<double>(number);
            }};
}

struct Property
{
    std::string name;
    NumberType type;
    NumberType countType; ///< of a list; its size is 0 for single numbers
};

struct Element
{
    std::string name;
    std::size_t num;
    std::vector<Property> vProperties;
};

bool isThisMachine(const std::string& format)
{
    const std::uint16_t one = 1;
    char firstByte = 0;
    std::memcpy(&firstByte, &one, 1);
    return format == (firstByte == 1 ? "binary_little_endian" : "binary_big_endian");
}

std::string readAll(ByteSource& source)
{
    std::string bytes;
    std::vector<char> block(std::size_t(1) << 20);
    std::size_t numRead = block.size();
    while (numRead == block.size()) {
        numRead = source.read(block.data(), block.size());
        bytes.append(block.data(), numRead);
    }
    return bytes;
}

class PlyFile
{
public:
    explicit PlyFile(ByteSource& source) : m_name(source.getName()), m_bytes(readAll(source))
    {
        readHeader();
    }

    std::vector<Point3> readVertices()
    {
        std::vector<Point3> vPoints;
        Progress progress("reading " + m_name, m_bytes.size());
        for (const Element& element : m_vElements)
            for (std::size_t i = 0; i < element.num && !element.vProperties.empty(); ++i) {
                progress.update(m_position);
                const Point3 point = readItem(element);
                if (element.name == "vertex")
                    vPoints.push_back(checkFinite(point, i));
            }
        return vPoints;
    }

private:
    void readHeader();
    std::string readLine();
    NumberType readType(std::istream& words) const;
    Property readProperty(std::istream& words) const;

    Point3 readItem(const Element& element);
    std::uint32_t readLength(const NumberType& type);
    double readNumber(const NumberType& type);
    double readText();
    double readBinary(const NumberType& type);
    Point3 checkFinite(const Point3& point, std::size_t i) const;
    [[noreturn]] void fail(const std::string& reason) const { throw InputError(m_name, reason); }

    std::string m_name;
    std::string m_bytes;
    std::size_t m_position = 0;
    bool m_bText = false;
    bool m_bReversed = false;
    std::vector<Element> m_vElements;
};

void PlyFile::readHeader()
{
    if (readLine() != "ply")
        fail("is no PLY file");
    for (std::string line = readLine(); line != "end_header"; line = readLine()) {
        std::istringstream words(line);
        std::string keyword;
        std::string name;
        words >> keyword;
        if (keyword == "format" && words >> name) {
            m_bText = name == "ascii";
            m_bReversed = !isThisMachine(name);
        } else if (std::size_t num = 0; keyword == "element" && words >> name >> num) {
            m_vElements.push_back({name, num, {}});
        } else if (keyword == "property" && !m_vElements.empty()) {
            m_vElements.back().vProperties.push_back(readProperty(words));
        } else if (keyword != "comment" && keyword != "obj_info") {
            fail("a line of the header cannot be understood");
        }
    }
}

std::string PlyFile::readLine()
{
    const std::size_t end = m_bytes.find('\n', m_position);
    if (end == std::string::npos)
        fail(m_position == 0 ? "is no PLY file" : "ends within the header");
    std::string line = m_bytes.substr(m_position, end - m_position);
    m_position = end + 1;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return line;
}

NumberType PlyFile::readType(std::istream& words) const
{
    static const std::map<std::string, NumberType> types{
        {"char", makeNumberType<std::int8_t>()},     {"int8", makeNumberType<std::int8_t>()},
        {"uchar", makeNumberType<std::uint8_t>()},   {"uint8", makeNumberType<std::uint8_t>()},
        {"short", makeNumberType<std::int16_t>()},   {"int16", makeNumberType<std::int16_t>()},
        {"ushort", makeNumberType<std::uint16_t>()}, {"uint16", makeNumberType<std::uint16_t>()},
        {"int", makeNumberType<std::int32_t>()},     {"int32", makeNumberType<std::int32_t>()},
        {"uint", makeNumberType<std::uint32_t>()},   {"uint32", makeNumberType<std::uint32_t>()},
        {"float", makeNumberType<float>()},          {"float32", makeNumberType<float>()},
        {"double", makeNumberType<double>()},        {"float64", makeNumberType<double>()}};
    std::string name;
    words >> name;
    const auto found = types.find(name);
    if (found == types.end())
        fail("a property in the header has an unknown type");
    return found->second;
}

/// What follows the keyword: "TYPE NAME" or "list COUNTTYPE TYPE NAME".
Property PlyFile::readProperty(std::istream& words) const
{
    Property property{};
    const std::streampos start = words.tellg();
    std::string word;
    if (words >> word && word == "list")
        property.countType = readType(words);
    else
        words.seekg(start);
    property.type = readType(words);
    words >> property.name;
    return property;
}

/// Reads one item; of a vertex, its coordinates are returned.
Point3 PlyFile::readItem(const Element& element)
{
    std::array<double, 3> coordinates{NAN, NAN, NAN};
    for (const Property& property : element.vProperties) {
        const bool bList = property.countType.size > 0;
        const std::uint32_t num = bList ? readLength(property.countType) : 1;
        double value = 0.0;
        for (std::uint32_t n = 0; n < num; ++n)
            value = readNumber(property.type);
        if (!bList && property.name.size() == 1 && property.name >= "x" && property.name <= "z")
            coordinates[static_cast<std::size_t>(property.name[0] - 'x')] = value;
    }
    return {coordinates[0], coordinates[1], coordinates[2]};
}

std::uint32_t PlyFile::readLength(const NumberType& type)
{
    const double length = readNumber(type);
    if (!(length >= 0.0 && length <= UINT32_MAX))
        fail("a list has an impossible length");
    return static_cast<std::uint32_t>(length);
}

double PlyFile::readNumber(const NumberType& type)
{
    return m_bText ? readText() : readBinary(type);
}

double PlyFile::readText()
{
    const char* const blanks = " \t\r\n";
    const std::size_t begin = m_bytes.find_first_not_of(blanks, m_position);
    if (begin == std::string::npos)
        fail("ends before all elements of the header were read");
    m_position = std::min(m_bytes.find_first_of(blanks, begin), m_bytes.size());
    const std::string text = m_bytes.substr(begin, m_position - begin);
    FieldCursor field(text);
    double value = 0.0;
    const FieldStatus status = field.readNumber(value);
    if (status == FieldStatus::notFinite)
        return NAN;
    if (status != FieldStatus::number || !field.atEnd())
        fail("'" + makePrintable(text, 40) + "' is not a number");
    return value;
}

double PlyFile::readBinary(const NumberType& type)
{
    if (m_bytes.size() - m_position < type.size)
        fail("ends before all elements of the header were read");
    char* const pBegin = &m_bytes[m_position];
    m_position += type.size;
    if (m_bReversed)
        std::reverse(pBegin, pBegin + type.size);
    return type.pDecode(pBegin);
}

Point3 PlyFile::checkFinite(const Point3& point, std::size_t i) const
{
    if (isFinite(point))
        return point;
    fail("vertex " + std::to_string(i) + " (counted from 0) lacks a coordinate, or it is not finite");
}

} // namespace

std::vector<Point3> readPly(ByteSource& source)
{
    return PlyFile(source).readVertices();
}

} // namespace VORN3D::program
