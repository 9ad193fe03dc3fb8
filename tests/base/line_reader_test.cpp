#include "base/line_reader.h"
#include "base/safe_writer.h"
#include "support/files.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;

std::vector<std::string> linesOf(LineReader &reader) {
    std::vector<std::string> lines;
    std::string_view line;
    while (reader.next(line) == LineStatus::Line) {
        lines.emplace_back(line);
    }
    return lines;
}

std::vector<std::string> linesOfText(std::string_view text, std::size_t limit = 256) {
    LineReader reader(limit);
    reader.openText(text);
    return linesOf(reader);
}

TEST(LineReader, TakesEveryLineEndAndALastLineWithoutOne) {
    EXPECT_THAT(linesOfText("a\nb\r\nc"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(linesOfText("a\n\nb\n"), ElementsAre("a", "", "b"));
    EXPECT_THAT(linesOfText("a\r\n\r\n"), ElementsAre("a", ""));
    EXPECT_THAT(linesOfText(""), ElementsAre());
    EXPECT_THAT(linesOfText("\n"), ElementsAre(""));
    EXPECT_THAT(linesOfText("\xEF\xBB\xBFlabel\n"), ElementsAre("label"));
}

TEST(LineReader, StopsAtTheEndMarkAndTellsWhatStandsBehindIt) {
    LineReader reader(256);
    reader.openText("a\nb\x1A\nrest");
    EXPECT_THAT(linesOf(reader), ElementsAre("a", "b"));
    EXPECT_TRUE(reader.endedAtMark());

    LineReader padded(256);
    padded.openText("a\n\x1A\x1A  \r\n");
    EXPECT_THAT(linesOf(padded), ElementsAre("a"));
    EXPECT_FALSE(padded.endedAtMark());
}

TEST(LineReader, CutsLongLinesAtTheStartOfACharacter) {
    EXPECT_THAT(linesOfText("abcdef\nx\n", 4), ElementsAre("abcd", "x"));
    EXPECT_THAT(linesOfText("abc\xC3\xA9z\n", 4), ElementsAre("abc"));
}

TEST(LineReader, ReadsALineLongerThanItsBufferFromAFile) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("long.txt");
    const std::string text = "first\n" + std::string(1'000'000, 'x') + "\nlast";
    ASSERT_TRUE(writeWholeFile(path, text).written);

    LineReader reader(10, 64);
    ASSERT_TRUE(reader.open(path));
    EXPECT_THAT(linesOf(reader), ElementsAre("first", "xxxxxxxxxx", "last"));
    EXPECT_EQ(reader.lineNumber(), 3);
}

TEST(LineReader, GivesTheSameLinesWhateverTheBuffer) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("any.txt");
    std::string text;
    for (int i = 0; i < 300; ++i) {
        text += std::string(static_cast<std::size_t>(i % 23), 'a') + (i % 2 == 0 ? "\r\n" : "\n");
    }
    ASSERT_TRUE(writeWholeFile(path, text).written);
    const std::vector<std::string> expected = linesOfText(text, 20);
    ASSERT_EQ(expected.size(), 300U);
    for (const std::size_t buffer : {22U, 23U, 37U, 4096U}) {
        LineReader reader(20, buffer);
        ASSERT_TRUE(reader.open(path));
        EXPECT_EQ(linesOf(reader), expected) << buffer;
    }
}

TEST(LineReader, GivesNoLineMoreOnceItsWatchHasStoppedIt) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("watched.txt");
    ASSERT_TRUE(writeWholeFile(path, "1234567\n1234567\n1234567\n1234567").written);
    const auto read = [&path](std::uintmax_t mostBytes, std::vector<std::uintmax_t> &asked) {
        LineReader reader(4, 12);
        EXPECT_TRUE(reader.open(path));
        reader.watch([&](std::uintmax_t done, std::uintmax_t total) {
            EXPECT_EQ(total, 31U);
            asked.push_back(done);
            return done <= mostBytes;
        });
        const std::vector<std::string> lines = linesOf(reader);
        std::string_view line;
        EXPECT_EQ(reader.next(line), LineStatus::End);
        EXPECT_EQ(reader.stopped(), mostBytes < 31);
        return lines.size();
    };
    std::vector<std::uintmax_t> asked;
    EXPECT_EQ(read(31, asked), 4U);
    EXPECT_EQ(asked.back(), 31U);
    EXPECT_GT(asked.size(), 2U);
    EXPECT_LT(read(20, asked), 3U) << "the line that was begun is none";
    EXPECT_LT(read(30, asked), 4U) << "stopped with its last piece read";
}

TEST(LineReader, WatchesATextInMemoryToo) {
    LineReader reader(4, 12);
    reader.openText("1234567\n1234567\n1234567\n1234567");
    reader.watch([](std::uintmax_t done, std::uintmax_t total) {
        EXPECT_EQ(total, 31U);
        return done < 12;
    });
    EXPECT_EQ(linesOf(reader).size(), 2U);
    EXPECT_TRUE(reader.stopped());
}

TEST(LineReader, RefusesWhatIsNoFile) {
    const TemporaryDirectory directory;
    LineReader reader(80);
    EXPECT_FALSE(reader.open(directory.path("missing")));
    EXPECT_FALSE(reader.errorText().empty());
    EXPECT_FALSE(reader.open(directory.path()));
    EXPECT_EQ(reader.errorText(), "is a directory");
}

TEST(LineReaderNotes, TellsALastLineWithoutItsEndAndALineThatWasCut) {
    struct Case {
        std::string_view text;
        bool endedInLine;
        int firstCutLine;
    };
    const Case cases[] = {{"", false, 0},
                          {"one\n", false, 0},
                          {"one\r\n", false, 0},
                          {"one\ntwo", true, 0},
                          {"one\n  \t", true, 0},
                          {"one\n\r", false, 0},
                          {"one\n  \x1A", false, 0},
                          {"one\ntw\x1A", true, 0},
                          {"one\n\x1Atwo", false, 0},
                          {"12345678\n", false, 0},
                          {"ok\n123456789\nok\n", false, 2},
                          {"123456789", true, 1},
                          {"ok\n12345678901234567890123\n", false, 2}};
    for (const Case &c : cases) {
        LineReader reader(8, 16);
        reader.openText(c.text);
        std::string_view line;
        while (reader.next(line) == LineStatus::Line) {
        }
        EXPECT_EQ(reader.endedInLine(), c.endedInLine) << c.text;
        EXPECT_EQ(reader.firstCutLine(), c.firstCutLine) << c.text;
    }
}

TEST(LineReader, LooksForDataBehindAnEndMarkBeyondItsBuffer) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("x.txt");
    for (const bool data : {false, true}) {
        putFile(path, "12345\x1A" + std::string(20000, ' ') + (data ? "6" : ""));
        LineReader reader(4, 6);
        ASSERT_TRUE(reader.open(path));
        EXPECT_EQ(linesOf(reader), std::vector<std::string>{"1234"});
        EXPECT_EQ(reader.endedAtMark(), data);
    }
}

} // namespace
} // namespace keldrin
