#include "messages/message_log.h"

#include "messages/message_sink.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class MessageLogTest : public testing::Test {
  protected:
    MessageLogTest() {
        messageLog() = MessageLog{};
        OpenLogFiles(directory.path("keldrin "));
    }
    ~MessageLogTest() override { messageLog() = MessageLog{}; }

    [[nodiscard]] std::string logText() const { return fileContent(directory.path("keldrin.log")); }
    [[nodiscard]] std::string errText() const { return fileContent(directory.path("keldrin.err")); }

    TemporaryDirectory directory;
};

TEST_F(MessageLogTest, LogBeginsWithTheVersionAndKeepsWholeLines) {
    EXPECT_FALSE(std::filesystem::exists(directory.path("keldrin.log")));
    const std::string longLine(200, 'x');
    ReportInfoLine(longLine + "   ");
    EXPECT_EQ(logText(), "keldrin v4.00i updated 21/July/2020\n" + longLine + "\n");
    EXPECT_EQ(messageLog().LogLineBuffer.back().view(), longLine.substr(0, 128));
}

TEST_F(MessageLogTest, TheFortyNinthLinePushesTheOldestOut) {
    for (int i = 1; i <= 49; ++i) {
        ReportInfoLine("line " + std::to_string(i));
    }
    EXPECT_EQ(messageLog().LogLineBuffer.size(), 48U);
    EXPECT_EQ(messageLog().LogLineBuffer.front().view(), "line 2");
    EXPECT_THAT(logText(), HasSubstr("\nline 1\n"));
}

TEST_F(MessageLogTest, AMessageIsAnEmptyLineAndAtMostFiveLinesBehindABlank) {
    ReportError({"1", "2", "3", "4", "5", "6"});
    EXPECT_EQ(errText(), " keldrin v4.00i\n\n 1\n 2\n 3\n 4\n 5\n");
    ReportWarning({"w"});
    EXPECT_THAT(errText(), EndsWith("\n\n w\n"));
}

TEST_F(MessageLogTest, Warning128IsTheNoticeAndLaterOnesVanishButErrorsStay) {
    for (int i = 1; i <= 130; ++i) {
        ReportWarning({"warning " + std::to_string(i)});
    }
    const std::string text = errText();
    EXPECT_THAT(text, HasSubstr(" warning 127\n"));
    EXPECT_THAT(text, Not(HasSubstr("warning 128")));
    EXPECT_THAT(text, EndsWith("\n More than 128 error messages, no further messages will be "
                               "logged.\n"));
    ReportError({"still told"});
    EXPECT_THAT(errText(), EndsWith(" still told\n"));
}

TEST_F(MessageLogTest, OldFilesAreDeletedAtTheStart) {
    ReportInfoLine("old");
    ReportError({"old"});
    EXPECT_EQ(OpenLogFiles(directory.path("keldrin ")), 0);
    EXPECT_FALSE(std::filesystem::exists(directory.path("keldrin.log")));
    EXPECT_FALSE(std::filesystem::exists(directory.path("keldrin.err")));
}

TEST_F(MessageLogTest, QuietErrorsGoToTheLogBetweenBlankLines) {
    messageLog().quiet = true;
    ReportError({"one", "two"});
    EXPECT_THAT(logText(), EndsWith("\n\none\ntwo\n\n"));
}

TEST_F(MessageLogTest, TheLevelOfANoticeSaysHowFarItGoes) {
    MessageRecorder recorder;
    OpenLogFiles(directory.path("keldrin "));
    ReportNotice(NoticeLevel::Log, {"one", "two"});
    ReportNotice(NoticeLevel::Status, {"three"});
    EXPECT_THAT(recorder.infos, ElementsAre("one", "two", "three"));
    EXPECT_EQ(messageLog().record.errors, 0);
    messageLog().quiet = true;
    ReportNotice(NoticeLevel::Box, {"four", "five"});
    EXPECT_THAT(logText(), EndsWith("\none\ntwo\nthree\nfour\nfive\n"));
    EXPECT_THAT(errText(), EndsWith("\n\n four\n five\n"));
    EXPECT_EQ(messageLog().record.errors, 1);
}

TEST_F(MessageLogTest, WhatACallerTellsItselfIsNotShownTwice) {
    const MessageSink before = messageSink();
    int shown = 0;
    messageSink().status = [&](std::string_view) {
        ++shown;
    };
    messageSink().box = [&](std::span<const MessageLine>, bool) {
        ++shown;
        return true;
    };
    ReportNotice(NoticeLevel::Box, {"one"});
    EXPECT_EQ(shown, 2);
    messageLog().quiet = true;
    ReportNotice(NoticeLevel::Box, {"two"});
    ReportNotice(NoticeLevel::Status, {"three"});
    messageSink() = before;
    EXPECT_EQ(shown, 2);
    EXPECT_THAT(errText(), EndsWith("\n\n two\n"));
}

TEST_F(MessageLogTest, TheRecordCountsWarningsAndKeepsTheFirstError) {
    ReportInfoLine("not counted");
    for (int i = 0; i < 200; ++i) {
        ReportWarning({"warning"});
    }
    ReportError({"first", "why"});
    ReportError({"second"});
    EXPECT_EQ(messageLog().record.warnings, 200);
    EXPECT_EQ(messageLog().record.errors, 2);
    EXPECT_THAT(messageLog().record.firstError,
                ElementsAre(MessageLine("first"), MessageLine("why")));
    OpenLogFiles(directory.path("keldrin "));
    EXPECT_EQ(messageLog().record.warnings + messageLog().record.errors, 0);
}

TEST_F(MessageLogTest, ASinkIsToldEachThingOnce) {
    struct Installed {
        Installed() {
            messageSink().logLine = [this](std::string_view line) {
                told.push_back("log " + std::string(line));
            };
            messageSink().status = [this](std::string_view text) {
                told.push_back("status " + std::string(text));
            };
            messageSink().box = [this](std::span<const MessageLine> lines, bool mustBeSeen) {
                told.push_back((mustBeSeen ? "must " : "box ") + std::string(lines.front().view()));
                return goOn;
            };
            messageSink().close = [] {
                return 7;
            };
        }
        ~Installed() { messageSink() = MessageSink{}; }
        std::vector<std::string> told;
        bool goOn = true;
    } sink;
    ReportInfoLine("line");
    ReportWarning({"only in the file"});
    ReportError({"error"});
    ReportNotice(NoticeLevel::Status, {"kept"});
    ReportNotice(NoticeLevel::Box, {"lost"});
    EXPECT_THAT(sink.told, ElementsAre("log line", "box error", "log kept", "status kept",
                                       "log lost", "status lost", "must lost"));
    sink.goOn = false;
    EXPECT_EXIT(ReportError({"the user ends it"}), testing::ExitedWithCode(7), "");
    EXPECT_THAT(errText(), EndsWith(" the user ends it\n")) << "written before the box";
}

} // namespace
} // namespace keldrin
