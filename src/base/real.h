#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace keldrin {

/// Stands for "no value", -1.0E32 in both real widths. Test with isPresent(), never by equality.
struct MissingValueType {
    constexpr operator float() const { return -1.0E32F; } // NOLINT: converts on purpose
    constexpr operator double() const { return -1.0E32; } // NOLINT: converts on purpose
};
inline constexpr MissingValueType MissingValue{};

inline constexpr float Degree = 0.01745329F; ///< in radians, of single precision

/// True when a value is there: greater than -9.9E31. NaN counts as absent.
constexpr bool isPresent(float value) {
    return value > -9.9E31F;
}
constexpr bool isPresent(double value) {
    return value > -9.9E31;
}

/// Distance from `x` to the next number of its width, never below the smallest normal number; that
/// number for what is not finite. Made of the exponent alone.
constexpr float spacing(float x) {
    constexpr std::uint32_t MantissaBits = 23;
    const std::uint32_t exponent = (std::bit_cast<std::uint32_t>(x) >> MantissaBits) & 0xFFU;
    const bool isNormal = exponent > MantissaBits && exponent < 0xFFU;
    return std::bit_cast<float>((isNormal ? exponent - MantissaBits : 1U) << MantissaBits);
}
constexpr double spacing(double x) {
    constexpr std::uint64_t MantissaBits = 52;
    const std::uint64_t exponent = (std::bit_cast<std::uint64_t>(x) >> MantissaBits) & 0x7FFU;
    const bool isNormal = exponent > MantissaBits && exponent < 0x7FFU;
    return std::bit_cast<double>((isNormal ? exponent - MantissaBits : 1U) << MantissaBits);
}

/// Two station numbers are one station when they differ by at most 100 spacings of `given`.
inline bool sameStation(double other, double given) {
    return std::fabs(other - given) <= 100.0 * spacing(given);
}

/// Stations and transmitters read from the program's own files are one within the 32-bit 0.001:
/// 100 and 100.001 are the same.
inline bool sameFileStation(double a, double b) {
    return std::fabs(a - b) <= static_cast<double>(0.001F);
}

/// Two frequencies are one when they differ by at most 5 spacings of `given`.
inline bool sameFrequency(float other, float given) {
    return std::fabs(other - given) <= 5.0F * spacing(given);
}

/// `value` held between two bounds; a NaN gives the lower one.
template <class T>
constexpr T limited(T value, T low, T high) {
    return !(value >= low) ? low : (value > high ? high : value);
}

/// Nearest integer, halves away from zero, held in the 32-bit range (NaN gives the lowest).
template <class T>
int nearestInt(T value) {
    constexpr double lowest = -2147483648.0;
    constexpr double highest = 2147483647.0;
    return static_cast<int>(limited(std::round(static_cast<double>(value)), lowest, highest));
}

/// The compression of dB/dt used by the solver and by the plot axes.
inline float ArcSinh(float v) {
    return v < 0.0F ? -std::log(std::sqrt(v * v + 1.0F) - v)
                    : std::log(v + std::sqrt(v * v + 1.0F));
}

} // namespace keldrin
