#include "physics/special_functions.h"

#include <cmath>

namespace keldrin {

namespace {

// Where the power series ends and the scaled form begins.
constexpr float Split = 3.75F;

double widened(float x) {
    return static_cast<double>(x);
}

// sqrt(x) exp(-x) I0(x) and I1(x) for x >= 3.75.
double largeI0(float x) {
    const double y = widened(Split / x);
    return 0.39894228 +
           y * (0.01328592 +
                y * (0.00225319 +
                     y * (-0.00157565 +
                          y * (0.00916281 +
                               y * (-0.02057706 +
                                    y * (0.02635537 + y * (-0.01647633 + y * 0.00392377)))))));
}
double largeI1(float x) {
    const double y = widened(Split / x);
    return 0.39894228 +
           y * (-0.03988024 +
                y * (-0.00362018 +
                     y * (0.00163801 +
                          y * (-0.01031555 +
                               y * (0.02282967 +
                                    y * (-0.02895312 + y * (0.01787654 - y * 0.00420059)))))));
}

// erfc(a) exp(a^2) for 0.5 < a <= 4.
double erfcMiddle(double a) {
    const double p = 300.459261020162 +
                     a * (451.918953711873 +
                          a * (339.320816734344 +
                               a * (152.98928504694 +
                                    a * (43.1622272220567 +
                                         a * (7.21175825088309 + a * (0.564195517478974 -
                                                                      1.36864857382717e-7 * a))))));
    const double q = 300.459260956983 +
                     a * (790.950925327898 +
                          a * (931.35409485061 +
                               a * (638.980264465631 +
                                    a * (277.585444743988 +
                                         a * (77.0001529352295 + a * (12.7827273196294 + a))))));
    return p / q;
}

// The same for 4 < a < 5.8.
double erfcLarge(double a) {
    const double i = 1.0 / (a * a);
    const double p = 0.282094791773523 +
                     i * (4.6580782871847 +
                          i * (21.3688200555087 + i * (26.2370141675169 + i * 2.10144126479064)));
    const double q =
        1.0 + i * (18.0124575948747 +
                   i * (99.0191814623914 + i * (187.11481179959 + i * 94.153775055546)));
    return (0.564189583547756 - p / (a * a * q)) / a;
}

} // namespace

float Bessel_I0(float x) {
    const float a = std::fabs(x);
    if (a >= Split) {
        return static_cast<float>(largeI0(a) / widened(std::sqrt(a)) * widened(std::exp(a)));
    }
    const float ratio = x / Split;
    const double y = widened(ratio * ratio);
    return static_cast<float>(
        1.0 + y * (3.5156229 +
                   y * (3.0899424 +
                        y * (1.2067492 + y * (0.2659732 + y * (0.0360768 + y * 0.0045813))))));
}

float Bessel_I1(float x) {
    const float a = std::fabs(x);
    if (a >= Split) {
        const auto value =
            static_cast<float>(largeI1(a) / widened(std::sqrt(a)) * widened(std::exp(a)));
        return x < 0.0F ? -value : value;
    }
    const float ratio = x / Split;
    const double y = widened(ratio * ratio);
    return static_cast<float>(
        widened(x) *
        (0.5 +
         y * (0.87890594 +
              y * (0.51498869 +
                   y * (0.15084934 + y * (0.02658733 + y * (0.00301532 + y * 0.00032411)))))));
}

float Bessel_I0Scaled(float x) {
    const float a = std::fabs(x);
    return static_cast<float>(largeI0(a) / widened(std::sqrt(a)));
}

float Bessel_I1Scaled(float x) {
    const float a = std::fabs(x);
    const auto value = static_cast<float>(largeI1(a) / widened(std::sqrt(a)));
    return x < 0.0F ? -value : value;
}

float Erf_Single(float x) {
    constexpr float complementVanishes = 8.0F;
    const float a = std::fabs(x);
    float e = 0.0F;
    if (!(a >= complementVanishes)) {
        const float r = 1.0F / (1.0F + 0.5F * a);
        const float power =
            -a * a - 1.2655122F +
            r * (1.0000237F +
                 r * (0.37409195F +
                      r * (0.09678418F +
                           r * (-0.18628806F +
                                r * (0.27886808F +
                                     r * (-1.135204F +
                                          r * (1.4885159F +
                                               r * (-0.82215226F + r * 0.17087276F))))))));
        e = r * std::exp(power);
    }
    return x < 0.0F ? 1.0F - (2.0F - e) : 1.0F - e;
}

double Erf_Double(double x) {
    const double a = std::fabs(x);
    if (a <= 0.5) {
        const double v = x * x;
        const double p =
            1.128379167095513 +
            v * (0.0479137145607681 +
                 v * (0.0323076579225834 + v * (-0.00133733772997339 + v * 7.7105849500132e-5)));
        const double q =
            1.0 + v * (0.375795757275549 + v * (0.0538971687740286 + v * 0.00301048631703895));
        return x * p / q;
    }
    double value = 1.0;
    if (a <= 4.0) {
        value = 1.0 - std::exp(-a * a) * erfcMiddle(a);
    } else if (a < 5.8) {
        value = 1.0 - std::exp(-a * a) * erfcLarge(a);
    }
    return std::copysign(value, x);
}

} // namespace keldrin
