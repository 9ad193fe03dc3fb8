#include "page/plot.h"

#include "page/drawing.h"
#include "page/error_state.h"
#include "page/plot_ticks.h"
#include "page/surfaces/page_transcript.h"
#include "page/surfaces/record_surface.h"
#include "page/text_metrics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace keldrin {
namespace {

using testing::ElementsAre;

constexpr float NoPlace = std::numeric_limits<float>::quiet_NaN();

std::string numbersOf(const PlotScale &scale) {
    std::string numbers;
    for (const PlotTick &tick : automaticTicks(scale)) {
        if (!tick.label.empty()) {
            numbers += (numbers.empty() ? "" : " ") + tick.label;
        }
    }
    return numbers;
}

TEST(TickTest, NumbersAreRoundAndFreeOfNoise) {
    struct Case {
        double min;
        double max;
        bool logarithmic;
        std::string numbers;
    };
    const auto single = [](float value) {
        return static_cast<double>(value);
    };
    const Case cases[] = {
        {0.0, 10.0, false, "0 2 4 6 8 10"},
        {0.0, 7.0, false, "0 2 4 6"},
        {single(0.1F), single(0.5F), false, "0.1 0.2 0.3 0.4 0.5"}, // ends that are no decimals
        {-0.35, 0.35, false, "-0.3 -0.2 -0.1 0 0.1 0.2 0.3"},
        {1200.0, 400.0, false, "400 600 800 1000 1200"},
        {401990.0, 402830.0, false, "402000 402200 402400 402600 402800"},
        {5210400.01, 5210400.05, false, "5210400.01 5210400.02 5210400.03 5210400.04 5210400.05"},
        {0.0, 2.0e7, false, "0 5000000 1e7 1.5e7 2e7"},
        {1.0e-6, 3.0e-6, false, "1e-6 1.5e-6 2e-6 2.5e-6 3e-6"},
        {single(0.01F), single(100.0F), true, "0.01 0.1 1 10 100"},
        {1.0e-6, 1.0e-2, true, "1e-6 1e-5 0.0001 0.001 0.01"},
        {2.0, 70.0, true, "2 5 10 20 50"},
        {3.0, 9.5, true, "3 4 5 6 7 8 9"},
        {2.1, 2.9, true, "2.2 2.4 2.6 2.8"},
        {100.0, 1.0, true, "1 10 100"},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(numbersOf({c.min, c.max, c.logarithmic}), c.numbers) << c.min << " " << c.max;
    }
}

TEST(TickTest, LinearAxesHaveAboutFourToEightNumbers) {
    for (int i = 0; i < 90; ++i) {
        const double span = 1.0e-6 * std::pow(1.37, i);
        for (const double low : {0.0, -0.77 * span, 3.3 * span, -1.0e6}) {
            const std::size_t count = automaticTicks({low, low + span, false}).size();
            EXPECT_GE(count, 4U) << low << " " << span;
            EXPECT_LE(count, 10U) << low << " " << span;
        }
    }
}

TEST(TickTest, LogarithmicAxesHaveSmallTicksAtMultiplesOfDecades) {
    const std::vector<PlotTick> ticks = automaticTicks({1.0, 100.0, true});
    EXPECT_EQ(ticks.size(), 3U + 2U * 8U);
    EXPECT_TRUE(ticks[1].small);
    EXPECT_DOUBLE_EQ(ticks[1].value, 2.0);
    EXPECT_FALSE(ticks[9].small);
    EXPECT_LT(automaticTicks({1.0e-30, 1.0e30, true}).size(), 70U);
}

class PlotTest : public testing::Test {
  protected:
    PlotTest() {
        selectSurface(&page);
        IGrArea(0.0F, 0.0F, 1.0F, 1.0F);
        IGrUnits(0.0F, 0.0F, 24.0F, 18.0F);
        ToolkitTextOrientation(0.0F);
        WGrTextFont(0, 0, 0.00698156F, 0.0156889F);
        IGrColour("BLACK");
        PlotNew();
        PlotViewport(0.25F, 0.25F, 0.75F, 0.75F); // 6 to 18 by 4.5 to 13.5 cm
        takeErrorNumber();
    }
    ~PlotTest() override {
        selectSurface(nullptr);
        PlotNew();
    }
    PlotTest(const PlotTest &) = delete;
    PlotTest &operator=(const PlotTest &) = delete;

    RecordSurface page;
};

TEST_F(PlotTest, PlacesGoBothWaysOnLinearAndLogarithmicAxes) {
    PlotUnits(0.01, 100.0, 100.0, -100.0); // the Y axis falls
    PlotScales("LOG", "LIN");
    float px = 0.0F;
    float py = 0.0F;
    PlotToPage(1.0F, 50.0F, px, py);
    EXPECT_NEAR(px, 12.0F, 1e-5F);
    EXPECT_NEAR(py, 6.75F, 1e-5F);
    for (const float value : {0.003F, 0.01F, 0.5F, 37.0F, 5000.0F}) {
        PlotToPage(value, value, px, py);
        float x = 0.0F;
        float y = 0.0F;
        PlotFromPage(px, py, x, y);
        EXPECT_NEAR(x / value, 1.0F, 1e-5F);
        EXPECT_NEAR(y, value, 1e-3F);
    }
    PlotToPage(-1.0F, 0.0F, px, py);
    EXPECT_TRUE(std::isnan(px));

    IGrUnits(0.0F, 0.0F, 1.0F, 1.0F); // the page's units are the view's
    PlotToPage(1.0F, 0.0F, px, py);
    EXPECT_NEAR(px, 0.5F, 1e-6F);
    EXPECT_NEAR(py, 0.5F, 1e-6F);
}

TEST_F(PlotTest, LimitsThatAllowNoPlotDrawNothing) {
    const float x[] = {1.0F, 2.0F};
    const double limits[][4] = {{1.0, 0.0, 1.0, 5.0},
                                {0.0, static_cast<double>(NoPlace), 1.0, 5.0},
                                {0.0, 0.0, std::numeric_limits<double>::infinity(), 5.0},
                                {0.0, 0.0, 1.0, 10.0}}; // 0 on the logarithmic axis
    PlotScales("LIN", "LOG");
    for (const auto &l : limits) {
        PlotUnits(l[0], l[1], l[2], l[3]);
        PlotFrame();
        PlotXAxis();
        PlotYAxis();
        EXPECT_EQ(takeErrorNumber(), DrawingBadLimits);
        PlotDrawLine(x, x, 2);
        PlotMarkers(x, x, 2, 14);
        EXPECT_EQ(takeErrorNumber(), DrawingBadLimits);
    }
    EXPECT_TRUE(page.items().empty());
}

TEST_F(PlotTest, LinesAreCutAtTheFrameAndBrokenAtMissingPoints) {
    PlotUnits(1.0, 0.0, 1000.0, 3.0);
    PlotScales("LOG", "LIN");
    const float x[] = {1.0F, 10.0F, 100.0F, 1000.0F, 1000.0F, 100.0F, 0.0F, 10.0F, 1.0F, 10.0F};
    const float y[] = {0.0F, 3.0F, 6.0F, 0.0F, 1.0F, 1.0F, 1.0F, 1.0F, 2.0F, NoPlace};
    PlotDrawLine(x, y, 10);
    EXPECT_THAT(pageTranscript(page),
                ElementsAre("line BLACK 2 6.00 4.50 10.00 13.50",
                            "line BLACK 4 16.00 13.50 18.00 4.50 18.00 7.50 14.00 7.50",
                            "line BLACK 2 10.00 7.50 6.00 10.50"));
}

TEST_F(PlotTest, MapCoordinatesKeepTheirDigits) {
    PlotUnits(512340.0, 7654320.0, 512341.0, 7654321.0);
    const double x[] = {512340.25};
    const double y[] = {7654320.75};
    PlotMarkers(x, y, 1, 14);
    EXPECT_THAT(pageTranscript(page), ElementsAre("mark dot BLACK 9.00 11.25"));
}

TEST_F(PlotTest, TicksPointInwardAndLabelsStandOutsideTheNumbers) {
    PlotUnits(0.0, 0.0, 3.0, 3.0);
    PlotTickLength(1.0F);
    PlotYLabelOffset(0.1F);
    const float place[] = {2.0F, 9.0F};
    const std::vector<std::string> labels = {"-123456", "outside"};
    PlotTickPositions(place, 2);
    PlotTickLabels(labels);
    PlotYAxis();
    PlotYAxisRight();
    PlotYLabel("left");
    PlotYLabelRight("right");
    ASSERT_EQ(page.items().size(), 6U);
    EXPECT_EQ(pageTranscript(page)[0], "line BLACK 2 6.00 10.50 6.28 10.50");
    EXPECT_EQ(pageTranscript(page)[2], "line BLACK 2 18.00 10.50 17.72 10.50");
    const float width = ToolkitTextWidth(labels[0]);
    EXPECT_LT(page.items()[1].points[0].x + width, 6.0F);
    EXPECT_LT(page.items()[4].points[0].x, page.items()[1].points[0].x);
    EXPECT_GT(page.items()[5].points[0].x, page.items()[3].points[0].x + width);

    PlotTickPositions(nullptr, -1); // automatic again
    PlotYAxis();
    EXPECT_GT(page.items().size(), 6U + 2U * 4U - 1U);
}

TEST_F(PlotTest, OnlyPlansHaveGridMarksAndTheyComeBeforeTheFrame) {
    PlotUnits(0.0, 0.0, 10.0, 10.0);
    PlotKind('P');
    PlotFrame();
    EXPECT_EQ(page.items().size(), 1U);
    PlotKind('G');
    PlotFrame();
    EXPECT_EQ(page.items().size(), 1U + 2U * 16U + 1U);
    EXPECT_EQ(pageTranscript(page)[1].substr(0, 9), "line GREY");
    EXPECT_EQ(pageTranscript(page).back().substr(0, 10), "poly BLACK");
}

struct Box {
    float left, bottom, right, top;
};

// Where a text's letters stand, from the top of capitals to the baseline.
Box boxOf(const RecordedItem &text) {
    const float width = textWidthInEms(text.text) * EmPerCharacterWidth * text.characterWidth;
    const float height = CapitalHeight * text.characterHeight;
    const PagePoint at = text.points[0];
    return text.degrees == 90.0F ? Box{at.x - height, at.y, at.x, at.y + width}
                                 : Box{at.x, at.y, at.x + width, at.y + height};
}

bool overlap(const Box &a, const Box &b) {
    return a.left < b.right && b.left < a.right && a.bottom < b.top && b.bottom < a.top;
}

void expectTextsApartAndOnThePage(const RecordSurface &page) {
    std::vector<Box> boxes;
    for (const RecordedItem &item : page.items()) {
        if (item.kind == RecordedItem::Kind::Text) {
            boxes.push_back(boxOf(item));
        }
    }
    EXPECT_GE(boxes.size(), 6U); // both labels, and two numbers on each axis
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const Box &b = boxes[i];
        EXPECT_TRUE(b.left >= -1e-3F && b.bottom >= -1e-3F && b.right <= 24.001F &&
                    b.top <= 18.001F)
            << "box " << i;
        for (std::size_t j = 0; j < i; ++j) {
            EXPECT_FALSE(overlap(b, boxes[j])) << i << " " << j;
        }
    }
}

TEST_F(PlotTest, TextsNeverTouchWhateverTheLimits) {
    const double values[] = {-1.0e6, -314.15, -1.0e-6, 0.0,      1.0e-6,   2.7e-3,
                             0.1,    1.0,     99.9,    402000.0, 402001.0, 1.0e6};
    for (const double low : values) {
        for (const double high : values) {
            for (const bool logarithmic : {false, true}) {
                if (!(low < high) || (logarithmic && low <= 0.0)) {
                    continue;
                }
                SCOPED_TRACE(testing::Message() << low << " to " << high << " " << logarithmic);
                const char *scale = logarithmic ? "LOG" : "LIN";
                page.clear();
                PlotNew();
                PlotViewport(0.1041667F, 0.0833333F, 0.9791667F, 0.9722222F);
                PlotUnits(low, low, high, high);
                PlotScales(scale, scale);
                WGrTextFont(0, 0, 0.00698156F, 0.0156889F);
                PlotXAxis();
                PlotYAxis();
                WGrTextFont(0, 0, 0.00872695F, 0.0196111F);
                PlotXLabel("Easting (m)");
                PlotYLabel("Northing (m)");
                expectTextsApartAndOnThePage(page);
                EXPECT_EQ(takeErrorNumber(), 0);
            }
        }
    }
}

TEST_F(PlotTest, NumbersThatTouchAreThinnedToRoundOnes) {
    PlotViewport(0.1F, 0.1F, 0.2F, 0.9F); // 2.4 cm wide
    PlotUnits(402000.0, 0.0, 402800.0, 1.0);
    PlotXAxis();
    std::string numbers;
    for (const RecordedItem &item : page.items()) {
        numbers += item.text + (item.text.empty() ? "" : " ");
    }
    EXPECT_EQ(numbers, "402000 402400 402800 ");
}

} // namespace
} // namespace keldrin
