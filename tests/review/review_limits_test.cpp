#include "review/review_limits.h"

#include "toolkit/control_ids.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit_state.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace keldrin {
namespace {

/// Keeps the place where a dialog is shown.
class PlacingBackend : public AnsweringBackend {
  public:
    void showDialog(DialogModel &dialog, DialogPlacement place) override {
        AnsweringBackend::showDialog(dialog, place);
        placement = place;
        size = dialog.size;
    }
    DialogPlacement placement;
    PixelSize size;
};

class LimitsDialog : public testing::Test {
  protected:
    using Edits = std::vector<std::pair<int, std::string>>;

    LimitsDialog() {
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(7, -1, -1, 1000, 750);
    }
    ~LimitsDialog() override { ToolkitClose(); }

    int edit(const Edits &edits, int button = ButtonContinue) {
        backend.beforeAnswer = [&, button](AnsweringBackend &answers, int) {
            shown = topDialog()->controls;
            for (const auto &[id, text] : edits) {
                EXPECT_TRUE(answers.edit(id, text)) << id;
            }
            answers.pressInstead(button);
        };
        limits = start;
        return Review_EditLimits(survey, limits);
    }
    [[nodiscard]] const ControlState &control(int id) const {
        for (const ControlState &state : shown) {
            if (state.id == id) {
                return state;
            }
        }
        return shown.front();
    }

    PlacingBackend backend;
    SurveyModel survey;
    PlotLimits start;
    PlotLimits limits;
    std::vector<ControlState> shown;
};

TEST_F(LimitsDialog, ShowsPlainValuesAndKeepsUntouchedOnesToTheBit) {
    start.PlotDataMin = ArcSinh(-100.0F);
    start.PlotDataMax = ArcSinh(1.0e5F);
    EXPECT_EQ(edit({{1063, "0.02"}}), 0);
    EXPECT_EQ(control(1027).text, "1.000E+5");
    EXPECT_EQ(control(1045).text, "-100.0");
    EXPECT_EQ(control(1065).text, "-100.0");
    EXPECT_EQ(control(1054).label, "dBz/dt (uV/A)");
    EXPECT_EQ(control(1056).label, "Depth (m)");
    EXPECT_EQ(limits.PlotDataMin, start.PlotDataMin) << "its tick would be lost";
    EXPECT_EQ(limits.PlotDataMax, start.PlotDataMax);
    EXPECT_EQ(limits.PlotTimeMin, 0.02F);
    EXPECT_EQ(limits.PlotTimeMax, 100.0F);
}

TEST_F(LimitsDialog, SwapsThenWidens) {
    const struct {
        Edits edits;
        float PlotLimits::*minimum;
        float low;
        float PlotLimits::*maximum;
        float high;
    } cases[] = {
        {{{1062, "0.1"}, {1063, "10"}},
         &PlotLimits::PlotTimeMin,
         0.1F,
         &PlotLimits::PlotTimeMax,
         10},
        {{{1062, "5"}, {1063, "20"}}, &PlotLimits::PlotTimeMin, 5, &PlotLimits::PlotTimeMax, 50},
        {{{1066, "20"}, {1080, "3"}}, &PlotLimits::PlotResMin, 3, &PlotLimits::PlotResMax, 30},
        {{{1066, "30"}, {1080, "3"}}, &PlotLimits::PlotResMin, 3, &PlotLimits::PlotResMax, 30},
        {{{1064, "-60"}, {1065, "-59.5"}},
         &PlotLimits::PlotDepthMin,
         -60,
         &PlotLimits::PlotDepthMax,
         -59},
        {{{1064, "-200"}}, &PlotLimits::PlotDepthMin, -200, &PlotLimits::PlotDepthMax, -100},
        {{{1027, "3.5"}, {1045, "3"}},
         &PlotLimits::PlotDataMin,
         ArcSinh(3),
         &PlotLimits::PlotDataMax,
         ArcSinh(4)},
        {{{1027, "-1000"}}, &PlotLimits::PlotDataMin, ArcSinh(-1000), &PlotLimits::PlotDataMax, 0},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(edit(c.edits), 0);
        EXPECT_FLOAT_EQ(limits.*c.minimum, c.low) << c.edits[0].first << " " << c.edits[0].second;
        EXPECT_FLOAT_EQ(limits.*c.maximum, c.high) << c.edits[0].first << " " << c.edits[0].second;
    }
}

TEST_F(LimitsDialog, WhatNoAxisCanShowKeepsTheOldValue) {
    const Edits faulty = {{1062, "long"}, {1063, "0"},     {1066, "-5"},  {1080, "-1"},
                          {1027, "1e25"}, {1045, "1e300"}, {1065, "10,5"}};
    for (const auto &field : faulty) {
        EXPECT_EQ(edit({field, {1064, "7"}}), 0);
        PlotLimits expected = start;
        expected.PlotDepthMax = 7.0F; // the good field counts
        EXPECT_EQ(limits.PlotTimeMin, expected.PlotTimeMin) << field.first;
        EXPECT_EQ(limits.PlotTimeMax, expected.PlotTimeMax) << field.first;
        EXPECT_EQ(limits.PlotResMin, expected.PlotResMin) << field.first;
        EXPECT_EQ(limits.PlotResMax, expected.PlotResMax) << field.first;
        EXPECT_EQ(limits.PlotDataMin, expected.PlotDataMin) << field.first;
        EXPECT_EQ(limits.PlotDataMax, expected.PlotDataMax) << field.first;
        EXPECT_EQ(limits.PlotDepthMin, expected.PlotDepthMin) << field.first;
        EXPECT_EQ(limits.PlotDepthMax, expected.PlotDepthMax) << field.first;
    }
    EXPECT_EQ(ToolkitErrorState(1), 0) << "nobody else may find the error";
}

TEST_F(LimitsDialog, APairThatStillAllowsNoPlotStaysAsItWas) {
    // A range of 1.0 has no room between such numbers.
    edit({{1064, "1e9"},
          {1065, "1e9"},
          {1027, "2e7"},
          {1045, "2e7"},
          {1066, "3e38"},
          {1080, "2e38"}});
    EXPECT_EQ(limits.PlotDepthMin, start.PlotDepthMin);
    EXPECT_EQ(limits.PlotDepthMax, start.PlotDepthMax);
    EXPECT_EQ(limits.PlotDataMin, start.PlotDataMin);
    EXPECT_EQ(limits.PlotDataMax, start.PlotDataMax);
    EXPECT_EQ(limits.PlotResMin, start.PlotResMin);
    EXPECT_EQ(limits.PlotResMax, start.PlotResMax);
}

TEST_F(LimitsDialog, CancelChangesNothingAndTheDialogStandsAtTheLowerRight) {
    EXPECT_EQ(edit({{1062, "5"}, {1027, "9"}}, ButtonCancel), 1);
    EXPECT_EQ(limits.PlotTimeMax, start.PlotTimeMax);
    EXPECT_EQ(limits.PlotDataMax, start.PlotDataMax);
    const PixelRect root = backend.rootRect();
    EXPECT_EQ(backend.placement.x, root.x + root.width - backend.size.width + 1);
    EXPECT_EQ(backend.placement.y, root.y + root.height - backend.size.height + 1);
    WindowOpen(7, 0, 0, 100, 80); // smaller than the dialog
    edit({});
    EXPECT_EQ(backend.placement.x, 1);
    EXPECT_EQ(backend.placement.y, 1);
}

} // namespace
} // namespace keldrin
