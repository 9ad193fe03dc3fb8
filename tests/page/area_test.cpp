#include "page/colour_scales.h"
#include "page/drawing.h"
#include "page/drawing_clip.h"
#include "page/page_colours.h"
#include "page/plot.h"
#include "page/surfaces/hpgl_surface.h"
#include "page/surfaces/page_list.h"
#include "page/surfaces/page_transcript.h"
#include "page/surfaces/placed_surface.h"
#include "page/surfaces/record_surface.h"
#include "page/surfaces/svg_surface.h"
#include "page/surfaces/tee_surface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr PageColour Teal = 0x21918C;

double areaOf(const std::vector<ClipPoint> &corners) {
    double twice = 0.0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const ClipPoint &a = corners[i];
        const ClipPoint &b = corners[(i + 1) % corners.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return std::fabs(twice) / 2.0;
}

TEST(ClipPolygon, KeepsTheAreaInside) {
    struct Case {
        std::vector<ClipPoint> corners;
        double area;
    };
    const std::vector<Case> cases = {
        {{{0.2, 0.2}, {0.8, 0.2}, {0.5, 0.8}}, 0.18},                   // inside
        {{{-1.0, -1.0}, {2.0, -1.0}, {2.0, 2.0}, {-1.0, 2.0}}, 1.0},    // around
        {{{-0.5, 0.25}, {0.5, 0.25}, {0.5, 0.75}, {-0.5, 0.75}}, 0.25}, // across an edge
        {{{0.5, -0.5}, {1.5, 0.5}, {0.5, 1.5}, {-0.5, 0.5}}, 1.0},      // touches all corners
        {{{2.0, 0.0}, {3.0, 0.0}, {3.0, 1.0}}, 0.0},                    // beside
        {{{-0.5, 0.9}, {0.1, 1.5}, {-0.5, 1.5}}, 0.0},                  // beyond a corner
        {{{0.0, -1.0}, {1.0, -1.0}, {1.0, 0.6}, {0.5, -0.5}, {0.0, 0.6}}, 0.0}, // see below
    };
    for (std::size_t i = 0; i + 1 < cases.size(); ++i) {
        EXPECT_NEAR(areaOf(clipPolygon(ClipRectangle{}, cases[i].corners)), cases[i].area, 1e-12)
            << i;
    }
    // A notch parts what is left: two triangles of 0.6 by 0.6 * 0.5 / 1.1.
    EXPECT_NEAR(areaOf(clipPolygon(ClipRectangle{}, cases.back().corners)), 0.6 * 0.3 / 1.1, 1e-12);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(clipPolygon(ClipRectangle{}, {{0.0, 0.0}, {1.0, 0.0}, {nan, 1.0}}), IsEmpty());
    EXPECT_THAT(clipPolygon(ClipRectangle{}, {}), IsEmpty());
}

class AreaTest : public testing::Test {
  protected:
    AreaTest() {
        IGrArea(0.0F, 0.0F, 1.0F, 1.0F);
        IGrUnits(0.0F, 0.0F, 24.0F, 18.0F);
        IGrColour("RED");
        PlotNew();
        PlotViewport(0.25F, 0.25F, 0.75F, 0.75F); // 6 to 18 by 4.5 to 13.5 cm
        PlotUnits(1.0, 0.0, 100.0, 9.0);
        PlotScales("LOG", "LIN");
    }
    ~AreaTest() override { selectSurface(nullptr); }
    AreaTest(const AreaTest &) = delete;
    AreaTest &operator=(const AreaTest &) = delete;

    // One area that reaches out of the page, one out of the frame, then a line with the pen.
    static bool drawAll() {
        const std::vector<float> pageX = {-1.0F, 2.0F, 2.0F, -1.0F};
        const std::vector<float> pageY = {1.0F, 1.0F, 3.0F, 3.0F};
        const bool onPage = ToolkitFillArea(pageX.data(), pageY.data(), 4, Teal);
        const std::vector<double> plotX = {10.0, 1000.0, 1000.0, 10.0};
        const std::vector<double> plotY = {0.0, 0.0, 3.0, 3.0};
        const bool inPlot = PlotFillArea(plotX.data(), plotY.data(), 4, Colour::Blue);
        ToolkitMoveTo(1.0F, 1.0F);
        ToolkitLineTo(2.0F, 2.0F);
        EXPECT_EQ(onPage, inPlot);
        return onPage;
    }
};

TEST_F(AreaTest, AreasAreCutAtPageAndFrameAndLeaveThePen) {
    RecordSurface page;
    selectSurface(&page);
    EXPECT_TRUE(drawAll());
    const std::vector<std::string> lines = pageTranscript(page);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].rfind("area #21918c 4 ", 0), 0U);
    float farthest = 0.0F;
    for (const PagePoint &corner : page.items()[0].points) {
        EXPECT_GE(corner.x, 0.0F);
        farthest = std::max(farthest, corner.x);
    }
    EXPECT_FLOAT_EQ(farthest, 2.0F);
    for (const PagePoint &corner : page.items()[1].points) {
        EXPECT_TRUE(corner.x == 12.0F || corner.x == 18.0F) << corner.x;
        EXPECT_TRUE(corner.y == 4.5F || corner.y == 7.5F) << corner.y;
    }
    EXPECT_EQ(lines[2], "line RED 2 1.00 1.00 2.00 2.00");
    EXPECT_THAT(pageSummary(page), testing::EndsWith(" lines=1 points=2 markers plus=0 dot=0 red=0"
                                                     " blue=0 black=0 areas=2"));

    page.clear();
    const std::vector<double> x = {0.0, 10.0, 10.0}; // no place on a logarithmic axis
    const std::vector<double> y = {0.0, 0.0, 3.0};
    EXPECT_TRUE(PlotFillArea(x.data(), y.data(), 3, Teal));
    EXPECT_THAT(page.items(), IsEmpty());
}

TEST_F(AreaTest, WhatCannotFillSaysSo) {
    EXPECT_FALSE(drawAll());
    EXPECT_FALSE(ToolkitFillsAreas());
    HpglSurface plotter;
    selectSurface(&plotter);
    EXPECT_FALSE(drawAll());
    RecordSurface page;
    TeeSurface both(page, plotter);
    EXPECT_FALSE(both.canFill());
    PlacedSurface placed(plotter, 24.0F, 18.0F, {});
    EXPECT_FALSE(placed.canFill());
    selectSurface(&page);
    EXPECT_TRUE(ToolkitFillsAreas());
}

TEST_F(AreaTest, AListAndAPlaceOnPaperKeepThem) {
    PageList list;
    selectSurface(&list);
    EXPECT_TRUE(drawAll());
    RecordSurface direct;
    selectSurface(&direct);
    EXPECT_TRUE(drawAll());
    RecordSurface again;
    list.replay(again);
    EXPECT_EQ(pageTranscript(again), pageTranscript(direct));

    RecordSurface paper;
    PlacedSurface placed(paper, 24.0F, 18.0F, {12.0F, 9.0F, 12.0F, 9.0F});
    placed.fill(std::vector<PagePoint>{{0.0F, 0.0F}, {1.0F, 0.0F}, {1.0F, 1.0F}}, Teal);
    EXPECT_THAT(pageTranscript(paper),
                ElementsAre("area #21918c 3 12.00 9.00 24.00 9.00 24.00 18.00"));
}

TEST_F(AreaTest, AnSvgPageGroupsThemWithoutSmoothing) {
    SvgSurface svg;
    svg.begin(24.0F, 18.0F);
    selectSurface(&svg);
    EXPECT_TRUE(drawAll());
    EXPECT_TRUE(drawAll());
    EXPECT_TRUE(PlotFillArea(std::vector{1.0, 2.0, 2.0}.data(), std::vector{1.0, 1.0, 2.0}.data(),
                             3, Teal));
    EXPECT_TRUE(svg.end());
    const std::string &document = svg.document();
    const std::string open = "<g shape-rendering=\"crispEdges\">";
    std::size_t groups = 0;
    for (std::size_t at = document.find(open); at != std::string::npos;
         at = document.find(open, at + 1)) {
        ++groups;
    }
    EXPECT_EQ(groups, 3U);
    EXPECT_THAT(document, HasSubstr("fill=\"#21918c\"/>"));
    EXPECT_TRUE(document.ends_with("</g>\n</svg>\n"));
}

TEST(ColourScales, GoFromEndToEndAndHoldWhatLiesBeyond) {
    for (int i = 0; i < static_cast<int>(colourScales().size()); ++i) {
        const ColourScale &scale = colourScales()[static_cast<std::size_t>(i)];
        const PageColour low = scale.turned ? scale.steps.back() : scale.steps.front();
        const PageColour high = scale.turned ? scale.steps.front() : scale.steps.back();
        EXPECT_EQ(colourAt(i, 0.0F), low);
        EXPECT_EQ(colourAt(i, -3.0F), low);
        EXPECT_EQ(colourAt(i, 1.0F), high);
        EXPECT_EQ(colourAt(i, std::numeric_limits<float>::infinity()), high);
        EXPECT_EQ(colourAt(i, std::numeric_limits<float>::quiet_NaN()), Colour::White);
        EXPECT_NE(low, high);
    }
    EXPECT_EQ(colourAt(99, 0.0F), colourAt(2, 0.0F));
    EXPECT_EQ(colourAt(0, 0.25F), colourAt(1, 0.75F));
}

// Rec. 709 luminance, by which the first scale rises or falls without a turn: also in grey print.
TEST(ColourScales, TheUniformScaleIsReadInGrey) {
    double last = -1.0;
    for (int i = 0; i <= 63; ++i) {
        const PageColour colour = colourAt(1, static_cast<float>(i) / 63.0F);
        const auto channel = [colour](unsigned shift) {
            return static_cast<double>(colour >> shift & 0xFFU);
        };
        const double grey = 0.2126 * channel(16) + 0.7152 * channel(8) + 0.0722 * channel(0);
        EXPECT_GT(grey, last) << i;
        last = grey;
    }
}

TEST(ColourScales, FadingMixesWithWhite) {
    EXPECT_EQ(fadedColour(0x204060, 0.0F), 0x204060U);
    EXPECT_EQ(fadedColour(0x204060, 1.0F), Colour::White);
    EXPECT_EQ(fadedColour(0x0055FF, 0.6F), 0x99BBFFU);
}

} // namespace
} // namespace keldrin
