#include "page/drawing.h"
#include "page/page_colours.h"
#include "page/plot.h"
#include "page/surfaces/hpgl_surface.h"
#include "page/surfaces/page_transcript.h"
#include "page/surfaces/svg_surface.h"
#include "review/review_pointer.h"
#include "review/review_skip.h"
#include "review_line.h"
#include "sounding/presentation_model.h"
#include "sounding/recorded_page.h"
#include "sounding/sounding_plot.h"
#include "sounding/sounding_plot_ticks.h"
#include "support/message_recorder.h"

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
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// The frames of the page, in cm, as its layout has them.
constexpr PageFrame Data = {2.0F, 7.7F, 11.8F, 15.3F};
constexpr PageFrame Resistivity = {2.0F, 3.8F, 11.8F, 7.3F};
constexpr PageFrame Misfit = {2.0F, 1.5F, 11.8F, 3.4F};
constexpr PageFrame Model = {14.2F, 1.5F, 22.2F, 15.3F};

float within(float from, float to, float part) {
    return from + part * (to - from);
}

// 0.01 to 100 msec.
float acrossOf(float time) {
    return within(Data.left, Data.right, std::log10(time / 0.01F) / 4.0F);
}

// 0 to 1e4 on an ArcSinh axis.
PagePlace dataPlace(float time, float value) {
    return {acrossOf(time), within(Data.bottom, Data.top, std::asinh(value) / std::asinh(1.0e4F))};
}

// 1 to 1000 ohm-m.
PagePlace resistivityPlace(float time, float value) {
    return {acrossOf(time), within(Resistivity.bottom, Resistivity.top, std::log10(value) / 3.0F)};
}

// -3 to 3 standard deviations.
PagePlace misfitPlace(float time, float value) {
    return {acrossOf(time), within(Misfit.bottom, Misfit.top, (value + 3.0F) / 6.0F)};
}

// 1 to 1000 ohm-m, 0 to -100 m.
PagePlace modelPlace(float resistivity, float depth) {
    return {within(Model.left, Model.right, std::log10(resistivity) / 3.0F),
            within(Model.top, Model.bottom, -depth / 100.0F)};
}

class PresentationPage : public testing::Test {
  protected:
    PresentationPage() {
        selectSurface(&page);
        limits.style = PageStyle::Presentation;
        setSurveyType(survey.control, InLoop);
        setTEMUnits(survey.control, NanovoltPerAmpereSquareMetre);
    }
    ~PresentationPage() override {
        selectSurface(nullptr);
        EXPECT_TRUE(messages.errors.empty()) << messages.errors.front();
    }
    PresentationPage(const PresentationPage &) = delete;
    PresentationPage &operator=(const PresentationPage &) = delete;

    SoundingRecord &sounding() { return survey.hTrn[0]; }

    void take(std::initializer_list<TestWindow> windows) {
        survey.hTrn = {soundingOf(windows)};
        survey.SoundingCount = 1;
    }
    // Layers of 20 m each.
    void addLayer(float resistivity, float error, float sensitivity) {
        const auto i = static_cast<std::size_t>(sounding().NumLayer++);
        sounding().ResInv[i] = resistivity;
        sounding().ThkInv[i] = 20.0F;
        sounding().ZMid[i] = -20.0F * (static_cast<float>(i) + 0.5F);
        sounding().Rerr[i] = error;
        sounding().Rerr0[i] = 500.0F;
        sounding().Rsns[i] = sensitivity;
    }
    void draw() {
        EXPECT_EQ(Plot_Sounding(survey, limits, 1, "data/line1.std", "04/07/2021", "09:05:03"), 0);
    }
    // Items of a kind that begin at a place.
    std::vector<RecordedItem> at(RecordedItem::Kind kind, PagePlace place) const {
        std::vector<RecordedItem> found;
        for (const RecordedItem &item : page.items()) {
            const PagePoint &start = item.points.front();
            if (item.kind == kind && std::hypot(start.x - place.x, start.y - place.y) < 2e-3F) {
                found.push_back(item);
            }
        }
        return found;
    }
    std::vector<int> markersAt(PagePlace place) const {
        std::vector<int> markers;
        for (const RecordedItem &item : at(RecordedItem::Kind::Marker, place)) {
            markers.push_back(item.marker);
        }
        return markers;
    }
    int click(PagePlace place, int flag = SetMark) {
        return Review_SkipPoint(survey, limits, 1, flag, place.x, place.y, 0.5F);
    }
    [[nodiscard]] std::vector<bool> skipped() {
        std::vector<bool> marks;
        for (std::size_t i = 0; i < windowCount(sounding()); ++i) {
            marks.push_back(isSkipped(sounding().TEMerr[i]));
        }
        return marks;
    }
    using Marks = std::vector<bool>;

    MessageRecorder messages;
    RecordSurface page;
    SurveyModel survey;
    PlotLimits limits;
};

TEST_F(PresentationPage, EachQuantityStandsOnItsOwnAxisAndSkippedWindowsAreRings) {
    take({{1.0F, 100.0F, 50.0F}, {10.0F, 10.0F, 200.0F, SkipOffset + 50.0F}});
    sounding().TEMcalc = sounding().TEMobs;
    sounding().AResCalc = sounding().AResObs;
    sounding().TEMcalc[0] = 98.0F; // one standard deviation below
    draw();
    EXPECT_EQ(markersAt(dataPlace(1.0F, 100.0F)), std::vector<int>{DotMarker});
    EXPECT_EQ(markersAt(dataPlace(10.0F, 10.0F)), std::vector<int>{RingMarker});
    EXPECT_EQ(markersAt(resistivityPlace(1.0F, 50.0F)), std::vector<int>{DotMarker});
    EXPECT_EQ(markersAt(resistivityPlace(10.0F, 200.0F)), std::vector<int>{RingMarker});
    EXPECT_EQ(markersAt(misfitPlace(10.0F, 0.0F)), std::vector<int>{RingMarker});
    EXPECT_EQ(at(RecordedItem::Kind::Line, dataPlace(1.0F, 98.0F)).size(), 1U);
    EXPECT_EQ(at(RecordedItem::Kind::Line, resistivityPlace(1.0F, 50.0F)).size(), 1U);
    // The bar of a ratio reaches as far in ohm-m as in dB/dt: by 1 + 2 errors.
    EXPECT_EQ(at(RecordedItem::Kind::Line, resistivityPlace(10.0F, 100.0F)).size(), 1U);
    EXPECT_THAT(textsOf(page), AllOf(Contains("observed, 2 standard errors"), Contains("skipped"),
                                     Contains("calculated"), Contains("no model")));

    take({{1.0F, 100.0F, 50.0F}});
    draw();
    EXPECT_THAT(textsOf(page), AllOf(Not(Contains("skipped")), Not(Contains("calculated")),
                                     Contains("no calculated data")));
}

TEST_F(PresentationPage, OpenMarksAtTheFootOfALogarithmicAxisAreNamed) {
    const auto isNamed = [&] {
        const auto named = [](const RecordedItem &item) {
            return item.text == "at the foot: not above 0";
        };
        return std::any_of(page.items().begin(), page.items().end(), named);
    };
    take({{1.0F, 100.0F, 50.0F}, {10.0F, -1.0F, 200.0F}});
    draw();
    EXPECT_FALSE(isNamed()) << "the usual axis has a place for them";
    limits.logData = true;
    draw();
    EXPECT_TRUE(isNamed());
    sounding().TEMobs[1] = 1.0F;
    draw();
    EXPECT_FALSE(isNamed());
}

TEST_F(PresentationPage, AMisfitIsInStandardDeviationsAndLeavesThePlotWhereItIsTooLarge) {
    take({{1.0F, 100.0F}, {10.0F, 100.0F}}); // of 2 percent
    sounding().TEMcalc[0] = 98.0F;
    sounding().TEMcalc[1] = 10.0F;
    draw();
    const auto top = misfitPlace(10.0F, 3.0F);
    bool leaves = false;
    int marks = 0;
    for (const RecordedItem &item : page.items()) {
        const PagePoint &start = item.points.front();
        const bool inStrip = isInside(start, Misfit);
        if (inStrip && item.kind == RecordedItem::Kind::Marker) {
            ++marks;
            EXPECT_NEAR(start.x, acrossOf(1.0F), 1e-3F);
            EXPECT_NEAR(start.y, misfitPlace(1.0F, 1.01F).y, 0.01F);
        }
        leaves = leaves || (inStrip && item.points.size() == 2 &&
                            std::hypot(item.points[1].x - top.x, item.points[1].y - top.y) < 1e-3F);
    }
    EXPECT_EQ(marks, 1);
    EXPECT_TRUE(leaves);
    std::string date;
    std::string time;
    Plot_AutoLimits(survey, limits, date, time);
    EXPECT_EQ(limits.PlotMisfitMax, 10.0F);
    EXPECT_EQ(limits.style, PageStyle::Presentation);
    sounding().TEMerr[1] += SkipOffset; // what is skipped does not stretch the axis
    Plot_AutoLimits(survey, limits, date, time);
    EXPECT_EQ(limits.PlotMisfitMax, 3.0F);
}

TEST_F(PresentationPage, TheModelHasStepsABandOfErrorsAndFadesBelowTheDepthOfTheData) {
    take({{1.0F, 100.0F}});
    addLayer(10.0F, 100.0F, 80.0F); // 5 to 20 ohm-m
    addLayer(100.0F, 25.0F, 3.0F);
    addLayer(50.0F, 900.0F, 2.9F);
    addLayer(20.0F, 900.0F, 0.0F);
    addLayer(30.0F, 900.0F, 50.0F); // below a layer that is not seen
    draw();
    const auto bands = [this](float resistivity, float depth) {
        return at(RecordedItem::Kind::Area, modelPlace(resistivity, depth));
    };
    ASSERT_EQ(bands(5.0F, 0.0F).size(), 1U);
    EXPECT_NEAR(bands(5.0F, 0.0F)[0].points[2].x, modelPlace(20.0F, 0.0F).x, 1e-3F);
    EXPECT_NEAR(bands(5.0F, 0.0F)[0].points[2].y, modelPlace(1.0F, -20.0F).y, 1e-3F);
    EXPECT_EQ(bands(5.0F, 0.0F)[0].colour, BandColour);
    ASSERT_EQ(bands(80.0F, -20.0F).size(), 1U);
    EXPECT_EQ(bands(80.0F, -20.0F)[0].colour, BandColour);
    ASSERT_EQ(bands(5.0F, -40.0F).size(), 1U);
    EXPECT_NE(bands(5.0F, -40.0F)[0].colour, BandColour);

    const auto stepColour = [this](float resistivity, float depth) {
        for (const RecordedItem &item :
             at(RecordedItem::Kind::Line, modelPlace(resistivity, depth))) {
            if (std::fabs(item.points[1].x - item.points[0].x) < 1e-4F) {
                return item.colour;
            }
        }
        return Colour::Red;
    };
    EXPECT_EQ(stepColour(10.0F, 0.0F), Colour::Black);
    EXPECT_EQ(stepColour(100.0F, -20.0F), Colour::Black);
    const PageColour grey = stepColour(50.0F, -40.0F);
    const PageColour paler = stepColour(20.0F, -60.0F);
    EXPECT_TRUE(grey > Colour::Black && paler > grey && paler < Colour::White);
    EXPECT_NE(stepColour(30.0F, -80.0F), Colour::Black);
    // The dashes at 40 m begin at the frame.
    EXPECT_THAT(at(RecordedItem::Kind::Line, modelPlace(1.0F, -40.0F)),
                Contains(testing::ResultOf(
                    [](const RecordedItem &item) { return item.points[1].x - item.points[0].x; },
                    testing::FloatNear(0.2F, 1e-3F))));
    EXPECT_THAT(textsOf(page), Contains("depth of the data 40 m"));
    EXPECT_THAT(reviewPointerText(survey, limits, 1, modelPlace(50.0F, -45.0F).x,
                                  modelPlace(50.0F, -45.0F).y),
                HasSubstr("Layer 3: 50 ohm-m, error 900.0 %, below the depth of the data"));
}

TEST_F(PresentationPage, AModelFileWithoutErrorsGivesALineAlone) {
    take({{1.0F, 100.0F}});
    addLayer(10.0F, 500.0F, 0.0F); // those of the background
    addLayer(100.0F, 500.0F, 0.0F);
    draw();
    EXPECT_FALSE(modelSteps(sounding()).hasErrors);
    EXPECT_THAT(textsOf(page),
                AllOf(Contains("smooth model"), Not(Contains(HasSubstr("depth of")))));
    EXPECT_TRUE(at(RecordedItem::Kind::Area, modelPlace(10.0F / 6.0F, 0.0F)).empty());

    sounding().Rerr[1] = 300.0F; // shown, though the data see nothing
    draw();
    EXPECT_THAT(textsOf(page), Contains("model, not seen by the data"));
}

TEST_F(PresentationPage, ThickAndThinLinesAndOutlinesWhereNothingIsFilled) {
    take({{1.0F, 100.0F}, {2.0F, 50.0F, 20.0F, SkipOffset + 2.0F}});
    addLayer(10.0F, 100.0F, 80.0F);
    addLayer(30.0F, 100.0F, 1.0F);
    SvgSurface svg;
    svg.begin(24.0F, 18.0F);
    selectSurface(&svg);
    draw();
    svg.end();
    EXPECT_THAT(svg.document(),
                AllOf(HasSubstr("stroke-width=\"5.3\""), // 1.5 points
                      HasSubstr("text-anchor=\"end\""), Not(HasSubstr("textLength"))));
    HpglSurface plotter;
    plotter.begin(24.0F, 18.0F);
    selectSurface(&plotter);
    draw();
    plotter.end();
    const auto unitsOf = [](PagePlace place) {
        return std::to_string(static_cast<int>(std::lround(place.x * 400.0F))) + "," +
               std::to_string(static_cast<int>(std::lround(place.y * 400.0F)));
    };
    EXPECT_THAT(plotter.document(), HasSubstr("PU" + unitsOf(modelPlace(5.0F, 0.0F))));
    EXPECT_THAT(plotter.document(), HasSubstr("PU" + unitsOf(modelPlace(20.0F, 0.0F))));
    selectSurface(&page);
    limits.style = PageStyle::Standard; // nothing of it remains
    SvgSurface standard;
    standard.begin(24.0F, 18.0F);
    selectSurface(&standard);
    draw();
    standard.end();
    EXPECT_THAT(standard.document(),
                AllOf(Not(HasSubstr("text-anchor")), Not(HasSubstr("stroke-width=\"5.3\""))));
    selectSurface(&page);
}

TEST_F(PresentationPage, PowersOfTenHaveTheirExponentsRaised) {
    take({{1.0F, 100.0F}});
    draw();
    // 100 on the axis of dB/dt: the digit stands on the right of "10", smaller and higher.
    const float y = dataPlace(1.0F, 100.0F).y;
    const RecordedItem *base = nullptr;
    const RecordedItem *exponent = nullptr;
    for (const RecordedItem &item : page.items()) {
        const PagePoint &place = item.points.front();
        if (item.kind == RecordedItem::Kind::Text && place.x < Data.left &&
            std::fabs(place.y - y) < 0.25F) {
            (item.text == "10" ? base : exponent) = &item;
        }
    }
    ASSERT_TRUE(base != nullptr && exponent != nullptr);
    EXPECT_EQ(exponent->text, "2");
    EXPECT_LT(exponent->characterHeight, base->characterHeight);
    EXPECT_GT(exponent->points[0].y, base->points[0].y + 0.05F);
    EXPECT_NEAR(static_cast<double>(exponent->points[0].x), boxOf(*base).right, 1e-3);
    EXPECT_THAT(textsOf(page),
                AllOf(Not(Contains("100")), Not(Contains(HasSubstr("^"))), Not(Contains("1000"))));
}

TEST(PresentedTicks, LieBetweenZeroAndOneAsFarAsThereIsRoom) {
    using testing::Each;
    const auto wide = presentedDataTicks(ArcSinh(-1.0F), ArcSinh(100.0F), 7.6F);
    EXPECT_THAT(wide.labels, AllOf(Contains("0.5"), Contains("-0.5"), Contains("-1"),
                                   Contains("10^2"), Not(Contains("0.2"))));
    for (std::size_t i = 0; i < wide.places.size(); ++i) {
        if (wide.labels[i] == "-0.5") {
            EXPECT_NEAR(wide.places[i], ArcSinh(-0.5F), 1e-6F);
        }
    }
    EXPECT_THAT(wide.small, Contains(testing::FloatNear(ArcSinh(0.3F), 1e-6F)));
    const auto close = presentedDataTicks(0.0F, ArcSinh(1.0e12F), 7.6F);
    EXPECT_THAT(close.labels, AllOf(Contains("10^9"), Not(Contains("0.5"))));
    const auto round = presentedDataTicks(ArcSinh(-0.4F), ArcSinh(0.8F), 7.6F);
    EXPECT_THAT(round.labels, AllOf(Contains("0.2"), Contains("-0.4")));
}

TEST_F(PresentationPage, AClickOnAnyPlotMarksTheWindowOfThePointThere) {
    take({{1.0F, 100.0F, 50.0F}, {10.0F, 10.0F, 200.0F}});
    sounding().TEMcalc = sounding().TEMobs;
    draw();
    EXPECT_EQ(click(dataPlace(10.0F, 10.0F)), 0);
    EXPECT_EQ(skipped(), (Marks{false, true}));
    EXPECT_EQ(click(resistivityPlace(10.0F, 200.0F), ClearMark), 0);
    EXPECT_EQ(skipped(), (Marks{false, false}));
    EXPECT_EQ(click(misfitPlace(1.0F, 0.0F)), 0);
    EXPECT_EQ(skipped(), (Marks{true, false}));
    // Where the standard page has its points there are none, and between the plots nothing is.
    const PagePlace elsewhere = placeOf(1.0F, 100.0F, 0.01F);
    EXPECT_EQ(click(elsewhere, ClearMark), 0);
    EXPECT_EQ(click({5.0F, 7.5F}, ClearMark), 1);
    EXPECT_EQ(click(modelPlace(10.0F, -10.0F), ClearMark), 1);
    EXPECT_EQ(skipped(), (Marks{true, false}));
    // The plot in force is that of the data again.
    float time = 0.0F;
    float value = 0.0F;
    const PagePlace place = dataPlace(1.0F, 100.0F);
    PlotFromPage(place.x, place.y, time, value);
    EXPECT_NEAR(std::sinh(value), 100.0F, 0.1F);

    limits.style = PageStyle::Standard;
    draw();
    EXPECT_EQ(click(elsewhere, ClearMark), 0);
    EXPECT_EQ(skipped(), (Marks{false, false}));
}

TEST_F(PresentationPage, ABoxMarksWhatItShowsInThePlotsThatItMeets) {
    take({{1.0F, 100.0F, 500.0F}, {2.0F, 1.0e6F, 500.0F}, {10.0F, 10.0F, 5.0F}});
    draw();
    const auto box = [this](const PageBox &drawn) {
        return Review_SkipBox(survey, limits, 1, SetMark, drawn);
    };
    // Over the upper part of the data plot and beyond: the second window's value is not on show.
    EXPECT_EQ(box({Data.left, dataPlace(1.0F, 50.0F).y, Data.right, 17.9F}), 0);
    EXPECT_EQ(skipped(), (Marks{true, false, false}));
    // From the data plot down into the resistivities.
    EXPECT_EQ(box({acrossOf(1.5F), resistivityPlace(1.0F, 300.0F).y, Data.right, 7.8F}), 0);
    EXPECT_EQ(skipped(), (Marks{true, true, false}));
    EXPECT_EQ(box({Model.left, Model.bottom, Model.right, Model.top}), 1);
}

TEST_F(PresentationPage, TheMouseReadsTheAxisOfThePlotBelowIt) {
    take({{1.0F, 100.0F, 50.0F}});
    sounding().TEMcalc[0] = 98.0F;
    draw();
    const auto told = [this](PagePlace place) {
        return reviewPointerText(survey, limits, 1, place.x, place.y);
    };
    EXPECT_EQ(told(dataPlace(1.0F, 1000.0F)),
              "Time 1 msec   dB/dt 1000 nV/Am2   Window 1: 100 nV/Am2, error 2.0 %");
    EXPECT_EQ(told(resistivityPlace(1.0F, 5.0F)),
              "Time 1 msec   Resistivity 5 ohm-m   Window 1: 50 ohm-m, error 2.0 %");
    EXPECT_THAT(told(misfitPlace(1.0F, 2.0F)),
                AllOf(StartsWith("Time 1 msec   Misfit 2 standard deviations   Window 1: 1.0"),
                      HasSubstr("error 2.0 %")));
    EXPECT_EQ(told({5.0F, 7.5F}), "");
    EXPECT_EQ(told({5.0F, 16.0F}), "");
}

// Everything is inside its frame or above.
void expectTidy(const RecordSurface &page, const std::string &what) {
    const auto inFrame = [](const PagePoint &point) {
        return isInside(point, Data) || isInside(point, Resistivity) || isInside(point, Misfit) ||
               isInside(point, Model) || point.y > Data.top;
    };
    expectTidyPage(page, inFrame, what);
}

TEST_F(PresentationPage, TextsKeepApartForAnyLimits) {
    take({{1.0F, 10.0F, 20.0F}, {2.0F, 5.0F, 20.0F, SkipOffset + 1.0F}});
    survey.control.JobName = std::string(128, 'W');
    survey.control.LineName = std::string(16, 'W');
    setSurveyType(survey.control, MovingLoop);
    sounding().TEMcalc[0] = 11.0F;
    addLayer(20.0F, 10.0F, 50.0F);
    const float sizes[] = {1e-6F, 1e-3F, 0.5F, 1.0F, 77.0F, 1e4F, 1e6F};
    for (const float low : sizes) {
        for (const float high : sizes) {
            if (!(high >= low * 10.0F)) {
                continue;
            }
            for (const float sign : {-1.0F, 0.0F, 1.0F}) {
                limits.PlotTimeMin = limits.PlotResMin = limits.PlotAResMin = low;
                limits.PlotTimeMax = limits.PlotResMax = limits.PlotAResMax = high;
                limits.PlotDataMin = ArcSinh(sign * low);
                limits.PlotDataMax = ArcSinh(high);
                limits.PlotDepthMin = -high;
                limits.PlotDepthMax = sign > 0.0F ? -low : 0.0F;
                limits.PlotMisfitMax = sign > 0.0F ? 10.0F : 3.0F;
                sounding().Elevation = static_cast<double>(sign * high) + 0.125;
                draw();
                expectTidy(page, std::to_string(low) + " to " + std::to_string(high));
            }
        }
    }
}

TEST_F(PresentationPage, AnyContentStaysInTheFrames) {
    std::mt19937 random(7); // NOLINT: the same pages each time
    const float odd[] = {0.0F,    1e-40F, 1e38F,         -1e38F,       1e20F, -1e20F,
                         1005.0F, -3.0F,  std::nanf(""), MissingValue, 1e-6F, 50.0F};
    const auto any = [&random, &odd] {
        const auto bits = static_cast<std::uint32_t>(random());
        return bits % 3 == 0 ? std::bit_cast<float>(bits) : odd[bits % std::size(odd)];
    };
    survey.hTrn.resize(1);
    survey.SoundingCount = 1;
    for (int round = 0; round < 60; ++round) {
        sounding().NumTW = MaxWindows;
        sounding().NumLayer = MaxLayers;
        for (WindowReals *values :
             {&sounding().TWcenter, &sounding().TEMobs, &sounding().TEMerr, &sounding().TEMcalc,
              &sounding().AResObs, &sounding().AResCalc}) {
            std::generate(values->begin(), values->end(), any);
        }
        for (LayerReals *values : {&sounding().ResInv, &sounding().ThkInv, &sounding().Rerr,
                                   &sounding().Rsns, &sounding().ZMid}) {
            std::generate(values->begin(), values->end(), any);
        }
        sounding().Elevation = static_cast<double>(any());
        survey.control.ErrorFloor = any();
        std::string date;
        std::string time;
        EXPECT_EQ(Plot_AutoLimits(survey, limits, date, time), 0);
        draw();
        expectTidy(page, "round " + std::to_string(round));
        click({acrossOf(1.0F), 10.0F});
        reviewPointerText(survey, limits, 1, 18.0F, 10.0F);
    }
}

} // namespace
} // namespace keldrin
