#include "page/surfaces/page_transcript.h"
#include "page/surfaces/record_surface.h"
#include "page/surfaces/svg_surface.h"

#include "page/drawing.h"
#include "page/plot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class SurfaceTest : public testing::Test {
  protected:
    SurfaceTest() {
        IGrArea(0.0F, 0.0F, 1.0F, 1.0F);
        IGrUnits(0.0F, 0.0F, 24.0F, 18.0F);
        ToolkitTextOrientation(0.0F);
        WGrTextFont(0, 0, 0.00872695F, 0.0196111F);
        IGrColour("BLACK");
        PlotNew();
    }
    ~SurfaceTest() override { selectSurface(nullptr); }
    SurfaceTest(const SurfaceTest &) = delete;
    SurfaceTest &operator=(const SurfaceTest &) = delete;
};

void drawSmallPlot() {
    PlotViewport(0.25F, 0.25F, 0.75F, 0.75F); // 6 to 18 by 4.5 to 13.5 cm
    PlotUnits(0.0, 0.0, 10.0, 4.0);
    PlotFrame();
    const float x[] = {-10.0F, 10.0F};
    const float y[] = {0.0F, 4.0F};
    PlotDrawLine(x, y, 2);
    IGrColour("RED");
    const float markerX[] = {5.0F, 11.0F, 10.0F};
    const float markerY[] = {2.0F, 2.0F, 4.0F};
    PlotMarkers(markerX, markerY, 3, 14);
    IGrColour("Blue");
    PlotMarker(1.0F, 2.5F, 1);
    IGrColour("BLACK");
    ToolkitDrawText(1.7F, 17.0F, "say \"a\\b\"\tc");
    ToolkitTextOrientation(90.0F);
    ToolkitDrawText(0.5F, -0.001F, "up");
}

TEST_F(SurfaceTest, APageIsToldInLinesOfText) {
    RecordSurface page;
    selectSurface(&page);
    drawSmallPlot();
    EXPECT_THAT(pageTranscript(page),
                ElementsAre("poly BLACK 4 6.00 4.50 18.00 4.50 18.00 13.50 6.00 13.50",
                            "line BLACK 2 6.00 9.00 18.00 13.50", // cut where it enters the frame
                            "mark dot RED 12.00 9.00",            // the one outside is left out
                            "mark dot RED 18.00 13.50", "mark plus BLUE 1.00 2.50",
                            "text 1.70 17.00 0.35 0 BLACK \"say \\\"a\\\\b\\\" c\"",
                            "text 0.50 0.00 0.35 90 BLACK \"up\""));
    EXPECT_EQ(pageSummary(page),
              "blank texts=2 lines=2 points=6 markers plus=1 dot=2 red=2 blue=1 black=0");
}

TEST_F(SurfaceTest, ARecordKnowsItsKindAndWhetherItChanged) {
    RecordSurface page;
    selectSurface(&page);
    const auto start = page.changes();
    ToolkitPageKind("page");
    EXPECT_EQ(page.kind(), "page");
    EXPECT_GT(page.changes(), start);
    const auto told = page.changes();
    IGrColour("RED");
    EXPECT_EQ(page.changes(), told);
    drawSmallPlot();
    EXPECT_GT(page.changes(), told);
    ToolkitClearPage();
    EXPECT_TRUE(page.items().empty());
    EXPECT_EQ(page.kind(), "blank");
}

TEST_F(SurfaceTest, BlankingARectangleIsAWhitePolygonHeldOnThePage) {
    RecordSurface page;
    selectSurface(&page);
    ToolkitFillRectangle(-5.0F, 1.0F, 3.0F, 2.0F);
    EXPECT_THAT(pageTranscript(page),
                ElementsAre("poly WHITE 4 0.00 1.00 3.00 1.00 3.00 2.00 0.00 2.00"));
}

TEST_F(SurfaceTest, AnSvgPageIsWellFormedWhateverItsTexts) {
    SvgSurface svg;
    svg.begin(24.0F, 18.0F);
    selectSurface(&svg);
    ToolkitDrawText(1.0F, 1.0F, "a<b & \"c\">\xC3\xA9");
    ToolkitDrawText(1.0F, 2.0F, "\xFFx\x01y\xED\xA0\x80");
    IGrColour("RED");
    drawSmallPlot();
    EXPECT_TRUE(svg.end());
    const std::string &document = svg.document();
    EXPECT_THAT(document, HasSubstr(">a&lt;b &amp; \"c\"&gt;\xC3\xA9</text>"));
    EXPECT_THAT(document, HasSubstr(">\xEF\xBF\xBDx\xEF\xBF\xBDy\xEF\xBF\xBD\xEF\xBF\xBD"
                                    "\xEF\xBF\xBD</text>"));
    EXPECT_THAT(document, HasSubstr("<polyline points=\"600.0,900.0 1800.0,450.0\""));
    EXPECT_THAT(document, HasSubstr("rotate(-90.0)"));
    EXPECT_THAT(document, Not(HasSubstr("nan")));
    EXPECT_TRUE(document.starts_with("<?xml"));
    EXPECT_TRUE(document.ends_with("</svg>\n"));

    svg.begin(24.0F, 18.0F); // a second page holds nothing of the first
    EXPECT_TRUE(svg.end());
    EXPECT_THAT(svg.document(), Not(HasSubstr("polyline")));
}

} // namespace
} // namespace keldrin
