#include "review/review_limits.h"

#include "support/message_recorder.h"
#include "toolkit/control_ids.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit_state.h"

#include <gtest/gtest.h>

#include <array>
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
        WindowOpen(ResizableWindow, -1, -1, 1000, 750);
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
    static std::array<float, 8> all(const PlotLimits &l) {
        return {l.PlotTimeMin, l.PlotTimeMax, l.PlotDataMin,  l.PlotDataMax,
                l.PlotResMin,  l.PlotResMax,  l.PlotDepthMin, l.PlotDepthMax};
    }
    [[nodiscard]] const ControlState &control(int id) const {
        for (const ControlState &state : shown) {
            if (state.id == id) {
                return state;
            }
        }
        return shown.front();
    }

    MessageRecorder messages;
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
        PlotLimits expected;
    } cases[] = {
        {{{1062, "0.1"}, {1063, "10"}}, {.PlotTimeMin = 0.1F, .PlotTimeMax = 10.0F}},
        {{{1062, "5"}, {1063, "20"}}, {.PlotTimeMin = 5.0F, .PlotTimeMax = 50.0F}},
        {{{1066, "20"}, {1080, "3"}}, {.PlotResMin = 3.0F, .PlotResMax = 30.0F}},
        {{{1066, "30"}, {1080, "3"}}, {.PlotResMin = 3.0F, .PlotResMax = 30.0F}},
        {{{1064, "-60"}, {1065, "-59.5"}}, {.PlotDepthMin = -60.0F, .PlotDepthMax = -59.0F}},
        {{{1064, "-200"}}, {.PlotDepthMin = -200.0F, .PlotDepthMax = -100.0F}},
        {{{1027, "3.5"}, {1045, "3"}}, {.PlotDataMin = ArcSinh(3), .PlotDataMax = ArcSinh(4)}},
        {{{1027, "-1000"}}, {.PlotDataMin = ArcSinh(-1000), .PlotDataMax = 0.0F}},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(edit(c.edits), 0);
        EXPECT_EQ(all(limits), all(c.expected)) << c.edits[0].first << " " << c.edits[0].second;
    }
}

TEST_F(LimitsDialog, WhatNoAxisCanShowKeepsTheOldValue) {
    const Edits faulty = {{1062, "long"}, {1063, "0"},     {1066, "-5"},   {1080, "-1"},
                          {1027, "1e25"}, {1045, "1e300"}, {1065, "1.0,5"}};
    for (const auto &field : faulty) {
        EXPECT_EQ(edit({field, {1064, "7"}}), 0);
        EXPECT_EQ(all(limits), all({.PlotDepthMax = 7.0F}))
            << field.first << ", the good one counts";
    }
    EXPECT_TRUE(messages.errors.empty());
    ASSERT_EQ(messages.infos.size(), faulty.size()) << "each is told once";
    EXPECT_EQ(messages.infos[0], "Time maximum: \"long\" cannot be read; 100.0 stays.");
    EXPECT_EQ(messages.infos[1], "Time minimum: \"0\" is not above 0; 1.000E-2 stays.");
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0) << "nobody else may find the error";
}

TEST_F(LimitsDialog, APairThatStillAllowsNoPlotStaysAsItWas) {
    // A range of 1.0 has no room between such numbers.
    edit({{1064, "1e9"},
          {1065, "1e9"},
          {1027, "2e7"},
          {1045, "2e7"},
          {1066, "3e38"},
          {1080, "2e38"}});
    EXPECT_EQ(all(limits), all(start));
}

TEST_F(LimitsDialog, CancelChangesNothingAndTheDialogStandsAtTheLowerRight) {
    EXPECT_EQ(edit({{1062, "5"}, {1027, "9"}}, ButtonCancel), 1);
    EXPECT_EQ(all(limits), all(start));
    const PixelRect root = backend.rootRect();
    EXPECT_EQ(backend.placement.x, root.x + root.width - backend.size.width + 1);
    EXPECT_EQ(backend.placement.y, root.y + root.height - backend.size.height + 1);
    WindowOpen(ResizableWindow, 0, 0, 100, 80); // smaller than the dialog
    edit({});
    EXPECT_EQ(backend.placement.x, 1);
    EXPECT_EQ(backend.placement.y, 1);
}

} // namespace
} // namespace keldrin
