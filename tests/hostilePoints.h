// Configurations of five points that are built to hurt the predicates: what values the coordinates have, how
// the points lie to each other, and whether one of them was then moved by a unit in the last place.
#pragma once

#include "rationalSigns.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace VORN3D
{

using FivePoints = std::array<Coordinates, 5>;
using Generator = std::mt19937_64;

inline double drawUnit(Generator& random)
{
    return static_cast<double>(random() >> 11) * 0x1p-53;
}

inline int drawInt(Generator& random, int low, int high)
{
    return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
}

inline double moveByUlps(double x, int numUlps)
{
    const double towards = std::copysign(std::numeric_limits<double>::infinity(), numUlps);
    for (int i = 0; i < std::abs(numUlps); ++i)
        x = std::nextafter(x, towards);
    return x;
}

/// A distribution of values for coordinate k.
struct Values
{
    std::string name;
    std::function<double(Generator&, int k)> draw;
};

/// Any magnitude from 2^low to 2^high, either sign.
inline Values getExponents(const std::string& name, int low, int high)
{
    return {name, [low, high](Generator& random, int) {
                const double mantissa = random() % 2 == 0 ? 1.0 : 1.0 + drawUnit(random);
                return std::ldexp(random() % 2 == 0 ? mantissa : -mantissa, drawInt(random, low, high));
            }};
}

inline Values getGrid(const std::string& name, int numBits, double unit, double offset = 0.0)
{
    return {name, [=](Generator& random, int) {
                return offset + unit * static_cast<double>(random() >> (64 - numBits));
            }};
}

inline std::vector<Values> getAllValues()
{
    const double utm[] = {448000.0, 5411000.0, 300.0};
    const double ecef[] = {4177000.0, 855000.0, 4728000.0};
    const auto around = [](const double(&centre)[3]) {
        const Coordinates c = {centre[0], centre[1], centre[2]};
        return [c](Generator& random, int k) {
            return c[static_cast<std::size_t>(k)] + 100.0 * drawUnit(random);
        };
    };
    return {
        {"unit", [](Generator& random, int) { return drawUnit(random); }},
        {"signed unit", [](Generator& random, int) { return 2.0 * drawUnit(random) - 1.0; }},
        getGrid("tiny grid", 2, 1.0),
        getGrid("grid of 10 bits", 10, 0x1p-10),
        getGrid("grid of 18 bits", 18, 1.0),
        getGrid("grid of 33 bits", 33, 1.0),
        getGrid("decimal grid", 6, 0.1),
        getGrid("grid at 2^50", 3, 1.0, 0x1p50),
        getGrid("grid at scale 1e-80", 3, 1e-80),
        getGrid("grid at scale 1e80", 3, 1e80),
        getGrid("subnormal", 3, std::numeric_limits<double>::denorm_min()),
        {"utm", around(utm)},
        {"ecef", around(ecef)},
        {"neighbours",
         [](Generator& random, int k) { return moveByUlps(1.0 / (k + 3), drawInt(random, 0, 4)); }},
        {"two scales",
         [](Generator& random, int) { return drawInt(random, -2, 2) + drawInt(random, -2, 2) * 0x1p-70; }},
        getExponents("exponents +-20", -20, 20),
        getExponents("exponents +-60", -60, 60),
        getExponents("exponents +-340", -340, 340),
        getExponents("products of three overflow", 341, 356),
        getExponents("products of three underflow", -345, -320),
        getExponents("products of five overflow", 203, 213),
        getExponents("all exponents", -1074, 1023),
        {"1e300 beside 1e-300",
         [](Generator& random, int) {
             return drawInt(random, -2, 2) * (random() % 2 == 0 ? 1e300 : 1e-300);
         }},
    };
}

/// How the five points lie; `draw` gives a coordinate.
struct Shape
{
    std::string name;
    std::function<FivePoints(Generator&, const Values&)> make;
};

inline FivePoints drawFree(Generator& random, const Values& values)
{
    FivePoints points;
    for (Coordinates& p : points)
        for (int k = 0; k < 3; ++k)
            p[static_cast<std::size_t>(k)] = values.draw(random, k);
    return points;
}

/// In the plane x = y, two of the points on one vertical.
inline FivePoints drawFlat(Generator& random, const Values& values)
{
    FivePoints points = drawFree(random, values);
    for (Coordinates& p : points)
        p[1] = p[0];
    points[1][0] = points[1][1] = points[0][0];
    return points;
}

/// Corners of a box: exactly cospherical, many fours of them exactly coplanar.
inline FivePoints drawBoxCorners(Generator& random, const Values& values)
{
    const FivePoints ends = drawFree(random, values);
    std::array<unsigned, 8> corners = {0, 1, 2, 3, 4, 5, 6, 7};
    std::shuffle(corners.begin(), corners.end(), random);
    FivePoints points;
    for (std::size_t i = 0; i < 5; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            points[i][k] = ends[corners[i] >> k & 1][k];
    return points;
}

/// The power of two in a value, small enough for 100 more binary digits.
inline double drawUnit(Generator& random, const Values& values)
{
    const double value = values.draw(random, 0);
    return value == 0.0 ? 1.0 : std::ldexp(1.0, std::min(std::ilogb(value), 920));
}

/// Integer points on a plane through the origin, of different sizes, so that many differences are inexact.
inline FivePoints drawLatticePlane(Generator& random, const Values& values)
{
    const double unit = drawUnit(random, values);
    const int numBits = drawInt(random, 1, 26);
    const int maxStretch = random() % 2 == 0 ? 0 : 20;
    const int maxShift = random() % 2 == 0 ? 0 : 40;
    const FivePoints axes = drawFree(random, getGrid("", numBits, unit, -unit * std::ldexp(0.5, numBits)));
    FivePoints points;
    for (Coordinates& p : points) {
        const double i = std::ldexp(drawInt(random, -3, 3), drawInt(random, 0, maxStretch));
        const double j = drawInt(random, -3, 3);
        const int shift = drawInt(random, 0, maxShift);
        for (std::size_t k = 0; k < 3; ++k)
            p[k] = std::ldexp(i * axes[0][k] + j * axes[1][k], shift);
    }
    return points;
}

/// Integer points on a sphere about the origin: rational points of the unit sphere times their common
/// denominator.
inline FivePoints drawLatticeSphere(Generator& random, const Values& values)
{
    const double unit = drawUnit(random, values);
    const int range = drawInt(random, 1, 3);
    FivePoints points;
    std::array<int, 5> denominators;
    for (std::size_t i = 0; i < 5; ++i) {
        const int m = drawInt(random, -range, range);
        const int n = drawInt(random, -range, range);
        const int k = drawInt(random, 1, range);
        denominators[i] = m * m + n * n + k * k;
        points[i] = {2.0 * m * k, 2.0 * n * k, 1.0 * m * m + n * n - k * k};
        std::shuffle(points[i].begin(), points[i].end(), random);
    }
    long common = 1;
    for (int denominator : denominators)
        common = std::lcm(common, static_cast<long>(denominator));
    for (std::size_t i = 0; i < 5; ++i)
        for (double& x : points[i])
            x *= unit * static_cast<double>(common / denominators[i]);
    return points;
}

inline std::vector<Shape> getAllShapes()
{
    return {{"free", drawFree},
            {"flat", drawFlat},
            {"box corners", drawBoxCorners},
            {"lattice plane", drawLatticePlane},
            {"lattice sphere", drawLatticeSphere}};
}

/// Moves one coordinate by one unit in the last place, off a common plane or sphere.
inline void nudge(FivePoints& points, Generator& random)
{
    double& x = points[random() % 5][random() % 3];
    if (std::fabs(x) < std::numeric_limits<double>::max())
        x = moveByUlps(x, random() % 2 == 0 ? 1 : -1);
}

} // namespace VORN3D
