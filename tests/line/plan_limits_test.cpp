#include "line/plan_limits_dialog.h"
#include "line/plan_values.h"

#include "toolkit/control_ids.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

namespace keldrin {
namespace {

using testing::HasSubstr;

SoundingRecord layered() {
    SoundingRecord sounding;
    sounding.NumLayer = 3;
    sounding.ZMid[0] = -5.0F;
    sounding.ThkInv[0] = 10.0F;
    sounding.ResInv[0] = 20.0F;
    sounding.ZMid[1] = -20.0F;
    sounding.ThkInv[1] = 20.0F;
    sounding.ResInv[1] = 300.0F;
    sounding.ZMid[2] = -50.0F;
    sounding.ThkInv[2] = 40.0F;
    sounding.ResInv[2] = 5.0F;
    sounding.NumTW = 4;
    sounding.TEMerr[1] = 1003.0F;
    return sounding;
}

TEST(PlanValues, TheResistivityIsThatOfTheLayerAtTheDepth) {
    const SoundingRecord sounding = layered();
    EXPECT_EQ(resistivityAt(sounding, 0.0F), 20.0F);
    EXPECT_EQ(resistivityAt(sounding, 9.0F), 20.0F);
    EXPECT_EQ(resistivityAt(sounding, 11.0F), 300.0F);
    EXPECT_EQ(resistivityAt(sounding, 69.0F), 5.0F);
    EXPECT_FALSE(isPresent(resistivityAt(sounding, 71.0F)));
    EXPECT_FALSE(isPresent(resistivityAt(SoundingRecord{}, 1.0F)));
}

TEST(PlanValues, EachQuantityHasItsValuesAndLimits) {
    SurveyModel survey;
    survey.hTrn = {layered(), SoundingRecord{}};
    survey.SoundingCount = 2;
    const std::array soundings = {1, 2};

    PlanLimits limits;
    EXPECT_EQ(planValues(survey, limits, soundings).label, "");
    limits.quantity = 99;
    EXPECT_EQ(planValues(survey, limits, soundings).label, "");

    limits.quantity = SkippedShare;
    PlanValues shown = planValues(survey, limits, soundings);
    EXPECT_EQ(shown.values[0], 25.0F);
    EXPECT_FALSE(isPresent(shown.values[1])) << "of no windows there is no share";
    EXPECT_EQ(shown.limits.high, 100.0F);

    limits.quantity = ResistivityAtDepth;
    limits.depth = 15.0F;
    shown = planValues(survey, limits, soundings);
    EXPECT_EQ(shown.values[0], 300.0F);
    EXPECT_TRUE(shown.logarithmic);
    EXPECT_LE(shown.limits.low, 300.0F);
    EXPECT_GE(shown.limits.high, 300.0F);
    EXPECT_THAT(shown.label, HasSubstr("at 15 m"));

    // Without a model there are colours to choose limits for, but no values.
    limits.depth = 500.0F;
    shown = planValues(survey, limits, soundings);
    EXPECT_LT(shown.limits.low, shown.limits.high);
}

TEST(PlanValues, LimitsThatCannotBeShownAreNotUsed) {
    SurveyModel survey;
    survey.hTrn = {layered()};
    survey.SoundingCount = 1;
    PlanLimits limits;
    limits.quantity = ResistivityAtDepth;
    limits.setValues = true;
    limits.values = {3.0F, 30.0F};
    EXPECT_EQ(planValues(survey, limits, std::array{1}).limits.high, 30.0F);
    for (const AxisLimits &bad : {AxisLimits{0.0F, 30.0F}, AxisLimits{5.0F, 5.0F}}) {
        limits.values = bad;
        EXPECT_GT(planValues(survey, limits, std::array{1}).limits.low, 0.0F);
        EXPECT_NE(planValues(survey, limits, std::array{1}).limits.high, bad.high);
    }
}

class PlanLimitsDialogTest : public testing::Test {
  protected:
    using Edits = std::vector<std::pair<int, std::string>>;

    PlanLimitsDialogTest() {
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(7, -1, -1, 1000, 750);
        limits.map = {1000.0, 2000.0, 5000.0, 5750.0};
    }
    ~PlanLimitsDialogTest() override { ToolkitClose(); }
    PlanLimitsDialogTest(const PlanLimitsDialogTest &) = delete;
    PlanLimitsDialogTest &operator=(const PlanLimitsDialogTest &) = delete;

    bool edit(const Edits &edits, int button = ButtonContinue) {
        backend.beforeAnswer = [&, button](AnsweringBackend &answers, int) {
            for (const auto &[id, text] : edits) {
                EXPECT_TRUE(answers.edit(id, text)) << id;
            }
            answers.pressInstead(button);
        };
        return Plan_EditLimits(limits, "m");
    }

    AnsweringBackend backend;
    PlanLimits limits;
};

// A user who types a limit wants it, and need not find its switch.
TEST_F(PlanLimitsDialogTest, ATypedLimitIsSet) {
    EXPECT_TRUE(edit({{PlanLimitsControl::West, "1100"}}));
    EXPECT_TRUE(limits.setMap);
    EXPECT_EQ(limits.map.west, 1100.0);
    EXPECT_FALSE(limits.setValues);
    EXPECT_TRUE(edit({{PlanLimitsControl::ValuesMaximum, "40"}}));
    EXPECT_TRUE(limits.setValues);
    // The switch takes them back.
    EXPECT_TRUE(edit({{PlanLimitsControl::SetMap, "off"}, {PlanLimitsControl::SetValues, "off"}}));
    EXPECT_FALSE(limits.setMap);
    EXPECT_FALSE(limits.setValues);
}

TEST_F(PlanLimitsDialogTest, LimitsOfOneQuantityAreNotThoseOfAnother) {
    limits.quantity = ResistivityAtDepth;
    limits.setValues = true;
    limits.values = {10.0F, 500.0F};
    EXPECT_TRUE(edit({{PlanLimitsControl::Quantity, "#2"}}));
    EXPECT_EQ(limits.quantity, SkippedShare);
    EXPECT_FALSE(limits.setValues);
}

TEST_F(PlanLimitsDialogTest, WrongOrderIsSwappedAndCancelChangesNothing) {
    EXPECT_TRUE(edit({{PlanLimitsControl::South, "6000"}}));
    EXPECT_EQ(limits.map.south, 5750.0);
    EXPECT_EQ(limits.map.north, 6000.0);
    const PlanLimits before = limits;
    EXPECT_FALSE(edit({{PlanLimitsControl::Quantity, "#3"}}, ButtonCancel));
    EXPECT_EQ(limits.quantity, before.quantity);
}

} // namespace
} // namespace keldrin
