#pragma once

#include <limits>
#include <string_view>

namespace keldrin {

/// What becomes of the sign when limits act on a value's magnitude.
enum class Magnitude {
    Off,      ///< the value itself is tested
    SignKept, ///< the magnitude is tested, the value keeps its sign
    Positive, ///< the magnitude is tested and stored
};

/// How the warning shows the value: `key = v`, `Abs|key| = v` or `key = abs|v|`, with the unit at
/// the line's end, or `key = v unit` before the bound.
enum class ValueForm { Plain, AbsoluteKey, AbsoluteValue, WithUnit };

/// What a keyword's value may be, what an outside value becomes, and the words for it.
/// Bounds apply in the width of the value: a 32-bit value is tested against 32-bit bounds.
struct Limits {
    double low = -std::numeric_limits<double>::infinity();
    double high = std::numeric_limits<double>::infinity();
    double forcedLow = low;   ///< becomes of a value below `low`
    double forcedHigh = high; ///< becomes of a value above `high`
    std::string_view unit{};  ///< ends the warning's lines, with its leading blank
    bool lowExcluded = false; ///< `low` itself is outside
    Magnitude magnitude = Magnitude::Off;
    ValueForm form = ValueForm::Plain;
    std::string_view words{};     ///< in place of the bound; a last blank lets `high` follow
    std::string_view firstLine{}; ///< in place of the group's form; the record number follows
    bool refused = false;         ///< an outside value is reported and the current one stays
};

constexpr Limits between(double low, double high, std::string_view unit = {}) {
    return {low, high, low, high, unit};
}

/// Above `low`, which is itself outside; an outside value becomes the nearest bound.
constexpr Limits above(double low, double high, std::string_view unit = {}) {
    return {low, high, low, high, unit, true};
}

/// An integer without an upper limit of its own.
constexpr Limits atLeast(int low) {
    return between(low, std::numeric_limits<int>::max());
}

constexpr Limits atMost(double high) {
    return between(-std::numeric_limits<double>::infinity(), high);
}

/// Tested against one range and forced into another.
constexpr Limits testedAgainst(double low, double high, double forcedLow, double forcedHigh,
                               std::string_view unit = {}) {
    return {low, high, forcedLow, forcedHigh, unit};
}

constexpr Limits magnitudeBetween(double low, double high, Magnitude magnitude,
                                  std::string_view unit = {}, ValueForm form = ValueForm::Plain) {
    return {low, high, low, high, unit, false, magnitude, form};
}

constexpr Limits inWords(Limits limits, std::string_view words) {
    limits.words = words;
    return limits;
}

/// An outside value becomes 0.
constexpr Limits zeroOutside(Limits limits) {
    limits.forcedLow = limits.forcedHigh = 0.0;
    return limits;
}

constexpr Limits refusedOutside(Limits limits) {
    limits.refused = true;
    return limits;
}

/// Zones of the UTM grid. The sign gives the hemisphere; a zone that does not exist becomes 0.
constexpr Limits zoneRange(std::string_view firstLine) {
    Limits limits =
        zeroOutside(magnitudeBetween(1.0, 60.0, Magnitude::SignKept, {}, ValueForm::AbsoluteValue));
    limits.words = " < 1 or > 60";
    limits.firstLine = firstLine;
    return limits;
}

inline constexpr Limits Unlimited{};
inline constexpr Limits StationRange = between(-9.9E9, 9.9E9);
inline constexpr Limits MapRange = between(-9.9E30, 9.9E30);
inline constexpr Limits CircleRange = between(-360.0, 360.0); // degrees
inline constexpr Limits SlopeRange = between(-90.0, 90.0);    // degrees
inline constexpr double MostReal = 9900000256.0;              // the 32-bit 9.9E9
inline constexpr Limits LengthRange = between(0.01, MostReal, " m");

} // namespace keldrin
