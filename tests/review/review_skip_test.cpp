#include "review/review_skip.h"

#include "review/review_history.h"
#include "review_line.h"
#include "sounding/sounding_plot.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>
#include <vector>

namespace keldrin {
namespace {

constexpr float Radius = 0.5F; // cm

/// One sounding on its page: 0.01 to 100 msec, 0 to 1e4.
class SkipMarks : public testing::Test {
  protected:
    SkipMarks() {
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 1000, 750);
    }
    ~SkipMarks() override { ToolkitClose(); }

    void show(std::initializer_list<TestWindow> windows) {
        survey.hTrn = {soundingOf(windows)};
        survey.SoundingCount = 1;
        EXPECT_EQ(Plot_Sounding(survey, PlotLimits{}, 1, "line.std", "", ""), 0);
    }
    static PagePlace at(float time, float value) { return placeOf(time, value, 0.01F); }
    int click(PagePlace place, int flag = SetMark) {
        return Review_SkipPoint(survey, PlotLimits{}, 1, flag, place.x, place.y, Radius);
    }
    int drag(float x1, float y1, float x2, float y2, int flag = SetMark) {
        return Review_SkipBox(survey, PlotLimits{}, 1, flag, {x1, y1, x2, y2});
    }
    [[nodiscard]] std::vector<float> errors() const {
        const SoundingRecord &sounding = survey.hTrn[0];
        return {sounding.TEMerr.begin(), sounding.TEMerr.begin() + sounding.NumTW};
    }
    using Errors = std::vector<float>;

    AnsweringBackend backend;
    SurveyModel survey;
};

TEST_F(SkipMarks, TheNearestPointIsTheOneNearestOnThePage) {
    // The second point is farther off in msec and ArcSinh units, but nearer in centimetres.
    show({{50.0F, 100.0F}, {60.0F, 130.0F}});
    EXPECT_EQ(click(at(50.0F, 130.0F)), 0);
    EXPECT_EQ(errors(), (Errors{2.0F, 1002.0F}));
}

TEST_F(SkipMarks, BothPointsOfAWindowStandForItsOneMark) {
    show({{1.0F, 2000.0F, 50.0F}, {1.05F, 60.0F, 800.0F}});
    EXPECT_EQ(click(at(1.0F, 50.0F)), 0); // between 50 ohm-m of one and dB/dt of 60 of the other
    EXPECT_EQ(errors(), (Errors{1002.0F, 2.0F}));
    click(at(1.0F, 2000.0F), ClearMark);
    EXPECT_EQ(errors(), (Errors{2.0F, 2.0F}));
    click(at(1.05F, 800.0F));
    EXPECT_EQ(errors(), (Errors{2.0F, 1002.0F}));
    click(at(1.05F, 800.0F), ClearMark);
    EXPECT_EQ(errors(), (Errors{2.0F, 2.0F}));
}

TEST_F(SkipMarks, EquallyNearPointsGiveTheEarliestWindow) {
    show({{1.0F, 100.0F}, {1.0F, 100.0F}, {1.0F, 900.0F, 100.0F}});
    click(at(1.0F, 100.0F));
    EXPECT_EQ(errors(), (Errors{1002.0F, 2.0F, 2.0F}));
}

TEST_F(SkipMarks, AResistivityOfNothingIsNoPoint) {
    show({{1.0F, 2000.0F, 5.0e-7F}, {10.0F, 2000.0F, 1.0e-6F}});
    PagePlace place = at(1.0F, 0.0F);
    place.y += 0.1F; // the axis itself takes no click
    EXPECT_EQ(click(place), 0);
    EXPECT_EQ(errors(), (Errors{2.0F, 2.0F}));
    place.x = at(10.0F, 0.0F).x;
    click(place);
    EXPECT_EQ(errors(), (Errors{2.0F, 1002.0F}));
    EXPECT_EQ(drag(1.5F, 1.5F, 9.5F, 5.0F, ClearMark), 0);
    EXPECT_EQ(errors(), (Errors{2.0F, 2.0F}));
}

TEST_F(SkipMarks, AClickReachesHalfACentimetreBothWays) {
    const struct {
        float right;
        float up;
        bool reached;
    } cases[] = {
        {0.49F, 0.49F, true}, {0.51F, 0.0F, false}, {0.0F, -0.51F, false}, {-0.49F, 0.0F, true}};
    for (const auto &c : cases) {
        show({{1.0F, 100.0F}});
        const PagePlace point = at(1.0F, 100.0F);
        EXPECT_EQ(click({point.x + c.right, point.y + c.up}), 0);
        EXPECT_EQ(isSkipped(errors()[0]), c.reached) << c.right << ", " << c.up;
    }
}

TEST_F(SkipMarks, AWindowWithoutDataIsMarkedByWhateverComesNear) {
    // Its resistivity is no point, and does not keep the click from the next window's.
    show({{1.0F, MissingValue, 100.0F},
          {1.05F, 110.0F, MissingValue, 1002.0F},
          {10.0F, MissingValue}});
    EXPECT_EQ(click(at(1.0F, 100.0F), ClearMark), 0);
    EXPECT_EQ(errors(), (Errors{1002.0F, 2.0F, 2.0F}));

    show({{1.0F, MissingValue}, {1.05F, 100.0F, MissingValue, 1002.0F}, {10.0F, MissingValue}});
    const float x = at(1.0F, 1.0F).x;
    EXPECT_EQ(drag(x - 1.0F, 2.0F, x + 1.0F, 3.0F, ClearMark), 0);
    EXPECT_EQ(errors(), (Errors{1002.0F, 1002.0F, 2.0F})) << "at any value, within the time";
}

TEST_F(SkipMarks, OnlyTheInsideOfTheDataPlotTakesClicks) {
    const PagePlace outside[] = {{1.5F, 5.0F},  {11.5F, 5.0F}, {5.0F, 1.5F},
                                 {5.0F, 17.5F}, {18.0F, 5.0F}, {0.2F, 0.2F}};
    for (const PagePlace &place : outside) {
        show({{0.01F, MissingValue}, {1.0F, MissingValue}, {100.0F, MissingValue}});
        EXPECT_EQ(click(place), 1) << place.x << ", " << place.y;
        EXPECT_EQ(errors(), (Errors{2.0F, 2.0F, 2.0F}));
    }
    EXPECT_EQ(click({1.51F, 1.51F}), 0);
    EXPECT_EQ(errors(), (Errors{1002.0F, 2.0F, 2.0F}));

    EXPECT_EQ(Review_SkipPoint(survey, PlotLimits{}, 0, SetMark, 5.0F, 5.0F, Radius), 1);
    EXPECT_EQ(Review_SkipPoint(survey, PlotLimits{}, 2, SetMark, 5.0F, 5.0F, Radius), 1);
    EXPECT_EQ(Review_SkipBox(survey, PlotLimits{}, 2, SetMark, {2.0F, 2.0F, 9.0F, 9.0F}), 1);
    survey.hTrn[0].NumTW = 0;
    EXPECT_EQ(click({5.0F, 5.0F}), 1);
}

TEST_F(SkipMarks, ABoxTakesEveryWindowWithAPointInIt) {
    show({{0.1F, 5000.0F, 20.0F},
          {1.0F, 300.0F, 30.0F},
          {10.0F, 4.0F, 40.0F},
          {90.0F, 2000.0F, 2000.0F}});
    const PagePlace low = at(0.1F, 25.0F);
    const PagePlace high = at(10.0F, 45.0F);
    EXPECT_EQ(drag(low.x - 0.1F, low.y, high.x + 0.1F, high.y), 0);
    EXPECT_EQ(errors(), (Errors{2.0F, 1002.0F, 1002.0F, 2.0F})) << "by their resistivities";
    EXPECT_EQ(drag(0.0F, 0.0F, 24.0F, 18.0F, ClearMark), 0) << "beyond the plot on all sides";
    EXPECT_EQ(errors(), (Errors{2.0F, 2.0F, 2.0F, 2.0F}));
    const PageBox outside[] = {{11.5F, 2.0F, 20.0F, 9.0F},
                               {0.0F, 2.0F, 1.5F, 9.0F},
                               {2.0F, 17.5F, 9.0F, 18.0F},
                               {2.0F, 0.0F, 9.0F, 1.5F}};
    survey.hTrn[0].TEMobs.fill(MissingValue);
    for (const PageBox &box : outside) {
        EXPECT_EQ(Review_SkipBox(survey, PlotLimits{}, 1, SetMark, box), 1);
    }
    EXPECT_EQ(errors(), (Errors{2.0F, 2.0F, 2.0F, 2.0F}));
}

TEST_F(SkipMarks, AMarkKeepsTheTrueErrorAndTheLowestBitDecides) {
    show({{1.0F, 100.0F, MissingValue, 3.5F}});
    for (const int flag : {SetMark, SetMark, 3}) {
        click(at(1.0F, 100.0F), flag);
        EXPECT_EQ(errors(), Errors{1003.5F});
    }
    for (const int flag : {2, ClearMark}) {
        click(at(1.0F, 100.0F), flag);
        EXPECT_EQ(errors(), Errors{3.5F});
    }
}

// ---- History

bool record(MarkHistory &history, int station, const WindowReals &before,
            const WindowReals &after) {
    MarkStep step{station, {}};
    noteChanges(step, station, before, after);
    return recordMarks(history, std::move(step));
}

int stationOf(const MarkStep *step) {
    return step != nullptr ? step->station : 0;
}

TEST_F(SkipMarks, TakingBackRestoresEveryBit) {
    show({{1.0F, 100.0F, MissingValue, 3.3F}, {2.0F, 100.0F, MissingValue, 1007.7F}});
    const Errors before = errors();
    MarkHistory history;
    const auto recorded = [&](int flag) {
        const WindowReals old = survey.hTrn[0].TEMerr;
        drag(0.0F, 0.0F, 24.0F, 18.0F, flag);
        record(history, 1, old, survey.hTrn[0].TEMerr);
    };
    recorded(SetMark);
    recorded(SetMark); // nothing changes
    const Errors marked = errors();
    recorded(ClearMark);
    EXPECT_NE(errors(), before) << "the sum of an error and a thousand is rounded";
    EXPECT_EQ(history.steps.size(), 2U);

    EXPECT_EQ(stationOf(undoMarks(history, survey)), 1);
    EXPECT_EQ(errors(), marked);
    EXPECT_EQ(stationOf(undoMarks(history, survey)), 1);
    EXPECT_EQ(errors(), before);
    EXPECT_EQ(stationOf(undoMarks(history, survey)), 0);
    EXPECT_EQ(stationOf(redoMarks(history, survey)), 1);
    EXPECT_EQ(errors(), marked);
    recorded(ClearMark); // in place of the one taken back
    EXPECT_EQ(stationOf(redoMarks(history, survey)), 0);
    EXPECT_EQ(stationOf(undoMarks(history, survey)), 1);
    EXPECT_EQ(errors(), marked);
}

TEST(MarkHistory, HasNoBoundsAndTellsWhichSoundingChanges) {
    SurveyModel survey;
    survey.hTrn.resize(3);
    survey.SoundingCount = 3;
    MarkHistory history;
    constexpr int many = 3000;
    for (int i = 0; i < many; ++i) {
        WindowReals &errors = survey.hTrn[static_cast<std::size_t>(i % 3)].TEMerr;
        const WindowReals before = errors;
        errors[static_cast<std::size_t>(i % 100)] += 1.0F;
        record(history, i % 3 + 1, before, errors);
    }
    for (int i = many - 1; i >= 0; --i) {
        ASSERT_EQ(stationOf(undoMarks(history, survey)), i % 3 + 1);
    }
    EXPECT_EQ(survey.hTrn[2].TEMerr, SoundingRecord{}.TEMerr);
    EXPECT_EQ(stationOf(redoMarks(history, survey)), 1);
}

} // namespace
} // namespace keldrin
