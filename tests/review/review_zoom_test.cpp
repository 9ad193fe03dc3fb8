#include "review/plot_zoom.h"
#include "review/review_loop.h"
#include "review/review_pointer.h"
#include "review/window_values.h"
#include "sounding/page_layout.h"
#include "sounding/sounding_panels.h"
#include "sounding/sounding_plot.h"
#include "sounding/sounding_plot_ticks.h"

#include "page/drawing.h"
#include "page/surfaces/record_surface.h"
#include "review_line.h"
#include "sounding/recorded_page.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"
#include "toolkit/scripted/scripted_backend.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

constexpr std::array<TestWindow, 4> ZoomWindows = {
    TestWindow{0.2F, 5000.0F, 100.0F}, TestWindow{1.0F, 300.0F, 50.0F}, TestWindow{10.0F, 4.0F},
    TestWindow{20.0F, -0.02F}};

// ---- Limits

PageBox boxIn(const PageFrame &frame, float left, float bottom, float right, float top) {
    const float width = frame.right - frame.left;
    const float height = frame.top - frame.bottom;
    return {frame.left + left * width, frame.bottom + bottom * height, frame.left + right * width,
            frame.bottom + top * height};
}

TEST(PlotZoom, NarrowsBothAxesOfOnePlotAndLeavesTheOther) {
    const PlotLimits whole;
    PlotLimits limits;
    ASSERT_TRUE(zoomPlot(limits, boxIn(DataFrame, 0.25F, 0.5F, 0.5F, 1.2F)));
    EXPECT_NEAR(limits.PlotTimeMin, 0.1, 1e-5);
    EXPECT_NEAR(limits.PlotTimeMax, 1.0, 1e-5);
    EXPECT_NEAR(limits.PlotDataMin, whole.PlotDataMax / 2.0F, 1e-4);
    EXPECT_NEAR(limits.PlotDataMax, whole.PlotDataMax, 1e-4) << "the box ends at the frame";
    EXPECT_EQ(limits.PlotResMin, whole.PlotResMin);
    EXPECT_EQ(limits.PlotDepthMin, whole.PlotDepthMin);

    ASSERT_TRUE(zoomPlot(limits, boxIn(ModelFrame, 1.0F / 3.0F, 0.5F, 2.0F / 3.0F, 0.75F)));
    EXPECT_NEAR(limits.PlotResMin, 10.0, 1e-3);
    EXPECT_NEAR(limits.PlotResMax, 100.0, 1e-2);
    EXPECT_NEAR(limits.PlotDepthMin, -50.0, 1e-3);
    EXPECT_NEAR(limits.PlotDepthMax, -25.0, 1e-3);
    EXPECT_NEAR(limits.PlotTimeMax, 1.0, 1e-5);

    const auto [x, y] = std::pair(DataFrame.left + 1.0F, DataFrame.bottom + 1.0F);
    EXPECT_TRUE(isZoomedAt(limits, whole, x, y));
    unzoomPlot(limits, whole, x, y);
    EXPECT_FALSE(isZoomedAt(limits, whole, x, y));
    EXPECT_EQ(limits.PlotTimeMin, whole.PlotTimeMin);
    EXPECT_EQ(limits.PlotDataMin, whole.PlotDataMin);
    EXPECT_NEAR(limits.PlotResMin, 10.0, 1e-3) << "the model keeps its zoom";
    EXPECT_FALSE(isZoomedAt(limits, whole, 12.5F, 9.0F)) << "between the plots";
}

TEST(PlotZoom, ABoxThatMeetsNoPlotOrIsTooNarrowChangesNothing) {
    const PlotLimits whole;
    PlotLimits limits;
    EXPECT_FALSE(zoomPlot(limits, {11.6F, 2.0F, 13.4F, 9.0F}));
    EXPECT_FALSE(zoomPlot(limits, {5.0F, 2.0F, 5.05F, 9.0F}));
    int zooms = 0;
    while (zooms < 50 && zoomPlot(limits, boxIn(DataFrame, 0.45F, 0.45F, 0.55F, 0.55F))) {
        ++zooms;
    }
    EXPECT_GE(zooms, 3);
    EXPECT_LT(zooms, 10) << "single precision has an end";
    EXPECT_TRUE(dataPanel(limits).isUsable());
    limits.PlotDataMin = limits.PlotDataMax;
    EXPECT_FALSE(zoomPlot(limits, boxIn(DataFrame, 0.1F, 0.1F, 0.9F, 0.9F)));
}

TEST(PlotZoom, PlotsOfThePresentationShareTheirTime) {
    PlotLimits whole;
    whole.style = PageStyle::Presentation;
    PlotLimits limits = whole;
    ASSERT_TRUE(zoomPlot(limits, boxIn(PresentedResistivityFrame, 0.25F, 0.0F, 0.5F, 0.5F)));
    EXPECT_NEAR(limits.PlotTimeMax, 1.0, 1e-5);
    EXPECT_LT(limits.PlotAResMax, 40.0F);
    EXPECT_EQ(limits.PlotDataMax, whole.PlotDataMax);
    const PageBox misfit = boxIn(PresentedMisfitFrame, 0.5F, 0.2F, 1.0F, 0.8F);
    ASSERT_TRUE(zoomPlot(limits, misfit));
    EXPECT_EQ(limits.PlotMisfitMax, whole.PlotMisfitMax) << "always around 0";
    unzoomPlot(limits, whole, misfit.xLow, misfit.yLow);
    EXPECT_EQ(limits.PlotTimeMin, whole.PlotTimeMin);
    EXPECT_EQ(limits.PlotAResMax, whole.PlotAResMax);
}

TEST(PlotZoom, LimitsThatTheUserSetsAreWholeFromThenOn) {
    PlotLimits whole;
    PlotLimits zoomed = whole;
    ASSERT_TRUE(zoomPlot(zoomed, boxIn(DataFrame, 0.25F, 0.25F, 0.5F, 0.5F)));
    PlotLimits set = zoomed;
    set.PlotTimeMax = 7.0F;
    keepSetLimits(whole, zoomed, set);
    EXPECT_EQ(whole.PlotTimeMax, 7.0F);
    EXPECT_EQ(whole.PlotTimeMin, zoomed.PlotTimeMin);
    EXPECT_EQ(whole.PlotDataMax, PlotLimits{}.PlotDataMax) << "still zoomed only";
}

// ---- Logarithmic data axis

TEST(LogDataAxis, HoldsFullDecadesOfWhatIsAboveZero) {
    SurveyModel survey;
    survey.hTrn.assign(1, soundingOf(ZoomWindows));
    survey.SoundingCount = 1;
    PlotLimits limits;
    limits.logData = true;
    std::string date;
    std::string time;
    Plot_AutoLimits(survey, limits, date, time);
    EXPECT_TRUE(limits.logData);
    EXPECT_EQ(limits.PlotLogMin, 1.0F);
    EXPECT_EQ(limits.PlotLogMax, 10000.0F);
    survey.hTrn[0].TEMobs[2] = 1.0e-20F;
    Plot_AutoLimits(survey, limits, date, time);
    EXPECT_FLOAT_EQ(limits.PlotLogMin, 1.0e-4F) << "eight decades and no more";
}

TEST(LogDataAxis, HasShortNumbersInWideAndNarrowRanges) {
    const DataAxisTicks wide = logDataAxisTicks(0.01F, 1.0e6F);
    EXPECT_EQ(wide.labels, (std::vector<std::string>{"0.01", "0.1", "1", "10", "100", "1000", "1e4",
                                                     "1e5", "1e6"}));
    EXPECT_EQ(wide.places.back(), 1.0e6F);
    EXPECT_EQ(wide.small.size(), 64U);
    EXPECT_EQ(logDataAxisTicks(90000.0F, 250000.0F).labels,
              (std::vector<std::string>{"1e5", "2e5"}));
    EXPECT_EQ(logDataAxisTicks(12345.0F, 12999.0F).labels.front(), "1.24e4");
    for (const std::string &label : logDataAxisTicks(12345.0F, 12999.0F).labels) {
        EXPECT_LE(label.size(), 7U) << label;
    }
}

TEST(LogDataAxis, WhatIsNotAboveZeroStandsAtItsFootAndCanBeMarkedThere) {
    RecordSurface page;
    selectSurface(&page);
    beginReviewPage();
    SurveyModel survey;
    survey.hTrn.assign(1, soundingOf(ZoomWindows));
    survey.SoundingCount = 1;
    PlotLimits limits;
    limits.logData = true;
    limits.PlotLogMin = 1.0F;
    const PagePanel panel = dataPanel(limits);
    EXPECT_TRUE(panel.isAtFoot(-0.02F));
    EXPECT_TRUE(panel.isAtFoot(0.0F));
    EXPECT_FALSE(panel.isAtFoot(0.5F)) << "below the axis, and so off the page";
    const float x = DataFrame.left + static_cast<float>(panel.across.fractionOf(20.0)) *
                                         (DataFrame.right - DataFrame.left);
    EXPECT_THAT(reviewPointerText(survey, limits, 1, x, DataFrame.bottom + 0.3F),
                HasSubstr("Window 4: -2.000E-02"));
    EXPECT_EQ(windowUnder(survey, limits, 1, x, DataFrame.bottom + 0.3F), 4);
    EXPECT_EQ(windowUnder(survey, limits, 1, 12.5F, 9.0F), 0);
    ASSERT_EQ(Review_SkipPoint(survey, limits, 1, SetMark, x, DataFrame.bottom + 0.1F, 0.5F), 0);
    EXPECT_TRUE(isSkipped(survey.hTrn[0].TEMerr[3]));
    selectSurface(nullptr);
}

// ---- The review

/// A scripted toolkit whose mouse rests on a place of the page.
class MouseBackend : public ScriptedBackend {
  public:
    using ScriptedBackend::ScriptedBackend;

    void setPointerText(const PointerText &text) override { pointer = text; }
    void pointAtRow(DialogModel &dialog, int id) override {
        pointed.push_back(findControl(dialog, id)->index);
    }
    RawEvent wait() override {
        if (pointer) {
            pointer(static_cast<double>(place.x / PageWidthCm),
                    static_cast<double>(place.y / PageHeightCm));
        }
        return ScriptedBackend::wait();
    }

    PagePlace place;
    PointerText pointer;
    std::vector<int> pointed; ///< rows, each change
};

class ZoomedReview : public testing::Test {
  protected:
    ZoomedReview() {
        survey.hTrn.assign(2, soundingOf(ZoomWindows));
        survey.SoundingCount = 2;
        survey.hTrn[0].RxStn = survey.hTrn[0].TxStn = 1150.0;
        survey.hTrn[1].RxStn = survey.hTrn[1].TxStn = 1200.0;
    }

    std::string review(const std::string &lines) {
        Script script;
        EXPECT_TRUE(parseScript(lines, script).empty()) << lines;
        std::ostringstream out;
        MouseBackend backend(std::move(script), out);
        backend.place = mouse;
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 1000, 750);
        const int status = Review_Loop(
            survey, state, path, [](SurveyModel & /*model*/, std::string & /*path*/) { return 0; });
        EXPECT_EQ(status, lines.ends_with("close\n") ? 3 : 0);
        EXPECT_EQ(ToolkitClose(), 0) << out.str();
        pointed = backend.pointed;
        return out.str();
    }
    static std::string at(const TestWindow &window, float highest = 1.0e5F) {
        // Data are negative too: the axis reaches from -1 to 1e5, see Plot_AutoLimits().
        const float low = std::asinh(-1.0F);
        const float upward = (std::asinh(window.observed) - low) / (std::asinh(highest) - low);
        const float across = std::log10(window.time / 0.1F) / 4.0F;
        return std::to_string(DataFrame.left + across * (DataFrame.right - DataFrame.left)) + " " +
               std::to_string(DataFrame.bottom + upward * (DataFrame.top - DataFrame.bottom));
    }
    void unmark() {
        for (SoundingRecord &sounding : survey.soundings()) {
            for (std::size_t i = 0; i < ZoomWindows.size(); ++i) {
                sounding.TEMerr[i] = ZoomWindows[i].error;
            }
        }
    }
    [[nodiscard]] std::string marks(std::size_t station) const {
        std::string digits;
        for (std::size_t i = 0; i < ZoomWindows.size(); ++i) {
            digits += isSkipped(survey.hTrn[station - 1].TEMerr[i]) ? '1' : '0';
        }
        return digits;
    }

    MessageRecorder messages;
    TemporaryDirectory directory;
    std::string path = directory.path("line.std");
    std::string journal = directory.path("line.marks");
    SurveyModel survey;
    ReviewState state;
    PagePlace mouse;
    std::vector<int> pointed;
};

// The drag reaches over the left half of the plot, 0.1 to 10 msec.
constexpr const char *ZoomLine = "drag ctrl left 1.4 1.4 6.5 17.6\n";

TEST_F(ZoomedReview, ZoomsForAllSoundingsAndTheLimitsDialogShowsIt) {
    const std::string transcript =
        review(std::string(ZoomLine) + "key n\n"
                                       "press Edit Plot Limits\n"
                                       "expect field 1062 real on \"maximum\" = \"10.00\"\n"
                                       "press Continue\n"
                                       "press Edit Plot Limits\n"
                                       "expect field 1062 real on \"maximum\" = \"10.00\"\n"
                                       "press Cancel\n"
                                       "click left 5 5 double\n"
                                       "press Edit Plot Limits\n"
                                       "expect field 1062 real on \"maximum\" = \"1000.\"\n"
                                       "press Cancel\n"
                                       "key x\n");
    EXPECT_EQ(marks(1) + marks(2), "00000000") << "a box with Ctrl marks nothing";
    EXPECT_FALSE(std::filesystem::exists(path)) << transcript;
}

TEST_F(ZoomedReview, AnUntouchedNarrowAxisIsNotWidenedByTheDialog) {
    review("drag ctrl left 15 9 15.5 10\n" // resistivity, less than a decade
           "press Edit Plot Limits\n"
           "set 1062 100\n"
           "press Continue\n"
           "press Edit Plot Limits\n"
           "expect field 1062 real on \"maximum\" = \"100.0\"\n"
           "reject field 1066 real on \"maximum\" = \"1*0.\"\n"
           "press Cancel\n"
           "key x\n");
}

TEST_F(ZoomedReview, ADoubleClickLeavesNoTraceOfItsFirstPress) {
    const std::string point = at(ZoomWindows[1]);
    const std::string transcript = review("click left " + at(ZoomWindows[0]) + "\n" +
                                          "click left " + point + "\n" + "key Ctrl+Z\n" + ZoomLine +
                                          // The second window, as the zoomed page has it.
                                          "click left 6.45 10.4 double\n"
                                          "expect status 1 window changed, not saved\n"
                                          "key Ctrl+Y\n"
                                          "expect status 2 windows changed, not saved\n"
                                          "key Ctrl+Z\n"
                                          "key Ctrl+Z\n"
                                          "expect status\n"
                                          "key Ctrl+Z\n"
                                          "close\n");
    SUCCEED() << transcript;
}

TEST_F(ZoomedReview, ADoubleClickOnAWholePlotIsTwoClicks) {
    review("click left " + at(ZoomWindows[1]) + " double\nkey x\n");
    EXPECT_EQ(marks(1), "0100");
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(ZoomedReview, TheJournalAndTheProjectAreAsIfTheDoubleClickHadNotBeen) {
    // Beside the first window on the zoomed page, which is marked by a single click there.
    const std::string click = "click left 3.0 13.84";
    review(ZoomLine + click + "\nclose\n");
    ASSERT_NE(marks(1), "0000");
    ASSERT_TRUE(std::filesystem::exists(journal));
    const std::string oneMark = fileContent(journal);
    std::filesystem::remove(journal);
    unmark();

    review(ZoomLine + click + " double\nclose\n");
    EXPECT_EQ(marks(1), "0000");
    EXPECT_FALSE(std::filesystem::exists(journal));
    state = {};
    review(ZoomLine + click + " double\nkey x\n");
    EXPECT_FALSE(std::filesystem::exists(path)) << "nothing was aimed at";

    state = {};
    review("key End\nclick left " + at(ZoomWindows[1]) + "\nkey Home\n" + ZoomLine + click +
           " double\nclose\n");
    const std::string kept = fileContent(journal);
    EXPECT_NE(kept, "");
    EXPECT_EQ(std::count(kept.begin(), kept.end(), '\n'), 2) << "the heading and one mark";
    EXPECT_EQ(std::count(oneMark.begin(), oneMark.end(), '\n'), 2);
}

TEST_F(ZoomedReview, AKeyBetweenTwoPressesMakesTheFirstAClick) {
    review(std::string(ZoomLine) + "click left 3.0 13.84\nkey n\nkey p\nkey x\n");
    EXPECT_NE(marks(1), "0000");
}

TEST_F(ZoomedReview, CtrlAndAClickStillMeanTheWindowInAllSoundings) {
    review("click ctrl left " + at(ZoomWindows[1]) + "\nkey x\n");
    EXPECT_EQ(marks(1) + marks(2), "01000100");
}

TEST_F(ZoomedReview, TheKindOfTheDataAxisStaysForTheNextEntry) {
    const std::string transcript = review("key L\n"
                                          "press Edit Plot Limits\n"
                                          "expect field 1045 real on \"minimum\" = \"1.000\"\n"
                                          "set 1045 0\n"
                                          "press Continue\n"
                                          "press Edit Plot Limits\n"
                                          "expect field 1045 real on \"minimum\" = \"1.000\"\n"
                                          "press Cancel\n"
                                          "show drawing\n"
                                          "expect mark ring * \n"
                                          "key x\n");
    EXPECT_TRUE(state.logData);
    review("key l\nkey x\n");
    EXPECT_FALSE(state.logData);
}

// ---- Values

TEST_F(ZoomedReview, RowsAreMarkedInOneStepWhichTheJournalKeeps) {
    const std::string transcript = review("key t\n"
                                          "expect field 1505 static on \"Sounding 1 of 2, station "
                                          "1150\" = \"\"\n"
                                          "set 1500 1-2,4\n"
                                          "press &Set skip flags\n"
                                          "expect status 3 windows changed, not saved\n"
                                          "show dialog\n"
                                          "expect row 1500 4 \"4\" * \"-2.000E-02\" \"2.0\" "
                                          "\"skipped\" \"\" \"\" \"\"\n"
                                          "key Ctrl+Z\n"
                                          "expect status\n"
                                          "key Ctrl+Y\n"
                                          "set 1500 1\n"
                                          "press Clear\n"
                                          "expect status 2 windows changed, not saved\n"
                                          "close\n");
    EXPECT_EQ(marks(1), "0101") << transcript;
    const std::string kept = fileContent(journal);
    EXPECT_EQ(std::count(kept.begin(), kept.end(), '\n'), 1 + 3 + 3 + 3 + 1);
}

TEST_F(ZoomedReview, TheTableFollowsPagingIsCopiedAndLeavesTheReviewAlone) {
    survey.hTrn[1].TEMobs[0] = 4000.0F;
    const std::string transcript = review("key T\n"
                                          "set 1500 1\n"
                                          "key n\n"
                                          "show dialog\n"
                                          "expect field 1500 grid on \"Windows\" = \"\"\n"
                                          "expect row 1500 1 * \"4000\" *\n"
                                          "set 1500 2\n"
                                          "key Ctrl+C\n"
                                          "expect | 2?1?0?300?*\n"
                                          "key Delete\n"
                                          "set 1057 1\n"
                                          "close dialog\n"
                                          "expect dialog close 150\n"
                                          "key Delete\n"
                                          "key n\n"
                                          "set 1057 1\n"
                                          "press E&xit Review\n");
    EXPECT_EQ(marks(1) + marks(2), "00000100") << transcript;
    EXPECT_EQ(state.ReviewStation, 1) << "the trackbar still tells of its changes";
}

TEST_F(ZoomedReview, TheRowOfTheWindowUnderTheMouseIsPointedAt) {
    mouse = {DataFrame.left + 4.9F, DataFrame.bottom + 9.0F}; // near the second window
    review("key T\nkey n\nset 1500 3\npress Set skip flags\nkey T\nkey n\nkey x\n");
    EXPECT_EQ(pointed, std::vector<int>{2}) << "and stays there while it is the same";
    EXPECT_EQ(marks(2), "0010") << "which selects nothing, and leaves the panel its fields";
    mouse = {12.5F, 9.0F};
    review("key T\nkey n\nkey x\n");
    EXPECT_TRUE(pointed.empty()) << "between the plots";
}

TEST(WindowValues, WhatIsMissingOrNoNumberIsBlank) {
    ControlValues control;
    SoundingRecord sounding = soundingOf(ZoomWindows);
    sounding.TEMobs[1] = MissingValue;
    sounding.AResObs[0] = std::numeric_limits<float>::quiet_NaN();
    sounding.TEMerr[2] = withSkipMark(3.5F, true);
    const TableContent table = windowValues(control, sounding);
    ASSERT_EQ(table.rows.size(), ZoomWindows.size());
    EXPECT_EQ(table.rows[1][3], "");
    EXPECT_EQ(table.rows[0][6], "");
    EXPECT_EQ(table.rows[0][7], "") << "nothing was calculated";
    EXPECT_EQ(table.rows[0][8], "");
    EXPECT_EQ(table.rows[2][4], "3.5") << "the true error of a skipped window";
    EXPECT_EQ(table.rows[2][5], "skipped");
    for (const std::vector<std::string> &row : table.rows) {
        EXPECT_EQ(row.size(), table.columns.size());
        EXPECT_THAT(row, Not(Contains(testing::ContainsRegex("[Nn][Aa][Nn]|[Ii]nf|E\\+32"))));
    }
}

} // namespace
} // namespace keldrin
