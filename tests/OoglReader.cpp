#include "OoglReader.h"

#include <cmath>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace VORN3D::tests
{

namespace
{

class Parser
{
public:
    /// Braces stand for themselves, anything else is separated by white space.
    explicit Parser(const std::string& text)
    {
        std::string spaced;
        for (const char c : text)
            spaced += c == '{' || c == '}' ? std::string{' ', c, ' '} : std::string(1, c);
        std::istringstream words(spaced);
        m_vTokens.assign(std::istream_iterator<std::string>(words), {});
        m_vTokens.emplace_back();
    }

    std::vector<SceneObject> parse()
    {
        require(peek() == "LIST", "LIST");
        parseGroup({});
        require(peek().empty(), "the end of the file");
        return m_vObjects;
    }

private:
    const std::string& peek() const { return m_vTokens[m_next]; }

    std::string take() { return m_vTokens[peek().empty() ? m_next : m_next++]; }

    void require(bool bCondition, const std::string& what) const
    {
        if (!bCondition)
            throw std::runtime_error("at word " + std::to_string(m_next) + ", '" + peek() + "': expected " +
                                     what);
    }

    void expect(const std::string& text)
    {
        require(peek() == text, text);
        take();
    }

    double takeNumber(double min = -HUGE_VAL, double max = HUGE_VAL)
    {
        char* pEnd = nullptr;
        const double value = std::strtod(peek().c_str(), &pEnd);
        require(!peek().empty() && *pEnd == '\0' && std::isfinite(value) && min <= value && value <= max,
                "a number in the range");
        take();
        return value;
    }

    int takeInt(int min, int max)
    {
        const double value = takeNumber(min, max);
        require(value == std::floor(value), "a whole number before");
        return static_cast<int>(value);
    }

    int takeCount() { return takeInt(0, 1 << 30); }

    std::vector<Point3> takePoints(int num)
    {
        std::vector<Point3> vPoints;
        for (int i = 0; i < num; ++i) {
            const double x = takeNumber(), y = takeNumber();
            vPoints.emplace_back(x, y, takeNumber());
        }
        return vPoints;
    }

    void parseColors(SceneObject& object, int num)
    {
        for (int i = 0; i < num; ++i) {
            std::string color = peek();
            takeNumber(0, 1);
            for (int k = 0; k < 3; ++k) {
                color += " " + peek();
                takeNumber(0, 1);
            }
            object.vColors.push_back(color);
        }
    }

    // Up to a closing brace or the end of the file: objects, lists and groups of these in braces. A list is
    // ended by the brace around it, so what it contains can be read as if it stood there by itself.
    void parseGroup(Appearance appearance)
    {
        while (!peek().empty() && peek() != "}") {
            const std::string word = take();
            if (word == "appearance")
                parseAppearance(appearance);
            else if (word == "{") {
                parseGroup(appearance);
                expect("}");
            } else if (word != "LIST")
                parseObject(word, appearance);
        }
    }

    void parseAppearance(Appearance& appearance)
    {
        expect("{");
        while (peek() != "}") {
            const std::string name = take();
            require(name == "linewidth" || name == "+edge" || name == "-face", "another attribute before");
            appearance[name] = name == "linewidth" ? takeInt(1, 100) : 1;
        }
        expect("}");
    }

    void parseObject(const std::string& keyword, const Appearance& appearance)
    {
        SceneObject object{keyword, {}, {}, 0.0, appearance};
        if (keyword == "OFF")
            parseOff(object);
        else if (keyword == "VECT")
            parseVect(object);
        else {
            require(keyword == "SPHERE", "an object before");
            object.radius = takeNumber();
            object.vPoints = takePoints(1);
        }
        m_vObjects.push_back(object);
    }

    void parseOff(SceneObject& object)
    {
        const int numVertices = takeCount(), numFaces = takeCount();
        takeCount();
        object.vPoints = takePoints(numVertices);
        for (int i = 0; i < numFaces; ++i) {
            for (int num = takeCount(); num > 0; --num)
                takeInt(0, numVertices - 1);
            parseColors(object, 1);
        }
    }

    void takeCounts(int num, int min, int sum)
    {
        for (int i = 0; i < num; ++i)
            sum -= takeInt(min, sum);
        require(sum == 0, "other counts before");
    }

    void parseVect(SceneObject& object)
    {
        const int numLines = takeCount(), numVertices = takeCount(), numColors = takeCount();
        takeCounts(numLines, 1, numVertices);
        takeCounts(numLines, 0, numColors);
        object.vPoints = takePoints(numVertices);
        parseColors(object, numColors);
    }

    std::vector<std::string> m_vTokens;
    std::size_t m_next = 0;
    std::vector<SceneObject> m_vObjects;
};

} // namespace

std::vector<SceneObject> readScene(const std::string& text)
{
    return Parser(text).parse();
}

} // namespace VORN3D::tests
