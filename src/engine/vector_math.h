#pragma once

#include <bit>
#include <cstdint>

namespace keldrin {

// exp, sin and cos for loops that the compiler turns into vector code: no branch, no call. They are
// meant for the one file that is compiled several times, see layer_kernel.cpp; `static` keeps each
// of its versions apart.

/// Adding it to a number below 2^51 in size rounds that number to an integer.
static constexpr double IntegerRounder = 6755399441055744.0; // 1.5 * 2^52

/// exp(x) for x from -700 to 0; relative error 3e-16. n = x / ln 2 is taken off in two parts (Cody
/// and Waite 1980), the rest is a power series.
static inline double expOfNegative(double x) {
    constexpr double log2OfE = 1.4426950408889634;
    constexpr double ln2High = 6.93147180369123816490e-01;
    constexpr double ln2Low = 1.90821492927058770002e-10;
    const double shifted = x * log2OfE + IntegerRounder;
    const double n = shifted - IntegerRounder;
    const double r = (x - n * ln2High) - n * ln2Low;
    double p = 1.0 / 479001600.0;
    p = p * r + 1.0 / 39916800.0;
    p = p * r + 1.0 / 3628800.0;
    p = p * r + 1.0 / 362880.0;
    p = p * r + 1.0 / 40320.0;
    p = p * r + 1.0 / 5040.0;
    p = p * r + 1.0 / 720.0;
    p = p * r + 1.0 / 120.0;
    p = p * r + 1.0 / 24.0;
    p = p * r + 1.0 / 6.0;
    p = p * r + 0.5;
    p = p * r + 1.0;
    p = p * r + 1.0;
    constexpr std::uint64_t exponentOfOne = 1023;
    const std::uint64_t scale = (std::bit_cast<std::uint64_t>(shifted) + exponentOfOne) << 52U;
    return p * std::bit_cast<double>(scale);
}

struct SineCosine {
    double sine;
    double cosine;
};

/// Both for x from 0 to 1e6; absolute error 4e-16 up to 100, 1e-15 up to 1e4 and 1e-13 up to 1e6.
/// The quarter turns are taken off in two parts, the rest, up to 45 degrees, is a power series.
static inline SineCosine sineCosine(double x) {
    constexpr double quartersPerRadian = 0.63661977236758134;
    constexpr double quarterHigh = 1.57079632673412561417e+00;
    constexpr double quarterLow = 6.07710050650619224932e-11;
    const double shifted = x * quartersPerRadian + IntegerRounder;
    const double n = shifted - IntegerRounder;
    const double r = (x - n * quarterHigh) - n * quarterLow;
    const double q = r * r;
    double s = -1.0 / 1307674368000.0;
    s = s * q + 1.0 / 6227020800.0;
    s = s * q - 1.0 / 39916800.0;
    s = s * q + 1.0 / 362880.0;
    s = s * q - 1.0 / 5040.0;
    s = s * q + 1.0 / 120.0;
    s = s * q - 1.0 / 6.0;
    s = s * q * r + r;
    double c = 1.0 / 20922789888000.0;
    c = c * q - 1.0 / 87178291200.0;
    c = c * q + 1.0 / 479001600.0;
    c = c * q - 1.0 / 3628800.0;
    c = c * q + 1.0 / 40320.0;
    c = c * q - 1.0 / 720.0;
    c = c * q + 1.0 / 24.0;
    c = c * q - 0.5;
    c = c * q + 1.0;
    // The last two bits of n: odd quarters exchange sine and cosine, the second bit is the sign.
    const auto quarter = std::bit_cast<std::uint64_t>(shifted);
    const std::uint64_t exchange = 0U - (quarter & 1U);
    const auto sBits = std::bit_cast<std::uint64_t>(s);
    const auto cBits = std::bit_cast<std::uint64_t>(c);
    const std::uint64_t different = (sBits ^ cBits) & exchange;
    return {std::bit_cast<double>((sBits ^ different) ^ ((quarter & 2U) << 62U)),
            std::bit_cast<double>((cBits ^ different) ^ (((quarter + 1U) & 2U) << 62U))};
}

} // namespace keldrin
