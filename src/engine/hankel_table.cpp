#include "engine/hankel_table.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>

namespace keldrin {

namespace {

using Complex = std::complex<double>;
constexpr double Pi = std::numbers::pi;

// g at n steps of a third of the spacing. Its spectrum ends at 1.7 Nyquist frequencies of the
// spacing to 1e-12, so that sums over these steps are integrals.
constexpr int StepsPerSpacing = 3;
constexpr double FineStep = LogSpacing / StepsPerSpacing;
constexpr int FineSteps = 60; // on each side; g is below 1e-16 there

double interpolant(int n) {
    const double x = static_cast<double>(n) / StepsPerSpacing;
    const double sinc = n == 0 ? 1.0 : std::sin(Pi * x) / (Pi * x);
    return sinc * std::exp(-0.5 * x * x / (InterpolationWidth * InterpolationWidth));
}

// Integral of g exp(sigma y) dy.
Complex interpolantMoment(Complex sigma) {
    const Complex up = std::exp(sigma * FineStep);
    const Complex down = 1.0 / up;
    Complex rising = 1.0;
    Complex falling = 1.0;
    Complex sum = interpolant(0);
    for (int n = 1; n <= FineSteps; ++n) {
        rising *= up;
        falling *= down;
        sum += interpolant(n) * (rising + falling);
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
constexpr double HighestFrequency = 30.0; // the spectrum of g is below 1e-20 from here on

} // namespace

double interpolatedPower(double p) {
    return interpolantMoment(p).real();
}

HankelTable::HankelTable() {
    const auto count = static_cast<std::size_t>(std::lround((LargestLog - SmallestLog) / Step)) + 1;
    const double dw = 2.0 * Pi / Period;
    for (std::size_t i = 0; i < Paths.size(); ++i) {
        const auto [power, order, shift] = Paths[i];
        Curve &curve = curves[i];
        curve.power = power + order;
        // J1 begins as x/2, J0 as 1.
        curve.factor = (order > 0.0 ? 0.5 : 1.0) * interpolatedPower(curve.power);
        curve.knots.assign(count, {});
        for (int k = 0; k * dw < HighestFrequency; ++k) {
            const Complex sigma = {shift, k * dw};
            const Complex step = std::exp(sigma * Step);
            Complex term = (k == 0 ? 0.5 : 1.0) * dw / Pi *
                           besselMoment(power - 1.0 - sigma, order) * interpolantMoment(sigma) *
                           std::exp(sigma * SmallestLog);
            for (Knot &knot : curve.knots) {
                knot.value += term.real();
                knot.slope += Step * (sigma.real() * term.real() - sigma.imag() * term.imag());
                term = {term.real() * step.real() - term.imag() * step.imag(),
                        term.real() * step.imag() + term.imag() * step.real()};
            }
        }
    }
}

double HankelTable::at(HankelKernel kernel, double z) const {
    const Curve &curve = curves[static_cast<std::size_t>(kernel)];
    if (z <= SmallestLog) {
        return curve.factor * std::exp(curve.power * z);
    }
    const double place = (z - SmallestLog) * (1.0 / Step);
    const auto i = static_cast<std::size_t>(place);
    if (!(i + 1 < curve.knots.size())) {
        return 0.0;
    }
    const double x = place - static_cast<double>(i);
    const auto [v0, s0] = curve.knots[i];
    const auto [v1, s1] = curve.knots[i + 1];
    const double rise = v1 - v0;
    return v0 + x * (s0 + x * ((3.0 * rise - 2.0 * s0 - s1) + x * (s0 + s1 - 2.0 * rise)));
}

const HankelTable &hankelTable() {
    static const HankelTable table;
    return table;
}

} // namespace keldrin
