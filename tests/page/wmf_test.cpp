#include "page/surfaces/wmf_surface.h"

#include "page/page_colours.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;

using Words = std::vector<int>;

struct Record {
    WmfFunction function = WmfFunction::End;
    Words words; ///< signed, as in the file
};

Words wordsOf(const std::string &bytes) {
    Words words;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto low = static_cast<unsigned char>(bytes[i]);
        const auto high = static_cast<unsigned char>(bytes[i + 1]);
        words.push_back(static_cast<std::int16_t>(low | high << 8));
    }
    return words;
}

int longAt(const Words &words, std::size_t at) {
    return (words.at(at) & 0xFFFF) | words.at(at + 1) << 16;
}

constexpr std::size_t PlaceableWords = 11;
constexpr std::size_t HeaderWords = 9;

class WmfTest : public testing::Test {
  protected:
    WmfTest() { page.begin(24.0F, 18.0F); }

    // All records; the sizes in the headers are checked on the way.
    std::vector<Record> records() {
        EXPECT_TRUE(page.end());
        const Words words = wordsOf(page.document());
        std::vector<Record> list;
        int largest = 0;
        std::size_t at = PlaceableWords + HeaderWords;
        while (at + 3 <= words.size()) {
            const int size = longAt(words, at);
            if (size < 3 || at + static_cast<std::size_t>(size) > words.size()) {
                ADD_FAILURE() << "record of " << size << " words at word " << at;
                break;
            }
            largest = std::max(largest, size);
            const auto first = words.begin() + static_cast<std::ptrdiff_t>(at);
            list.push_back({static_cast<WmfFunction>(first[2]), Words(first + 3, first + size)});
            at += static_cast<std::size_t>(size);
        }
        EXPECT_EQ(at, words.size());
        EXPECT_EQ(longAt(words, PlaceableWords + 3),
                  static_cast<int>(words.size() - PlaceableWords));
        EXPECT_EQ(longAt(words, PlaceableWords + 6), largest);
        EXPECT_EQ(words[PlaceableWords + 5], objectsIn(list));
        EXPECT_TRUE(!list.empty() && list.back().function == WmfFunction::End);
        return list;
    }
    static int objectsIn(const std::vector<Record> &list) {
        return static_cast<int>(std::count_if(list.begin(), list.end(), [](const Record &record) {
            return record.function == WmfFunction::CreatePenIndirect ||
                   record.function == WmfFunction::CreateBrushIndirect ||
                   record.function == WmfFunction::CreateFontIndirect;
        }));
    }
    // The words of all records of a function.
    std::vector<Words> all(WmfFunction function) {
        std::vector<Words> list;
        for (const Record &record : records()) {
            if (record.function == function) {
                list.push_back(record.words);
            }
        }
        return list;
    }
    std::string firstTextBytes() {
        const Words words = all(WmfFunction::TextOut).at(0);
        std::string bytes;
        for (int i = 0; i < words.at(0); ++i) {
            const int word = words.at(1 + static_cast<std::size_t>(i) / 2);
            bytes += static_cast<char>(i % 2 == 0 ? word & 0xFF : word >> 8 & 0xFF);
        }
        return bytes;
    }

    WmfSurface page;
};

TEST_F(WmfTest, TheHeadTellsThePageAndItsChecksum) {
    EXPECT_TRUE(page.end());
    std::ostringstream head;
    for (const char byte : page.document().substr(0, 22)) {
        head << std::hex << std::setw(2) << std::setfill('0')
             << static_cast<int>(static_cast<unsigned char>(byte)) << ' ';
    }
    EXPECT_EQ(head.str(), "d7 cd c6 9a 00 00 00 00 00 00 e9 24 af 1b e8 03 00 00 00 00 bf 6b ");
    EXPECT_THAT(all(WmfFunction::SetWindowExt), ElementsAre(ElementsAre(7087, 9449)));
    EXPECT_THAT(all(WmfFunction::Rectangle), ElementsAre(ElementsAre(7087, 9449, 0, 0)));
}

TEST_F(WmfTest, LinesAreSegmentsWithTheTopOfThePageAtZero) {
    page.setPen(Colour::Black, 0.6F);
    page.polyline(std::vector<PagePoint>{{0.0F, 0.0F}, {1.0F, 0.5F}, {0.5F, 1.0F}});
    EXPECT_THAT(all(WmfFunction::MoveTo), ElementsAre(ElementsAre(7087, 0)));
    EXPECT_THAT(all(WmfFunction::LineTo),
                ElementsAre(ElementsAre(3544, 9449), ElementsAre(0, 4725)));
    page.clear();
    page.polygon(std::vector<PagePoint>{{0.0F, 0.0F}, {1.0F, 0.5F}, {0.5F, 1.0F}}, false);
    EXPECT_THAT(all(WmfFunction::LineTo), testing::SizeIs(3)) << "an outline is closed";
    EXPECT_THAT(all(WmfFunction::Polygon), testing::IsEmpty());
}

TEST_F(WmfTest, ObjectsAreMadeOnceAndSelectedByTheirSlot) {
    const std::vector<PagePoint> line = {{0.0F, 0.0F}, {1.0F, 1.0F}};
    for (const PageColour colour : {Colour::Red, Colour::Blue, Colour::Red, Colour::Red}) {
        page.setPen(colour, 0.72F);
        page.polyline(line);
    }
    page.polygon(std::vector<PagePoint>{{0.1F, 0.1F}, {0.2F, 0.1F}, {0.2F, 0.2F}}, true);
    // Slots 0 and 1 are the pen that draws nothing and the brush of the white page.
    EXPECT_THAT(all(WmfFunction::CreatePenIndirect),
                ElementsAre(ElementsAre(5, 0, 0, -1, 0xFF), ElementsAre(0, 10, 10, 0xE0, 0),
                            ElementsAre(0, 10, 10, 0, 0xE0)));
    EXPECT_THAT(all(WmfFunction::CreateBrushIndirect),
                ElementsAre(ElementsAre(0, -1, 0xFF, 0), ElementsAre(0, 0xE0, 0, 0)));
    EXPECT_THAT(all(WmfFunction::SelectObject),
                ElementsAre(ElementsAre(0), ElementsAre(1), ElementsAre(2), ElementsAre(3),
                            ElementsAre(2), ElementsAre(0), ElementsAre(4)));
    EXPECT_THAT(all(WmfFunction::Polygon),
                ElementsAre(ElementsAre(3, 945, 6378, 1890, 6378, 1890, 5670)));
}

TEST_F(WmfTest, AreasHaveTheirOwnBrushAndLeaveThePen) {
    page.setPen(Colour::Black, 0.72F);
    page.fill(std::vector<PagePoint>{{0.1F, 0.1F}, {0.2F, 0.1F}, {0.2F, 0.2F}}, 0x123456);
    page.polyline(std::vector<PagePoint>{{0.0F, 0.0F}, {1.0F, 1.0F}});
    EXPECT_THAT(all(WmfFunction::CreateBrushIndirect),
                ElementsAre(ElementsAre(0, -1, 0xFF, 0), ElementsAre(0, 0x3412, 0x56, 0)));
    EXPECT_THAT(all(WmfFunction::Polygon),
                ElementsAre(ElementsAre(3, 945, 6378, 1890, 6378, 1890, 5670)));
    EXPECT_THAT(all(WmfFunction::CreatePenIndirect),
                ElementsAre(ElementsAre(5, 0, 0, -1, 0xFF), ElementsAre(0, 10, 10, 0, 0)));
}

TEST_F(WmfTest, TextsStandOnTheirBaselineInTheirColourAndDirection) {
    page.setPen(Colour::Blue, 0.6F);
    page.text({0.5F, 0.25F}, "abc", 0.00872695F, 0.0196111F, 0.0F);
    page.text({0.5F, 0.25F}, "d", 0.00872695F, 0.0196111F, 90.0F);
    EXPECT_THAT(all(WmfFunction::SetTextAlign), ElementsAre(ElementsAre(24)));
    EXPECT_THAT(all(WmfFunction::SetTextColor), ElementsAre(ElementsAre(0, 0xE0)));
    EXPECT_THAT(all(WmfFunction::TextOut),
                ElementsAre(ElementsAre(3, 'a' | 'b' << 8, 'c', 5315, 4725),
                            ElementsAre(1, 'd', 5315, 4725)));
    const std::vector<Words> fonts = all(WmfFunction::CreateFontIndirect);
    ASSERT_EQ(fonts.size(), 2U);
    EXPECT_THAT(Words(fonts[0].begin(), fonts[0].begin() + 5), ElementsAre(-139, 0, 0, 0, 400));
    EXPECT_THAT(Words(fonts[1].begin(), fonts[1].begin() + 5), ElementsAre(-139, 0, 900, 900, 400));
    EXPECT_EQ(fonts[0].size(), 9U + 16U);
    EXPECT_EQ(fonts[0][9], 'A' | 'r' << 8);
}

TEST_F(WmfTest, TextsAreWindows1252) {
    page.text({0.0F, 0.0F}, "\xC3\xA9\xE2\x82\xAC\xE2\x80\x94\xCE\xA9\x01\xC2\x85\xFF~", 0.01F,
              0.02F, 0.0F);
    EXPECT_EQ(firstTextBytes(), "\xE9\x80\x97??~");
}

TEST_F(WmfTest, ASecondPageHoldsNothingOfTheFirstAndFarPlacesAreHeld) {
    page.text({0.0F, 0.0F}, "first", 0.01F, 0.02F, 0.0F);
    page.begin(24.0F, 18.0F);
    page.polyline(std::vector<PagePoint>{{-900.0F, 0.0F}, {900.0F, 0.5F}});
    EXPECT_THAT(all(WmfFunction::TextOut), testing::IsEmpty());
    EXPECT_THAT(all(WmfFunction::MoveTo), ElementsAre(ElementsAre(7087, -32768)));
    EXPECT_THAT(all(WmfFunction::LineTo), ElementsAre(ElementsAre(3544, 32767)));
}

} // namespace
} // namespace keldrin
