#include "sounding/sounding_plot.h"

#include "page/drawing.h"
#include "page/page_colours.h"
#include "page/plot.h"
#include "page/surfaces/page_transcript.h"
#include "page/surfaces/record_surface.h"
#include "sounding/page_layout.h"
#include "sounding/recorded_page.h"
#include "support/message_recorder.h"
#include "toolkit/toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <random>

namespace keldrin {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class SoundingPlotTest : public testing::Test {
  protected:
    SoundingPlotTest() {
        selectSurface(&page);
        setSurveyType(survey.control, InLoop);
        setTEMUnits(survey.control, NanovoltPerAmpereSquareMetre);
        survey.hTrn.resize(1);
        survey.SoundingCount = 1;
        sounding().RxStn = 1050.0;
    }
    ~SoundingPlotTest() override {
        selectSurface(nullptr);
        EXPECT_TRUE(messages.errors.empty()) << messages.errors.front();
    }
    SoundingPlotTest(const SoundingPlotTest &) = delete;
    SoundingPlotTest &operator=(const SoundingPlotTest &) = delete;

    SoundingRecord &sounding() { return survey.hTrn[0]; }

    void addWindow(float time, float observed, float error = 1.0F,
                   float calculated = MissingValue) {
        const auto i = static_cast<std::size_t>(sounding().NumTW++);
        sounding().TWcenter[i] = time;
        sounding().TEMobs[i] = observed;
        sounding().TEMerr[i] = error;
        sounding().TEMcalc[i] = calculated;
    }
    void addLayers(int count, float resistivity, float thickness) {
        sounding().NumLayer = count;
        for (int i = 0; i < count; ++i) {
            const auto k = static_cast<std::size_t>(i);
            sounding().ResInv[k] = resistivity * (1.0F + 0.1F * static_cast<float>(i));
            sounding().ThkInv[k] = thickness;
            sounding().ZMid[k] = -thickness * (static_cast<float>(i) + 0.5F);
        }
    }

    void draw() {
        EXPECT_EQ(Plot_Sounding(survey, limits, 1, "data/line1.std", "04/07/2021", "09:05:03"), 0);
    }
    std::vector<std::string> texts() const { return textsOf(page); }
    // Lines with corners all inside a frame that are no ticks.
    std::vector<RecordedItem> curves(const PageFrame &frame) const {
        std::vector<RecordedItem> found;
        for (const RecordedItem &item : page.items()) {
            if (item.kind != RecordedItem::Kind::Line || !isInside(item.points[0], frame)) {
                continue;
            }
            const PagePoint &end = item.points.back();
            const float length = std::hypot(end.x - item.points[0].x, end.y - item.points[0].y);
            if (length > 0.1F) {
                found.push_back(item);
            }
        }
        return found;
    }
    // Everything is inside its frame.
    void expectTidy(const std::string &what) const {
        const auto inFrame = [](const PagePoint &point) {
            return isInside(point, DataFrame) || isInside(point, ModelFrame);
        };
        expectTidyPage(page, inFrame, what);
    }

    MessageRecorder messages;
    RecordSurface page;
    SurveyModel survey;
    PlotLimits limits;
};

TEST_F(SoundingPlotTest, WithoutASoundingOrWindowsThePageStays) {
    ToolkitDrawText(0.1F, 0.1F, "before");
    for (const int station : {1, 0, -1, 2}) { // the first has no windows yet
        EXPECT_EQ(Plot_Sounding(survey, limits, station, "f", "d", "t"), 1) << station;
    }
    EXPECT_EQ(texts(), std::vector<std::string>{"before"});
}

TEST_F(SoundingPlotTest, AfterwardsPageCentimetresAreThoseOfTheDataPlot) {
    addWindow(1.0F, 10.0F);
    addLayers(3, 20.0F, 15.0F);
    limits.PlotDataMin = ArcSinh(-100.0F);
    draw();
    const DrawingView view = ToolkitSaveView();
    EXPECT_THAT(view.units, ElementsAre(0.0F, 0.0F, 24.0F, 18.0F));
    float time = 0.0F;
    float value = 0.0F;
    PlotFromPage(1.5F, 1.5F, time, value);
    EXPECT_NEAR(time, 0.01F, 1e-6F);
    EXPECT_NEAR(value, ArcSinh(-100.0F), 1e-4F);
    PlotFromPage(6.5F, 17.5F, time, value); // the middle of a logarithmic axis
    EXPECT_NEAR(time, 1.0F, 1e-5F);
    EXPECT_NEAR(std::sinh(value), 1.0e4F, 1.0F);
    EXPECT_EQ(page.kind(), "page");
}

TEST_F(SoundingPlotTest, SkippedWindowsStayInRedWithTheirTrueError) {
    addWindow(0.1F, 1000.0F, 40.0F);
    addWindow(1.0F, 10.0F, SkipOffset + 25.0F);
    addWindow(10.0F, -5.0F, 0.5F); // below the axis; its error is below the floor
    survey.control.ErrorFloor = 20.0F;
    sounding().AResObs[1] = 100.0F;
    sounding().AResObs[2] = 1.0e-7F; // none
    sounding().AResObs[0] = 50.0F;
    draw();
    EXPECT_THAT(pageSummary(page), HasSubstr("plus=2 dot=2 red=2 blue=1 black=1"));

    const auto bar = [this](float time, float value, float percent) {
        const float half = std::log(1.0F + percent / 50.0F);
        float x = 0.0F;
        float low = 0.0F;
        float high = 0.0F;
        PlotToPage(time, ArcSinh(value) - half, x, low);
        PlotToPage(time, ArcSinh(value) + half, x, high);
        for (const RecordedItem &item : curves(DataFrame)) {
            if (item.points.size() == 2 && std::fabs(item.points[0].x - x) < 1e-3F &&
                std::fabs(item.points[0].y - low) < 1e-3F &&
                std::fabs(item.points[1].y - high) < 1e-3F) {
                return nameOfColour(item.colour);
            }
        }
        return std::string("none");
    };
    EXPECT_EQ(bar(0.1F, 1000.0F, 40.0F), "BLACK");
    EXPECT_EQ(bar(1.0F, 10.0F, 25.0F), "RED");
    EXPECT_EQ(bar(0.1F, 50.0F, 40.0F), "BLUE");
    EXPECT_EQ(bar(1.0F, 100.0F, 25.0F), "RED");
    limits.PlotDataMin = ArcSinh(-10.0F);
    draw();
    EXPECT_EQ(bar(10.0F, -5.0F, 20.0F), "BLACK");
}

TEST_F(SoundingPlotTest, TheResidualIsInErrorBarsAndALineNeedsTwoPoints) {
    survey.control.ErrorFloor = 1.0F;
    addWindow(0.1F, std::sinh(5.0F), 50.0F); // the half bar is ln 2
    addWindow(1.0F, std::sinh(3.0F), SkipOffset + 50.0F);
    draw();
    EXPECT_THAT(texts(), Not(Contains(StartsWith("Residual"))));
    EXPECT_EQ(curves(DataFrame).size(), 2U); // the bars

    sounding().TEMcalc[0] = std::sinh(5.0F + 2.0F * std::log(2.0F));
    draw();
    EXPECT_THAT(texts(), Contains("Residual: 2.00"));
    EXPECT_EQ(curves(DataFrame).size(), 2U);

    sounding().TEMcalc[1] = std::sinh(3.0F - std::log(2.0F)); // skipped ones count too
    draw();
    EXPECT_THAT(texts(), Contains("Residual: 1.58"));
    EXPECT_EQ(curves(DataFrame).size(), 3U);

    addWindow(10.0F, MissingValue, 5.0F, 2.0F); // a calculated value alone has no misfit
    draw();
    EXPECT_THAT(texts(), Contains("Residual: 1.58"));
    EXPECT_EQ(curves(DataFrame)[0].points.size(), 3U);
}

TEST_F(SoundingPlotTest, TheDataAxisIsLabelledWithValuesOfBothSigns) {
    addWindow(1.0F, 10.0F);
    limits.PlotDataMin = ArcSinh(-1.0e5F);
    limits.PlotDataMax = ArcSinh(1.0e6F);
    draw();
    std::string labels;
    for (const RecordedItem &item : page.items()) {
        if (item.kind == RecordedItem::Kind::Text && item.degrees == 0.0F &&
            item.points[0].x < 1.5F && item.points[0].y > 1.35F) {
            labels += item.text + " ";
            float time = 0.0F;
            float value = 0.0F;
            const Box box = boxOf(item);
            PlotFromPage(1.5F, item.points[0].y + CapitalHeight * item.characterHeight / 2.0F, time,
                         value);
            EXPECT_NEAR(value, ArcSinh(std::stof(item.text)), 0.01F) << item.text;
            EXPECT_NEAR(box.right, 1.5, 0.1);
        }
    }
    EXPECT_EQ(labels, "-1e5 -1e4 -1000 -100 -10 -1 0 1 10 100 1000 1e4 1e5 1e6 ");
    // The line at zero, only where there is something below it.
    const auto isWide = [](const RecordedItem &item) {
        return item.points.back().x - item.points[0].x > 9.9F;
    };
    const auto inside = curves(DataFrame);
    EXPECT_EQ(std::count_if(inside.begin(), inside.end(), isWide), 1);
    limits.PlotDataMin = 0.0F;
    draw();
    const auto above = curves(DataFrame);
    EXPECT_EQ(std::count_if(above.begin(), above.end(), isWide), 0);
}

TEST_F(SoundingPlotTest, AShortDataAxisStillHasNumbers) {
    addWindow(1.0F, 10.0F);
    limits.PlotDataMin = ArcSinh(3000.0F);
    limits.PlotDataMax = ArcSinh(70000.0F);
    draw();
    EXPECT_THAT(texts(), AllOf(Contains("5000"), Contains("10000"), Contains("50000")));
    limits.PlotDataMin = ArcSinh(-70000.0F);
    limits.PlotDataMax = ArcSinh(-3000.0F);
    draw();
    EXPECT_THAT(texts(), AllOf(Contains("-5000"), Contains("-20000")));
    limits.PlotDataMin = ArcSinh(-0.4F);
    limits.PlotDataMax = ArcSinh(0.8F);
    draw();
    EXPECT_THAT(texts(), AllOf(Contains("-0.4"), Contains("0.2"), Contains("0.8")));
}

TEST_F(SoundingPlotTest, TheModelIsALineFromTheSurfaceThroughTheLayersMiddles) {
    addWindow(1.0F, 10.0F);
    addLayers(MaxLayers, 10.0F, 2.0F);
    draw();
    const std::vector<RecordedItem> lines = curves(ModelFrame);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_NEAR(lines[0].points[0].x, 13.5F + 3.0F, 1e-3F); // 10 of 1 to 1000 ohm-m
    EXPECT_NEAR(lines[0].points[0].y, 17.5F, 1e-3F);
    EXPECT_NEAR(lines[0].points[1].y, 17.5F - 0.16F, 1e-3F);
    EXPECT_EQ(lines[1].points.size(), 48U);
    EXPECT_NEAR(lines[1].points.back().y, 17.5F - 95.0F * 0.16F, 1e-3F);

    const auto numbersAt = [this](float left, float right) {
        std::string numbers;
        for (const RecordedItem &item : page.items()) {
            if (item.kind == RecordedItem::Kind::Text && item.degrees == 0.0F &&
                item.points[0].x > left && item.points[0].x < right && item.points[0].y > 1.35F) {
                numbers += item.text + " ";
            }
        }
        return numbers;
    };
    EXPECT_EQ(numbersAt(22.5F, 24.0F), "-100 -80 -60 -40 -20 0 ");
    EXPECT_EQ(numbersAt(12.0F, 13.5F), "-100 -80 -60 -40 -20 0 ");
    sounding().Elevation = 350.0;
    draw();
    EXPECT_EQ(numbersAt(22.5F, 24.0F), "-100 -80 -60 -40 -20 0 ");
    EXPECT_EQ(numbersAt(12.0F, 13.5F), "260 280 300 320 340 ");
    EXPECT_THAT(texts(), AllOf(Contains("Elevation (m)"), Contains("Depth (m)")));
    for (const double unknown : {static_cast<double>(MissingValue), std::nan(""), 1e300}) {
        sounding().Elevation = unknown;
        draw();
        EXPECT_THAT(texts(), Not(Contains("Elevation (m)")));
        EXPECT_EQ(curves(ModelFrame).size(), 2U);
    }
}

TEST_F(SoundingPlotTest, TheTitlesNameSurveyStationAndFile) {
    addWindow(1.0F, 10.0F);
    draw();
    EXPECT_THAT(texts(),
                AllOf(Contains("Rx.Stn 1050.000"), Contains("In-Loop TEM Data"),
                      Contains("Data from line1.std"), Contains("dzWeight: 3"),
                      Contains("Plotted 04/07/2021, 09:05:03"), Contains("Torvu Engineering"),
                      Contains("KELDRIN v4.00i"), Contains("dB/dt (nV/Am2)")));
    EXPECT_THAT(texts(), Not(Contains(StartsWith("Line "))));
    EXPECT_THAT(texts(), Not(Contains(StartsWith("Tx.Stn"))));

    setSurveyType(survey.control, MovingLoop);
    survey.control.JobName = "Copper Creek";
    survey.control.LineName = "7 East";
    sounding().TxStn = -25.5;
    draw();
    const std::vector<std::string> lines = texts();
    const auto job = std::find(lines.begin(), lines.end(), "Copper Creek");
    ASSERT_GE(lines.end() - job, 4);
    EXPECT_THAT(std::vector<std::string>(job, job + 4),
                ElementsAre("Copper Creek", "Line 7 East", "Tx.Stn -25.500", "Rx.Stn 1050.000"));
    sounding().TxStn = MissingValue;
    draw();
    EXPECT_THAT(texts(), Contains("Tx.Stn *"));
    EXPECT_THAT(pageTranscript(page),
                Contains(AllOf(StartsWith("text 1.70 2.0"), HasSubstr("BLUE \"Blue line"))));
}

TEST_F(SoundingPlotTest, TextsKeepApartForAnyLimits) {
    survey.control.JobName = std::string(128, 'W');
    survey.control.LineName = std::string(16, 'W');
    setSurveyType(survey.control, MovingLoop);
    addWindow(1.0F, 10.0F, 1.0F, 11.0F);
    addLayers(5, 20.0F, 15.0F);
    const float sizes[] = {1e-6F, 1e-3F, 0.5F, 1.0F, 77.0F, 1e4F, 1e6F};
    for (const float low : sizes) {
        for (const float high : sizes) {
            if (!(high >= low * 10.0F)) {
                continue;
            }
            for (const float sign : {-1.0F, 0.0F, 1.0F}) {
                limits.PlotTimeMin = low;
                limits.PlotTimeMax = high;
                limits.PlotResMin = low;
                limits.PlotResMax = high;
                limits.PlotDataMin = ArcSinh(sign * low);
                limits.PlotDataMax = ArcSinh(high);
                limits.PlotDepthMin = -high;
                limits.PlotDepthMax = sign > 0.0F ? -low : 0.0F;
                sounding().Elevation = static_cast<double>(sign * high) + 0.125;
                draw();
                expectTidy(std::to_string(low) + " to " + std::to_string(high));
            }
            limits.PlotDataMin = ArcSinh(-high);
            limits.PlotDataMax = ArcSinh(-low);
            draw();
            expectTidy("negative " + std::to_string(high));
        }
    }
    limits.PlotDepthMin = -1.0e6F; // many digits on a short axis
    limits.PlotDepthMax = -999999.0F;
    draw();
    expectTidy("deep");
}

TEST_F(SoundingPlotTest, AnyContentStaysInTheFrames) {
    std::mt19937 random(7); // NOLINT: the same pages each time
    const float odd[] = {0.0F,         -0.0F,
                         1e-40F,       1e38F,
                         -1e38F,       1e20F,
                         -1e20F,       1e-6F,
                         1005.0F,      -3.0F,
                         50.0F,        std::nanf(""),
                         MissingValue, std::numeric_limits<float>::infinity()};
    const auto any = [&random, &odd] {
        const auto bits = static_cast<std::uint32_t>(random());
        return bits % 3 == 0 ? std::bit_cast<float>(bits) : odd[bits % std::size(odd)];
    };
    for (int round = 0; round < 60; ++round) {
        sounding().NumTW = round == 0 ? 9999 : MaxWindows;
        sounding().NumLayer = round == 0 ? 9999 : MaxLayers;
        for (WindowReals *values :
             {&sounding().TWcenter, &sounding().TEMobs, &sounding().TEMerr, &sounding().TEMcalc,
              &sounding().AResObs, &sounding().AResCalc}) {
            std::generate(values->begin(), values->end(), any);
        }
        std::generate(sounding().ResInv.begin(), sounding().ResInv.end(), any);
        std::generate(sounding().ZMid.begin(), sounding().ZMid.end(), any);
        sounding().ThkInv = sounding().ResInv;
        sounding().Elevation = static_cast<double>(any());
        sounding().RxStn = static_cast<double>(any());
        survey.control.ErrorFloor = any();
        survey.control.dzWeight = any();
        std::string date;
        std::string time;
        EXPECT_EQ(Plot_AutoLimits(survey, limits, date, time), 0);
        draw();
        expectTidy("round " + std::to_string(round));
    }
}

} // namespace
} // namespace keldrin
