#include "screen/screen_messages.h"

#include "messages/message_log.h"
#include "messages/message_sink.h"
#include "messages/watched_reading.h"
#include "screen/graphics_errors.h"
#include "screen/log_view.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"
#include "support/work_backend.h"
#include "toolkit/long_work.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

class ScreenTest : public testing::Test {
  protected:
    ScreenTest() {
        ToolkitInit(backend, {"keldrin"});
        WorkBackend::noticeEveryStep();
        showMessagesOnScreen();
        messageLog() = MessageLog{};
        OpenLogFiles(directory.path("keldrin "));
    }
    ~ScreenTest() override {
        messageSink() = MessageSink{};
        messageLog() = MessageLog{};
        ToolkitClose();
    }
    ScreenTest(const ScreenTest &) = delete;
    ScreenTest &operator=(const ScreenTest &) = delete;

    TemporaryDirectory directory;
    WorkBackend backend;
};

TEST_F(ScreenTest, AnErrorIsABoxOfItsLines) {
    ReportError({"one", "two"});
    ReportNotice(NoticeLevel::Box, {"three"});
    EXPECT_THAT(backend.boxes, ElementsAre(ElementsAre("one", "two"), ElementsAre("three")));
}

TEST_F(ScreenTest, NoticesOfOneActionStandTogetherInTheStatusBar) {
    ReportNotice(NoticeLevel::Status, {"Models are older."});
    ReportNotice(NoticeLevel::Status, {"Kept as line.std~"});
    ReportNotice(NoticeLevel::Status, {"Kept as line.std~"});
    ReportNotice(NoticeLevel::Status, {"2 soundings are left out."});
    EXPECT_EQ(toolkitState().notices,
              "Models are older. Kept as line.std~; 2 soundings are left out.");
    ToolkitEvent event;
    ToolkitNextEvent(event); // the user acts
    ReportNotice(NoticeLevel::Status, {"Another."});
    EXPECT_EQ(toolkitState().notices, "Another.");
}

TEST_F(ScreenTest, TheWishForNoFurtherMessagesLeavesNoticesOfLostData) {
    toolkitState().boxesQuiet = true;
    ReportError({"one"});
    ReportNotice(NoticeLevel::Box, {"not written"});
    EXPECT_THAT(backend.boxes, ElementsAre(ElementsAre("not written")));
}

TEST_F(ScreenTest, ClearingTheLogForgetsItsLines) {
    ReportInfoLine("line");
    ClearLog();
    EXPECT_TRUE(messageLog().LogLineBuffer.empty());
}

TEST_F(ScreenTest, FilesAreWatchedPieceByPiece) {
    std::string text;
    for (int i = 0; i < 100000; ++i) {
        text += "line " + std::to_string(i) + "\n";
    }
    const std::string path = directory.path("big.txt");
    putFile(path, text);
    const auto linesRead = [&path] {
        LineReader reader(80);
        EXPECT_TRUE(reader.open(path));
        WatchedReading watched(reader, path);
        std::string_view line;
        int lines = 0;
        while (reader.next(line) == LineStatus::Line) {
            ++lines;
        }
        EXPECT_EQ(reader.next(line), LineStatus::End);
        EXPECT_EQ(watched.stopped(), lines < 100000);
        return lines;
    };
    messageSink().beginWork = {};
    EXPECT_EQ(linesRead(), 100000) << "without anybody who watches";
    EXPECT_THAT(backend.works, SizeIs(0));
    showMessagesOnScreen();
    EXPECT_EQ(linesRead(), 100000);
    ASSERT_EQ(backend.works.size(), 1U);
    EXPECT_EQ(backend.works.front().words, path);
    EXPECT_EQ(backend.works.front().caption, "Reading big.txt");
    EXPECT_GT(backend.fractions.size(), 2U);
    EXPECT_EQ(backend.fractions.back(), 1.0);
    EXPECT_TRUE(std::is_sorted(backend.fractions.begin(), backend.fractions.end()));
    LongWork work({"of several files"});
    backend.stopAtStep(static_cast<int>(backend.fractions.size()) + 2);
    EXPECT_LT(linesRead(), 100000);
    EXPECT_LT(linesRead(), 100000) << "stopped is stopped, for the next file too";
}

TEST_F(ScreenTest, AToolkitErrorIsReportedOnceWithItsPlace) {
    MessageRecorder recorder;
    ToolkitSetError(13);
    CheckGraphicsError("Some place 12");
    CheckGraphicsError();
    ASSERT_EQ(recorder.errors.size(), 1U);
    EXPECT_THAT(recorder.errors[0], StartsWith("Graphics ERROR: from Some place 12|"));
    EXPECT_EQ(messageLog().GraphicsErrorCount, 1);
}

TEST_F(ScreenTest, TheTwentyFirstToolkitErrorEndsTheProgram) {
    const auto fail = [] {
        for (int i = 0; i < 20; ++i) {
            ToolkitSetError(13);
            CheckGraphicsError();
        }
        ReportInfoLine("twenty are survived");
        ToolkitSetError(13);
        CheckGraphicsError();
    };
    EXPECT_EXIT(fail(), testing::ExitedWithCode(0), "");
    EXPECT_THAT(
        fileContent(directory.path("keldrin.log")),
        EndsWith("twenty are survived\nThe program ends here: more than 20 graphics errors.\n"
                 "What has not been saved is lost.\n"));
    EXPECT_THAT(fileContent(directory.path("keldrin.err")),
                HasSubstr("\n  Program run aborted, more than 20 graphics errors.\n"));
}

} // namespace
} // namespace keldrin
