#include "engine/contour.h"

#include <cmath>
#include <numbers>

namespace keldrin {

std::vector<ContourNode> hyperbolicContour(double t0, double ratio, int nodes) {
    constexpr double pi = std::numbers::pi;
    constexpr double a = 1.0; // half the opening angle of the asymptotes, from the imaginary axis
    const double A =
        std::acosh(((pi - 2.0 * a) * ratio + 4.0 * a - pi) / ((4.0 * a - pi) * std::sin(a)));
    const double h = A / nodes;
    const double mu = (4.0 * pi * a - pi * pi) * nodes / (A * ratio * t0);
    std::vector<ContourNode> result;
    for (int k = 0; k < nodes; ++k) {
        const std::complex<double> angle = {-a, (k + 0.5) * h};
        const std::complex<double> slope = std::complex<double>(0.0, mu) * std::cos(angle);
        result.push_back({mu * (1.0 + std::sin(angle)), h / pi * slope});
    }
    return result;
}

} // namespace keldrin
