#include "exact_response.h"

#include "messages/message_log.h"
#include "physics/apparent_resistivity.h"
#include "physics/ares_newton.h"
#include "support/message_recorder.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <vector>

namespace keldrin {
namespace {

using testing::Each;
using testing::ElementsAre;

// ---- The search ----

AResRoot search(const std::function<AResResidual(float)> &residual, float x = 0.0F,
                float low = -10.0F, float high = 10.0F) {
    return ARes_Newton(x, low, high, residual);
}

TEST(AResNewton, EndsAtOnceWithinToleranceAndInRange) {
    const auto flat = [](float) {
        return AResResidual{0.01F, 3.0F};
    };
    const AResRoot root = search(flat, -50.0F);
    EXPECT_EQ(root.x, -10.0F);
    EXPECT_EQ(root.iterations, 1);
    EXPECT_EQ(root.slope, 3.0F);
    EXPECT_EQ(search(flat, std::nanf("")).x, -10.0F);
}

TEST(AResNewton, StepsAreAtMostOneAndARootBeyondTheRangeGivesTheBoundWithoutError) {
    std::vector<float> tried;
    const AResRoot root = search(
        [&](float x) {
            tried.push_back(x);
            return AResResidual{x - 30.0F, 1.0F};
        },
        8.5F);
    EXPECT_THAT(tried, ElementsAre(8.5F, 9.5F, 10.0F));
    EXPECT_EQ(root.x, 10.0F);
    EXPECT_EQ(root.error, 0);
}

TEST(AResNewton, ARejectedStepIsShortenedByTheParabolaThatIgnoresItsLength) {
    std::vector<float> tried;
    search([&](float x) {
        tried.push_back(x);
        return AResResidual{x > 0.2F ? 2.0F : (x > 0.0F ? 0.0F : 1.0F), -2.0F};
    });
    // The step is 0.5 and g = f d = -2, so the factor is 1 / (0.5 (4 - 1) + 2).
    ASSERT_EQ(tried.size(), 3U);
    EXPECT_FLOAT_EQ(tried[1], 0.5F);
    EXPECT_FLOAT_EQ(tried[2], 0.5F * (1.0F / 3.5F));
}

TEST(AResNewton, GivesUpAfterSeventeenPassesWhereItStands) {
    const AResRoot root = search([](float x) { return AResResidual{100.0F - x, -500.0F}; }, -9.0F);
    EXPECT_EQ(root.error, 2);
    EXPECT_EQ(root.iterations, 18);
    EXPECT_GT(root.x, -9.0F + 16.0F * 0.2F);
}

TEST(AResNewton, WhatIsNotFiniteEndsTheSearch) {
    constexpr float inf = std::numeric_limits<float>::infinity();
    for (const float bad : {inf, -inf, std::nanf(""), 3.0e38F, 1.0e32F}) {
        const AResRoot atOnce = search([&](float) { return AResResidual{bad, 1.0F}; });
        const AResRoot slope = search([&](float x) { return AResResidual{1.0F + 0.5F * x, bad}; });
        const AResRoot later = search([&](float x) {
            return AResResidual{x == 0.0F ? 1.0F : bad, -1.0F};
        });
        EXPECT_EQ(atOnce.x, 0.0F);
        EXPECT_EQ(slope.x, 0.0F);
        EXPECT_EQ(later.x, 0.0F);
        EXPECT_LE(later.iterations, 12);
        EXPECT_EQ(atOnce.error + slope.error + later.error, 0);
    }
}

// ---- One sounding ----

/// Input of a sounding and its storage.
struct Sounding {
    AResInput input;
    std::vector<float> centre{1.0F};
    std::vector<float> width{0.2F};
    std::vector<ComponentWords> weights{{0, 0, 1}};
    std::vector<float> dbdt{1.0F};
    std::vector<float> ares{-1.0F};

    explicit Sounding(int array, const std::vector<float> &centres = {1.0F}) : centre(centres) {
        width.assign(centre.size(), 0.2F);
        weights.assign(centre.size(), {0, 0, 1});
        dbdt.assign(centre.size(), 1.0F);
        ares.assign(centre.size(), -1.0F);
        input.iTemArray = array;
        input.xLength = 100.0F;
        input.yLength = 100.0F;
        input.ramp = 50.0F;
        input.freq = 0.25F;
    }
    AResOutcome solve() {
        input.ntw = static_cast<int>(centre.size());
        input.twCenter = centre;
        input.twWidth = width;
        input.weights = weights;
        return ARes_dBdt(input, dbdt, ares);
    }
};

using ExactStep = std::function<double(double t)>;

/// Mean over the window (msec) of the response to a ramp (usec) that ends at time 0, in
/// nV/(A m2). The window's centre is the geometric mean of its edges.
double windowMean(const ExactStep &step, double centre, double width, double ramp) {
    const double g = std::hypot(centre, 0.5 * width);
    exact::Quadrature rule;
    rule.addPanel(0.0, 1.0);
    double sum = 0.0;
    for (std::size_t i = 0; i < rule.nodes.size(); ++i) {
        const double t = (g - 0.5 * width + rule.nodes[i] * width) * 1.0e-3;
        for (std::size_t j = 0; j < rule.nodes.size(); ++j) {
            sum += rule.weights[i] * rule.weights[j] * step(t + rule.nodes[j] * ramp * 1.0e-6);
        }
    }
    return sum * 1.0e9;
}

constexpr double Sigma = 1.0 / 30.0;
const std::vector<float> Centres = {0.05F, 0.2F, 1.0F, 5.0F};

void expectThirtyOhmMetres(Sounding &sounding, const ExactStep &step,
                           const std::vector<float> &ramps) {
    for (const float ramp : ramps) {
        sounding.input.ramp = ramp;
        for (std::size_t k = 0; k < sounding.centre.size(); ++k) {
            sounding.width[k] = 0.4F * sounding.centre[k];
            sounding.dbdt[k] = static_cast<float>(
                windowMean(step, static_cast<double>(sounding.centre[k]),
                           static_cast<double>(sounding.width[k]), static_cast<double>(ramp)));
        }
        EXPECT_EQ(sounding.solve().error, 0);
        for (const float rho : sounding.ares) {
            EXPECT_NEAR(rho, 30.0F, 30.0 * 0.02) << "ramp " << ramp;
        }
    }
}

// Data of a half-space, averaged over window and ramp by other means, give its resistivity back,
// within the solver's tolerance of 0.01 in ArcSinh.
TEST(AResDBdt, FindsTheHalfSpaceForEveryArray) {
    const std::vector<float> ramps = {0.0F, 10.0F, 50.0F, 400.0F}; // every ramp rule
    Sounding inLoop(InLoop, Centres);
    expectThirtyOhmMetres(
        inLoop, [](double t) { return 8.0 * exact::wireSide(-50, 50, t, Sigma); }, ramps);
    Sounding coincident(CoincidentLoop, Centres);
    const double radius = 100.0 / std::sqrt(std::numbers::pi);
    expectThirtyOhmMetres(
        coincident, [&](double t) { return exact::coincidentCircle(radius, t, Sigma) / 10000.0; },
        ramps);
    Sounding moving(MovingLoop, {5.0F});
    moving.input.rxX = 150.0F;
    const ExactStep vertical = [](double t) {
        return std::fabs(exact::loopZ(150, 0, 100, 100, t, Sigma));
    };
    expectThirtyOhmMetres(moving, vertical, {50.0F});
    Sounding fixed(FixedLoop, {1.0F});
    fixed.weights = {{1, 0, 1}};
    fixed.input.rxX = 30.0F;
    fixed.input.rxY = -20.0F;
    expectThirtyOhmMetres(fixed,
                          [](double t) {
                              return std::hypot(exact::loopZ(30, -20, 100, 100, t, Sigma),
                                                exact::loopX(30, -20, 100, 100, t, Sigma));
                          },
                          {50.0F});
}

// The response falls by orders of magnitude over a ramp that is longer than the time after it: the
// nine points of the longest ramps follow it, the five of shorter ones would not.
TEST(AResResidWindow, LongRampsAreAveragedAtNinePoints) {
    const auto step = [](double t) {
        return 8.0 * exact::wireSide(-50, 50, t, Sigma);
    };
    struct Case {
        float centre; ///< msec
        float ramp;   ///< usec
        double error; ///< largest, relative
    };
    for (const auto &[centre, ramp, error] :
         {Case{0.01F, 200.0F, 0.001}, Case{0.02F, 400.0F, 0.01}, Case{0.3F, 400.0F, 0.001}}) {
        Sounding sounding(InLoop, {centre});
        sounding.input.ramp = ramp;
        sounding.width = {0.2F * centre};
        sounding.input.ntw = 1;
        sounding.input.twCenter = sounding.centre;
        sounding.input.twWidth = sounding.width;
        sounding.input.weights = sounding.weights;
        const ARes_Context context = contextOf(sounding.input);
        const float f = ARes_ResidWindow(context, std::log(static_cast<float>(Sigma))).f;
        const auto c = static_cast<double>(centre);
        const double mean = windowMean(step, c, 0.2 * c, static_cast<double>(ramp));
        EXPECT_NEAR(std::sinh(static_cast<double>(f)) / mean, 1.0, error) << ramp;
    }
}

// At early times two half-spaces give one value. The solution of the later window leads to the
// right one, the late-time formula to the other.
TEST(AResDBdt, StartsEachWindowFromTheSolutionOfTheNextLaterOne) {
    Sounding sounding(InLoop, {0.05F, 0.1F, 0.2F, 0.5F, 1.0F, 5.0F});
    const auto step = [](double t) {
        return 8.0 * exact::wireSide(-50, 50, t, 1.0);
    };
    const auto solveThem = [&] {
        for (std::size_t k = 0; k < sounding.centre.size(); ++k) {
            sounding.width[k] = 0.2F * sounding.centre[k];
            const auto centre = static_cast<double>(sounding.centre[k]);
            sounding.dbdt[k] = static_cast<float>(windowMean(step, centre, 0.2 * centre, 50.0));
        }
        EXPECT_EQ(sounding.solve().error, 0);
    };
    solveThem();
    for (const float rho : sounding.ares) {
        EXPECT_NEAR(rho, 1.0F, 0.02F);
    }
    sounding = Sounding(InLoop, {0.05F});
    solveThem();
    EXPECT_GT(sounding.ares[0], 10.0F);
}

TEST(AResDBdt, TakesOffEveryEarlierStepWithTheSameSignUntilOneIsBelowOnePercent) {
    Sounding sounding(InLoop, {1.0F});
    sounding.input.ramp = 0.0F;
    sounding.input.freq = 100.0F;
    sounding.width = {0.001F};
    const auto step = [](double t) {
        return 8.0 * exact::wireSide(-50, 50, t, Sigma) * 1.0e9;
    };
    double value = step(1.0e-3);
    int terms = 0;
    for (double t = 1.0e-3, part = 1.0; std::fabs(part) >= 0.01; ++terms) {
        t += 0.25 / 100.0;
        value -= step(t);
        part = step(t) / value;
    }
    EXPECT_GE(terms, 2); // so an alternating sign would show
    ASSERT_GT(value, 1.0);
    sounding.dbdt = {static_cast<float>(value)};
    EXPECT_EQ(sounding.solve().error, 0);
    EXPECT_NEAR(sounding.ares[0], 30.0F, 0.3F);
    // A response below 1 nV/(A m2) is left as it is.
    sounding.centre = {10.0F};
    sounding.dbdt = {static_cast<float>(step(1.0e-2))};
    ASSERT_LT(sounding.dbdt[0], 1.0F);
    sounding.solve();
    EXPECT_NEAR(sounding.ares[0], 30.0F, 0.6F);
}

TEST(AResDBdt, ValuesBelowTheFloorGiveZeroAndDoNotDisturbTheirNeighbours) {
    const auto step = [](double t) {
        return 8.0 * exact::wireSide(-50, 50, t, Sigma);
    };
    Sounding whole(InLoop, Centres);
    for (std::size_t k = 0; k < Centres.size(); ++k) {
        whole.dbdt[k] =
            static_cast<float>(windowMean(step, static_cast<double>(Centres[k]), 0.2, 50.0));
    }
    whole.centre[0] = 0.15F;
    whole.solve();
    Sounding gaps = whole;
    for (const float bad : {-1.0F, -1.0e32F, 1.0e-20F, std::nanf("")}) {
        gaps.dbdt[2] = bad;
        gaps.dbdt[3] = bad;
        EXPECT_EQ(gaps.solve().error, 0);
        EXPECT_THAT(std::vector(gaps.ares.begin() + 2, gaps.ares.end()), Each(0.0F)) << bad;
        EXPECT_NEAR(gaps.ares[1], whole.ares[1], 0.02F * whole.ares[1]);
        gaps.dbdt.assign(4, bad);
        EXPECT_EQ(gaps.solve().error, 0);
        EXPECT_THAT(gaps.ares, Each(0.0F));
        gaps.dbdt = whole.dbdt;
    }
}

// Far from the loop, or late, the floor itself underflows; a zero reading is at it all the same.
TEST(AResDBdt, AZeroInALateWindowLeavesTheEarlierOnesAlone) {
    for (const int array : {FixedLoop, MovingLoop, InLoop, CoincidentLoop}) {
        Sounding whole(array, {0.1F, 0.3F, 1.0F, 3.0F, 10.0F, 30.0F, 5000.0F});
        whole.input.xLength = whole.input.yLength = 20.0F;
        whole.input.rxX = 30.0F;
        const std::size_t late = whole.centre.size() - 1;
        for (std::size_t k = 0; k < late; ++k) {
            whole.dbdt[k] = 2.0F * std::pow(whole.centre[k], -2.5F);
        }
        whole.dbdt[late] = -1.0F; // below every floor
        const int unfitted = whole.solve().unfitted;
        for (const float zero : {0.0F, -0.0F, 1.0e-38F, 1.0e-20F}) {
            Sounding zeros = whole;
            zeros.dbdt[late] = zero;
            EXPECT_EQ(zeros.solve().unfitted, unfitted);
            EXPECT_EQ(zeros.ares, whole.ares) << "array " << array << ", reading " << zero;
        }
    }
}

TEST(AResDBdt, CountsTheWindowsThatNoHalfSpaceFits) {
    Sounding sounding(InLoop, Centres);
    sounding.dbdt = {3.0e8F, 1.0e3F, 10.0F, 0.1F}; // more than any half-space gives at 0.05 msec
    const AResOutcome outcome = sounding.solve();
    EXPECT_EQ(outcome.error, 0);
    EXPECT_EQ(outcome.unfitted, 1);
}

// Of a value that no half-space gives, the search for a start may run out of passes where the one
// from there on ends at a bound: it is reported all the same.
TEST(AResDBdt, CountsASearchForAStartThatFails) {
    Sounding sounding(InLoop, {0.4F});
    sounding.input.xLength = sounding.input.yLength = 1000.0F;
    int found = 0;
    for (float value = 1.0e6F; value < 1.0e12F; value *= 1.3F) {
        sounding.dbdt = {value};
        const AResOutcome outcome = sounding.solve();
        found += outcome.error == 0 && outcome.unsolved == 1 ? 1 : 0;
    }
    EXPECT_GT(found, 0);
}

TEST(AResDBdt, ExtremeValuesEnd) {
    constexpr float inf = std::numeric_limits<float>::infinity();
    for (const int array : {FixedLoop, MovingLoop, InLoop, CoincidentLoop}) {
        Sounding sounding(array, Centres);
        sounding.weights = {{1, 1, 1}, {0, 0, 0}, {std::nanf(""), 0, 0}, {0, 1, 0}};
        for (const float value : {0.0F, 1.0e-38F, 1.0e10F, 1.0e20F, 1.0e32F, 3.0e38F, inf}) {
            for (const float far : {0.0F, 20.0F, 1.0e4F, -1.0e10F}) {
                sounding.input.rxX = far;
                sounding.input.rxY = 0.5F * far;
                sounding.dbdt.assign(4, value);
                EXPECT_NE(sounding.solve().error, 1);
                for (const float rho : sounding.ares) {
                    EXPECT_TRUE(rho >= 0.0F && rho <= 1.01e6F) << rho;
                }
            }
        }
    }
}

TEST(AResCheck, NamesTheFirstLimitThatIsBroken) {
    struct Case {
        std::function<void(Sounding &)> spoil;
        const char *text;
    };
    const float nan = std::nanf("");
    const Case cases[] = {
        {[](Sounding &s) { s.input.iTemArray = 7; }, "iTemArray=1 is < 1 or > 4"},
        {[](Sounding &s) { s.input.xLength = 0.05F; }, "X Tx Length=0.05 is < 0.1 or > 1.0E5"},
        {[](Sounding &s) { s.input.yLength = 2.0e5F; }, "Y Tx Length=200000 is < 0.1 or > 1.0E5 m"},
        {[](Sounding &s) { s.input.ramp = -1.0F; }, "Tx Ramp=-1 is < 0 or > 1000 usec"},
        {[](Sounding &s) { s.input.freq = 1001.0F; }, "Tx Freq=1001 is < 0.001 or > 1000 hertz"},
        {[](Sounding &s) { s.input.rxX = -2.0e10F; },
         "Rx X w.r.t. Tx center =-2e+10 is < -1.0E10 or > 1.0E10 m"},
        {[](Sounding &s) { s.input.rxY = 2.0e10F; },
         "Rx Y w.r.t. Tx center =2e+10 is < -1.0E10 or > 1.0E10 m"},
        {[](Sounding &s) { s.centre.clear(); }, "NTW=0 is < 1 or > 128"},
        {[](Sounding &s) { s = Sounding(InLoop, std::vector(129, 1.0F)); },
         "NTW=129 is < 1 or > 128"},
        {[](Sounding &s) {
             s.centre = {1.0F, 2.0e4F};
             s.width[1] = -1.0F;
         },
         "Time-window Center =20000 is < 1.0E-4 or > 1.0E4 msec"},
        {[](Sounding &s) { s.width[0] = -1.0F; }, // shows the centre
         "Time-window Width =1 is < 0 or > 1.0E3 msec"},
    };
    for (const Case &c : cases) {
        Sounding sounding(InLoop, {1.0F, 2.0F});
        c.spoil(sounding);
        const AResOutcome outcome = sounding.solve();
        EXPECT_EQ(outcome.error, 1);
        EXPECT_THAT(sounding.ares, Each(0.0F));
        EXPECT_EQ(failureText(outcome.failure), c.text);
    }
    Sounding notANumber(InLoop);
    notANumber.input.xLength = nan;
    EXPECT_EQ(notANumber.solve().failure.fault, AResFault::XSide);
    Sounding twoFaults(InLoop);
    twoFaults.input.freq = 0.0F;
    twoFaults.input.yLength = 0.0F;
    EXPECT_EQ(twoFaults.solve().failure.fault, AResFault::YSide);
}

TEST(AResCheck, TheLimitsThemselvesAreGood) {
    Sounding sounding(CoincidentLoop, std::vector(MaxWindows, 1.0F));
    sounding.centre[0] = 1.0e-4F;
    sounding.centre[1] = 1.0e4F;
    sounding.width[0] = 0.0F;
    sounding.width[1] = 1000.0F;
    for (const bool high : {false, true}) {
        sounding.input.xLength = sounding.input.yLength = high ? 1.0e5F : 0.1F;
        sounding.input.ramp = high ? 1000.0F : 0.0F;
        sounding.input.freq = high ? 1000.0F : 0.001F;
        sounding.input.rxX = sounding.input.rxY = high ? 1.0e10F : -1.0e10F;
        EXPECT_EQ(sounding.solve().failure.fault, AResFault::None) << high;
    }
}

TEST(AResReport, SaysSixteenForEverySolveThatFailed) {
    MessageRecorder messages;
    AResOutcome outcome;
    outcome.unsolved = 2;
    ARes_ReportUnsolved(outcome);
    EXPECT_THAT(messages.errors,
                ElementsAre("WARNING:|No apparent resistivity solution after 16 iterations|while "
                            "calculating TEM apparent resistivities.",
                            messages.errors[0]));
}

} // namespace
} // namespace keldrin
