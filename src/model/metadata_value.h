#pragma once

#include "base/fixed_text.h"
#include "base/real.h"

#include <array>
#include <cstddef>

namespace keldrin {

// What the groups of keyword metadata are made of: values that know which file set them.

/// A value with the level of the record that set it: 2 the data file, 1 the side file, 0 nobody.
/// A record of a lower level never replaces it.
template <class T>
struct Sourced {
    T value{};
    int level = 0;
};

/// What a group has after its values: marks that a reset of the values may leave standing.
struct GroupTail {
    static constexpr std::size_t MostKeywords = 48;
    int unknownKeywords = 0;                     ///< reports of unknown keywords so far
    int lastPointIndex = 0;                      ///< of the indexed point that was read last
    std::array<bool, MostKeywords> outOfRange{}; ///< keywords, in the order of the group's table,
                                                 ///< that had a value outside its limits
    std::array<bool, MostKeywords> partlyUsed{}; ///< keywords whose value was cut or has no use,
                                                 ///< which is reported once
};

using SourcedReal = Sourced<float>;
/// A length in metres.
struct SourcedLength : SourcedReal {
    bool unitAssumed = false; ///< read before any file had stated a unit: the unit may yet follow
};
using SourcedDouble = Sourced<double>;
using SourcedInt = Sourced<int>;
template <std::size_t N>
using SourcedText = Sourced<FixedText<N>>;
template <std::size_t N>
using SourcedReals = Sourced<std::array<float, N>>;
template <std::size_t N>
using SourcedDoubles = Sourced<std::array<double, N>>;
using XyzPoint = std::array<double, 3>; ///< x, y, z
using SourcedPoint = Sourced<XyzPoint>;

inline constexpr XyzPoint MissingPoint = {MissingValue, MissingValue, MissingValue};

/// An array that holds one value in all its elements.
template <class T, std::size_t N>
constexpr std::array<T, N> filledArray(const T &value) {
    std::array<T, N> values{};
    values.fill(value);
    return values;
}

struct NamedSensor {
    FixedText<16> name{"dBdt"};
    int index = 2; ///< 1 dipole, 2 dB/dt, 3 B, 4 antenna, 5 transmitter reference
};

} // namespace keldrin
