#pragma once

#include "base/index.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace keldrin {

// Decimal digits of a real: of its exact binary value, rounded half to even. The usual case is done
// in 128-bit integers; std::to_chars, exact too, does the rest.

/// A finite real without its sign: mantissa times two to the power of exponent, exactly.
struct BinaryReal {
    std::uint64_t mantissa = 0;
    int exponent = 0;
};

inline BinaryReal takeApart(float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    const int biased = static_cast<int>((bits >> 23U) & 0xFFU);
    const std::uint32_t fraction = bits & 0x7FFFFFU;
    return biased == 0 ? BinaryReal{fraction, -149}
                       : BinaryReal{fraction | 0x800000U, biased - 150};
}
inline BinaryReal takeApart(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const int biased = static_cast<int>((bits >> 52U) & 0x7FFU);
    const std::uint64_t fraction = bits & 0xFFFFFFFFFFFFFU;
    return biased == 0 ? BinaryReal{fraction, -1074}
                       : BinaryReal{fraction | 0x10000000000000U, biased - 1075};
}

/// Digits without a point. `exponent` is the power of ten of the first digit.
struct DecimalDigits {
    static constexpr int Most = 80;
    std::array<char, Most> text; // NOLINT: `count` of it stand
    int count = 0;
    int exponent = 0;
};

namespace decimal {

template <int N, std::uint64_t Base>
constexpr std::array<std::uint64_t, N> powersOf() {
    std::array<std::uint64_t, N> powers{};
    std::uint64_t power = 1;
    for (auto &entry : powers) {
        entry = power;
        power *= Base;
    }
    return powers;
}
inline constexpr auto PowersOfTen = powersOf<20, 10>();
inline constexpr auto PowersOfFive = powersOf<28, 5>();

inline constexpr std::uint64_t powerOfTen(int n) {
    return PowersOfTen[asIndex(n)];
}
inline constexpr std::uint64_t powerOfFive(int n) {
    return PowersOfFive[asIndex(n)];
}

struct Wide {
    std::uint64_t high = 0;
    std::uint64_t low = 0;
};

constexpr int bitsOf(std::uint64_t number) {
    return static_cast<int>(std::bit_width(number));
}

constexpr Wide multiply(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t Mask = 0xFFFFFFFFU;
    const std::uint64_t lowLow = (a & Mask) * (b & Mask);
    const std::uint64_t highLow = (a >> 32U) * (b & Mask);
    const std::uint64_t lowHigh = (a & Mask) * (b >> 32U);
    const std::uint64_t middle = (lowLow >> 32U) + (highLow & Mask) + (lowHigh & Mask);
    const std::uint64_t high =
        (a >> 32U) * (b >> 32U) + (highLow >> 32U) + (lowHigh >> 32U) + (middle >> 32U);
    return {high, (middle << 32U) | (lowLow & Mask)};
}

/// quotient plus one where the rest is above half its divisor, or at half and the quotient odd.
constexpr std::uint64_t roundedHalfEven(std::uint64_t quotient, int restAgainstHalf) {
    return quotient +
           (restAgainstHalf > 0 || (restAgainstHalf == 0 && (quotient & 1U) != 0) ? 1 : 0);
}

constexpr int compare(std::uint64_t a, std::uint64_t b) {
    return a < b ? -1 : (a > b ? 1 : 0);
}

/// `value` times two to the power of `exponent`, rounded; false when it passes 64 bits.
/// value  below 2**117
constexpr bool scaleByTwo(Wide value, int exponent, std::uint64_t &result) {
    if (exponent >= 0) {
        if (value.high != 0 || bitsOf(value.low) + exponent > 63) {
            return false;
        }
        result = value.low << static_cast<unsigned>(exponent);
        return true;
    }
    const auto shift = static_cast<unsigned>(-exponent);
    if (shift >= 118) { // less than one half
        result = 0;
        return true;
    }
    if (shift > 64) {
        const unsigned upper = shift - 64;
        const std::uint64_t half = std::uint64_t{1} << (upper - 1);
        const int rest = compare(value.high & ((half << 1U) - 1), half);
        result = roundedHalfEven(value.high >> upper, rest == 0 && value.low != 0 ? 1 : rest);
        return true;
    }
    const std::uint64_t half = std::uint64_t{1} << (shift - 1);
    if (shift == 64) {
        result = roundedHalfEven(value.high, compare(value.low, half));
        return true;
    }
    if ((value.high >> (shift - 1)) != 0) {
        return false;
    }
    const std::uint64_t quotient = (value.high << (64 - shift)) | (value.low >> shift);
    result = roundedHalfEven(quotient, compare(value.low & ((half << 1U) - 1), half));
    return true;
}

/// The value times ten to the power of `power`, rounded; false when that needs wider integers.
constexpr bool scaleByTen(const BinaryReal &value, int power, std::uint64_t &result) {
    if (power > 27 || power < -27) {
        return false;
    }
    if (power >= 0) {
        return scaleByTwo(multiply(value.mantissa, powerOfFive(power)), value.exponent + power,
                          result);
    }
    const int shift = value.exponent + power;
    const std::uint64_t five = powerOfFive(-power);
    std::uint64_t dividend = value.mantissa;
    std::uint64_t divisor = five;
    std::uint64_t &shifted = shift >= 0 ? dividend : divisor;
    const int distance = shift >= 0 ? shift : -shift;
    if (bitsOf(shifted) + distance > 63) {
        return false;
    }
    shifted <<= static_cast<unsigned>(distance);
    const std::uint64_t rest = dividend % divisor;
    result = roundedHalfEven(dividend / divisor, compare(rest, divisor - rest));
    return true;
}

/// Collects the digits of a number that std::to_chars wrote, without point and exponent.
inline void collectDigits(const char *begin, const char *end, DecimalDigits &digits) {
    digits.count = 0;
    for (; begin != end && *begin != 'e'; ++begin) {
        if (*begin != '.' && (digits.count > 0 || *begin != '0')) {
            digits.text[asIndex(digits.count++)] = *begin;
        }
    }
}

inline void writeDigits(std::uint64_t number, DecimalDigits &digits) {
    char *const begin = digits.text.data();
    const char *const end =
        number == 0 ? begin : std::to_chars(begin, begin + DecimalDigits::Most, number).ptr;
    digits.count = static_cast<int>(end - begin);
}

} // namespace decimal

/// The integer nearest to a finite |value| times 10**decimals, by its digits; none for 0.
/// decimals  0 to 32;  value  below 1e40
template <class Real>
void fixedDigits(Real value, int decimals, DecimalDigits &digits) {
    std::uint64_t number = 0;
    if (decimal::scaleByTen(takeApart(value), decimals, number)) {
        decimal::writeDigits(number, digits);
        return;
    }
    std::array<char, DecimalDigits::Most> text; // NOLINT: written before it is read
    const auto written = std::to_chars(text.data(), text.data() + text.size(), std::fabs(value),
                                       std::chars_format::fixed, decimals);
    decimal::collectDigits(text.data(), written.ptr, digits);
}

/// The first `count` digits of a finite |value| other than 0, rounded, with the power of ten of
/// the first one.
/// count  1 to 32
template <class Real>
void significantDigits(Real value, int count, DecimalDigits &digits) {
    const BinaryReal parts = takeApart(value);
    const int lastBit = decimal::bitsOf(parts.mantissa) - 1 + parts.exponent;
    // floor of lastBit times log10(2): the exponent of the first digit, or one less
    int exponent = (lastBit * 78913) >> 18;
    std::uint64_t number = 0;
    while (count <= 18 && decimal::scaleByTen(parts, count - 1 - exponent, number)) {
        if (number < decimal::powerOfTen(count)) {
            digits.exponent = exponent;
            decimal::writeDigits(number, digits);
            return;
        }
        ++exponent;
    }
    std::array<char, DecimalDigits::Most> text; // NOLINT: written before it is read
    const auto written = std::to_chars(text.data(), text.data() + text.size(), std::fabs(value),
                                       std::chars_format::scientific, count - 1);
    decimal::collectDigits(text.data(), written.ptr, digits);
    const char *mark = written.ptr;
    while (mark[-1] != 'e') {
        --mark;
    }
    std::from_chars(*mark == '+' ? mark + 1 : mark, written.ptr, digits.exponent);
}

} // namespace keldrin
