#include "messages/reading_place.h"

#include "messages/message_sink.h"
#include "support/message_recorder.h"

#include <gmock/gmock.h>

#include <string>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ReadingPlaceTest : public testing::Test {
  protected:
    ReadingPlaceTest() {
        messageSink().box = [this](std::span<const MessageLine> lines, bool) {
            std::string text;
            for (const MessageLine &line : lines) {
                text.append(text.empty() ? "" : "|").append(line.view());
            }
            boxes.push_back(text);
            return true;
        };
    }
    ~ReadingPlaceTest() override { messageSink() = MessageSink{}; }

    // A file of rows, each a fault or "good"; some readers judge a row with two messages.
    static void readRows(const std::string &text, const std::string &path = "dir/line.z") {
        LineReader reader(256);
        reader.openText(text);
        const ReadingPlace place(reader, path);
        std::string_view line;
        while (reader.next(line) == LineStatus::Line) {
            if (line != "good") {
                ReportError({"bad " + std::string(line)});
            }
        }
        ReportInfoLine("read");
    }

    MessageRecorder messages;
    std::vector<std::string> boxes;
};

TEST_F(ReadingPlaceTest, AFewFaultyRowsShowABoxEach) {
    readRows("a\ngood\nb\n");
    EXPECT_THAT(boxes, ElementsAre("bad a", "bad b"));
    BeginCommandMessages();
    boxes.clear();
    readRows("a\nb\nc\n");
    EXPECT_THAT(boxes, ElementsAre("bad a", "bad b", "bad c")) << "a summary of one is its box";
}

TEST_F(ReadingPlaceTest, ManyFaultyRowsShowOneBoxMoreAndAllAreWritten) {
    readRows("a\nb\nc\ngood\nd\ne\n");
    EXPECT_THAT(boxes, ElementsAre("bad a", "bad b",
                                   "3 more rows of line.z have faults, lines 3 to 6. The first "
                                   "fault:|bad c|The last: bad e|F2 lists them all."));
    EXPECT_EQ(messages.errors.size(), 5U);
    EXPECT_EQ(messageLog().record.errors, 5) << "the summary is no error of its own";
}

TEST_F(ReadingPlaceTest, TheSecondPassShowsOnlyWhatTheFirstHasNot) {
    readRows("a\nb\nc\nd\n");
    boxes.clear();
    readRows("a\nb\nc\nd\n");
    EXPECT_THAT(boxes, IsEmpty());
    readRows("a\nb\nnew\nnewer\n");
    EXPECT_THAT(boxes, ElementsAre(HasSubstr("2 more rows of line.z")));
    boxes.clear();
    readRows("a\nb\n", "other.z");
    EXPECT_THAT(boxes, ElementsAre(HasSubstr("2 more rows of other.z")))
        << "another file has rows of its own";
    BeginCommandMessages();
    boxes.clear();
    readRows("a\nb\n");
    EXPECT_EQ(boxes.size(), 2U) << "the next command begins anew";
}

TEST_F(ReadingPlaceTest, AfterTheLastRowABoxIsShownAtOnce) {
    LineReader reader(256);
    reader.openText("a\nb\nc\n");
    const ReadingPlace place(reader, "line.z");
    std::string_view line;
    while (reader.next(line) == LineStatus::Line) {
        ReportError({"bad " + std::string(line)});
    }
    ReportError({"nothing is left"});
    EXPECT_THAT(boxes, ElementsAre("bad a", "bad b", "nothing is left"));
}

TEST_F(ReadingPlaceTest, WithoutAnybodyToShowABoxNothingIsKeptForOne) {
    messageSink().box = {};
    readRows("a\nb\nc\nd\n");
    messageSink().box = [this](std::span<const MessageLine>, bool) {
        boxes.emplace_back("late");
        return true;
    };
    readRows("good\n");
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(ReadingPlaceTest, MessagesOfTheListNameFileAndRow) {
    ReportInfoLine("before");
    readRows("good\nx\n");
    ReportWarning({"after", "why"});
    const auto &told = messageLog().reported;
    ASSERT_EQ(told.size(), 4U);
    EXPECT_EQ(told[0].file + std::to_string(told[0].row), "0");
    EXPECT_EQ(told[1].file + std::to_string(told[1].row), "line.z2");
    EXPECT_EQ(told[1].kind, MessageKind::Error);
    EXPECT_EQ(told[2].file + std::to_string(told[2].row), "line.z0") << "the file was read";
    EXPECT_EQ(told[3].file, "");
    EXPECT_THAT(told[3].lines, ElementsAre("after", "why"));
}

TEST_F(ReadingPlaceTest, ANoticeIsListedOnceAsWhatItIs) {
    ReportNotice(NoticeLevel::Status, {"kept", "under a name"});
    ReportNotice(NoticeLevel::Box, {"lost"});
    const auto &told = messageLog().reported;
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0].kind, MessageKind::Notice);
    EXPECT_THAT(told[0].lines, ElementsAre("kept", "under a name"));
    EXPECT_EQ(told[1].kind, MessageKind::Error);
}

} // namespace
} // namespace keldrin
