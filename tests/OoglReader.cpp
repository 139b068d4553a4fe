#include "OoglReader.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <numeric>
#include <sstream>
#include <stdexcept>

namespace VORN3D::tests
{

namespace
{

struct Token
{
    std::string text;
    int line;
};

// Braces stand for themselves, '#' starts a comment, anything else is separated by white space.
std::vector<Token> tokenize(const std::string& text)
{
    std::vector<Token> vTokens;
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        std::string spaced;
        for (const char c : line.substr(0, line.find('#')))
            spaced += c == '{' || c == '}' ? std::string{' ', c, ' '} : std::string{c};
        std::istringstream words(spaced);
        for (std::string word; words >> word;)
            vTokens.push_back({word, number});
    }
    vTokens.push_back({"", -1});
    return vTokens;
}

class Parser
{
public:
    explicit Parser(const std::string& text) : m_vTokens(tokenize(text)) {}

    std::vector<SceneObject> parse()
    {
        require(peek().text == "LIST", "LIST");
        parseGroup({});
        require(peek().text.empty(), "the end of the file");
        return m_vObjects;
    }

private:
    using Appearance = std::map<std::string, std::string>;

    const Token& peek() const { return m_vTokens[m_next]; }

    std::string take() { return m_vTokens[peek().text.empty() ? m_next : m_next++].text; }

    void require(bool bCondition, const std::string& what) const
    {
        if (!bCondition)
            throw std::runtime_error("line " + std::to_string(peek().line) + ": expected " + what +
                                     ", not '" + peek().text + "'");
    }

    void expect(const std::string& text)
    {
        require(peek().text == text, text);
        take();
    }

    double takeNumber()
    {
        const std::string& text = peek().text;
        char* pEnd = nullptr;
        const double value = std::strtod(text.c_str(), &pEnd);
        require(!text.empty() && *pEnd == '\0' && std::isfinite(value), "a number");
        take();
        return value;
    }

    int takeInt(int min, int max)
    {
        const Token token = peek();
        const double value = takeNumber();
        if (value != std::floor(value) || value < min || value > max)
            throw std::runtime_error("line " + std::to_string(token.line) +
                                     ": no index or count: " + token.text);
        return static_cast<int>(value);
    }

    int takeCount() { return takeInt(0, 1 << 30); }

    std::vector<int> takeInts(int num, int min, int max)
    {
        std::vector<int> v;
        for (int i = 0; i < num; ++i)
            v.push_back(takeInt(min, max));
        return v;
    }

    std::vector<Point3> takePoints(int num)
    {
        std::vector<Point3> vPoints;
        for (int i = 0; i < num; ++i) {
            const double x = takeNumber();
            const double y = takeNumber();
            vPoints.emplace_back(x, y, takeNumber());
        }
        return vPoints;
    }

    std::string takeColor()
    {
        std::string color;
        for (int i = 0; i < 4; ++i) {
            const std::string text = peek().text;
            const double value = takeNumber();
            require(value >= 0.0 && value <= 1.0, "after a part of a colour between 0 and 1");
            color += (i == 0 ? "" : " ") + text;
        }
        return color;
    }

    // Up to a closing brace or the end of the file: objects, lists and groups of these in braces. A list is
    // ended by the brace around it, so what it contains can be read as if it stood there by itself.
    void parseGroup(Appearance appearance)
    {
        while (!peek().text.empty() && peek().text != "}") {
            if (peek().text == "appearance")
                parseAppearance(appearance);
            else if (peek().text == "LIST")
                take();
            else if (peek().text == "{") {
                take();
                parseGroup(appearance);
                expect("}");
            } else
                parseObject(appearance);
        }
    }

    void parseAppearance(Appearance& appearance)
    {
        expect("appearance");
        expect("{");
        while (peek().text != "}") {
            std::string name = take();
            if (name == "linewidth")
                appearance[name] = std::to_string(takeInt(1, 100));
            else {
                const bool bSigned = name[0] == '+' || name[0] == '-';
                const std::string switchName = name.substr(bSigned ? 1 : 0);
                require(switchName == "edge" || switchName == "face", "after a known attribute");
                appearance[switchName] = bSigned ? name.substr(0, 1) : "+";
            }
        }
        expect("}");
    }

    void parseObject(const Appearance& appearance)
    {
        SceneObject object;
        object.keyword = peek().text;
        object.appearance = appearance;
        require(object.keyword == "OFF" || object.keyword == "VECT" || object.keyword == "SPHERE",
                "an object");
        take();
        if (object.keyword == "OFF")
            parseOff(object);
        else if (object.keyword == "VECT")
            parseVect(object);
        else {
            object.radius = takeNumber();
            object.vPoints = takePoints(1);
        }
        m_vObjects.push_back(object);
    }

    void parseOff(SceneObject& object)
    {
        const int numVertices = takeCount();
        const int numFaces = takeCount();
        takeCount();
        object.vPoints = takePoints(numVertices);
        for (int i = 0; i < numFaces; ++i) {
            const int line = peek().line;
            object.vParts.push_back(takeInts(takeCount(), 0, numVertices - 1));
            // A face's colour is what else stands in its line.
            if (peek().line == line)
                object.vColors.push_back(takeColor());
            require(peek().line != line, "the end of the line");
        }
    }

    void parseVect(SceneObject& object)
    {
        const int numLines = takeCount();
        const int numVertices = takeCount();
        const int numColors = takeCount();
        const std::vector<int> vNumVertices = takeInts(numLines, 1, numVertices);
        const std::vector<int> vNumColors = takeInts(numLines, 0, numColors);
        require(std::accumulate(vNumVertices.begin(), vNumVertices.end(), 0) == numVertices,
                "other counts of vertices");
        require(std::accumulate(vNumColors.begin(), vNumColors.end(), 0) == numColors,
                "other counts of colours");
        object.vPoints = takePoints(numVertices);
        int first = 0;
        for (const int num : vNumVertices) {
            object.vParts.emplace_back(num);
            std::iota(object.vParts.back().begin(), object.vParts.back().end(), first);
            first += num;
        }
        for (int i = 0; i < numColors; ++i)
            object.vColors.push_back(takeColor());
    }

    std::vector<Token> m_vTokens;
    std::size_t m_next = 0;
    std::vector<SceneObject> m_vObjects;
};

} // namespace

std::vector<SceneObject> readScene(const std::string& text)
{
    return Parser(text).parse();
}

std::string readFile(const std::string& filename)
{
    std::ifstream is(filename, std::ios::binary);
    if (!is)
        throw std::runtime_error("cannot read " + filename);
    return {std::istreambuf_iterator<char>(is), {}};
}

} // namespace VORN3D::tests
