#include "engine/response_cases.h"
#include "physics/exact_response.h"

#include <gmock/gmock.h>

#include <cmath>

namespace keldrin {
namespace {

constexpr double Nano = 1.0e9;

std::vector<double> decades(double first, double last, int perDecade) {
    std::vector<double> times;
    for (int i = 0; first * std::pow(10.0, i / static_cast<double>(perDecade)) < 1.001 * last;
         ++i) {
        times.push_back(first * std::pow(10.0, i / static_cast<double>(perDecade)));
    }
    return times;
}

// Vertical field of a rectangular loop by the triangles between the receiver and its sides.
double triangles(const LoopGeometry &loop, double t, double conductivity) {
    const double x1 = -0.5 * loop.sideX - loop.rxX;
    const double x2 = 0.5 * loop.sideX - loop.rxX;
    const double y1 = -0.5 * loop.sideY - loop.rxY;
    const double y2 = 0.5 * loop.sideY - loop.rxY;
    const auto side = [&](double a, double b, double d) {
        return exact::wireSide(a, d, t, conductivity) - exact::wireSide(b, d, t, conductivity);
    };
    return side(y1, y2, x2) - side(y1, y2, x1) + side(x1, x2, y2) - side(x1, x2, y1);
}

// Measured: 7e-7 up to 1, 1.6e-4 at 100, 1e-5 above: there the field is the primary one, and what
// lies below the wavenumbers of the diffusion must not count as reflected.
TEST(HalfSpace, AgreesWithTheClosedFormAtAllInductionNumbers) {
    const LoopGeometry loop = {1000, 1000};
    const double rho = 10.0;
    for (const double number : {0.01, 0.1, 1.0, 10.0, 100.0, 1000.0, 10000.0}) {
        // r^2 mu0/(rho t), r half the side.
        const double t = 250000.0 * exact::Mu0 / (rho * number);
        const double exact = Nano * triangles(loop, t, 1.0 / rho);
        const double value = dataOf(planOf(loop, samples({t})), {rho})[0];
        EXPECT_NEAR(value / exact, 1.0, 3.0e-4) << "induction number " << number;
    }
}

// Late the loop is a dipole, and far below the vertical field there is a horizontal one that points
// away from it.
TEST(HalfSpace, TheLateHorizontalFieldPointsAwayFromTheLoop) {
    const LoopGeometry loop = {12, 8, 30, -10, 1, false, true};
    const std::vector<double> times = decades(1.0e-4, 1.0, 1);
    const std::vector<double> data = dataOf(planOf(loop, samples(times)), {1.0e5});
    for (std::size_t i = 0; i < times.size(); ++i) {
        const double x = data[i];
        const double y = data[times.size() + i];
        EXPECT_NEAR(y / x, loop.rxY / loop.rxX, 1.0e-3) << "at " << times[i];
    }
}

TEST(HalfSpace, ResistivitiesBelowAMilliohmAloneAreHeld) {
    const LoopGeometry loop = {1000, 1000};
    const double rho = 2.0e-3;
    for (const double t : {1.0, 100.0}) {
        const double exact = Nano * triangles(loop, t, 1.0 / rho);
        const double value = dataOf(planOf(loop, samples({t})), {rho})[0];
        EXPECT_NEAR(value / exact, 1.0, 3.0e-4) << "at " << t;
    }
}

TEST(HalfSpace, AgreesWithAnIntegralOfDipolesOverTheLoop) {
    constexpr double tolerance = 5.0e-4; // the largest errors are those of the latest times
    const LoopGeometry loops[] = {{100, 60, 0, 0, 1, false, true},
                                  {100, 60, 130, 40, 1, false, true},
                                  {100, 60, -130, 140, 1, false, true},
                                  {100, 60, 20, -20, 3, false, true}};
    const double rho = 20.0;
    const std::vector<double> times = decades(1.0e-4, 1.0e-2, 1);
    for (const LoopGeometry &loop : loops) {
        const std::vector<double> data = dataOf(planOf(loop, samples(times)), {rho});
        const double turns = loop.turns * Nano;
        for (std::size_t i = 0; i < times.size(); ++i) {
            const double t = times[i];
            const double z =
                turns * exact::loopZ(loop.rxX, loop.rxY, loop.sideX, loop.sideY, t, 1.0 / rho);
            const double x =
                turns * exact::loopX(loop.rxX, loop.rxY, loop.sideX, loop.sideY, t, 1.0 / rho);
            const double y =
                turns * exact::loopX(loop.rxY, loop.rxX, loop.sideY, loop.sideX, t, 1.0 / rho);
            const double size = tolerance * std::sqrt(x * x + y * y + z * z);
            EXPECT_NEAR(data[i], x, size) << "X at " << t;
            EXPECT_NEAR(data[times.size() + i], y, size) << "Y at " << t;
            EXPECT_NEAR(data[2 * times.size() + i], z, size) << "Z at " << t;
        }
    }
}

// What the ground returns is smooth across a wire; a receiver on it counts as 1 mm beside it.
TEST(HalfSpace, HoldsOnBothSidesOfAWire) {
    const double rho = 30.0;
    const std::vector<double> times = {2.0e-5, 2.0e-4, 2.0e-3};
    for (const double x : {49.0, 49.99, 50.0, 50.01, 51.0}) {
        LoopGeometry loop = {100, 100, x, 12};
        const std::vector<double> data = dataOf(planOf(loop, samples(times)), {rho});
        loop.rxX += x == 50.0 ? 1.0e-3 : 0.0;
        for (std::size_t i = 0; i < times.size(); ++i) {
            const double exact = Nano * triangles(loop, times[i], 1.0 / rho);
            EXPECT_NEAR(data[i] / exact, 1.0, 5.0e-4) << "x " << x << " time " << times[i];
        }
    }
}

TEST(HalfSpace, EqualLayersAreOne) {
    const ResponsePlan plan =
        planOf({100, 80, 90, 10, 1, false, true}, rampWindows(8, 5e-5, 1e-5, 1e-2, 15));
    const auto one = dataOf(plan, {25.0});
    const auto many = dataOf(plan, {25.0, 25.0, 25.0, 25.0}, {3.0, 30.0, 300.0});
    const auto slope = slopesOf(plan, {25.0});
    const auto slopes = slopesOf(plan, {25.0, 25.0, 25.0, 25.0}, {3.0, 30.0, 300.0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        EXPECT_NEAR(many[i], one[i], 1.0e-8 * std::fabs(one[i]) + 1.0e-10);
        const double sum =
            slopes[4 * i] + slopes[4 * i + 1] + slopes[4 * i + 2] + slopes[4 * i + 3];
        EXPECT_NEAR(sum, slope[i], 1.0e-7 * std::fabs(slope[i]) + 1.0e-10);
    }
}

// Diffusion knows mu0 length^2/(rho t) alone: lengths times a, times times a^2 and the response
// divided by a^3; resistivities times c are the response at c t, times c.
TEST(LayeredResponse, Scales) {
    const LoopGeometry loop = {100, 80, 90, 10, 1, false, true};
    const std::vector<double> times = decades(2.0e-5, 2.0e-2, 3);
    const auto data = dataOf(planOf(loop, samples(times)), {20.0, 200.0, 2.0}, {20.0, 50.0});
    const auto check = [&](const std::vector<double> &other, double factor) {
        for (std::size_t i = 0; i < data.size(); ++i) {
            const std::size_t w = i % times.size();
            const double size = std::hypot(data[w], data[2 * times.size() + w]);
            EXPECT_NEAR(other[i] * factor, data[i], 1.0e-4 * size) << i;
        }
    };
    const double a = 2.7;
    std::vector<double> later;
    std::vector<double> sooner;
    for (const double t : times) {
        later.push_back(t * a * a);
        sooner.push_back(t / a);
    }
    check(dataOf(planOf({a * 100, a * 80, a * 90, a * 10, 1, false, true}, samples(later)),
                 {20.0, 200.0, 2.0}, {a * 20.0, a * 50.0}),
          a * a * a);
    check(dataOf(planOf(loop, samples(sooner)), {a * 20.0, a * 200.0, a * 2.0}, {20.0, 50.0}),
          1.0 / a);
}

// From the second law of scaling: the sum of all derivatives by ln(resistivity) is f + t df/dt.
TEST(LayeredResponse, DerivativesSumToTheSlopeInTime) {
    const double h = 0.02;
    for (const bool coincident : {false, true}) {
        const LoopGeometry loop = {100, 80, 0, 0, 1, coincident};
        for (const double t : {3.0e-5, 3.0e-4, 3.0e-3}) {
            const ResponsePlan plan =
                planOf(loop, samples({t * std::exp(-2 * h), t * std::exp(-h), t, t * std::exp(h),
                                      t * std::exp(2 * h)}));
            const std::vector<double> rho = {20.0, 200.0, 2.0};
            const auto f = dataOf(plan, rho, {20.0, 50.0});
            const auto slopes = slopesOf(plan, rho, {20.0, 50.0});
            const double inTime = (8.0 * (f[3] - f[1]) - (f[4] - f[0])) / (12.0 * h);
            EXPECT_NEAR(slopes[6] + slopes[7] + slopes[8], f[2] + inTime, 1.0e-4 * f[2]) << t;
        }
    }
}

TEST(Waveform, TinyRampIsAStepAndLongPeriodsDoNotMatter) {
    const std::vector<double> times = decades(1.0e-5, 1.0e-2, 4);
    const WindowSet step = samples(times);
    WindowSet ramp = step;
    ramp.times = {-1.0e-11, 0.0};
    WindowSet window = step;
    for (double &upper : window.upper) {
        upper *= 1.0 + 1.0e-9;
    }
    WindowSet rare = rampWindows(0.01, 1.0e-9, 1e-5, 1e-2, 3);
    rare.lower = rare.upper = times;
    const LoopGeometry loop = {100, 100};
    const auto expected = dataOf(planOf(loop, step), {50.0, 5.0}, {40.0});
    for (const WindowSet &set : {ramp, window, rare}) {
        const auto data = dataOf(planOf(loop, set), {50.0, 5.0}, {40.0});
        for (std::size_t i = 0; i < times.size(); ++i) {
            EXPECT_NEAR(data[i] / expected[i], 1.0, 2.0e-4) << times[i];
        }
    }
}

// A pulse train is the sum of its single pulses.
TEST(Waveform, RepetitionIsTheSumOfPulses) {
    const LoopGeometry loop = {60, 60};
    const WindowSet train = rampWindows(50, 1e-4, 1e-4, 2e-3, 5);
    const auto repeated = dataOf(planOf(loop, train), {5.0});
    std::vector<double> sum(5, 0.0);
    for (int n = 0; n < 40; ++n) {
        WindowSet pulse = train;
        pulse.frequency = 0.0;
        pulse.origin += n * 0.01;
        const auto data = dataOf(planOf(loop, pulse), {5.0});
        for (std::size_t i = 0; i < sum.size(); ++i) {
            sum[i] += (n % 2 == 0 ? 1.0 : -1.0) * data[i];
        }
    }
    for (std::size_t i = 0; i < sum.size(); ++i) {
        EXPECT_NEAR(repeated[i] / sum[i], 1.0, 3.0e-4);
    }
    WindowSet once = train;
    once.frequency = 0.0;
    const auto single = dataOf(planOf(loop, once), {5.0});
    EXPECT_GT(std::fabs(repeated[4] / single[4] - 1.0), 3.0e-3); // or the test would show nothing
}

} // namespace
} // namespace keldrin
