#include "sounding/plot_limits.h"

#include "base/clock.h"
#include "page/plot_scale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace keldrin {
namespace {

SoundingRecord soundingOf(std::initializer_list<float> times, std::initializer_list<float> data) {
    SoundingRecord sounding;
    sounding.NumTW = static_cast<int>(times.size());
    std::copy(times.begin(), times.end(), sounding.TWcenter.begin());
    std::copy(data.begin(), data.end(), sounding.TEMobs.begin());
    return sounding;
}

SoundingRecord modelOf(std::initializer_list<float> resistivities, float lastMiddle,
                       float lastThickness) {
    SoundingRecord sounding;
    sounding.NumLayer = static_cast<int>(resistivities.size());
    std::copy(resistivities.begin(), resistivities.end(), sounding.ResInv.begin());
    const auto last = resistivities.size() - 1;
    sounding.ZMid[last] = lastMiddle;
    sounding.ThkInv[last] = lastThickness;
    return sounding;
}

SurveyModel lineOf(std::initializer_list<SoundingRecord> soundings) {
    SurveyModel survey;
    survey.hTrn = soundings;
    survey.SoundingCount = static_cast<int>(soundings.size());
    survey.hTrn.resize(survey.hTrn.size() + 2, soundingOf({1e-6F, 1e6F}, {-1e9F, 1e9F})); // unused
    return survey;
}

PlotLimits limitsOf(std::initializer_list<SoundingRecord> soundings) {
    PlotLimits limits;
    std::string date;
    std::string time;
    EXPECT_EQ(Plot_AutoLimits(lineOf(soundings), limits, date, time), 0);
    return limits;
}

void expectNear(float value, float expected, const char *what) {
    EXPECT_NEAR(value, expected, 1e-5F * std::fabs(expected)) << what;
}

TEST(PlotLimitsTest, TimesCoverFullDecadesWithAHairOfSlack) {
    struct Case {
        std::initializer_list<float> times;
        float min;
        float max;
    };
    const Case cases[] = {
        {{0.03F, 1.0F, 8.0F}, 0.01F, 100.0F},  // four decades at the least
        {{0.00995F, 1010.0F}, 0.01F, 1000.0F}, // within 2 percent of a decade
        {{0.0097F, 1030.0F}, 0.001F, 10000.0F},
        {{0.0F, 0.2F, 900.0F}, 0.1F, 1000.0F}, // 0 has no place on the axis
        {{5.0F}, 1.0F, 10000.0F},
        {{MissingValue, 0.02F, 3.0F, MissingValue}, 0.01F, 100.0F},
    };
    for (const Case &c : cases) {
        const PlotLimits limits = limitsOf({soundingOf(c.times, {})});
        expectNear(limits.PlotTimeMin, c.min, "min");
        expectNear(limits.PlotTimeMax, c.max, "max");
    }
    const PlotLimits line =
        limitsOf({soundingOf({0.5F, 20.0F}, {}), {}, soundingOf({0.2F, 2000.0F}, {})});
    expectNear(line.PlotTimeMin, 0.1F, "of the line");
    expectNear(line.PlotTimeMax, 10000.0F, "of the line");
}

TEST(PlotLimitsTest, DataReachFromZeroOrFromTheNegativeDecade) {
    struct Case {
        std::initializer_list<float> data;
        float min; // values, not ArcSinh
        float max;
    };
    const Case cases[] = {
        {{3.0F, 0.5F}, 0.0F, 1e4F},
        {{3.0e5F, 0.5F}, 0.0F, 1e6F},
        {{0.9999e5F, 1.0F}, 0.0F, 1e5F},
        {{1.0e5F, 1.0F}, 0.0F, 1e6F}, // 0.5 is added before the decade is taken
        {{3.0F, -0.3F}, -1.0F, 1e5F}, // the less there is below zero, the more is shown above
        {{3.0F, -0.6F}, -10.0F, 1e4F},
        {{300.0F, -2000.0F}, -1e4F, 1e3F},
        {{-7.0F, -2000.0F}, -1e4F, 10.0F},
        {{3.0F, -1e-9F}, 0.0F, 1e4F}, // nothing in 32 bits
    };
    for (const Case &c : cases) {
        const PlotLimits limits = limitsOf({soundingOf({0.1F, 1.0F}, c.data)});
        expectNear(limits.PlotDataMin, ArcSinh(c.min), "min");
        expectNear(limits.PlotDataMax, ArcSinh(c.max), "max");
    }
}

TEST(PlotLimitsTest, SkippedObservationsDoNotCountButTheirCalculatedValuesDo) {
    SoundingRecord sounding = soundingOf({0.1F, 1.0F, 2.0F}, {100.0F, 1e9F, -1e9F});
    sounding.TEMerr[1] = SkipOffset + 1.0F;
    sounding.TEMerr[2] = SkipOffset + 3.0F;
    EXPECT_EQ(limitsOf({sounding}).PlotDataMin, 0.0F);
    expectNear(limitsOf({sounding}).PlotDataMax, ArcSinh(1e4F), "max");
    sounding.TEMerr[1] = SkipOffset; // not above it: a large error, not a mark
    expectNear(limitsOf({sounding}).PlotDataMax, ArcSinh(1e9F), "max");
    sounding.TEMcalc[2] = -50.0F;
    expectNear(limitsOf({sounding}).PlotDataMin, ArcSinh(-100.0F), "min");
}

TEST(PlotLimitsTest, ModelsSetResistivityAndDepth) {
    const PlotLimits none = limitsOf({soundingOf({0.1F, 1.0F}, {1.0F, 1.0F})});
    EXPECT_EQ(none.PlotResMin, 1.0F);
    EXPECT_EQ(none.PlotResMax, 1000.0F);
    EXPECT_EQ(none.PlotDepthMin, -100.0F);

    const PlotLimits two = limitsOf(
        {modelOf({30.0F, 2.0F, 700.0F}, -200.0F, 50.0F), modelOf({1500.0F}, -20.0F, 40.0F)});
    EXPECT_EQ(two.PlotResMin, 1.0F);
    EXPECT_EQ(two.PlotResMax, 10000.0F);
    EXPECT_EQ(two.PlotDepthMin, -225.0F);
    EXPECT_EQ(two.PlotDepthMax, 0.0F);

    struct Case {
        std::initializer_list<float> resistivities;
        float min;
        float max;
    };
    const Case cases[] = {
        {{20.0F, 90.0F}, 10.0F, 1000.0F},   // a ratio of 100 at the least
        {{0.995F, 1000.0F}, 1.0F, 1000.0F}, // 0.01 is added before the decade is taken
        {{0.0F, 50.0F}, 0.01F, 100.0F},
        {{-500.0F, 3.0F}, 100.0F, 10000.0F},
        {{0.0F}, 0.01F, 1.0F},
        {{MissingValue}, 1.0F, 1000.0F},
    };
    for (const Case &c : cases) {
        const PlotLimits limits = limitsOf({modelOf(c.resistivities, -3.0F, 2.0F)});
        expectNear(limits.PlotResMin, c.min, "min");
        expectNear(limits.PlotResMax, c.max, "max");
        EXPECT_EQ(limits.PlotDepthMin, -10.0F); // a thin model has room
    }
    EXPECT_EQ(limitsOf({modelOf({5.0F}, -70.0F, MissingValue)}).PlotDepthMin, -70.0F);
}

TEST(PlotLimitsTest, AnyContentGivesLimitsThatAllowAPlot) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const float values[] = {0.0F,          -0.0F,        1e-38F, -1e-38F,  3e38F,
                            -3e31F,        1e20F,        -1e20F, infinity, -infinity,
                            std::nanf(""), MissingValue, -0.01F, 1e-45F};
    for (const float first : values) {
        for (const float second : values) {
            SoundingRecord sounding = soundingOf({first, second}, {first, second});
            sounding.NumLayer = 2;
            sounding.ResInv = {first, second};
            sounding.ZMid[1] = first;
            sounding.ThkInv[1] = second;
            const PlotLimits limits = limitsOf({sounding});
            const auto usable = [](float low, float high, bool logarithmic) {
                return PlotScale{static_cast<double>(low), static_cast<double>(high), logarithmic}
                           .isUsable() &&
                       low < high;
            };
            EXPECT_TRUE(usable(limits.PlotTimeMin, limits.PlotTimeMax, true))
                << first << " " << second;
            EXPECT_TRUE(usable(limits.PlotDataMin, limits.PlotDataMax, false))
                << first << " " << second;
            EXPECT_TRUE(usable(limits.PlotResMin, limits.PlotResMax, true))
                << first << " " << second;
            EXPECT_TRUE(usable(limits.PlotDepthMin, limits.PlotDepthMax, false))
                << first << " " << second;
        }
    }
}

TEST(PlotLimitsTest, WithoutSoundingsTheLimitsAreTheDefaultsAndTheMomentIsTold) {
    fixClock(DateTime{2021, 7, 4, 9, 5, 3});
    PlotLimits limits;
    limits.PlotTimeMax = 5.0F;
    std::string date;
    std::string time;
    EXPECT_EQ(Plot_AutoLimits(lineOf({}), limits, date, time), 1);
    fixClock({});
    EXPECT_EQ(limits.PlotTimeMin, 0.01F);
    EXPECT_EQ(limits.PlotTimeMax, 100.0F);
    EXPECT_EQ(limits.PlotDataMax, ArcSinh(1e4F));
    EXPECT_EQ(date + " " + time, "04/07/2021 09:05:03");
}

} // namespace
} // namespace keldrin
