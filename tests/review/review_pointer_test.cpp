#include "review/review_pointer.h"

#include "review_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

namespace keldrin {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr std::array<TestWindow, 4> PointerWindows = {
    TestWindow{0.2F, 5000.0F, 100.0F, 1.5F}, TestWindow{1.0F, 300.0F, 50.0F, 1002.25F},
    TestWindow{10.0F, MissingValue, 20.0F}, TestWindow{20.0F, 5.0E7F}};

/// The page shows 0.1 to 1000 msec and 0 to 1e4, 1 to 100 ohm-m and 200 m of depth.
class ReviewPointerTest : public testing::Test {
  protected:
    ReviewPointerTest() {
        limits.PlotTimeMin = 0.1F;
        limits.PlotTimeMax = 1000.0F;
        limits.PlotResMax = 100.0F;
        limits.PlotDepthMin = -200.0F;
        survey.hTrn = {soundingOf(PointerWindows)};
        survey.SoundingCount = 1;
        survey.control.TEMUnits = "nV/Am2";
        survey.control.LengthUnits = "m";
    }
    [[nodiscard]] std::string at(float x, float y) const {
        return reviewPointerText(survey, limits, 1, x, y);
    }
    [[nodiscard]] std::string near(float time, float value) const {
        const PagePlace place = placeOf(time, value, 0.1F);
        return at(place.x + 0.05F, place.y + 0.02F);
    }

    SurveyModel survey;
    PlotLimits limits;
};

TEST_F(ReviewPointerTest, TheNearestPointTellsWhatIsReadAndItsWindow) {
    EXPECT_THAT(at(placeOf(0.2F, 5000.0F, 0.1F).x, placeOf(0.2F, 5000.0F, 0.1F).y),
                "Time 0.2 msec   dB/dt 5000 nV/Am2   Window 1: 5000 nV/Am2, error 1.5 %");
    EXPECT_THAT(near(1.0F, 300.0F), EndsWith("Window 2: 300 nV/Am2, error 2.2 %, skipped"));
    // The dots of the same windows.
    EXPECT_THAT(near(1.0F, 50.0F), HasSubstr("Resistivity "));
    EXPECT_THAT(near(1.0F, 50.0F), EndsWith(" ohm-m   Window 2: 50 ohm-m, error 2.2 %, skipped"));
    EXPECT_THAT(near(10.0F, 20.0F), EndsWith("Window 3: 20 ohm-m, error 2.0 %"))
        << "a window without dB/dt";
}

TEST_F(ReviewPointerTest, WhatIsNotOnShowIsNotUnderTheMouse) {
    EXPECT_THAT(near(30.0F, 9000.0F), Not(HasSubstr("Window 4"))) << "the axis ends at 1e4";
    EXPECT_EQ(at(1.4F, 9.0F), "") << "the numbers of the axis";
    EXPECT_EQ(at(12.5F, 9.0F), "") << "between the plots";
    EXPECT_EQ(at(5.0F, 17.6F), "");
    EXPECT_EQ(at(std::numeric_limits<float>::quiet_NaN(), 9.0F), "");
    EXPECT_EQ(reviewPointerText(survey, limits, 2, 5.0F, 5.0F), "");
    EXPECT_EQ(reviewPointerText(survey, limits, 0, 5.0F, 5.0F), "");
    survey.hTrn[0] = soundingOf(std::span(PointerWindows).last(1));
    EXPECT_EQ(at(11.5F, 1.5F), "Time 1000 msec   dB/dt 0 nV/Am2") << "no point to be near to";
    survey.hTrn[0].NumTW = 0;
    EXPECT_EQ(at(5.0F, 5.0F), "");
}

TEST_F(ReviewPointerTest, TheModelPlotTellsDepthAndLayer) {
    EXPECT_EQ(at(18.0F, 9.5F), "Resistivity 10 ohm-m   Depth -100.0 m   Elevation -100.0 m");
    SoundingRecord &sounding = survey.hTrn[0];
    sounding.Elevation = 250.0;
    sounding.NumLayer = 2;
    sounding.ZMid[0] = -20.0F;
    sounding.ZMid[1] = -90.0F;
    sounding.ResInv[0] = 12.0F;
    sounding.ResInv[1] = 34.56F;
    EXPECT_THAT(at(18.0F, 9.5F), EndsWith("Elevation 150.0 m   Layer 2: 34.56 ohm-m"));
    EXPECT_THAT(at(18.0F, 17.5F), EndsWith("Layer 1: 12 ohm-m"));
    sounding.Elevation = MissingValue;
    EXPECT_THAT(at(18.0F, 9.5F), Not(HasSubstr("Elevation")));
    limits.PlotResMin = 0.0F; // no such axis
    EXPECT_EQ(at(18.0F, 9.5F), "");
    EXPECT_THAT(at(5.0F, 9.5F), StartsWith("Time "));
}

} // namespace
} // namespace keldrin
