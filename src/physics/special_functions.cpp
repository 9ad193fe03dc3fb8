#include "physics/special_functions.h"

namespace keldrin {

namespace {

// exp(a^2) erfc(a) for 0.5 < a <= 4.
double scaledComplement(double a) {
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
double scaledComplementTail(double a) {
    const double i = 1.0 / (a * a);
    const double p = 0.282094791773523 +
                     i * (4.6580782871847 +
                          i * (21.3688200555087 + i * (26.2370141675169 + i * 2.10144126479064)));
    const double q =
        1.0 + i * (18.0124575948747 +
                   i * (99.0191814623914 + i * (187.11481179959 + i * 94.153775055546)));
    return (0.564189583547756 - p / (a * a * q)) / a;
}

float unscaled(double asymptote, float a) {
    return static_cast<float>(asymptote / static_cast<double>(std::sqrt(a)) *
                              static_cast<double>(std::exp(a)));
}

} // namespace

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
        value = 1.0 - std::exp(-a * a) * scaledComplement(a);
    } else if (a < 5.8) {
        value = 1.0 - std::exp(-a * a) * scaledComplementTail(a);
    }
    return std::copysign(value, x);
}

float Bessel_I0(float x) {
    const float a = std::fabs(x);
    return a < BesselSplit ? besselSeriesI0(x) : unscaled(besselAsymptoteI0(a), a);
}

float Bessel_I1(float x) {
    const float a = std::fabs(x);
    if (a < BesselSplit) {
        return besselSeriesI1(x);
    }
    const float value = unscaled(besselAsymptoteI1(a), a);
    return x < 0.0F ? -value : value;
}

} // namespace keldrin
