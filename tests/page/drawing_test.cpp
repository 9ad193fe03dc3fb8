#include "page/drawing.h"
#include "page/error_state.h"

#include "page/drawing_clip.h"
#include "page/page_colours.h"
#include "page/surfaces/record_surface.h"
#include "page/text_metrics.h"

#include <gtest/gtest.h>

#include <limits>

namespace keldrin {
namespace {

constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();

// A page of 24 by 18 cm with units of centimetres and letters of 10 points.
class DrawingTest : public testing::Test {
  protected:
    DrawingTest() {
        selectSurface(&page);
        IGrArea(0.0F, 0.0F, 1.0F, 1.0F);
        IGrUnits(0.0F, 0.0F, 24.0F, 18.0F);
        WGrTextFont(0, 0, 0.00872695F, 0.0196111F);
        ToolkitTextOrientation(0.0F);
        IGrColour("BLACK");
        takeErrorNumber();
    }
    ~DrawingTest() override {
        selectSurface(nullptr);
        ToolkitRestoreView(DrawingView{});
    }
    DrawingTest(const DrawingTest &) = delete;
    DrawingTest &operator=(const DrawingTest &) = delete;

    RecordSurface page;
};

TEST_F(DrawingTest, UnitsLieOnTheSelectedArea) {
    IGrArea(0.25F, 0.5F, 0.75F, 1.0F);
    IGrUnits(-10.0F, 100.0F, 10.0F, 200.0F);
    ToolkitDrawText(0.0F, 150.0F, "mid");
    ASSERT_EQ(page.items().size(), 1U);
    EXPECT_FLOAT_EQ(page.items()[0].points[0].x, 12.0F);
    EXPECT_FLOAT_EQ(page.items()[0].points[0].y, 13.5F);
    // Character sizes are parts of the surface, not of the area.
    EXPECT_NEAR(page.items()[0].characterHeight, 0.353F, 1e-4F);
    EXPECT_NEAR(ToolkitTextMetric(TextCharacterWidth), 0.00872695F * 20.0F / 0.5F, 1e-5F);
    EXPECT_NEAR(ToolkitTextMetric(TextCharacterHeight), 0.0196111F * 100.0F / 0.5F, 1e-4F);
    EXPECT_EQ(ToolkitAreaInfo(AreaLeft), -10.0F);
    EXPECT_EQ(ToolkitAreaInfo(AreaRight), 10.0F);
    EXPECT_EQ(ToolkitAreaInfo(AreaBottom), 100.0F);
    EXPECT_EQ(ToolkitAreaInfo(AreaTop), 200.0F);

    float x = 0.0F;
    float y = 0.0F;
    unitsFromFraction(0.25, 0.5, x, y);
    EXPECT_FLOAT_EQ(x, -10.0F);
    EXPECT_FLOAT_EQ(y, 100.0F);
    double partX = 0.0;
    double partY = 0.0;
    fractionFromUnits(5.0F, 175.0F, partX, partY);
    EXPECT_NEAR(partX, 0.625, 1e-6);
    EXPECT_NEAR(partY, 0.875, 1e-6);
}

TEST_F(DrawingTest, ViewsThatCannotBeDrawnKeepTheOldOne) {
    const DrawingView before = ToolkitSaveView();
    const auto refused = [] {
        return takeErrorNumber() == DrawingBadView;
    };
    IGrUnits(3.0F, 0.0F, 3.0F, 1.0F);
    EXPECT_TRUE(refused());
    IGrUnits(0.0F, NotANumber, 1.0F, 1.0F);
    EXPECT_TRUE(refused());
    IGrArea(0.0F, 1.0F, 1.0F, 1.0F);
    EXPECT_TRUE(refused());
    WGrTextFont(0, 0, 0.0F, 0.02F);
    EXPECT_TRUE(refused());
    EXPECT_EQ(ToolkitAreaInfo(AreaRight), before.units[2]);
    EXPECT_NEAR(ToolkitTextMetric(TextCharacterHeight), 0.353F, 1e-4F);
    ToolkitDrawText(NotANumber, 1.0F, "nowhere");
    ToolkitDrawText(1.0F, std::numeric_limits<float>::max(), "nowhere");
    ToolkitMoveTo(NotANumber, 1.0F);
    ToolkitLineTo(1.0F, 1.0F);
    EXPECT_TRUE(page.items().empty());
}

TEST_F(DrawingTest, ColoursAreNamedInAnyCase) {
    IGrColour("Red");
    EXPECT_EQ(ToolkitColourCode("#"), static_cast<int>(Colour::Red));
    IGrColour("mauve");
    EXPECT_EQ(takeErrorNumber(), DrawingUnknownColour);
    EXPECT_EQ(ToolkitColourCode("#"), static_cast<int>(Colour::Red));
    EXPECT_EQ(nameOfColour(0x12AB0F), "#12ab0f");
}

TEST_F(DrawingTest, WidthsCountCharactersNotBytes) {
    EXPECT_FLOAT_EQ(textWidthInEms("iW"), 0.222F + 0.944F);
    const float one = textWidthInEms("\xC3\xA9");                // one letter of two bytes
    EXPECT_FLOAT_EQ(one, textWidthInEms("\xF0\x9D\x84\x9E"));    // one of four
    EXPECT_FLOAT_EQ(textWidthInEms("\xFF\xC0\x80"), 3.0F * one); // no characters: bytes
    EXPECT_FLOAT_EQ(textWidthInEms("\xE2\x82"), 2.0F * one);     // cut short
    EXPECT_FLOAT_EQ(textWidthInEms("\xED\xA0\x80"), 3.0F * one); // a surrogate
    // Ten digits in letters of 10 points: an em is 0.353 cm and a digit 0.556 em.
    EXPECT_NEAR(ToolkitTextWidth("0123456789"), 10.0F * 0.556F * 0.3534F, 0.005F);
}

TEST_F(DrawingTest, LongTextsAreShortenedAtACharacter) {
    const std::string name = "Survey \xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9";
    EXPECT_EQ(ToolkitFittingText(name, 10.0F), name);
    const float width = ToolkitTextWidth("Survey \xC3\xA9...") + 0.05F;
    EXPECT_EQ(ToolkitFittingText(name, width), "Survey \xC3\xA9...");
    EXPECT_EQ(ToolkitFittingText(name, 0.0F), "...");
}

TEST_F(DrawingTest, CentredTextCountsFromTheTopAndIgnoresTrailingBlanks) {
    ToolkitTextOrientation(90.0F);
    ToolkitCentredText(1000.0F, "Torvu International    ");
    ASSERT_EQ(page.items().size(), 1U);
    const RecordedItem &item = page.items()[0];
    EXPECT_EQ(item.text, "Torvu International");
    EXPECT_EQ(item.degrees, 0.0F);
    EXPECT_NEAR(item.points[0].x, 24.0F * 4999.0F / 9999.0F - ToolkitTextWidth(item.text) / 2.0F,
                1e-3F);
    EXPECT_NEAR(item.points[0].y, 18.0F * (1.0F - 1000.0F / 9999.0F), 1e-3F);
}

TEST_F(DrawingTest, LinesAreCutAtTheEdgesOfThePage) {
    ToolkitMoveTo(12.0F, 9.0F);
    ToolkitLineTo(36.0F, 9.0F);
    ToolkitLineTo(36.0F, 30.0F); // outside
    ToolkitLineTo(12.0F, 6.0F);  // comes back from where it went
    ASSERT_EQ(page.items().size(), 2U);
    EXPECT_FLOAT_EQ(page.items()[0].points[1].x, 24.0F);
    EXPECT_FLOAT_EQ(page.items()[1].points[0].x, 24.0F);
    EXPECT_FLOAT_EQ(page.items()[1].points[0].y, 18.0F);
    EXPECT_FLOAT_EQ(page.items()[1].points[1].y, 6.0F);
}

TEST_F(DrawingTest, WithoutASurfaceSettingsAreKeptAndNothingIsDrawn) {
    selectSurface(nullptr);
    IGrColour("BLUE");
    ToolkitClearPage();
    ToolkitCentredText(400.0F, "text");
    ToolkitMoveTo(0.0F, 0.0F);
    ToolkitLineTo(1.0F, 1.0F);
    ToolkitFillRectangle(0.0F, 0.0F, 1.0F, 1.0F);
    ToolkitPageKind("log");
    EXPECT_EQ(takeErrorNumber(), 0);
    selectSurface(&page);
    ToolkitDrawText(1.0F, 1.0F, "now");
    ASSERT_EQ(page.items().size(), 1U);
    EXPECT_EQ(page.items()[0].colour, Colour::Blue);
}

TEST(ClipTest, SegmentsKeepTheirInsidePart) {
    struct Case {
        ClipSegment given;
        bool inside;
        ClipSegment part;
    };
    constexpr double largest = std::numeric_limits<double>::max();
    const Case cases[] = {
        {{0.2, 0.2, 0.8, 0.4}, true, {0.2, 0.2, 0.8, 0.4}},
        {{-1.0, 0.5, 2.0, 0.5}, true, {0.0, 0.5, 1.0, 0.5}},
        {{0.5, 2.0, 0.5, -1.0}, true, {0.5, 1.0, 0.5, 0.0}},
        {{-1.0, -1.0, 2.0, 2.0}, true, {0.0, 0.0, 1.0, 1.0}},
        {{-0.5, 0.6, 0.4, 1.5}, false, {}},                  // passes a corner outside
        {{1.0, -1.0, 1.0, 2.0}, true, {1.0, 0.0, 1.0, 1.0}}, // along an edge
        {{0.5, 0.5, 0.5, 0.5}, true, {0.5, 0.5, 0.5, 0.5}},
        {{2.0, 2.0, 2.0, 2.0}, false, {}},
        {{-largest, 0.5, largest, 0.5}, false, {}},
        {{0.5, 0.5, std::numeric_limits<double>::quiet_NaN(), 0.5}, false, {}},
    };
    for (const Case &c : cases) {
        ClipSegment segment = c.given;
        ASSERT_EQ(clipSegment(ClipRectangle{}, segment), c.inside) << c.given.x1;
        const ClipSegment &expected = c.inside ? c.part : c.given;
        if (c.inside) {
            EXPECT_NEAR(segment.x1, expected.x1, 1e-12);
            EXPECT_NEAR(segment.y1, expected.y1, 1e-12);
            EXPECT_NEAR(segment.x2, expected.x2, 1e-12);
            EXPECT_NEAR(segment.y2, expected.y2, 1e-12);
        }
    }
}

} // namespace
} // namespace keldrin
