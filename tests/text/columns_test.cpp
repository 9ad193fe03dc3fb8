#include "base/index.h"
#include "support/message_recorder.h"
#include "text/column_values.h"
#include "text/columns.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr std::size_t Width = 32;

std::vector<std::string> columnsOf(std::string_view line, int maxCols = 16,
                                   std::size_t width = Width) {
    SplitCells cells;
    Str_Split_Columns(line, maxCols, width, cells);
    return {cells.cells.begin(), cells.cells.end()};
}

std::vector<std::string> csvOf(std::string_view line, int maxCols = 16) {
    SplitCells cells;
    Str_Split_Csv(line, maxCols, Width, cells);
    return {cells.cells.begin(), cells.cells.end()};
}

TEST(SplitColumns, BlanksAndCommas) {
    const std::pair<const char *, std::vector<std::string>> cases[] = {
        {"", {}},
        {"   ", {}},
        {"\t", {}},
        {"1,2,3", {"1", "2", "3"}},
        {"1,2,", {"1", "2"}}, // nothing is pending after the last comma
        {" 1 , 2", {"1", "2"}},
        {"1  2", {"1", "2"}},
        {"1\t \t2\t", {"1", "2"}},
        {"1, 2 ,3 , 4", {"1", "2", "3", "4"}},
        {",,", {"", ""}},
        {"1,,3", {"1", "", "3"}},
        {"1 , , 3", {"1", "", "3"}},
        {"1 \t,\t,3", {"1", "", "3"}},
        {" ,1", {"", "1"}},
        {"\t,1", {"", "1"}},
        {"1 2,3 , 4 5 ,", {"1", "2", "3", "4", "5"}}};
    for (const auto &[line, expected] : cases) {
        EXPECT_THAT(columnsOf(line), ElementsAreArray(expected)) << '[' << line << ']';
    }
}

TEST(SplitColumns, Quotes) {
    const std::pair<const char *, std::vector<std::string>> cases[] = {
        {"a \"b c\",d", {"a", "b c", "d"}},
        {"\"a,b\" c", {"a,b", "c"}},
        {"\"\" x", {"", "x"}},
        {"a \"\"", {"a", ""}},
        {"\" b\tc \"", {"b c"}},
        {"a\"b c\"d e", {"a b c d", "e"}},
        {"a \"b c, d", {"a", "b c, d"}}, // never closed: up to the end of the line
        {"a \"", {"a", ""}},
        {"\"a ,b\"", {"a, b"}}}; // blanks go after a comma between quotes too
    for (const auto &[line, expected] : cases) {
        EXPECT_THAT(columnsOf(line), ElementsAreArray(expected)) << '[' << line << ']';
    }
}

// Lines without quotes are split in another way than those with quotes.
TEST(SplitColumns, AQuotedCellBehindALineChangesNoneOfItsCells) {
    constexpr std::string_view alphabet = " \t,ab";
    constexpr std::size_t length = 6;
    std::string line(length, ' ');
    for (int code = 0; code < 15625; ++code) { // 5^6 lines
        int rest = code;
        for (char &c : line) {
            c = alphabet[asIndex(rest % 5)];
            rest /= 5;
        }
        std::vector<std::string> expected = columnsOf(line);
        expected.emplace_back("q");
        ASSERT_EQ(columnsOf(line + " \"q\""), expected) << '[' << line << ']';
        expected.resize(std::min<std::size_t>(expected.size(), 2));
        ASSERT_EQ(columnsOf(line + " \"q\"", 2), expected) << '[' << line << ']';
    }
}

TEST(SplitColumns, DropsWhatStandsBehindTheLastColumnInSilence) {
    const MessageRecorder messages;
    EXPECT_THAT(columnsOf("1 2 3 4", 3), ElementsAre("1", "2", "3"));
    EXPECT_THAT(columnsOf("1 2 3", 3), ElementsAre("1", "2", "3"));
    EXPECT_THAT(columnsOf("1 2", 0), IsEmpty());
    EXPECT_THAT(columnsOf("1 2", -1), IsEmpty());
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_THAT(columnsOf("abcdef \xC3\xA9\xC3\xA9", 9, 3), ElementsAre("abc", "\xC3\xA9"));
}

TEST(SplitColumns, CellsOutliveTheLineAndColumnsAreOneBased) {
    SplitCells cells;
    {
        std::string line = "10,20";
        Str_Split_Columns(line, 9, Width, cells);
        line.assign("xxxxxxxx");
    }
    EXPECT_EQ(cells.column(2), "20");
    EXPECT_EQ(cells.column(0), "");
    EXPECT_EQ(cells.column(3), "");
}

TEST(SplitCsv, OnlyCommasOutsideQuotesCount) {
    const std::pair<const char *, std::vector<std::string>> cases[] = {
        {"", {}},
        {"1 2, 3 ,4", {"1 2", "3", "4"}},
        {"1,,3", {"1", "", "3"}},
        {"a,b,", {"a", "b,"}}, // a comma at the end is part of the last cell
        {"a,,", {"a", ","}},
        {",", {","}},
        {"\"a,b\",\tc", {"a,b", "c"}},
        {"a,\"b,c", {"a", "b,c"}}};
    for (const auto &[line, expected] : cases) {
        EXPECT_THAT(csvOf(line), ElementsAreArray(expected)) << '[' << line << ']';
    }
}

TEST(SplitCsv, ReportsTooManyCells) {
    const MessageRecorder messages;
    EXPECT_THAT(csvOf("1,2,3", 3), ElementsAre("1", "2", "3"));
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_THAT(csvOf("1,2,3,4,5", 3), ElementsAre("1", "2", "3"));
    EXPECT_THAT(messages.errors, ElementsAre("WARNING: more than 3 columns in csv file.|"
                                             "Extra columns will be dropped."));
}

TEST(SplitDelimited, AnyOfTheDelimiters) {
    SplitCells cells;
    Str_Split_Delimited("a:b; c;;\"d:e\"", ";:", 16, Width, cells);
    EXPECT_THAT(cells.cells, ElementsAre("a", "b", "c", "", "d:e"));
}

TEST(TrailingInteger, LastRunOfDigits) {
    int value = 0;
    EXPECT_EQ(Str_Trailing_Integer("LV12X", value), 0);
    EXPECT_EQ(value, 12);
    EXPECT_EQ(Str_Trailing_Integer("A1B23", value), 0);
    EXPECT_EQ(value, 23);
    EXPECT_EQ(Str_Trailing_Integer("007", value), 0);
    EXPECT_EQ(value, 7);
    for (const char *text : {"", "  ", "LVX"}) {
        EXPECT_EQ(Str_Trailing_Integer(text, value), -1);
        EXPECT_EQ(value, 1);
    }
    EXPECT_GT(Str_Trailing_Integer("99999999999", value), 0);
    EXPECT_EQ(value, 1);
}

TEST(ColumnValues, MissingUnlessRead) {
    const std::array columns = {3, 1, 0, 9, 4, 5, -1};
    std::array<float, 7> reals{};
    Str_Columns_to_R4("1.5 2 3.5 1* x", columns, reals);
    EXPECT_THAT(reals, ElementsAre(3.5F, 1.5F, -1.0E32F, -1.0E32F, -1.0E32F, -1.0E32F, -1.0E32F));
    std::array<double, 2> exact{};
    Str_Columns_to_R8("0.1", std::array{1}, exact);
    EXPECT_THAT(exact, ElementsAre(0.1, -1.0E32));
}

} // namespace
} // namespace keldrin
