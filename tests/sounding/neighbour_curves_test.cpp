#include "sounding/neighbour_curves.h"

#include "page/drawing.h"
#include "page/surfaces/hpgl_surface.h"
#include "page/surfaces/page_transcript.h"
#include "review/review_line.h"
#include "sounding/recorded_page.h"
#include "sounding/sounding_plot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::array<TestWindow, 3> Windows = {
    TestWindow{0.2F, 5000.0F, 100.0F}, TestWindow{1.0F, 300.0F, 50.0F}, TestWindow{10.0F, 4.0F}};

/// A line whose sounding n has n times the values of the first.
class NeighbourTest : public testing::Test {
  protected:
    NeighbourTest() {
        constexpr int soundings = 7;
        selectSurface(&page);
        survey.hTrn.assign(static_cast<std::size_t>(soundings), soundingOf(Windows));
        survey.SoundingCount = soundings;
        for (int station = 1; station <= soundings; ++station) {
            SoundingRecord &sounding = survey.sounding(station);
            sounding.TEMobs[0] *= static_cast<float>(station);
            sounding.NumLayer = 2;
            for (std::size_t i = 0; i < 2; ++i) {
                sounding.ResInv[i] = 10.0F * static_cast<float>(station);
                sounding.ThkInv[i] = 20.0F;
                sounding.ZMid[i] = -10.0F - 20.0F * static_cast<float>(i);
            }
        }
    }
    ~NeighbourTest() override { selectSurface(nullptr); }
    NeighbourTest(const NeighbourTest &) = delete;
    NeighbourTest &operator=(const NeighbourTest &) = delete;

    std::vector<RecordedItem> drawn(int station, int onEachSide) {
        limits.neighbours = onEachSide;
        page.begin(PageWidthCm, PageHeightCm);
        Plot_Sounding(survey, limits, station, "line1.std", "04/07/2021", "09:05:03");
        return page.items();
    }
    static long greyLines(const std::vector<RecordedItem> &items) {
        return std::count_if(items.begin(), items.end(), [](const RecordedItem &item) {
            return item.kind == RecordedItem::Kind::Line && item.colour == NeighbourColour;
        });
    }

    RecordSurface page;
    SurveyModel survey;
    PlotLimits limits;
};

TEST_F(NeighbourTest, FewerAreDrawnAtTheEndsOfTheLine) {
    const struct {
        int station;
        int asked;
        int before;
        int after;
    } cases[] = {{4, 0, 0, 0}, {4, 2, 2, 2}, {1, 2, 0, 2}, {2, 5, 1, 5},
                 {7, 1, 1, 0}, {6, 5, 5, 1}, {4, 5, 3, 3}};
    for (const auto &c : cases) {
        for (const PageStyle style : {PageStyle::Standard, PageStyle::Presentation}) {
            limits.style = style;
            const std::vector<RecordedItem> items = drawn(c.station, c.asked);
            // Each gives its dB/dt, its resistivities and its model; a legend has one more line.
            const long legend = style == PageStyle::Presentation && c.asked > 0 ? 1 : 0;
            EXPECT_EQ(greyLines(items), 3L * (c.before + c.after) + legend)
                << c.station << " " << c.asked;
            const std::string words =
                std::to_string(c.before) + " before, " + std::to_string(c.after) + " after";
            EXPECT_EQ(c.asked > 0, std::ranges::any_of(textsOf(page),
                                                       [&](const auto &text) {
                                                           return text.find(words) !=
                                                                  std::string::npos;
                                                       }))
                << words;
        }
    }
}

TEST_F(NeighbourTest, StandBehindDataAndModelAndLeaveThemAsTheyAre) {
    for (const PageStyle style : {PageStyle::Standard, PageStyle::Presentation}) {
        limits.style = style;
        const std::vector<RecordedItem> with = drawn(4, 2);
        const std::string transcript = [&] {
            std::string text;
            for (const std::string &line : pageTranscript(page)) {
                text += line + "\n";
            }
            return text;
        }();
        const std::vector<RecordedItem> without = drawn(4, 0);
        // Without the grey and its words the page is the one without neighbours.
        std::size_t at = 0;
        for (const RecordedItem &item : with) {
            const bool told = item.text.find("before, 2 after") != std::string::npos;
            if (item.colour == NeighbourColour || told) {
                continue;
            }
            ASSERT_LT(at, without.size());
            EXPECT_EQ(item.colour, without[at].colour);
            EXPECT_EQ(item.text, without[at].text);
            EXPECT_EQ(item.points.size(), without[at].points.size());
            ++at;
        }
        EXPECT_EQ(at, without.size());
        const auto firstMark =
            std::ranges::find(with, RecordedItem::Kind::Marker, &RecordedItem::kind);
        const auto greyOfData = std::ranges::find(with, NeighbourColour, &RecordedItem::colour);
        EXPECT_LT(greyOfData - with.begin(), firstMark - with.begin());
    }
}

TEST_F(NeighbourTest, ShowWhatTheySayWithoutSkippedWindows) {
    limits.neighbours = 1;
    SoundingRecord &next = survey.sounding(2);
    next.TEMerr[1] = withSkipMark(next.TEMerr[1], true);
    NeighbourCurves neighbours = neighbourCurves(survey, limits, 1);
    ASSERT_EQ(neighbours.curves.size(), 1U);
    EXPECT_THAT(neighbours.curves[0].observed.time, ElementsAre(0.2F, 10.0F));
    EXPECT_THAT(neighbours.curves[0].observed.value, ElementsAre(10000.0F, 4.0F));
    EXPECT_THAT(neighbours.curves[0].modelDepth, ElementsAre(0.0F, -10.0F, -30.0F));
    limits.style = PageStyle::Presentation; // in steps
    neighbours = neighbourCurves(survey, limits, 1);
    EXPECT_THAT(neighbours.curves[0].modelDepth, ElementsAre(0.0F, -20.0F, -20.0F, -40.0F));
    EXPECT_THAT(neighbours.curves[0].modelResistivity, ElementsAre(20.0F, 20.0F, 20.0F, 20.0F));

    next = SoundingRecord{}; // one without windows and layers counts, and draws nothing
    EXPECT_EQ(greyLines(drawn(1, 1)), 1) << "in the legend";
    EXPECT_THAT(textsOf(page), Contains(HasSubstr("0 before, 1 after")));
}

TEST_F(NeighbourTest, AreDashedWhereThereIsNoGrey) {
    limits.neighbours = 1;
    HpglSurface plotter;
    selectSurface(&plotter);
    const auto penDowns = [&](int onEachSide) {
        limits.neighbours = onEachSide;
        plotter.begin(PageWidthCm, PageHeightCm);
        Plot_Sounding(survey, limits, 4, "line1.std", "04/07/2021", "09:05:03");
        plotter.end();
        const std::string file(plotter.document());
        return std::count(file.begin(), file.end(), 'D'); // PD
    };
    EXPECT_GT(penDowns(1), penDowns(0) + 60) << "many short lines in place of six";
    selectSurface(&page);
}

} // namespace
} // namespace keldrin
