#include "exact_response.h"

#include "physics/coincident.h"
#include "physics/dipole_grid.h"
#include "physics/dipole_kernels.h"
#include "physics/euler_sum.h"
#include "physics/loop_center.h"
#include "physics/side_kernel.h"
#include "physics/special_functions.h"
#include "physics/wire_kernel.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

namespace keldrin {
namespace {

// Every branch of every kernel against the exact response. An error is the difference over the sum
// of the magnitudes of exact value and exact slope, so that a zero of one of them does not count.
// The bounds are those that the kernels' comments state.

constexpr float Time = 1.0e-3F;
constexpr float Conductivity = 0.02F;
const double T = static_cast<double>(Time);
const double S = static_cast<double>(Conductivity);
const double Theta = exact::theta(T, S);
const auto ThetaSingle = static_cast<float>(Theta);

/// One branch: it holds for arguments above `low` up to `high`.
struct Branch {
    const char *name;
    double low;
    double high;
    double valueBound;
    double slopeBound;
    double strays = 0.0; ///< share of arguments at which a bound may be broken
};

using Kernel = std::function<Response(float distance)>;
using Exact = std::function<double(double distance, double conductivity)>;

// `distanceOf` turns the branch's argument into the kernel's distance.
void expectWithin(const Branch &branch, const std::function<double(double)> &distanceOf,
                  const Kernel &kernel, const Exact &exactly) {
    constexpr int steps = 200;
    int valueStrays = 0;
    int slopeStrays = 0;
    for (int i = 0; i <= steps; ++i) {
        // Both ends as near as single precision lets it be, just inside the branch.
        const double part = std::clamp(i / double(steps), 1.0e-6, 1.0 - 1.0e-6);
        const double argument = branch.low * std::pow(branch.high / branch.low, part);
        const auto distance = static_cast<float>(distanceOf(argument));
        const Response got = kernel(distance);
        const auto at = static_cast<double>(distance);
        const double R = exactly(at, S);
        const double slope = exact::slope([&](double s) { return exactly(at, s); }, S);
        const double scale = std::fabs(R) + std::fabs(slope);
        const double valueError = std::fabs(static_cast<double>(got.R) - R) / scale;
        const double slopeError = std::fabs(static_cast<double>(got.S) - slope) / scale;
        valueStrays += valueError <= branch.valueBound ? 0 : 1;
        slopeStrays += slopeError <= branch.slopeBound ? 0 : 1;
    }
    EXPECT_LE(valueStrays, branch.strays * steps) << branch.name;
    EXPECT_LE(slopeStrays, branch.strays * steps) << branch.name;
}

double distanceOfZ(double z) {
    return std::sqrt(2.0 * z) / Theta;
}
double distanceOfU(double u) {
    return u / Theta;
}

TEST(Kernels, WireElementInEveryRange) {
    const Branch branches[] = {
        {"z to 0.05", 1.0e-4, 0.05, 2e-7, 2e-7}, {"z to 1.2", 0.05, 1.2, 3e-5, 4e-4},
        {"z to 3.75", 1.2, 3.75, 2e-6, 2e-5},    {"z to 10", 3.75, 10.0, 5e-6, 7e-5},
        {"z to 100", 10.0, 100.0, 2e-4, 0.05},
    };
    const float q = diffusionScale(Time, Conductivity);
    for (const Branch &branch : branches) {
        expectWithin(
            branch, distanceOfZ,
            [&](float rho) { return Wire_HKernel(0.6F * rho, 0.8F * rho, Time, q); },
            [](double rho, double s) { return exact::wireElement(rho, T, s); });
    }
}

TEST(Kernels, RadialDipoleInEveryRange) {
    const Branch branches[] = {
        {"z to 0.01", 1.0e-4, 0.01, 3e-7, 6e-7},
        {"z to 3.75", 0.01, 3.75, 1e-5, 6e-5},
        {"z to 10", 3.75, 10.0, 6e-5, 2e-3},
        {"z to 50", 10.0, 50.0, 0.01, 0.6},
    };
    for (const Branch &branch : branches) {
        expectWithin(
            branch, distanceOfZ,
            [](float rho) { return 1.0F / (6.2831855F * Time) * Dipole_HKernel(rho, ThetaSingle); },
            [](double rho, double s) { return exact::radialDipole(rho, T, s); });
    }
}

TEST(Kernels, VerticalDipoleInEveryRange) {
    const Branch branches[] = {
        {"u to 0.15", 1.0e-3, 0.15, 2e-6, 3e-7},
        {"u to 0.7", 0.15, 0.7, 4e-6, 3e-6},
        {"u to 6", 0.7, 6.0, 1e-5, 1e-5},
        {"above 6", 6.0, 50.0, 2e-7, 2e-7},
    };
    for (const Branch &branch : branches) {
        expectWithin(
            branch, distanceOfU,
            [](float rho) {
                return 1.0F / (6.2831855F * Conductivity) * Dipole_ZKernel(rho, ThetaSingle);
            },
            [](double rho, double s) { return exact::verticalDipole(rho, T, s); });
    }
}

TEST(Kernels, WireSideInEveryRangeOfBothWidths) {
    const Branch single[] = {{"C to 0.3", 0.01, 0.3, 2e-5, 2e-4},
                             {"C to 1", 0.3, 1.0, 2e-3, 2e-3},
                             {"C to 3.5", 1.0, 3.5, 1e-5, 1e-5},
                             {"above 3.5", 3.5, 30.0, 1e-5, 1e-5}};
    const Branch wide[] = {{"C to 0.3", 0.01, 0.3, 3e-5, 2e-4},
                           {"C to 5.5", 0.3, 5.5, 5e-7, 5e-7},
                           {"above 5.5", 5.5, 30.0, 5e-7, 5e-7}};
    const float q = diffusionScale(Time, Conductivity);
    // Directions to the wire's end, from the perpendicular: near it, at a corner of the loop, on
    // the other side. The last, along a far longer side, is for double precision alone.
    for (const float degrees : {5.0F, 45.0F, 60.0F, -40.0F, 130.0F, 84.0F}) {
        const float along = std::sin(degrees * 0.017453293F);
        const float across = std::cos(degrees * 0.017453293F);
        const Exact exactly = [&](double r, double s) {
            const auto distance = static_cast<float>(r);
            return exact::wireSide(static_cast<double>(along * distance),
                                   static_cast<double>(across * distance), T, s);
        };
        const Kernel narrowKernel = [&](float r) {
            return Side_ZKernel(along * r, across * r, Conductivity, q);
        };
        const Kernel wideKernel = [&](float r) {
            return Side_ZKernelD(along * r, across * r, Conductivity, q);
        };
        for (const Branch &branch : wide) {
            expectWithin(branch, distanceOfU, wideKernel, exactly);
        }
        for (const Branch &branch : single) {
            if (degrees < 80.0F) {
                expectWithin(branch, distanceOfU, narrowKernel, exactly);
            }
        }
    }
}

TEST(Kernels, CircularLoopsInEveryRange) {
    const Branch centre[] = {
        {"u to 0.25", 0.001, 0.25, 1e-5, 1}, {"u to 0.5", 0.25, 0.5, 1e-6, 1},
        {"u to 1.5", 0.5, 1.5, 1e-5, 1},     {"u to 4.5", 1.5, 4.5, 1e-6, 1},
        {"above 4.5", 4.5, 50.0, 3e-7, 1},
    };
    for (const Branch &branch : centre) {
        expectWithin(
            branch, distanceOfU,
            [](float radius) {
                return Response{Loop_CircleFloor(radius, Time, Conductivity), 0};
            },
            [](double radius, double s) { return exact::circleCentre(radius, T, s); });
    }
    const Exact twice = [](double radius, double s) {
        return exact::coincidentCircle(radius, T, s);
    };
    const Branch coincident[] = {{"u to 0.5", 0.01, 0.5, 5e-6, 1e-3},
                                 {"u to 1", 0.5, 1.0, 2e-4, 3e-3, 0.1},
                                 {"u to 1.5", 1.0, 1.5, 2e-4, 3e-3, 0.1},
                                 {"above 1.5", 1.5, 30.0, 1e-3, 2e-3}};
    for (const Branch &branch : coincident) {
        expectWithin(
            branch, distanceOfU,
            [](float radius) { return Loop_CoincidentZ(radius, Time, Conductivity); }, twice);
    }
    const Branch coincidentFloor[] = {{"floor, u to 0.5", 0.01, 0.5, 5e-5, 1},
                                      {"floor, u to 1", 0.5, 1.0, 2e-3, 1, 0.1},
                                      {"floor, above 1", 1.0, 30.0, 1e-3, 1}};
    for (const Branch &branch : coincidentFloor) {
        expectWithin(
            branch, distanceOfU,
            [](float radius) {
                return Response{Loop_CoincidentFloor(radius, Time, Conductivity), 0};
            },
            twice);
    }
}

TEST(Kernels, ExactLimitsOfTheirArguments) {
    const float farther = 5.0e-4F;
    EXPECT_EQ(Dipole_HKernel(farther, 0.01F).R, 0.0F); // nearer than 0.001 m
    EXPECT_EQ(Side_ZKernel(50.0F, 0.009F, 0.01F, 100.0F).R, 0.0F);
    EXPECT_NE(Side_ZKernelD(50.0F, 0.01F, 0.01F, 100.0F).R, 0.0F);
    const Response far = Dipole_ZKernel(10.0F, 0.7F);
    EXPECT_FLOAT_EQ(far.R, -9.0e-5F);
    EXPECT_EQ(far.S, -far.R);
    EXPECT_EQ(Loop_CircleFloor(2.0F, 0.0F, 0.5F), 0.75F);
    EXPECT_EQ(Loop_CircleFloor(2.0F, 1.0e-8F, 0.5F), 0.75F);
    EXPECT_EQ(Loop_CircleFloor(2.0F, -1.0F, 0.5F), 0.0F);
}

TEST(Kernels, DipoleSumsAddUpSingleKernelsAndPassOverANodeUnderTheReceiver) {
    // Early to late, so that the grid lies in one branch, in two, and in three.
    for (const float t : {1.0e-6F, 2.0e-5F, 2.0e-4F, 1.0e-3F, 5.0e-3F, 0.1F}) {
        const float theta = inverseDiffusionLength(t, 0.05F);
        double Z = 0.0;
        double X = 0.0;
        for (std::size_t i = 0; i < GridSize; ++i) {
            const float dx = 50.0F + 130.0F - 100.0F * LoopGrid.x[i];
            const float dy = 40.0F - 90.0F - 80.0F * LoopGrid.y[i];
            const float rho = std::sqrt(dx * dx + dy * dy);
            const auto weight = static_cast<double>(LoopGrid.weight[i]);
            Z += weight * static_cast<double>(Dipole_ZKernel(rho, theta).R);
            X += weight * static_cast<double>(Dipole_HKernel(rho, theta).R * dx / rho);
        }
        const double zScale = 100.0 * 80.0 / (2.0 * std::numbers::pi * 0.05);
        const double xScale = 100.0 * 80.0 / (2.0 * std::numbers::pi * static_cast<double>(t));
        const auto gotZ = static_cast<double>(Dipole_ZSum(130, -90, 100, 80, t, 0.05F).R);
        const auto gotX = static_cast<double>(Dipole_HSum(130, -90, 100, 80, t, 0.05F).X.R);
        EXPECT_NEAR(gotZ / (Z * zScale), 1.0, 1e-5) << t;
        EXPECT_NEAR(gotX / (X * xScale), 1.0, 1e-5) << t;
    }
    const HorizontalResponse centre = Dipole_HSum(0, 0, 100, 100, 1.0e-3F, 0.05F);
    EXPECT_NEAR(centre.X.R, 0.0F, 1e-12F);
    EXPECT_TRUE(std::isfinite(Dipole_HSum(49.0F, 0, 100, 100, 1.0e-3F, 0.05F).Y.S));
}

TEST(SpecialFunctions, WithinTheirBounds) {
    const auto worst = [](double low, double high, const auto &got, const auto &exactly) {
        double error = 0.0;
        for (int i = 0; i < 2000; ++i) {
            const auto x = static_cast<float>(low + (high - low) * i / 2000.0);
            const double want = exactly(static_cast<double>(x));
            error = std::max(error, std::fabs(static_cast<double>(got(x)) / want - 1.0));
        }
        return error;
    };
    const auto scaled0 = [](double x) {
        return exact::besselScaled(0, x);
    };
    const auto scaled1 = [](double x) {
        return exact::besselScaled(1, x);
    };
    const auto whole0 = [](double x) {
        return exact::besselScaled(0, x) * std::exp(x);
    };
    const auto whole1 = [](double x) {
        return exact::besselScaled(1, x) * std::exp(x);
    };
    EXPECT_LE(worst(0.01, 3.7499, Bessel_I0, whole0), 3e-7);
    EXPECT_LE(worst(0.01, 3.7499, Bessel_I1, whole1), 3e-7);
    EXPECT_LE(worst(3.75, 80.0, Bessel_I0, whole0), 1e-6);
    EXPECT_LE(worst(-80.0, -3.75, Bessel_I1, [&](double x) { return -whole1(-x); }), 1e-6);
    EXPECT_LE(worst(3.75, 200.0, Bessel_I0Scaled, scaled0), 1e-6);
    EXPECT_LE(worst(3.75, 200.0, Bessel_I1Scaled, scaled1), 1e-6);
    EXPECT_LE(worst(-87.0, 0.0, Exp_Single, [](double x) { return std::exp(x); }), 1.3e-7);
    for (int i = -4000; i <= 4000; ++i) {
        const double x = i * 0.002;
        EXPECT_NEAR(Erf_Double(x), std::erf(x), 1e-15) << x;
        const auto single = static_cast<float>(x);
        EXPECT_NEAR(Erf_Single(single), std::erf(static_cast<double>(single)), 6e-7) << x;
    }
}

TEST(SpecialFunctions, EulersSumOfASlowAlternatingSeries) {
    EulerSeries series;
    for (int n = 1; n <= 40; ++n) {
        Euler_Sum(series, (n % 2 == 0 ? -1.0F : 1.0F) / static_cast<float>(n));
    }
    EXPECT_NEAR(series.sum, std::numbers::ln2_v<float>, 1e-6F);
}

} // namespace
} // namespace keldrin
