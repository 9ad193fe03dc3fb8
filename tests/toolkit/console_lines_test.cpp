#include "toolkit/console_lines.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;

std::vector<std::string> linesOf(std::string_view bytes, std::size_t pieces) {
    std::vector<std::string> lines;
    ConsoleLines console([&](std::string_view line) { lines.emplace_back(line); });
    for (std::size_t i = 0; i < bytes.size(); i += pieces) {
        console.take(bytes.substr(i, pieces));
    }
    console.finish();
    return lines;
}

TEST(ConsoleLines, AreWhatAUserWouldReadOnTheConsole) {
    const struct {
        std::string_view bytes;
        std::vector<std::string> lines;
    } cases[] = {
        {"", {}},
        {"one\ntwo\r\nthree", {"one", "two", "three"}},
        {"\n \n\r\n\t\n", {}},                              // blank lines
        {"10 %\r20 %\r100 %\nready\n", {"100 %", "ready"}}, // written over and over
        {"long word\rok\n", {"ok"}},
        {"50 %\r\n", {"50 %"}},
        {"50 %\r", {"50 %"}},
        {"50 %\r    \r\n", {}}, // wiped out
        {"50 %\r\x1B[K\ndone\n", {"done"}},
        {"10\b\b20\b5 %\n", {"25 %"}},
        {"\xC3\xA9\b\b\be\n", {"e"}},
        {"a\tb\n12345678\tc\n", {"a       b", "12345678        c"}},
        {"\x1B[1;31mred\x1B[0m \x1B]0;title\abell\a\n", {"red bell"}},
        {"\x1B]0;title\x1B\\x\n", {"x"}},
        {"\x1B[\nwhole\x1B\n", {"whole"}}, // a torn sequence takes no line with it
        {std::string_view("a\0b\x01\x7F c\f\n", 9), {"ab c"}},
        {"  kept in front  \n", {"  kept in front"}},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(linesOf(c.bytes, 1000), c.lines) << testing::PrintToString(c.bytes);
        EXPECT_EQ(linesOf(c.bytes, 1), c.lines) << testing::PrintToString(c.bytes);
    }
}

TEST(ConsoleLines, CutALineWithoutEndAndTakeTheNextOne) {
    const std::string head(ConsoleLines::MostBytes - 1, 'x');
    EXPECT_THAT(linesOf(head + "\xC3\xA9\nnext\n", 7), ElementsAre(head, "next"));
    const std::string endless(1'000'000, 'y');
    EXPECT_THAT(linesOf(endless + "\t\t\nnext\n", 4096),
                ElementsAre(std::string(ConsoleLines::MostBytes, 'y'), "next"));
    EXPECT_THAT(linesOf(endless + "\r100 %\n", 4096), ElementsAre("100 %"));
}

} // namespace
} // namespace keldrin
