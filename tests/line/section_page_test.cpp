#include "line/section_page.h"

#include "line_survey.h"
#include "page/colour_scales.h"
#include "page/drawing.h"
#include "page/page_colours.h"
#include "page/surfaces/hpgl_surface.h"
#include "page/surfaces/page_transcript.h"
#include "page/surfaces/record_surface.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <limits>

namespace keldrin {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

TEST(RoundPercentiles, AreOneTwoOrFiveTimesAPowerOfTen) {
    const auto expectLimits = [](const std::vector<float> &values, float low, float high) {
        const AxisLimits limits = roundPercentiles(values);
        EXPECT_FLOAT_EQ(limits.low, low);
        EXPECT_FLOAT_EQ(limits.high, high);
    };
    expectLimits({}, 1.0F, 1000.0F);
    expectLimits({12.0F, 340.0F}, 10.0F, 500.0F);
    expectLimits({10.0F, 500.0F}, 10.0F, 500.0F);
    expectLimits({0.2F, 0.0F, -5.0F, MissingValue, std::numeric_limits<float>::infinity(), 0.3F},
                 0.1F, 1.0F);
    expectLimits({30.0F}, 10.0F, 100.0F);
    // Of a hundred values the two lowest and the two highest are not the limits.
    std::vector<float> values(96, 150.0F);
    values.insert(values.end(), {0.001F, 30.0F, 900.0F, 1.0e9F});
    expectLimits(values, 20.0F, 200.0F);
    values[95] = 0.002F; // now two are lower
    expectLimits(values, 0.002F, 200.0F);
}

std::vector<SectionCell> cellsOfColumn(const std::vector<SectionCell> &cells, int column) {
    std::vector<SectionCell> own;
    std::copy_if(cells.begin(), cells.end(), std::back_inserter(own),
                 [=](const SectionCell &cell) { return cell.column == column; });
    return own;
}

TEST(SectionPage, WindowsReachHalfWayOnTheLogarithmicAxisAndSkippedOnesAreEmpty) {
    SurveyModel survey = lineSurvey(3);
    survey.sounding(2).TEMerr[1] = SkipOffset + 3.0F;
    survey.sounding(2).AResObs[2] = MissingValue;
    const SectionPage page = sectionPage(survey, {}, "line.std");
    EXPECT_THAT(page.windows, SizeIs(13));
    const std::vector<SectionCell> cells = cellsOfColumn(page.windows, 1);
    ASSERT_EQ(cells.size(), 3U);
    EXPECT_NEAR(cells[0].top, 0.1 / std::sqrt(2.0), 1e-6);
    EXPECT_NEAR(cells[0].bottom, 0.1 * std::sqrt(2.0), 1e-6);
    EXPECT_EQ(cells[1].index, 3);
    EXPECT_NEAR(cells[1].top, 0.8 / std::sqrt(2.0), 1e-5) << "not into the empty window";
}

TEST(SectionPage, LayersAreFadedFromWhereTheSensitivityFallsUnderThree) {
    SurveyModel survey = lineSurvey(2);
    survey.sounding(2).Elevation = 290.0;
    survey.sounding(2).Rsns[5] = 50.0F; // below layers that are not seen
    const SectionPage page = sectionPage(survey, {}, "line.std");
    EXPECT_TRUE(page.hasElevations);
    for (const int column : {0, 1}) {
        const std::vector<SectionCell> cells = cellsOfColumn(page.layers, column);
        ASSERT_EQ(cells.size(), 6U);
        EXPECT_EQ(cells[0].top, column == 0 ? 300.0 : 290.0);
        EXPECT_EQ(cells[5].bottom, column == 0 ? 240.0 : 230.0);
        for (const SectionCell &cell : cells) {
            EXPECT_EQ(cell.faded, cell.index >= 4) << cell.index;
        }
    }
}

TEST(SectionPage, WithoutModelsThereIsTheUpperPlotAlone) {
    SurveyModel survey = lineSurvey(3, 5, 0);
    const SectionPage bare = sectionPage(survey, {}, "line.std");
    EXPECT_FALSE(bare.heights.has_value());
    EXPECT_FALSE(bare.misfits.has_value());
    EXPECT_THAT(bare.windows, SizeIs(15));
    const SectionPage whole = sectionPage(lineSurvey(3), {}, "line.std");
    EXPECT_GT(whole.times.frame.bottom, whole.heights->frame.top);
    EXPECT_GT(whole.heights->frame.bottom, whole.misfits->frame.top);
}

TEST(SectionPage, WithoutElevationsItShowsDepths) {
    SurveyModel survey = lineSurvey(3);
    for (SoundingRecord &sounding : survey.soundings()) {
        sounding.Elevation = 0.0;
    }
    survey.sounding(2).Elevation = MissingValue;
    const SectionPage page = sectionPage(survey, {}, "line.std");
    EXPECT_FALSE(page.hasElevations);
    EXPECT_THAT(cellsOfColumn(page.layers, 1), SizeIs(6));
    survey.sounding(1).Elevation = 200.0; // then one without has no place
    EXPECT_THAT(cellsOfColumn(sectionPage(survey, {}, "line.std").layers, 1), IsEmpty());
}

TEST(SectionPage, TellsItsVerticalExaggeration) {
    const SurveyModel survey = lineSurvey(10);
    const SectionPage fit = sectionPage(survey, {}, "line.std");
    const auto exaggeration = [](const SectionPage &page) {
        const PageFrame &frame = page.heights->frame;
        const double perUnitUp = static_cast<double>(frame.top - frame.bottom) /
                                 (page.heights->top - page.heights->bottom);
        const double perUnitAlong =
            static_cast<double>(frame.right - frame.left) / (page.right - page.left);
        return perUnitUp / perUnitAlong;
    };
    EXPECT_NEAR(fit.exaggeration, exaggeration(fit), 1e-6);
    SectionLimits limits;
    limits.setExaggeration = true;
    limits.exaggeration = 2.0F;
    const SectionPage chosen = sectionPage(survey, limits, "line.std");
    EXPECT_EQ(chosen.exaggeration, 2.0);
    EXPECT_NEAR(exaggeration(chosen), 2.0, 1e-6);
    EXPECT_EQ(chosen.heights->top, fit.heights->top);
    // On a window half as high the same page is half as steep.
    EXPECT_NEAR(sectionPage(survey, {}, "line.std", 0.375).exaggeration, fit.exaggeration / 2.0,
                1e-6);
}

TEST(SectionPage, IsNoFlatterThanTheGroundForTheSakeOfFewDeepSoundings) {
    SurveyModel survey = lineSurvey(12, 5, 30);
    const auto see = [&](int sounding, int layers) {
        for (int k = 0; k < 30; ++k) {
            survey.sounding(sounding).Rsns[static_cast<std::size_t>(k)] = k < layers ? 9.0F : 1.0F;
        }
    };
    const auto bottom = [&] {
        return 300.0 - sectionPage(survey, {}, "line.std").heights->bottom;
    };
    for (int i = 1; i <= 12; ++i) {
        see(i, i <= 4 ? 8 : 30);
    }
    EXPECT_NEAR(bottom(), 202.2, 0.1) << "to scale, which is deeper than 1.4 times 80 m";
    survey.hTrn.resize(6);
    survey.SoundingCount = 6;
    see(3, 30);
    see(4, 30);
    EXPECT_NEAR(bottom(), 112.0, 0.1) << "a quarter of them see down to 80 m";
    see(2, 30);
    EXPECT_NEAR(bottom(), 345.0, 0.1);
}

TEST(SectionPage, TakesLimitsOfTheUserUnlessTheyCannotBeShown) {
    const SurveyModel survey = lineSurvey(3);
    SectionLimits limits;
    limits.setResistivity = limits.setTime = limits.setHeight = true;
    limits.resistivity = {3.0F, 700.0F};
    limits.time = {0.05F, 2.0F};
    limits.height = {100.0F, 350.0F};
    const SectionPage page = sectionPage(survey, limits, "line.std");
    EXPECT_EQ(page.resistivity.low, 3.0F);
    EXPECT_EQ(page.times.top, static_cast<double>(0.05F));
    EXPECT_EQ(page.heights->bottom, 100.0);
    limits.resistivity = {0.0F, 700.0F};
    limits.time = {2.0F, 2.0F};
    limits.height = {350.0F, std::numeric_limits<float>::quiet_NaN()};
    const SectionPage own = sectionPage(survey, limits, "line.std");
    EXPECT_EQ(own.resistivity.low, 10.0F);
    EXPECT_LT(own.times.top, 0.1);
    EXPECT_LT(own.heights->bottom, own.heights->top);
}

class SectionDrawing : public testing::Test {
  protected:
    SectionDrawing() {
        ToolkitInit(backend, {"keldrin"});
        selectSurface(&page);
    }
    ~SectionDrawing() override { ToolkitClose(); }
    SectionDrawing(const SectionDrawing &) = delete;
    SectionDrawing &operator=(const SectionDrawing &) = delete;

    /// How many areas have their middle at a place of the page and a colour.
    [[nodiscard]] std::vector<PageColour> coloursAt(float x, float y) const {
        std::vector<PageColour> colours;
        for (const RecordedItem &item : page.items()) {
            if (item.kind != RecordedItem::Kind::Area) {
                continue;
            }
            const auto [left, right] = std::minmax_element(
                item.points.begin(), item.points.end(),
                [](const PagePoint &a, const PagePoint &b) { return a.x < b.x; });
            const auto [low, high] = std::minmax_element(
                item.points.begin(), item.points.end(),
                [](const PagePoint &a, const PagePoint &b) { return a.y < b.y; });
            if (x > left->x && x < right->x && y > low->y && y < high->y) {
                colours.push_back(item.colour);
            }
        }
        return colours;
    }
    [[nodiscard]] static PagePoint placeOf(const SectionPage &section, const SectionPlot &plot,
                                           double distance, double height) {
        const double across = (distance - section.left) / (section.right - section.left);
        const double up = plot.logarithmic
                              ? std::log(height / plot.bottom) / std::log(plot.top / plot.bottom)
                              : (height - plot.bottom) / (plot.top - plot.bottom);
        const PageFrame &frame = plot.frame;
        return {frame.left + static_cast<float>(across) * (frame.right - frame.left),
                frame.bottom + static_cast<float>(up) * (frame.top - frame.bottom)};
    }

    AnsweringBackend backend;
    RecordSurface page;
};

TEST_F(SectionDrawing, PaintsCellsInTheirColoursAndLeavesTheRestEmpty) {
    SurveyModel survey = lineSurvey(6);
    survey.sounding(6).East += 160.0; // a gap
    survey.sounding(2).TEMerr[0] = SkipOffset + 1.0F;
    survey.sounding(3).NumLayer = 0;
    const SectionPage section = sectionPage(survey, {}, "line.std");
    ASSERT_TRUE(drawSection(section));
    const auto colour = [&](float resistivity) {
        const float part = std::log(resistivity / section.resistivity.low) /
                           std::log(section.resistivity.high / section.resistivity.low);
        return colourAt(0, part);
    };
    const auto at = [&](const SectionPlot &plot, double distance, double height) {
        const PagePoint place = placeOf(section, plot, distance, height);
        return coloursAt(place.x, place.y);
    };
    using testing::ElementsAre;
    EXPECT_THAT(at(section.times, 0.0, 0.1), ElementsAre(colour(10.0F)));
    EXPECT_THAT(at(section.times, 0.0, 1.6), ElementsAre(colour(50.0F)));
    EXPECT_THAT(at(section.times, 50.0, 0.1), IsEmpty()) << "skipped";
    EXPECT_THAT(at(section.times, 300.0, 0.1), IsEmpty()) << "gap";
    EXPECT_THAT(at(section.times, 410.0, 0.1), ElementsAre(colour(10.0F)));
    EXPECT_THAT(at(*section.heights, 0.0, 295.0), ElementsAre(colour(100.0F)));
    EXPECT_THAT(at(*section.heights, 0.0, 258.0), ElementsAre(fadedColour(colour(140.0F), 0.65F)));
    EXPECT_THAT(at(*section.heights, 100.0, 295.0), IsEmpty()) << "no model";
    EXPECT_THAT(at(*section.heights, 0.0, 300.3), IsEmpty()) << "air";
    const std::vector<std::string> lines = pageTranscript(page);
    for (const std::string text : {"\"Section\"", "\"Station\"", "\"1000\"", "\"Time (msec)\"",
                                   "\"Elevation (m)\"", "\"Distance along the line (m)\"",
                                   "\"Resistivity (ohm-m)\"", "\"Vertical exaggeration"}) {
        EXPECT_THAT(lines, Contains(HasSubstr(text)));
    }
    EXPECT_THAT(lines, Not(Contains(HasSubstr("RED"))));
    drawSection(section, 2);
    EXPECT_THAT(pageTranscript(page), Contains(HasSubstr("line RED")));
}

TEST_F(SectionDrawing, NeedsFilledAreas) {
    HpglSurface plotter;
    plotter.begin(PageWidthCm, PageHeightCm);
    ASSERT_TRUE(plotter.end());
    const std::string empty = plotter.document();
    selectSurface(&plotter);
    EXPECT_FALSE(drawSection(sectionPage(lineSurvey(3), {}, "line.std")));
    ASSERT_TRUE(plotter.end());
    EXPECT_EQ(plotter.document(), empty);
}

// No survey, however odd, draws outside the page or leaves an error.
TEST_F(SectionDrawing, AnySurveyCanBeDrawn) {
    SurveyModel nothing = lineSurvey(2, 0, 0);
    SurveyModel noPlace = lineSurvey(2);
    noPlace.sounding(1).East = noPlace.sounding(1).Station = MissingValue;
    SurveyModel onePlace = lineSurvey(3);
    for (SoundingRecord &sounding : onePlace.soundings()) {
        sounding.East = sounding.Station = 5.0;
    }
    SurveyModel odd = lineSurvey(3);
    odd.sounding(1).ThkInv.fill(std::numeric_limits<float>::quiet_NaN());
    odd.sounding(2).ResInv.fill(0.0F);
    odd.sounding(3).TWcenter.fill(1.0F);
    odd.sounding(3).Elevation = 1.0e30;
    for (const SurveyModel &survey :
         {nothing, noPlace, onePlace, odd, lineSurvey(1), lineSurvey(2)}) {
        EXPECT_TRUE(drawSection(sectionPage(survey, {}, "line.std"), 1));
        EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
        for (const RecordedItem &item : page.items()) {
            for (const PagePoint &point : item.points) {
                EXPECT_TRUE(point.x >= -0.001F && point.x <= 24.001F) << item.text;
                EXPECT_TRUE(point.y >= -0.001F && point.y <= 18.001F) << item.text;
            }
        }
    }
}

TEST_F(SectionDrawing, AHitTellsSoundingAndCell) {
    SurveyModel survey = lineSurvey(6);
    survey.sounding(6).East += 160.0;
    survey.sounding(2).TEMerr[0] = SkipOffset + 1.0F;
    survey.sounding(3).TEMcalc.fill(MissingValue);
    const SectionPage section = sectionPage(survey, {}, "line.std");
    const auto at = [&](const SectionPlot &plot, double distance, double height) {
        const PagePoint place = placeOf(section, plot, distance, height);
        return sectionHit(section, place.x, place.y);
    };
    LineHit hit = at(section.times, 70.0, 0.2);
    EXPECT_EQ(hit.sounding, 2);
    EXPECT_EQ(hit.index, 1);
    EXPECT_EQ(sectionText(section, hit), "Window 2: 0.2 msec   20 ohm-m");
    hit = at(section.times, 70.0, 0.1);
    EXPECT_EQ(hit.sounding, 2) << "a skipped window is empty, but of its sounding";
    EXPECT_EQ(sectionText(section, hit), "");
    EXPECT_EQ(at(section.times, 300.0, 0.1).sounding, 0) << "gap";
    hit = at(*section.heights, 410.0, 285.0);
    EXPECT_EQ(hit.sounding, 6);
    EXPECT_EQ(sectionText(section, hit), "Layer 2: 280 to 290 m   110 ohm-m");
    hit = at(*section.misfits, 0.0, 0.5);
    EXPECT_EQ(hit.kind, LineHit::Kind::Misfit);
    EXPECT_EQ(at(*section.misfits, 100.0, 0.5).kind, LineHit::Kind::Nothing);
    EXPECT_EQ(sectionHit(section, 1.0F, 1.0F).sounding, 0);
}

} // namespace
} // namespace keldrin
