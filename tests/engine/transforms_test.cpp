#include "engine/contour.h"
#include "engine/hankel_curve.h"
#include "engine/lag_density.h"
#include "engine/response_cases.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace keldrin {
namespace {

using Complex = std::complex<double>;

double inverse(const std::vector<ContourNode> &nodes, double t, Complex (*F)(Complex)) {
    double sum = 0.0;
    for (const auto &[s, weight] : nodes) {
        sum += (weight * F(s) * std::exp(s * t)).imag();
    }
    return sum;
}

// exp(-1/(4t))/sqrt(pi t) and t^(-3/2) exp(-1/(4t))/(2 sqrt(pi)) are the images of
// exp(-sqrt s)/sqrt(s) and of exp(-sqrt s).
TEST(Contour, InvertsKnownTransformsOverItsRange) {
    struct Case {
        double ratio;
        int nodes;
        double error;
    };
    for (const auto &[ratio, nodes, error] : {Case{10.0, 12, 3.0e-5}, Case{10.0, 14, 5.0e-6},
                                              Case{10.0, 20, 3.0e-8}, Case{30.0, 14, 5.0e-4}}) {
        for (const double t0 : {0.01, 1.0, 100.0}) {
            const auto contour = hyperbolicContour(t0, ratio, nodes);
            ASSERT_EQ(contour.size(), static_cast<std::size_t>(nodes));
            for (const double t : {t0, 0.3 * ratio * t0, ratio * t0}) {
                const double wave = std::exp(-0.25 / t) / std::sqrt(std::numbers::pi * t);
                const double value = inverse(
                    contour, t, [](Complex s) { return std::exp(-std::sqrt(s)) / std::sqrt(s); });
                EXPECT_NEAR(value, wave, error * std::max(wave, 1.0 / std::sqrt(t)))
                    << "ratio " << ratio << " nodes " << nodes << " time " << t;
            }
        }
    }
}

// Direct quadrature in ln(x), as far as the Gaussian reaches.
double directTransform(HankelKernel kernel, double z) {
    double sum = 0.0;
    constexpr double step = 5.0e-4;
    for (double y = -28.0 * LogSpacing; y < 28.0 * LogSpacing; y += step) {
        const double x = y / LogSpacing;
        const double phase = std::numbers::pi * x;
        const double g = (std::fabs(x) < 1.0e-9 ? 1.0 : std::sin(phase) / phase) *
                         std::exp(-0.5 * x * x / (InterpolationWidth * InterpolationWidth));
        const double v = std::exp(y + z);
        sum += step * g *
               (kernel == HankelKernel::LambdaJ1   ? v * v * ::j1(v)
                : kernel == HankelKernel::LambdaJ0 ? v * v * ::j0(v)
                                                   : v * ::j0(v));
    }
    return sum;
}

TEST(HankelCurves, AgreeWithDirectQuadrature) {
    for (const HankelKernel kernel :
         {HankelKernel::LambdaJ1, HankelKernel::LambdaJ0, HankelKernel::J0}) {
        const HankelCurve &curve = hankelCurve(kernel);
        for (const double z : {-9.0, -8.0, -5.0, -2.0, -1.003, 0.0, 1.0, 2.0, 2.505}) {
            const double exact = directTransform(kernel, z);
            EXPECT_NEAR(curve.at(z), exact, 1.0e-6 * std::max(std::fabs(exact), z < 0 ? 0.0 : 1.0))
                << static_cast<int>(kernel) << " at " << z;
        }
        EXPECT_EQ(curve.at(HankelCurve::LargestLog), 0.0);
        EXPECT_EQ(curve.at(100.0), 0.0);
    }
}

double areaOf(const std::vector<LagPiece> &pieces) {
    double area = 0.0;
    for (const LagPiece &piece : pieces) {
        area += piece.end > piece.begin ? 0.5 * (piece.from + piece.to) * (piece.end - piece.begin)
                                        : piece.from;
    }
    return area;
}

TEST(LagDensity, WeighsEachChangeOfCurrentOnce) {
    WindowSet set = rampWindows(0, 1e-4, 1e-3, 1e-2, 3);
    EXPECT_NEAR(areaOf(lagDensity(set, 0)), 1.0, 1.0e-12);
    EXPECT_NEAR(lagDensity(set, 0).front().begin, set.lower[0], 1.0e-15);
    EXPECT_NEAR(longestRecentLag(set), set.upper[2] + 1.0e-4, 1.0e-15);
    set.currents = {0.5, -0.25}; // through zero
    EXPECT_NEAR(areaOf(lagDensity(set, 1)), 0.75, 1.0e-12);
    const WindowSet pulse = rampWindows(16, 1e-4, 1e-3, 1e-2, 3); // up and down
    EXPECT_NEAR(areaOf(lagDensity(pulse, 2)), 0.0, 1.0e-10);
    EXPECT_NEAR(areaOf(lagDensity(samples({1e-3}), 0)), 1.0, 0.0);
}

} // namespace
} // namespace keldrin
