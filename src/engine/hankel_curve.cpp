#include "engine/hankel_curve.h"

#include <array>
#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>

namespace keldrin {

namespace {

using Complex = std::complex<double>;
constexpr double Pi = std::numbers::pi;

// g at n steps of a third of the spacing. Its spectrum ends at 1.9 Nyquist frequencies of the
// spacing to 1e-12, so that sums over these steps are integrals.
constexpr int StepsPerSpacing = 3;
constexpr double FineStep = LogSpacing / StepsPerSpacing;
constexpr std::size_t FineSteps = 90; // on each side; g exp(4y) is below 1e-16 there

std::array<double, FineSteps + 1> interpolantValues() {
    std::array<double, FineSteps + 1> values{};
    values[0] = 1.0;
    for (std::size_t n = 1; n < values.size(); ++n) {
        const double x = static_cast<double>(n) / StepsPerSpacing;
        values[n] = std::sin(Pi * x) / (Pi * x) *
                    std::exp(-0.5 * x * x / (InterpolationWidth * InterpolationWidth));
    }
    return values;
}

// Integral of g exp(sigma y) dy.
Complex interpolantMoment(Complex sigma) {
    const Complex up = std::exp(sigma * FineStep);
    const Complex down = 1.0 / up;
    Complex rising = 1.0;
    Complex falling = 1.0;
    static const std::array<double, FineSteps + 1> g = interpolantValues();
    Complex sum = g[0];
    for (std::size_t n = 1; n < g.size(); ++n) {
        rising *= up;
        falling *= down;
        sum += g[n] * (rising + falling);
    }
    return FineStep * sum;
}

// ln Gamma(z) by Stirling's series from |z + 10| on; relative error of Gamma 1e-14 for Re z > -3.
Complex logGamma(Complex z) {
    Complex product = 1.0;
    for (int i = 0; i < 10; ++i) {
        product *= z;
        z += 1.0;
    }
    const Complex w = 1.0 / z;
    const Complex w2 = w * w;
    const Complex series =
        w *
        (1.0 / 12.0 - w2 * (1.0 / 360.0 - w2 * (1.0 / 1260.0 - w2 * (1.0 / 1680.0 - w2 / 1188.0))));
    return (z - 0.5) * std::log(z) - z + 0.5 * std::log(2.0 * Pi) + series - std::log(product);
}

// Integral over x of x^mu J_nu(x), Abramowitz and Stegun 11.4.16, continued analytically.
Complex besselMoment(Complex mu, double nu) {
    return std::exp(mu * std::numbers::ln2 + logGamma(0.5 * (1.0 + nu + mu)) -
                    logGamma(0.5 * (1.0 + nu - mu)));
}

struct KernelPath {
    double power; ///< p
    double order; ///< nu
    double shift; ///< real part of the path: between p - 1.5 and p + nu
};
constexpr std::array<KernelPath, 3> Paths = {{{2.0, 1.0, 2.0}, {2.0, 0.0, 1.5}, {1.0, 0.0, 0.7}}};

// The sum over frequencies repeats with this period in z, by when exp(-0.3 z) has died away.
constexpr double Period = 100.0;
constexpr double HighestFrequency = 27.0; // the spectrum of g is below 1e-14 from here on

} // namespace

double interpolatedPower(double p) {
    return interpolantMoment(p).real();
}

HankelCurve::HankelCurve(HankelKernel kernel)
    : knots(static_cast<std::size_t>(std::lround((LargestLog - SmallestLog) / Step)) + 1) {
    const auto [p, order, shift] = Paths[static_cast<std::size_t>(kernel)];
    power = p + order;
    factor = (order > 0.0 ? 0.5 : 1.0) * interpolatedPower(power); // J1 begins as x/2, J0 as 1
    constexpr double dw = 2.0 * Pi / Period;
    for (int k = 0; k * dw < HighestFrequency; ++k) {
        const Complex sigma = {shift, k * dw};
        const Complex step = std::exp(sigma * Step);
        Complex term = (k == 0 ? 0.5 : 1.0) * dw / Pi * besselMoment(p - 1.0 - sigma, order) *
                       interpolantMoment(sigma) * std::exp(sigma * SmallestLog);
        for (Knot &knot : knots) {
            knot.value += term.real();
            knot.slope += Step * (sigma.real() * term.real() - sigma.imag() * term.imag());
            term = {term.real() * step.real() - term.imag() * step.imag(),
                    term.real() * step.imag() + term.imag() * step.real()};
        }
    }
}

double HankelCurve::at(double z) const {
    if (z <= SmallestLog) {
        return factor * std::exp(power * z);
    }
    const double place = (z - SmallestLog) * (1.0 / Step);
    if (!(place < static_cast<double>(knots.size() - 1))) {
        return 0.0;
    }
    const auto i = static_cast<std::size_t>(place);
    const double x = place - static_cast<double>(i);
    const auto [v0, s0] = knots[i];
    const auto [v1, s1] = knots[i + 1];
    const double rise = v1 - v0;
    return v0 + x * (s0 + x * ((3.0 * rise - 2.0 * s0 - s1) + x * (s0 + s1 - 2.0 * rise)));
}

const HankelCurve &hankelCurve(HankelKernel kernel) {
    switch (kernel) {
    case HankelKernel::LambdaJ1: {
        static const HankelCurve curve(HankelKernel::LambdaJ1);
        return curve;
    }
    case HankelKernel::LambdaJ0: {
        static const HankelCurve curve(HankelKernel::LambdaJ0);
        return curve;
    }
    default: {
        static const HankelCurve curve(HankelKernel::J0);
        return curve;
    }
    }
}

} // namespace keldrin
