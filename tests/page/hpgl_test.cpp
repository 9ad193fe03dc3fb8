#include "page/surfaces/hpgl_surface.h"

#include "page/page_colours.h"
#include "page/text_metrics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;

// The instructions of a file; a label keeps its text, without the character that ends it.
std::vector<std::string> instructionsOf(const std::string &document) {
    std::vector<std::string> list;
    std::size_t at = 0;
    while ((at = document.find_first_not_of('\n', at)) != std::string::npos) {
        const char last = document.compare(at, 2, "LB") == 0 ? '\x03' : ';';
        const std::size_t end = document.find(last, at);
        if (end == std::string::npos) {
            list.push_back("unfinished");
            break;
        }
        list.push_back(document.substr(at, end - at));
        at = end + 1;
    }
    return list;
}

class HpglTest : public testing::Test {
  protected:
    HpglTest() { page.begin(24.0F, 18.0F); }

    // What is drawn, without the head and the tail that every file has.
    std::vector<std::string> drawn() {
        EXPECT_TRUE(page.end());
        std::vector<std::string> list = instructionsOf(page.document());
        const std::vector<std::string> head(list.begin(), list.begin() + 4);
        const std::vector<std::string> tail(list.end() - 2, list.end());
        EXPECT_THAT(head, ElementsAre("IN", "IP0,0,9600,7200", "SC0,9600,0,7200", "PA"));
        EXPECT_THAT(tail, ElementsAre("PU", "SP0"));
        return {list.begin() + 4, list.end() - 2};
    }
    void line(std::vector<PagePoint> points) { page.polyline(points); }

    HpglSurface page;
};

TEST_F(HpglTest, LinesAreDrawnFromTheLowerLeftCornerInFortiethsOfAMillimetre) {
    line({{0.0F, 0.0F}, {1.0F, 0.5F}, {0.5F, 1.0F}});
    EXPECT_THAT(drawn(), ElementsAre("SP1", "PU0,0", "PD9600,3600,4800,7200", "PU"));
}

TEST_F(HpglTest, AreasCannotBeFilledAndWriteNothing) {
    EXPECT_FALSE(page.canFill());
    page.fill(std::vector<PagePoint>{{0.0F, 0.0F}, {1.0F, 0.5F}, {0.5F, 1.0F}}, Colour::Red);
    EXPECT_THAT(drawn(), testing::IsEmpty());
}

TEST_F(HpglTest, NaturalLettersAreOneWidthAndKeepTheAnchorOfTheirText) {
    page.naturalLetters(true);
    for (const char *text : {"WW", "ll"}) { // wider and narrower than the pen's letters
        page.textAnchor(1.0F);
        page.text({0.5F, 0.5F}, text, 0.008F, 0.018F, 0.0F);
    }
    const std::vector<std::string> list = drawn();
    const float em = 27.0F / 16.0F * 0.008F * 9600.0F;
    const auto placeOf = [&](float told) {
        return "PU" + std::to_string(std::lround(4800.0F + told * em - em)) + ",3600";
    };
    EXPECT_THAT(list, testing::Contains(placeOf(2.0F * 0.944F)));
    EXPECT_THAT(list, testing::Contains(placeOf(2.0F * 0.222F)));
    EXPECT_EQ(std::count_if(list.begin(), list.end(),
                            [](const std::string &word) { return word.substr(0, 2) == "SI"; }),
              1);
}

TEST_F(HpglTest, PensAreTakenOnlyWhenTheyChangeAndWhiteIsLeftOut) {
    struct Case {
        PageColour colour;
        std::string pen;
    };
    const Case cases[] = {{Colour::Black, "SP1"}, {Colour::Red, "SP2"},  {0xFF0000, "SP2"},
                          {Colour::Blue, "SP3"},  {Colour::Grey, "SP1"}, {Colour::White, ""}};
    for (const Case &c : cases) {
        page.setPen(c.colour, 0.6F);
        line({{0.0F, 0.0F}, {1.0F, 1.0F}});
    }
    page.setPen(Colour::White, 0.6F);
    page.polygon(std::vector<PagePoint>{{0.1F, 0.1F}, {0.2F, 0.1F}, {0.2F, 0.2F}}, true);
    std::string pens;
    int strokes = 0;
    for (const std::string &instruction : drawn()) {
        pens += instruction.starts_with("SP") ? instruction + " " : "";
        strokes += instruction.starts_with("PD") ? 1 : 0;
    }
    EXPECT_EQ(pens, "SP1 SP2 SP3 SP1 ");
    EXPECT_EQ(strokes, 5);
}

TEST_F(HpglTest, LongLinesAreSplitWithoutLosingAPoint) {
    std::vector<PagePoint> points;
    for (int i = 0; i <= 500; ++i) {
        points.push_back({0.9F + static_cast<float>(i) / 10000.0F, 0.95F});
    }
    line(points);
    std::string reached;
    for (const std::string &instruction : drawn()) {
        reached += instruction.starts_with("PD") ? instruction.substr(2) + "," : "";
    }
    std::string wanted;
    for (std::size_t i = 1; i < points.size(); ++i) {
        wanted += std::to_string(std::lround(points[i].x * 9600.0F)) + ",6840,";
    }
    EXPECT_EQ(reached, wanted);
    std::istringstream lines(page.document());
    for (std::string text; std::getline(lines, text);) {
        EXPECT_LT(text.size(), 200U);
    }
}

TEST_F(HpglTest, PolygonsAreClosedAndFilledOnesAreThreeRings) {
    const std::vector<PagePoint> square = {{0.5F, 0.5F}, {0.6F, 0.5F}, {0.6F, 0.6F}, {0.5F, 0.6F}};
    page.polygon(square, false);
    EXPECT_THAT(drawn(), ElementsAre("SP1", "PU4800,3600",
                                     "PD5760,3600,5760,4320,4800,4320,4800,3600", "PU"));
    page.clear();
    page.polygon(square, true);
    EXPECT_THAT(drawn(),
                ElementsAre("SP1", "PU4800,3600", "PD5760,3600,5760,4320,4800,4320,4800,3600", "PU",
                            "PU4960,3720", "PD5600,3720,5600,4200,4960,4200,4960,3720", "PU",
                            "PU5120,3840", "PD5440,3840,5440,4080,5120,4080,5120,3840", "PU"));
}

TEST_F(HpglTest, TextsAreAsLongAsOnOtherSurfacesAndUprightOnesTurn) {
    constexpr float width = 0.00872695F;
    constexpr float height = 0.0196111F;
    page.text({0.25F, 0.5F}, "ill", width, height, 0.0F);
    page.text({0.25F, 0.25F}, "ill", width, height, 0.0F);
    page.text({0.1F, 0.5F}, "ill", width, height, 90.0F);
    const float cm = textWidthInEms("ill") * EmPerCharacterWidth * width * 24.0F;
    const std::string size = "SI0.0" + std::to_string(std::lround(cm / 3.0F / 1.5F * 1000.0F));
    EXPECT_THAT(drawn(),
                ElementsAre("SP1", size + ",0.176", "DI1.0000,0.0000", "PU2400,3600", "LBill",
                            "PU2400,1800", "LBill", "DI0.0000,1.0000", "PU960,3600", "LBill"));
}

TEST_F(HpglTest, LabelsAreAsciiAndCannotEndEarly) {
    page.text({0.0F, 0.0F},
              "a\x03;\nb\x7F\xC3\xA9\xFF\xE2\x82\xAC"
              "c",
              0.01F, 0.02F, 0.0F);
    EXPECT_THAT(drawn(), testing::Contains("LBa;b???c"));
    page.clear();
    page.text({0.0F, 0.0F}, "\x03", 0.01F, 0.02F, 0.0F);
    EXPECT_THAT(drawn(), testing::IsEmpty());

    const std::string longText(400, 'x');
    page.text({0.0F, 0.0F}, longText, 0.01F, 0.02F, 0.0F);
    std::string shown;
    for (const std::string &instruction : drawn()) {
        EXPECT_LT(instruction.size(), 200U);
        shown += instruction.starts_with("LB") ? instruction.substr(2) : "";
    }
    EXPECT_EQ(shown, longText);
}

TEST_F(HpglTest, ASecondPageAndFarPlacesAreSafe) {
    page.setPen(Colour::Red, 0.6F);
    line({{0.0F, 0.0F}, {1.0F, 1.0F}});
    page.begin(24.0F, 18.0F); // a cleared page takes its pen and letters anew
    line({{-900.0F, 0.0F}, {900.0F, NAN}});
    EXPECT_THAT(drawn(), ElementsAre("SP2", "PU-32767,0", "PD32767,-32767", "PU"));
}

} // namespace
} // namespace keldrin
