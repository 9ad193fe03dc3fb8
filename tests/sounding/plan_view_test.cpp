#include "sounding/plan_view.h"

#include "page/drawing.h"
#include "page/page_colours.h"
#include "page/plot.h"
#include "page/surfaces/page_transcript.h"
#include "page/text_metrics.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

struct Place {
    float east;
    float north;
};

void PrintTo(const Place &place, std::ostream *out) {
    *out << "(" << place.east << ", " << place.north << ")";
}

MATCHER_P2(IsAt, east, north, "") {
    return std::fabs(arg.east - static_cast<float>(east)) < 0.02F &&
           std::fabs(arg.north - static_cast<float>(north)) < 0.02F;
}

class PlanViewTest : public testing::Test {
  protected:
    PlanViewTest() {
        ToolkitInit(backend, {"keldrin"});
        openWindow(800, 600);
        survey.control.XTxLength = 100.0F;
        survey.control.YTxLength = 20.0F;
    }
    ~PlanViewTest() override { ToolkitClose(); }
    PlanViewTest(const PlanViewTest &) = delete;
    PlanViewTest &operator=(const PlanViewTest &) = delete;

    static void openWindow(int width, int height) {
        WindowOpen(ResizableWindow, -1, -1, width, height);
    }

    SoundingRecord &addSounding(double east, double north, double rxStn, double txStn) {
        SoundingRecord sounding;
        sounding.East = east;
        sounding.North = north;
        sounding.RxStn = rxStn;
        sounding.TxStn = txStn;
        survey.hTrn.push_back(sounding);
        ++survey.SoundingCount;
        return survey.hTrn.back();
    }

    // Where the dots of a colour stand on the map.
    std::vector<Place> dots(PageColour colour) {
        std::vector<Place> places;
        for (const RecordedItem &item : backend.page().items()) {
            if (item.kind == RecordedItem::Kind::Marker && item.colour == colour) {
                Place place{};
                PlotFromPage(item.points[0].x, item.points[0].y, place.east, place.north);
                places.push_back(place);
            }
        }
        return places;
    }
    std::vector<Place> drawnLoop() {
        EXPECT_EQ(Plot_PlanView(survey, "survey.std"), 0);
        return dots(Colour::Red);
    }
    std::vector<Place> drawnSoundings() {
        EXPECT_EQ(Plot_PlanView(survey, "survey.std"), 0);
        return dots(Colour::Black);
    }
    std::vector<std::string> texts() {
        std::vector<std::string> found;
        for (const RecordedItem &item : backend.page().items()) {
            if (item.kind == RecordedItem::Kind::Text) {
                found.push_back(item.text);
            }
        }
        return found;
    }

    AnsweringBackend backend;
    SurveyModel survey;
};

TEST_F(PlanViewTest, WithoutSoundingsThePageStays) {
    ToolkitDrawText(0.1F, 0.1F, "before");
    EXPECT_EQ(Plot_PlanView(survey, "survey.std"), 1);
    EXPECT_EQ(backend.page().items().size(), 1U);
    survey.hTrn.resize(5); // allocated, none in use
    EXPECT_EQ(Plot_PlanView(survey, "survey.std"), 1);
    EXPECT_EQ(backend.page().kind(), "blank");
}

TEST_F(PlanViewTest, TheLoopsXAxisLiesAlongItsBearingFromNorth) {
    setSurveyType(survey.control, CoincidentLoop);
    addSounding(1000.0, 2000.0, 1.0, 1.0);
    // The default of 90: x to the east, y to the north.
    EXPECT_THAT(drawnLoop(), ElementsAre(IsAt(950, 1990), IsAt(1050, 1990), IsAt(1050, 2010),
                                         IsAt(950, 2010), IsAt(950, 1990)));
    survey.control.TxAzimuth = 0.0F; // x to the north, y to the west
    EXPECT_THAT(drawnLoop(), ElementsAre(IsAt(1010, 1950), IsAt(1010, 2050), IsAt(990, 2050),
                                         IsAt(990, 1950), IsAt(1010, 1950)));
    survey.control.TxAzimuth = 30.0F; // clockwise: the far end lies to the north and a little east
    EXPECT_THAT(drawnLoop(), Contains(IsAt(1000.0 + 25.0 + 8.66, 2000.0 + 43.30 - 5.0)));
    // One red line through all five corners, and the sounding in the middle.
    EXPECT_THAT(pageTranscript(backend.page()), Contains(HasSubstr("line RED 5 ")));
    EXPECT_THAT(dots(Colour::Black), ElementsAre(IsAt(1000, 2000)));
}

TEST_F(PlanViewTest, AMovingLoopLiesAlongAndAcrossTheLineOfItsFirstSounding) {
    setSurveyType(survey.control, MovingLoop);
    survey.control.StnScale = 2.0F;
    survey.control.YRxOffset = 30.0F;
    addSounding(1000.0, 2000.0, 100.0, 150.0); // the loop is 100 further along the line
    addSounding(1200.0, 2000.0, 300.0, 950.0);
    const auto centre = [](const std::vector<Place> &loop) {
        return loop.size() < 3 ? Place{}
                               : Place{(loop[0].east + loop[2].east) / 2.0F,
                                       (loop[0].north + loop[2].north) / 2.0F};
    };
    survey.control.LineAzimuth = 90.0F; // eastward: across is north
    EXPECT_THAT(centre(drawnLoop()), IsAt(1100, 2030));
    survey.control.LineAzimuth = 0.0F; // northward: across is west
    EXPECT_THAT(centre(drawnLoop()), IsAt(970, 2100));
    survey.control.LineAzimuth = 60.0F;
    EXPECT_THAT(centre(drawnLoop()), IsAt(1000.0 - 15.0 + 86.60, 2000.0 + 50.0 + 25.98));
    EXPECT_EQ(dots(Colour::Red).size(), 5U);

    // Without the line's direction the place is known only when it is the sounding's own.
    survey.control.LineAzimuth = MissingValue;
    EXPECT_TRUE(drawnLoop().empty());
    survey.control.YRxOffset = 0.0F;
    survey.hTrn[0].TxStn = survey.hTrn[0].RxStn;
    EXPECT_THAT(centre(drawnLoop()), IsAt(1000, 2000));
}

TEST_F(PlanViewTest, AFixedLoopLineShowsTheSoundingsOfItsTransmitterAlone) {
    setSurveyType(survey.control, FixedLoop);
    survey.control.TxStn = 2.0;
    survey.control.XTxCenter = 500.0;
    survey.control.YTxCenter = 600.0;
    addSounding(90000.0, -90000.0, 1.0, 1.0); // of another loop, and far away
    addSounding(520.0, 600.0, 1.0, 2.0);
    addSounding(540.0, 600.0, 2.0, 2.0 + static_cast<double>(0.001F));
    addSounding(560.0, 600.0, 3.0, 2.0011);
    EXPECT_THAT(drawnSoundings(), ElementsAre(IsAt(520, 600), IsAt(540, 600)));
    EXPECT_THAT(dots(Colour::Red), Contains(IsAt(450, 590)));
    float left = 0.0F;
    float bottom = 0.0F;
    PlotFromPage(2.5F, 1.5F, left, bottom);
    EXPECT_NEAR(left, 500.0F - 105.0F / 2.0F, 0.02F); // the loop's extent and 5 percent

    setSurveyType(survey.control, InLoop); // only Fixed-Loop lines look at the transmitter
    EXPECT_EQ(drawnSoundings().size(), 4U);
}

TEST_F(PlanViewTest, SoundingsWithoutCoordinatesHaveNoDotAndNoLoop) {
    setSurveyType(survey.control, InLoop);
    addSounding(MissingValue, 2000.0, 1.0, 1.0);
    addSounding(10.0, 20.0, 2.0, 2.0);
    addSounding(30.0, MissingValue, 3.0, 3.0);
    EXPECT_THAT(drawnSoundings(), ElementsAre(IsAt(10, 20)));
    EXPECT_TRUE(dots(Colour::Red).empty()); // its centre would be the first sounding

    survey.hTrn[1].East = std::nan("");
    EXPECT_EQ(Plot_PlanView(survey, "survey.std"), 0);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    EXPECT_THAT(texts(), ElementsAre("Plan View of Survey Configuration", "Data from survey.std"));

    setSurveyType(survey.control, FixedLoop); // its loop stands by itself
    EXPECT_EQ(drawnLoop().size(), 5U);
    survey.control.XTxCenter = MissingValue;
    EXPECT_TRUE(drawnLoop().empty());
}

TEST_F(PlanViewTest, TheMapKeepsOneScaleInTheShapeOfTheWindow) {
    setSurveyType(survey.control, InLoop);
    survey.control.XTxLength = 0.5F;
    survey.control.YTxLength = 0.5F;
    addSounding(100.0, 100.0, 1.0, 1.0);
    const auto span = [](bool ofEast) {
        float low[2] = {};
        float high[2] = {};
        PlotFromPage(2.5F, 1.5F, low[0], low[1]);
        PlotFromPage(23.5F, 17.5F, high[0], high[1]);
        return ofEast ? high[0] - low[0] : high[1] - low[1];
    };
    EXPECT_EQ(Plot_PlanView(survey, "survey.std"), 0);
    EXPECT_NEAR(span(true), 1.05F, 1e-3F); // never less than a length unit
    EXPECT_NEAR(span(false), 1.05F * 0.75F, 1e-3F);

    addSounding(100.0, 300.0, 2.0, 2.0); // all on one east
    EXPECT_EQ(Plot_PlanView(survey, "survey.std"), 0);
    EXPECT_NEAR(span(false), 200.25F * 1.05F, 1e-2F);
    EXPECT_NEAR(span(true), 200.25F * 1.05F / 0.75F, 1e-2F);
    openWindow(1600, 400);
    EXPECT_EQ(Plot_PlanView(survey, "survey.std"), 0);
    EXPECT_NEAR(span(true), 200.25F * 1.05F * 4.0F, 2e-2F);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
}

TEST_F(PlanViewTest, TheTitleNamesJobLineAndFileAndStaysInTheFrame) {
    addSounding(10.0, 20.0, 1.0, 1.0);
    survey.control.JobName = "Copper Creek";
    Plot_PlanView(survey, "C:\\surveys\\line 12.std");
    EXPECT_THAT(texts(), Contains("Data from line 12.std"));
    EXPECT_THAT(texts(), Not(Contains(HasSubstr("Copper Creek")))); // a job alone is not shown
    survey.control.LineName = "12";
    Plot_PlanView(survey, "x/y.std");
    EXPECT_EQ(texts()[1], "Copper Creek Line 12");
    EXPECT_EQ(backend.page().kind(), "page");
    survey.control.JobName = "";
    setLengthUnits(survey.control, Feet);
    Plot_PlanView(survey, "x/y.std");
    EXPECT_EQ(texts()[1], "Line 12");
    EXPECT_THAT(texts(), Contains("Easting (ft)"));
    EXPECT_THAT(texts(), Contains("Northing (ft)"));

    survey.control.JobName = std::string(128, 'W');
    Plot_PlanView(survey, "x/y.std");
    for (const RecordedItem &item : backend.page().items()) {
        if (item.kind == RecordedItem::Kind::Text && item.degrees == 0.0F) {
            EXPECT_LT(item.points[0].x +
                          textWidthInEms(item.text) * EmPerCharacterWidth * item.characterWidth,
                      24.0F)
                << item.text;
        }
    }
}

} // namespace
} // namespace keldrin
