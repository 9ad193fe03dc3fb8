#include "line/plan_page.h"

#include "page/colour_scales.h"
#include "page/page_colours.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

class PlanPageTest : public testing::Test {
  protected:
    PlanPageTest() {
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(7, -1, -1, 800, 600);
        survey.control.XTxLength = 100.0F;
        survey.control.YTxLength = 100.0F;
        survey.control.SurveyTypeIndex = InLoop;
    }
    ~PlanPageTest() override { ToolkitClose(); }
    PlanPageTest(const PlanPageTest &) = delete;
    PlanPageTest &operator=(const PlanPageTest &) = delete;

    SoundingRecord &addSounding(double east, double north, double station) {
        SoundingRecord sounding;
        sounding.East = east;
        sounding.North = north;
        sounding.RxStn = sounding.TxStn = station;
        survey.hTrn.push_back(sounding);
        ++survey.SoundingCount;
        return survey.hTrn.back();
    }

    LinePage draw(int marked = 0) {
        LinePage page = makePlanPage(survey, settings, "data/line.std");
        page.draw(marked);
        return page;
    }
    [[nodiscard]] std::vector<RecordedItem> items(RecordedItem::Kind kind,
                                                  PageColour colour) const {
        std::vector<RecordedItem> found;
        for (const RecordedItem &item : backend.page().items()) {
            if (item.kind == kind && item.colour == colour) {
                found.push_back(item);
            }
        }
        return found;
    }
    [[nodiscard]] std::vector<RecordedItem> dots() const {
        return items(RecordedItem::Kind::Marker, Colour::Black);
    }
    [[nodiscard]] std::vector<std::string> texts(PageColour colour = Colour::Black) const {
        std::vector<std::string> found;
        for (const RecordedItem &item : items(RecordedItem::Kind::Text, colour)) {
            found.push_back(item.text);
        }
        return found;
    }

    AnsweringBackend backend;
    SurveyModel survey;
    LineSettings settings;
};

TEST_F(PlanPageTest, StationsLoopAndNorthAreNamed) {
    addSounding(5000.0, 9000.0, 1000.0);
    addSounding(5250.0, 9000.0, 1050.5);
    draw();
    EXPECT_THAT(texts(), Contains("1000"));
    EXPECT_THAT(texts(), Contains("1050.5"));
    EXPECT_THAT(texts(), Contains("N"));
    EXPECT_THAT(texts(), Contains(HasSubstr("line.std   2 of 2 soundings")));
    EXPECT_THAT(texts(Colour::Red), ElementsAre("First loop, station 1000"));
    EXPECT_EQ(dots().size(), 2U);
}

// The nearest dot counts, within half a centimetre, and the first of those at one place.
TEST_F(PlanPageTest, APlaceStandsForTheNearestSounding) {
    addSounding(5000.0, 9000.0, 1.0);
    addSounding(5250.0, 9000.0, 2.0);
    addSounding(5250.0, 9000.0, 3.0);
    const LinePage page = draw();
    ASSERT_EQ(dots().size(), 3U);
    const PagePoint first = dots()[0].points[0];
    const PagePoint second = dots()[1].points[0];
    EXPECT_EQ(page.soundingAt(first.x + 0.3F, first.y - 0.3F), 1);
    EXPECT_EQ(page.soundingAt(second.x, second.y), 2);
    EXPECT_EQ(page.soundingAt(second.x, second.y + 0.6F), 0);
    EXPECT_EQ(page.soundingAt(0.5F, 17.9F), 0);
    EXPECT_THAT(page.pointerText(second.x, second.y),
                testing::AllOf(StartsWith("Station 2 "), HasSubstr("East 5250   North 9000")));
    EXPECT_THAT(page.pointerText(second.x, second.y + 2.0F), StartsWith("East 52"));
    EXPECT_EQ(page.pointerText(0.5F, 17.9F), "");
}

TEST_F(PlanPageTest, TheMarkSurroundsItsSounding) {
    addSounding(5000.0, 9000.0, 1.0);
    addSounding(5250.0, 9000.0, 2.0);
    draw(2);
    const PagePoint dot = dots()[1].points[0];
    const std::vector<RecordedItem> lines = items(RecordedItem::Kind::Line, Colour::Red);
    ASSERT_EQ(lines.size(), 2U) << "loop and ring";
    for (const PagePoint &corner : lines[1].points) {
        EXPECT_NEAR(std::hypot(corner.x - dot.x, corner.y - dot.y), 0.22, 0.01);
    }
}

// What the project leaves out is neither drawn nor found, and its mark is not shown.
TEST_F(PlanPageTest, OtherTransmittersAndUnknownPlacesAreLeftOut) {
    survey.control.SurveyTypeIndex = FixedLoop;
    survey.control.TxStn = 8.0;
    survey.control.XTxCenter = 5000.0;
    survey.control.YTxCenter = 9000.0;
    addSounding(5000.0, 9100.0, 1.0).TxStn = 8.0;
    addSounding(5100.0, 9100.0, 2.0).TxStn = 9.0;
    addSounding(MissingValue, 9100.0, 3.0).TxStn = 8.0;
    const LinePage page = draw(2);
    EXPECT_THAT(dots(), SizeIs(1));
    EXPECT_THAT(texts(), Contains(HasSubstr("1 of 3 soundings")));
    EXPECT_THAT(texts(Colour::Red), ElementsAre("Loop 8"));
    EXPECT_THAT(items(RecordedItem::Kind::Line, Colour::Red), SizeIs(1)) << "no ring";
}

TEST_F(PlanPageTest, ALineWithoutPlacesSaysSo) {
    addSounding(MissingValue, MissingValue, 1.0);
    const LinePage page = draw(1);
    EXPECT_THAT(texts(), Contains("No sounding has coordinates."));
    EXPECT_EQ(page.soundingAt(12.0F, 9.0F), 0);
    EXPECT_EQ(page.pointerText(12.0F, 9.0F), "");
}

// A circle is one in the window, whatever its shape: a step east is as long as one north.
TEST_F(PlanPageTest, BothAxesHaveTheScaleOfTheWindow) {
    ToolkitClose();
    ToolkitInit(backend, {"keldrin"});
    WindowOpen(7, -1, -1, 1200, 300);
    addSounding(0.0, 0.0, 1.0);
    addSounding(100.0, 0.0, 2.0);
    addSounding(0.0, 100.0, 3.0);
    draw();
    ASSERT_THAT(dots(), SizeIs(3));
    const PagePoint origin = dots()[0].points[0];
    const float eastPixels = (dots()[1].points[0].x - origin.x) / 24.0F * 1200.0F;
    const float northPixels = (dots()[2].points[0].y - origin.y) / 18.0F * 300.0F;
    EXPECT_NEAR(eastPixels, northPixels, 0.5F);
    EXPECT_GT(eastPixels, 50.0F);
}

// A sounding outside the chosen part is neither drawn, named nor found.
TEST_F(PlanPageTest, AChosenPartOfTheMapShowsThatPartAlone) {
    addSounding(5000.0, 9000.0, 1.0);
    addSounding(5250.0, 9000.0, 2.0);
    settings.plan.setMap = true;
    settings.plan.map = {5200.0, 5300.0, 8990.0, 9010.0};
    draw();
    EXPECT_THAT(dots(), SizeIs(1));
    EXPECT_THAT(texts(), Contains("2"));
    EXPECT_THAT(texts(), Not(Contains("1")));

    settings.plan.map = {5200.0, 5200.0, 9000.0, 9000.0}; // no part at all
    draw();
    EXPECT_THAT(dots(), SizeIs(2));
}

// A sounding without a value is a plus, which differs from the coloured dots without colours.
TEST_F(PlanPageTest, DotsHaveTheColoursOfTheirValues) {
    addSounding(5000.0, 9000.0, 1.0).NumTW = 4;
    SoundingRecord &half = addSounding(5250.0, 9000.0, 2.0);
    half.NumTW = 4;
    half.TEMerr[0] = half.TEMerr[1] = 1002.0F;
    addSounding(5500.0, 9000.0, 3.0).NumTW = 0;
    settings.plan.quantity = SkippedShare;
    draw();
    EXPECT_THAT(items(RecordedItem::Kind::Marker, colourAt(0, 0.0F)), SizeIs(1));
    EXPECT_THAT(items(RecordedItem::Kind::Marker, colourAt(0, 0.5F)), SizeIs(1));
    ASSERT_THAT(dots(), SizeIs(1));
    EXPECT_EQ(dots()[0].marker, 1);
    EXPECT_THAT(texts(), Contains("Skipped windows (%)"));
    EXPECT_THAT(texts(), Contains(HasSubstr("+ without a value")));
}

TEST_F(PlanPageTest, OneSoundingHasAMapOfItsLoop) {
    addSounding(5000.0, 9000.0, 1.0);
    draw(1);
    EXPECT_THAT(dots(), SizeIs(1));
    EXPECT_THAT(texts(), Contains("1"));
    EXPECT_THAT(texts(Colour::Red), Not(IsEmpty()));
}

} // namespace
} // namespace keldrin
