#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace keldrin {

// Special functions of the half-space kernels. Those in single precision call no library function
// but the square root, so that compilers can work on several points at once and all platforms give
// the same bits.

/// exp(x) for x from -87 to 0, which holds all that the kernels ask for; error 1.03 units in the
/// last place.
///
/// exp(x) = 2^n exp(r) with n the integer nearest to x / ln 2, ln 2 taken off in two parts (Cody
/// and Waite 1980), and exp(r) by its power series.
[[gnu::always_inline]] inline float Exp_Single(float x) {
    constexpr float log2OfE = 1.442695F;
    constexpr float ln2High = 0.693359375F;
    constexpr float ln2Low = -2.1219444e-4F;
    constexpr float rounder = 12582912.0F; // 1.5 * 2^23: adding it rounds to an integer
    const float shifted = x * log2OfE + rounder;
    const float n = shifted - rounder;
    const float r = (x - n * ln2High) - n * ln2Low;
    const float p =
        0.5F +
        r * (1.0F / 6.0F +
             r * (1.0F / 24.0F + r * (1.0F / 120.0F + r * (1.0F / 720.0F + r * (1.0F / 5040.0F)))));
    const float mantissa = 1.0F + (r + r * r * p);
    constexpr std::uint32_t exponentOfOne = 0x3F800000U;
    const std::uint32_t scale = (std::bit_cast<std::uint32_t>(shifted) << 23U) + exponentOfOne;
    return mantissa * std::bit_cast<float>(scale);
}

/// Complement of the error function for 0 <= a < 8, by a Chebyshev fit.
[[gnu::always_inline]] inline float erfComplement(float a) {
    const float r = 1.0F / (1.0F + 0.5F * a);
    const float power =
        -a * a - 1.2655122F +
        r * (1.0000237F +
             r * (0.37409195F +
                  r * (0.09678418F +
                       r * (-0.18628806F +
                            r * (0.27886808F +
                                 r * (-1.135204F +
                                      r * (1.4885159F + r * (-0.82215226F + r * 0.17087276F))))))));
    return r * Exp_Single(power);
}

/// Error function; -1 or 1 from |x| = 8 on. Error 5e-7, most of it from the rounding of the
/// exponent near x = 0.
inline float Erf_Single(float x) {
    const float a = std::fabs(x);
    const float e = a >= 8.0F ? 0.0F : erfComplement(a);
    return x < 0.0F ? 1.0F - (2.0F - e) : 1.0F - e;
}

/// Error function by Cody's rational fits (Math. Comp. 23, 1969), |x| to 0.5, to 4 and to 5.8, then
/// 1; error 7e-16.
double Erf_Double(double x);

// Modified Bessel functions of the first kind, Abramowitz and Stegun 9.8.1 to 9.8.4: polynomials in
// double, the argument, its root and the exponential in single.

/// Where the power series ends and the scaled form begins.
inline constexpr float BesselSplit = 3.75F;

/// I0 and I1 for |x| below 3.75; relative error 2e-7.
[[gnu::always_inline]] inline float besselSeriesI0(float x) {
    const float ratio = x / BesselSplit;
    const auto y = static_cast<double>(ratio * ratio);
    return static_cast<float>(
        1.0 + y * (3.5156229 +
                   y * (3.0899424 +
                        y * (1.2067492 + y * (0.2659732 + y * (0.0360768 + y * 0.0045813))))));
}
[[gnu::always_inline]] inline float besselSeriesI1(float x) {
    const float ratio = x / BesselSplit;
    const auto y = static_cast<double>(ratio * ratio);
    return static_cast<float>(
        static_cast<double>(x) *
        (0.5 +
         y * (0.87890594 +
              y * (0.51498869 +
                   y * (0.15084934 + y * (0.02658733 + y * (0.00301532 + y * 0.00032411)))))));
}

/// sqrt(a) exp(-a) I0(a) and I1(a) for a of 3.75 or more.
[[gnu::always_inline]] inline double besselAsymptoteI0(float a) {
    const auto y = static_cast<double>(BesselSplit / a);
    return 0.39894228 +
           y * (0.01328592 +
                y * (0.00225319 +
                     y * (-0.00157565 +
                          y * (0.00916281 +
                               y * (-0.02057706 +
                                    y * (0.02635537 + y * (-0.01647633 + y * 0.00392377)))))));
}
[[gnu::always_inline]] inline double besselAsymptoteI1(float a) {
    const auto y = static_cast<double>(BesselSplit / a);
    return 0.39894228 +
           y * (-0.03988024 +
                y * (-0.00362018 +
                     y * (0.00163801 +
                          y * (-0.01031555 +
                               y * (0.02282967 +
                                    y * (-0.02895312 + y * (0.01787654 - y * 0.00420059)))))));
}

/// exp(-|x|) I0(x) and exp(-|x|) I1(x), for |x| of 3.75 and more only; relative error 7e-7.
[[gnu::always_inline]] inline float Bessel_I0Scaled(float x) {
    const float a = std::fabs(x);
    return static_cast<float>(besselAsymptoteI0(a) / static_cast<double>(std::sqrt(a)));
}
[[gnu::always_inline]] inline float Bessel_I1Scaled(float x) {
    const float a = std::fabs(x);
    const auto value = static_cast<float>(besselAsymptoteI1(a) / static_cast<double>(std::sqrt(a)));
    return x < 0.0F ? -value : value;
}

/// I0 and I1 for any x; infinite from |x| of 88.73 on, as exp(|x|) is. No program calls them, for
/// the kernels need the scaled ones alone; they complete the documented set.
float Bessel_I0(float x);
float Bessel_I1(float x);

} // namespace keldrin
